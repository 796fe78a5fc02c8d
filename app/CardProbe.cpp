// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/CardProbe.h"

#include "app/CardAccess.h"
#include "core/card/CardScanner.h"

CardProbe CardProbe::of(const CardInfo &card, CardAccess &access, const FileManager &fileManager)
{
    CardProbe probe{.card = card, .readable = access.isReadable(card.volumeURL)};
    if (!probe.readable) {
        probe.bookmark = access.resolveBookmark(card.volumeUUID);
    }
    probe.hasDCIM = probe.isAccessible() && CardScanner::dcimExists(card.volumeURL, fileManager);
    return probe;
}
