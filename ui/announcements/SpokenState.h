// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardInfo.h"
#include "app/Phase.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

class AppState;

/// What somebody who does not see the screen has to know of it. Two of them tell what has happened
/// in between, however much it was.
struct SpokenState {
    Q_DECLARE_TR_FUNCTIONS(SpokenState)

public:
    [[nodiscard]] static SpokenState of(const AppState &appState);

    /// What is new since @p before, in words; empty when nothing worth a word is.
    [[nodiscard]] QString newsSince(const SpokenState &before) const;

    /// Where one is, with all there is to say.
    [[nodiscard]] QString whole() const;

    Phase phase;
    std::optional<CardInfo> card;
    qint64 rejectedCount = 0;

    // The item that keys act on: of culling the current one, of the review the selected one.
    QString itemId;
    QString itemName;
    qint64 itemIndex = 0;
    qint64 itemCount = 0; ///< of all that it is among
    bool isVideo = false;
    bool isRejected = false;

    bool isEnlarged = false;
    bool isZoomed = false;
};
