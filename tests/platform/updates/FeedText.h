// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

/// Feeds in writing.
struct FeedText {
    struct Version {
        QByteArray version = "2.0";
        QByteArray shownVersion = {};
        QByteArray notes = "<p>New</p>";
        QByteArray download = {}; ///< its address
        qint64 length = 0;
        QByteArray signature = {};
        QByteArray more = {}; ///< further elements
    };

    [[nodiscard]] static QByteArray of(const Version &version)
    {
        auto text = "<item><title>Kestle</title><sparkle:version>" + version.version +
                    "</sparkle:version><description><![CDATA[" + version.notes +
                    "]]></description>" + version.more;
        if (!version.shownVersion.isEmpty()) {
            text += "<sparkle:shortVersionString>" + version.shownVersion +
                    "</sparkle:shortVersionString>";
        }
        if (!version.download.isEmpty()) {
            text += "<enclosure url=\"" + version.download + "\" length=\"" +
                    QByteArray::number(version.length) +
                    "\" type=\"application/octet-stream\" sparkle:edSignature=\"" +
                    version.signature + "\"/>";
        }
        return text + "</item>";
    }

    [[nodiscard]] static QByteArray feed(const QByteArray &items)
    {
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rss version=\"2.0\" "
               "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">"
               "<channel><title>Kestle</title>" +
               items + "</channel></rss>\n";
    }
};
