// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/app/walk/ModelSession.h"
#include "tests/app/walk/WalkWorld.h"

#include <optional>
#include <string>
#include <vector>

/// What a deletion should be: file after file, whoever waits for it.
struct ModelRun {
    enum class Outcome { Pending, Removed, NotFound, Failed };

    std::string path = {}; ///< of the card
    std::vector<ModelSession::Item> rejects = {};
    qint64 keptCount = 0;
    bool isStopped = false; ///< its result is not wanted any more

    std::vector<std::string> files = {}; ///< of the rejects, in order
    std::vector<Outcome> outcomes = {};
    size_t done = 0;

    /// @p scannedLife is that of the card that the items were found on.
    ModelRun(std::string cardPath, int scannedLife, std::vector<ModelSession::Item> rejectedItems,
             qint64 kept);

    [[nodiscard]] bool isAtGate() const { return m_isAtGate; }

    /// Goes on as far as it comes; with @p passes, that many removals pass the closed gate. True
    /// when it has ended.
    bool goOn(WalkWorld &world, int passes = 0);

    [[nodiscard]] qint64 removedCount() const;
    [[nodiscard]] qint64 failedCount() const;
    /// The ids of the items that still have a file on the card.
    [[nodiscard]] std::set<QString> failedIDs() const;

private:
    [[nodiscard]] WalkCard *heldCard(WalkWorld &world) const;
    [[nodiscard]] std::string belowDcim(const std::string &file) const;
    void bringOntoMedium(WalkWorld &world);

    bool m_hasBegun = false;
    int m_scannedLife;
    int m_life = 0; ///< of the card that is held; 0 when it is not the one scanned
    bool m_isAtGate = false;
};
