// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

/// One version that a feed tells of, as far as it matters here.
struct AppcastItem {
    QString version; ///< what versions are compared by (sparkle:version)
    /// What people call it (sparkle:shortVersionString), else the version; one line of plain text.
    QString shownVersion;
    QString channel; ///< other than the usual one, else empty
    QString minimumSystemVersion;
    QString maximumSystemVersion;
    QString notes; ///< plain text
    QUrl page;     ///< about this version; may be empty

    QUrl download;        ///< empty when there is none for this system
    QByteArray signature; ///< of the download's bytes, in Base64
    qint64 length = 0;    ///< of the download, in bytes

    bool operator==(const AppcastItem &) const = default;
};
