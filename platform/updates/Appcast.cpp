// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/Appcast.h"

#include "platform/updates/PlainNotes.h"
#include "platform/updates/VersionOrder.h"

#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

constexpr auto sparkle = "http://www.andymatuschak.org/xml-namespaces/sparkle"_L1;

static QString attribute(const QXmlStreamReader &xml, QLatin1StringView name)
{
    return xml.attributes().value(sparkle, name).trimmed().toString();
}

/// An address of the web that is read safely, else nothing.
static QUrl safeAddress(const QString &text, const QUrl &base)
{
    const QUrl address(text.trimmed(), QUrl::StrictMode);
    const auto url = address.isEmpty() ? QUrl() : base.resolved(address);
    return url.scheme() == "https"_L1 && !url.host().isEmpty() ? url : QUrl();
}

static void readEnclosure(const QXmlStreamReader &xml, const QUrl &base, AppcastItem &item)
{
    const auto system = attribute(xml, "os"_L1);
    if (!item.download.isEmpty() || (!system.isEmpty() && system != "linux"_L1)) {
        return;
    }
    item.download = safeAddress(xml.attributes().value("url"_L1).toString(), base);
    item.length = xml.attributes().value("length"_L1).toLongLong();
    item.signature = attribute(xml, "edSignature"_L1).toLatin1();
    // Older feeds say these here.
    if (item.version.isEmpty()) {
        item.version = attribute(xml, "version"_L1);
    }
    if (item.shownVersion.isEmpty()) {
        item.shownVersion = attribute(xml, "shortVersionString"_L1);
    }
}

static void readNotes(QXmlStreamReader &xml, AppcastItem &item)
{
    const auto format = attribute(xml, "format"_L1);
    const auto text = xml.readElementText(QXmlStreamReader::SkipChildElements);
    if (item.notes.isEmpty()) {
        item.notes = plainNotes(text, format == "plain-text"_L1 || format == "markdown"_L1
                                          ? NotesFormat::Plain
                                          : NotesFormat::Html);
    }
}

/// Reads one element of an item, and what is in it.
static void readDetail(QXmlStreamReader &xml, const QUrl &base, AppcastItem &item)
{
    const auto name = xml.name().toString();
    const auto text = [&xml] {
        return xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
    };
    if (xml.namespaceUri() == sparkle) {
        if (name == "version"_L1) {
            item.version = text();
        } else if (name == "shortVersionString"_L1) {
            item.shownVersion = text();
        } else if (name == "channel"_L1) {
            item.channel = text();
        } else if (name == "minimumSystemVersion"_L1) {
            item.minimumSystemVersion = text();
        } else if (name == "maximumSystemVersion"_L1) {
            item.maximumSystemVersion = text();
        } else {
            xml.skipCurrentElement();
        }
    } else if (name == "enclosure"_L1) {
        readEnclosure(xml, base, item);
        xml.skipCurrentElement();
    } else if (name == "link"_L1) {
        item.page = safeAddress(text(), base);
    } else if (name == "description"_L1) {
        readNotes(xml, item);
    } else {
        xml.skipCurrentElement();
    }
}

static AppcastItem readItem(QXmlStreamReader &xml, const QUrl &base)
{
    AppcastItem item;
    while (xml.readNextStartElement()) {
        readDetail(xml, base, item);
    }
    item.shownVersion = plainLine(item.shownVersion);
    if (item.shownVersion.isEmpty()) {
        item.shownVersion = plainLine(item.version);
    }
    return item;
}

std::optional<Appcast> Appcast::read(const QByteArray &bytes, const QUrl &address)
{
    Appcast feed;
    bool isFeed = false;
    QXmlStreamReader xml(bytes);
    xml.setEntityExpansionLimit(0);
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            return std::nullopt;
        case QXmlStreamReader::StartElement:
            if (xml.name() == "channel"_L1) {
                isFeed = true;
            } else if (xml.name() == "item"_L1 && isFeed) {
                feed.m_items.append(readItem(xml, address));
            }
            break;
        default:
            break;
        }
    }
    return isFeed && !xml.hasError() ? std::optional(feed) : std::nullopt;
}

/// Longer ones are nobody's, and only cost time.
static bool isReadable(const AppcastItem &item)
{
    constexpr qsizetype longest = 100;
    return !item.version.isEmpty() && item.version.size() <= longest &&
           !item.shownVersion.isEmpty() && item.shownVersion.size() <= longest &&
           item.minimumSystemVersion.size() <= longest &&
           item.maximumSystemVersion.size() <= longest;
}

static bool runsOn(const AppcastItem &item, const QString &systemVersion)
{
    const auto &minimum = item.minimumSystemVersion;
    const auto &maximum = item.maximumSystemVersion;
    return (minimum.isEmpty() || compareVersions(systemVersion, minimum) >= 0) &&
           (maximum.isEmpty() || compareVersions(systemVersion, maximum) <= 0);
}

static bool canBeVerified(const AppcastItem &item, bool pagesCount)
{
    if (item.download.isEmpty()) {
        return pagesCount && !item.page.isEmpty();
    }
    return item.length > 0 && !item.signature.isEmpty();
}

std::optional<AppcastItem> Appcast::newestFor(const Host &host, bool pagesCount) const
{
    std::optional<AppcastItem> newest;
    const bool takesPrereleases = isPrerelease(host.version);
    for (const auto &item : m_items) {
        const bool isMeant =
            isReadable(item) && item.channel.isEmpty() && runsOn(item, host.systemVersion) &&
            (takesPrereleases || (!isPrerelease(item.version) && !isPrerelease(item.shownVersion)));
        if (isMeant && canBeVerified(item, pagesCount) &&
            compareVersions(item.version, newest ? newest->version : host.version) > 0) {
            newest = item;
        }
    }
    return newest;
}
