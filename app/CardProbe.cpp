// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/CardProbe.h"

#include "core/card/CardScanner.h"
#include "platform/files/FileManager.h"

/// What is asked of a card that is accessible.
static void lookInto(CardProbe &probe, const FileManager &fileManager)
{
    const auto &root = probe.card.volumeURL;
    probe.hasDCIM = CardScanner::dcimExists(root, fileManager);
    probe.readOnly = fileManager.isReadOnly(root);
}

CardProbe CardProbe::of(const CardInfo &card, const std::shared_ptr<CardAccess> &access,
                        const FileManager &fileManager)
{
    CardProbe probe{.card = card, .readable = access->isReadable(card.volumeURL)};
    if (!probe.readable) {
        if (const auto url = access->resolveBookmark(card.volumeUUID)) {
            probe.access = std::make_shared<const OpenAccess>(access, *url);
        }
    }
    if (probe.isAccessible()) {
        lookInto(probe, fileManager);
    }
    return probe;
}

std::optional<CardProbe> CardProbe::granted(const CardInfo &card,
                                            const std::shared_ptr<CardAccess> &access,
                                            const FileManager &fileManager)
{
    const auto url = access->requestAccess(card.volumeURL, card.name);
    if (!url) {
        return std::nullopt;
    }
    CardProbe probe{.card = card, .access = std::make_shared<const OpenAccess>(access, *url)};
    lookInto(probe, fileManager);
    return probe;
}
