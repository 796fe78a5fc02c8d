// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/CardPacedFileManager.h"

#include "platform/files/PosixHeldCard.h"

#include <thread>

using namespace std::chrono_literals;

namespace {

/// A card of some thousand shots lists in about this time.
constexpr auto listingTime = 1500ms;

/// A cheap card needs some such time for a file of many clusters.
constexpr auto removalTime = 400ms;

class CardPacedCard final : public PosixHeldCard {
public:
    using PosixHeldCard::PosixHeldCard;

    [[nodiscard]] std::error_code remove(const std::filesystem::path &folder,
                                         const std::filesystem::path &name) override
    {
        std::this_thread::sleep_for(removalTime);
        return PosixHeldCard::remove(folder, name);
    }
};

} // namespace

std::vector<std::filesystem::path>
CardPacedFileManager::regularFilesBelow(const std::filesystem::path &folder) const
{
    std::this_thread::sleep_for(listingTime);
    return PosixFileManager::regularFilesBelow(folder);
}

std::unique_ptr<HeldCard> CardPacedFileManager::hold(const std::filesystem::path &root,
                                                     std::error_code &error) const
{
    auto descriptor = PosixHeldCard::openRoot(root, error);
    return descriptor.isOpen() ? std::make_unique<CardPacedCard>(std::move(descriptor)) : nullptr;
}
