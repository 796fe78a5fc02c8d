// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardInfo.h"
#include "app/FailedFile.h"
#include "app/Phase.h"

#include <QList>
#include <QSizeF>
#include <QStringList>

#include <memory>
#include <optional>

class CullSession;
class VideoPlayer;

/// All of the controller that is told when it changes.
struct Observed {
    Phase phase;
    std::optional<CardInfo> card;
    bool cardIsReadOnly = false;
    bool requestingAccess = false;
    QList<CardInfo> availableCards;
    std::shared_ptr<CullSession> session;
    bool zoomed = false;
    QSizeF zoomPan = {0, 0};
    bool showExifBar = true;
    qint64 reviewSelection = 0;
    bool reviewEnlarged = false;
    bool confirmingDelete = false;
    QList<FailedFile> failures;
    std::shared_ptr<VideoPlayer> videoPlayer;
    qint64 changeCount = 0;

    /// Of the same volume among the available cards, -1 when it is not there.
    [[nodiscard]] qint64 indexOf(const CardInfo &wanted) const;
    [[nodiscard]] qint64 currentCardIndex() const;
    [[nodiscard]] QString cardName() const;
    [[nodiscard]] QStringList availableCardNames() const;
    [[nodiscard]] bool canSwitchCards() const;
};
