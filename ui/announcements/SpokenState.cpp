// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/announcements/SpokenState.h"

#include "app/AppState.h"

#include <QStringList>

using namespace Qt::StringLiterals;
using Kind = Phase::Kind;

static bool isWithItems(const Phase &phase)
{
    return phase.kind == Kind::Culling || phase.kind == Kind::Review;
}

SpokenState SpokenState::of(const AppState &appState)
{
    SpokenState state;
    state.phase = appState.phase();
    state.card = appState.card();
    const auto *session = appState.session();
    if (!session || !isWithItems(state.phase)) {
        return state;
    }
    const bool isReview = state.phase.kind == Kind::Review;
    state.rejectedCount = session->rejectedCount();
    state.itemCount = isReview ? state.rejectedCount : session->items().size();
    state.itemIndex = isReview ? appState.reviewSelection() : session->currentIndex();
    if (const auto *item =
            isReview ? session->rejectedItem(state.itemIndex) : session->currentItem()) {
        state.itemId = item->id;
        state.itemName = item->displayName();
        state.isVideo = item->kind == MediaKind::video;
        state.isRejected = isReview || session->rejectedRows().contains(state.itemIndex);
    }
    state.isEnlarged = isReview && appState.reviewEnlarged();
    state.isZoomed = (state.isEnlarged || !isReview) && !state.isVideo && appState.zoomed();
    return state;
}

static QString phaseText(const SpokenState &state)
{
    const auto card = state.card ? state.card->name : SpokenState::tr("Card");
    switch (state.phase.kind) {
    case Kind::WaitingForCard:
        return SpokenState::tr("Insert an SD card");
    case Kind::NeedsAccess:
        return SpokenState::tr("%1 can be read only with your permission. Press Return to grant it")
            .arg(card);
    case Kind::Scanning:
        return SpokenState::tr("Scanning %1").arg(card);
    case Kind::NoMedia:
        return SpokenState::tr("No photos or videos found on %1").arg(card);
    case Kind::CardReady:
        return state.phase.resumableFlag
                   ? SpokenState::tr("%1, session found. Press Return to resume").arg(card)
                   : SpokenState::tr("%1. Press Return to start culling").arg(card);
    case Kind::Culling:
        return SpokenState::tr("Culling");
    case Kind::Review:
        return SpokenState::tr("Rejects — last look");
    case Kind::Deleting:
        return SpokenState::tr("Deleting %n files", nullptr, int(state.phase.totalCount));
    case Kind::Summary:
        return SpokenState::tr("Deleted %1, kept %2")
            .arg(SpokenState::tr("%n files", nullptr, int(state.phase.deletedCount)),
                 SpokenState::tr("%n items", "photographs and clips", int(state.phase.keptCount)));
    }
    return {};
}

static QString itemText(const SpokenState &state)
{
    if (state.itemId.isEmpty()) {
        return state.phase.kind == Kind::Review ? SpokenState::tr("Nothing rejected") : QString();
    }
    QStringList words{SpokenState::tr("%1 of %2").arg(state.itemIndex + 1).arg(state.itemCount),
                      state.itemName};
    if (state.isVideo) {
        words.append(SpokenState::tr("clip"));
    }
    if (state.isRejected && state.phase.kind == Kind::Culling) {
        words.append(SpokenState::tr("rejected"));
    }
    return words.join(u", "_s);
}

static QString sentences(QStringList texts)
{
    texts.removeAll(QString());
    return texts.isEmpty() ? QString() : texts.join(u". "_s) + u'.';
}

QString SpokenState::whole() const
{
    QStringList news{phaseText(*this)};
    if (phase.kind == Kind::Summary && phase.failedCount != 0) {
        news.append(tr("%n could not be deleted", "files", int(phase.failedCount)));
    }
    if (isWithItems(phase)) {
        news.append(itemText(*this));
        news.append(tr("%n rejected", nullptr, int(rejectedCount)));
    }
    return sentences(news);
}

QString SpokenState::newsSince(const SpokenState &before) const
{
    const bool isSamePlace = phase.kind == before.phase.kind && card == before.card &&
                             phase.resumableFlag == before.phase.resumableFlag;
    if (!isSamePlace) {
        return whole();
    }
    if (!isWithItems(phase)) {
        return {}; // how far a deletion is, the progress bar tells
    }
    QStringList news;
    const bool isSameItem = itemId == before.itemId;
    const bool isReversed = isSameItem && isRejected != before.isRejected;
    if (rejectedCount != before.rejectedCount || isReversed) {
        const bool isMore = isReversed ? isRejected : rejectedCount > before.rejectedCount;
        news.append(isMore ? tr("Rejected") : tr("No longer rejected"));
        news.append(tr("%n rejected", nullptr, int(rejectedCount)));
    }
    if (isEnlarged != before.isEnlarged) {
        news.append(isEnlarged ? tr("Enlarged") : tr("Grid"));
    } else if (isZoomed != before.isZoomed && isSameItem) {
        news.append(isZoomed ? tr("Zoom 100%") : tr("Whole picture"));
    }
    if (!isSameItem || itemIndex != before.itemIndex) {
        news.append(itemText(*this));
    }
    return sentences(news);
}
