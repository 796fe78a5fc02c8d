// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/Observed.h"

#include <algorithm>

using Kind = Phase::Kind;

qint64 Observed::indexOf(const CardInfo &wanted) const
{
    const auto found = std::ranges::find_if(
        availableCards, [&](const CardInfo &other) { return isSameVolume(other, wanted); });
    return found != availableCards.end() ? found - availableCards.begin() : -1;
}

qint64 Observed::currentCardIndex() const
{
    return card ? indexOf(*card) : -1;
}

QString Observed::cardName() const
{
    return card ? card->name : QString();
}

QStringList Observed::availableCardNames() const
{
    QStringList names;
    for (const auto &available : availableCards) {
        names.append(available.name);
    }
    return names;
}

bool Observed::canSwitchCards() const
{
    const bool beforeCulling = phase.kind == Kind::CardReady ||
                               phase.kind == Kind::WaitingForCard ||
                               phase.kind == Kind::NeedsAccess || phase.kind == Kind::NoMedia;
    return beforeCulling && availableCards.size() >= 2;
}
