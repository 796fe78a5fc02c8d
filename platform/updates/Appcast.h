// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/updates/AppcastItem.h"

#include <QList>

#include <optional>

/// A feed of versions: RSS 2.0 with the elements of Sparkle 2. Its bytes may be hostile: no
/// document type and no entity of its own is taken, and what cannot be read to its end is no feed
/// at all.
class Appcast {
public:
    /// Who asks: what runs, and on what.
    struct Host {
        QString version;
        QString systemVersion; ///< of the kernel
    };

    /// Addresses in @p bytes may be relative to @p address. Nothing when it is not a whole feed.
    [[nodiscard]] static std::optional<Appcast> read(const QByteArray &bytes, const QUrl &address);

    /// The newest version that is newer than @p host's, for its system, and not on a channel of its
    /// own; prereleases only for who runs one. Only what can be verified counts: a download with
    /// its length and signature, or, where @p pagesCount, a page.
    [[nodiscard]] std::optional<AppcastItem> newestFor(const Host &host, bool pagesCount) const;

    [[nodiscard]] const QList<AppcastItem> &items() const { return m_items; }

private:
    QList<AppcastItem> m_items;
};
