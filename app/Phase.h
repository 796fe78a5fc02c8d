// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

/// What the application is doing, with the values that belong to it; decides which screen is shown.
/// Two phases are equal when their kinds and values are.
class Phase {
    Q_GADGET
    Q_PROPERTY(Kind kind MEMBER kind)
    Q_PROPERTY(bool resumable MEMBER resumableFlag)
    Q_PROPERTY(qint64 done MEMBER doneCount)
    Q_PROPERTY(qint64 total MEMBER totalCount)
    Q_PROPERTY(qint64 deleted MEMBER deletedCount)
    Q_PROPERTY(qint64 failed MEMBER failedCount)
    Q_PROPERTY(qint64 kept MEMBER keptCount)

public:
    enum class Kind {
        WaitingForCard, ///< no usable card
        NeedsAccess,    ///< a card is chosen but cannot be read without the user's grant
        Scanning,
        NoMedia, ///< the chosen card holds no photo or video
        CardReady,
        Culling,
        Review, ///< a last look at the rejects
        Deleting,
        Summary,
    };
    Q_ENUM(Kind)

    [[nodiscard]] static Phase waitingForCard() { return {.kind = Kind::WaitingForCard}; }

    [[nodiscard]] static Phase needsAccess() { return {.kind = Kind::NeedsAccess}; }

    [[nodiscard]] static Phase scanning() { return {.kind = Kind::Scanning}; }

    [[nodiscard]] static Phase noMedia() { return {.kind = Kind::NoMedia}; }

    /// @p resumable tells whether a session exists for the card.
    [[nodiscard]] static Phase cardReady(bool resumable)
    {
        return {.kind = Kind::CardReady, .resumableFlag = resumable};
    }

    [[nodiscard]] static Phase culling() { return {.kind = Kind::Culling}; }

    [[nodiscard]] static Phase review() { return {.kind = Kind::Review}; }

    /// Counts are files.
    [[nodiscard]] static Phase deleting(qint64 done, qint64 total)
    {
        return {.kind = Kind::Deleting, .doneCount = done, .totalCount = total};
    }

    /// @p deleted and @p failed count files, @p kept counts items.
    [[nodiscard]] static Phase summary(qint64 deleted, qint64 failed, qint64 kept)
    {
        return {.kind = Kind::Summary,
                .deletedCount = deleted,
                .failedCount = failed,
                .keptCount = kept};
    }

    Kind kind = Kind::WaitingForCard;
    bool resumableFlag = false;
    qint64 doneCount = 0;
    qint64 totalCount = 0;
    qint64 deletedCount = 0;
    qint64 failedCount = 0;
    qint64 keptCount = 0;

    bool operator==(const Phase &) const = default;
};
