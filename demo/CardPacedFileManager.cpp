// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/CardPacedFileManager.h"

#include <thread>

using namespace std::chrono_literals;

/// A card of some thousand shots lists in about this time.
constexpr auto listingTime = 1500ms;

/// A cheap card needs some such time for a file of many clusters.
constexpr auto removalTime = 400ms;

std::vector<std::filesystem::path>
CardPacedFileManager::regularFilesBelow(const std::filesystem::path &folder) const
{
    std::this_thread::sleep_for(listingTime);
    return PosixFileManager::regularFilesBelow(folder);
}

std::error_code CardPacedFileManager::remove(const std::filesystem::path &path)
{
    std::this_thread::sleep_for(removalTime);
    return PosixFileManager::remove(path);
}
