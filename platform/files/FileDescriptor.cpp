// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FileDescriptor.h"

#include <unistd.h>

#include <utility>

FileDescriptor::FileDescriptor(FileDescriptor &&other) noexcept
    : m_number(other.release())
{
}

FileDescriptor &FileDescriptor::operator=(FileDescriptor &&other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

FileDescriptor::~FileDescriptor()
{
    if (isOpen()) {
        ::close(m_number);
    }
}

int FileDescriptor::release() noexcept
{
    return std::exchange(m_number, -1);
}
