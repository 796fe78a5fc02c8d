// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Owns one POSIX file descriptor and closes it.
class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) noexcept
        : m_number(number)
    {
    }

    FileDescriptor(FileDescriptor &&other) noexcept;
    FileDescriptor &operator=(FileDescriptor &&other) noexcept;
    ~FileDescriptor();

    [[nodiscard]] bool isOpen() const noexcept { return m_number >= 0; }

    [[nodiscard]] int number() const noexcept { return m_number; }

    /// Hands the descriptor to the caller, who closes it.
    [[nodiscard]] int release() noexcept;

private:
    int m_number;
};
