// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/ModelPhase.h"

using namespace Qt::StringLiterals;

QString ModelPhase::text() const
{
    switch (kind) {
    case Kind::WaitingForCard:
        return u"waitingForCard"_s;
    case Kind::NeedsAccess:
        return u"needsAccess"_s;
    case Kind::Scanning:
        return u"scanning"_s;
    case Kind::NoMedia:
        return u"noMedia"_s;
    case Kind::CardReady:
        return resumable ? u"cardReady, resumable"_s : u"cardReady"_s;
    case Kind::Culling:
        return u"culling"_s;
    case Kind::Review:
        return u"review"_s;
    case Kind::Deleting:
        return u"deleting, %1 of %2"_s.arg(done).arg(total);
    case Kind::Summary:
        return u"summary, %1 deleted, %2 failed, %3 kept"_s.arg(done).arg(failed).arg(kept);
    }
    return {};
}
