// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardInfo.h"

#include <filesystem>
#include <memory>
#include <optional>

class CardAccess;
class FileManager;

/// What is known of a card before a decision about it. Asked off the main thread, because a card
/// may be slow to answer or hang.
struct CardProbe {
    CardInfo card;
    bool readable = false;
    /// Where a stored grant leads to, its access open; asked only when the card is not readable.
    std::optional<std::filesystem::path> bookmark = {};
    bool hasDCIM = false;

    [[nodiscard]] bool isAccessible() const { return readable || bookmark; }

    /// Blocks on the card.
    [[nodiscard]] static CardProbe of(const CardInfo &card, CardAccess &access,
                                      const FileManager &fileManager);
};
