// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/AccessTime.h"

#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>

/// In the year 2001. Seconds.
constexpr time_t longAgo = 1'000'000'000;

void AccessTime::makeOld(const std::filesystem::path &path)
{
    const timespec times[] = {{longAgo, 0}, {longAgo + 1, 0}}; // of access and of change
    QCOMPARE(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

bool AccessTime::isOld(const std::filesystem::path &path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && status.st_atim.tv_sec == longAgo;
}

bool AccessTime::changesOnReading(const std::filesystem::path &path)
{
    makeOld(path);
    if (std::filesystem::is_directory(path)) {
        for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator(path)) {
        }
    } else {
        std::ifstream(path).get();
    }
    return !isOld(path);
}
