// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/CardProbe.h"

#include "core/card/CardScanner.h"
#include "platform/files/FileManager.h"

/// What is asked of a card that is accessible.
static void lookInto(CardProbe &probe, const FileManager &fileManager)
{
    const auto root = probe.root();
    probe.hasDCIM = CardScanner::dcimExists(root, fileManager);
    probe.readOnly = fileManager.isReadOnly(root);
}

CardProbe CardProbe::of(const CardInfo &card, const std::shared_ptr<CardAccess> &access,
                        const FileManager &fileManager)
{
    CardProbe probe{.card = card, .readable = access->isReadable(card.volumeURL)};
    if (!probe.readable) {
        if (const auto url = access->resolveBookmark(card.volumeUUID)) {
            probe.access = std::make_shared<const OpenAccess>(access, *url, card.volumeURL);
        }
    }
    if (probe.isAccessible()) {
        lookInto(probe, fileManager);
    }
    return probe;
}

CardProbe CardProbe::granted(const CardInfo &card, const std::filesystem::path &url,
                             const std::shared_ptr<CardAccess> &access,
                             const FileManager &fileManager)
{
    CardProbe probe{.card = card,
                    .access = std::make_shared<const OpenAccess>(access, url, card.volumeURL)};
    lookInto(probe, fileManager);
    return probe;
}

std::filesystem::path CardProbe::root() const
{
    return access ? access->root() : card.volumeURL;
}
