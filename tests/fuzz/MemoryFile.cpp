// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/fuzz/MemoryFile.h"

#include "platform/checks/Precondition.h"

#include <sys/mman.h>
#include <unistd.h>

#include <string>

MemoryFile::MemoryFile()
    : m_descriptor(::memfd_create("input", MFD_CLOEXEC))
    , m_path("/proc/self/fd/" + std::to_string(m_descriptor.number()))
{
    precondition(m_descriptor.isOpen(), "there are files in memory");
}

void MemoryFile::fill(const uint8_t *data, size_t size)
{
    const auto file = m_descriptor.number();
    precondition(::ftruncate(file, 0) == 0 &&
                     ::pwrite(file, data, size, 0) == static_cast<ssize_t>(size),
                 "a file in memory takes what is written");
}
