// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/UpdateFeed.h"

std::optional<UpdateFeed> UpdateFeed::builtIn()
{
    const QUrl address(QStringLiteral(KESTLE_FEED_URL), QUrl::StrictMode);
    const auto key = PublicKey::fromBase64(QByteArrayLiteral(KESTLE_FEED_KEY));
    if (address.scheme() != u"https" || !key) {
        return std::nullopt;
    }
    return UpdateFeed{.address = address, .key = *key, .mustBeSigned = KESTLE_FEED_SIGNED};
}
