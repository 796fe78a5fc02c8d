// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/WalkModel.h"

#include <QStringList>

using namespace Qt::StringLiterals;

static QString textOf(const ModelCard &card)
{
    return u"%1|%2|%3"_s.arg(QString::fromStdString(card.path), card.uuid, card.name);
}

static QString textOf(const std::vector<ModelCard> &cards)
{
    QStringList texts;
    for (const auto &card : cards) {
        texts.append(textOf(card));
    }
    return texts.join(u", ");
}

static QString textOf(const std::vector<ModelSession::Item> &items)
{
    QStringList texts;
    for (const auto &item : items) {
        QStringList files;
        for (const auto &file : item.files) {
            files.append(QString::fromStdString(file));
        }
        texts.append(item.id + u" = "_s + files.join(u'+'));
    }
    return texts.join(u", ");
}

Portrait WalkModel::portrait() const
{
    const auto &state = m_state;
    Portrait portrait;
    portrait.add("phase", state.phase.text());
    portrait.add("card", state.card ? textOf(*state.card) : QString());
    portrait.add("cardIsReadOnly", state.cardIsReadOnly);
    portrait.add("requestingAccess", m_request.has_value());
    portrait.add("availableCards", textOf(state.availableCards));
    portrait.add("currentCardIndex", indexOfCard());
    portrait.add("canSwitchCards", canSwitchCards());
    portrait.add("hasSession", state.session.has_value());
    const auto session = state.session.value_or(ModelSession());
    portrait.add("items", textOf(session.items));
    portrait.add("currentIndex", session.index);
    portrait.add("rejects", textOf(session.rejects()));
    portrait.add("zoomed", state.zoomed);
    portrait.add("zoomPan", u"%1, %2"_s.arg(state.zoomPan.width()).arg(state.zoomPan.height()));
    portrait.add("showExifBar", state.showExifBar);
    portrait.add("reviewSelection", state.reviewSelection);
    portrait.add("reviewEnlarged", state.reviewEnlarged);
    portrait.add("confirmingDelete", state.confirmingDelete);
    portrait.add("videoPlayer", state.player ? QString::fromStdString(state.player->url) : u""_s);
    portrait.add("rate", state.player ? QString::number(state.player->rate) : u""_s);
    portrait.add("time", state.player ? QString::number(state.player->time) : u""_s);
    portrait.add("changeCount", state.changeCount);
    portrait.add("canUndo", canUndo());
    portrait.add("canFinish", canFinish());
    portrait.add("canGoBack", canGoBack());
    portrait.add("a save waits", store.waiting.has_value());
    portrait.add("open accesses", openAccesses());
    portrait.add("threads at gates", waitingCount());
    return portrait;
}
