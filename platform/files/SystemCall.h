// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cerrno>
#include <system_error>

/// The result of @p call, which is made again as long as a signal interrupts it.
template<typename Call>
[[nodiscard]] auto uninterrupted(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// Throws errno, as left by the call named @p name.
[[noreturn]] inline void throwLastError(const char *name)
{
    throw std::system_error(errno, std::system_category(), name);
}

/// Whether errno's value @p error says that the file system or the kernel has no such operation.
[[nodiscard]] inline bool isUnsupported(int error)
{
    return error == EINVAL || error == ENOTSUP || error == ENOSYS;
}
