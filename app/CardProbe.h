// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardInfo.h"
#include "app/OpenAccess.h"

#include <memory>
#include <optional>

class FileManager;

/// What is known of a card before a decision about it. Asked off the main thread, because a card
/// may be slow to answer or hang.
struct CardProbe {
    CardInfo card;
    bool readable = false;
    /// By a grant, stored or new; a stored one is asked for only when the card is not readable.
    std::shared_ptr<const OpenAccess> access = {};
    bool hasDCIM = false;
    bool hasSession = false; ///< decisions on it are kept; asked only when it is usable
    bool readOnly = false;   ///< nothing can be deleted from it; asked only when it is accessible

    [[nodiscard]] bool isAccessible() const { return readable || access; }

    /// Where its files are.
    [[nodiscard]] std::filesystem::path root() const;

    [[nodiscard]] bool isUsable() const { return isAccessible() && hasDCIM; }

    /// Blocks on the card.
    [[nodiscard]] static CardProbe of(const CardInfo &card,
                                      const std::shared_ptr<CardAccess> &access,
                                      const FileManager &fileManager);

    /// The card by a new grant of @p url, whose access is open. Blocks on the card.
    [[nodiscard]] static CardProbe granted(const CardInfo &card, const std::filesystem::path &url,
                                           const std::shared_ptr<CardAccess> &access,
                                           const FileManager &fileManager);
};
