// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tools/kestle-probe/ScanCommand.h"

#include "core/card/CardScanner.h"
#include "platform/files/PosixFileManager.h"
#include "tools/kestle-probe/ScannedCard.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

using namespace Qt::StringLiterals;
using Location = std::filesystem::path;

static QJsonValue textBelow(const std::optional<Location> &file, const Location &card)
{
    if (!file) {
        return QJsonValue::Null;
    }
    return QString::fromStdString(file->lexically_relative(card).native());
}

static QJsonObject described(const MediaItem &item, const Location &card)
{
    QJsonValue date = QJsonValue::Null;
    if (item.captureDate) {
        date = double(item.captureDate->toMSecsSinceEpoch()) / 1000;
    }
    return {
        {u"id"_s, item.id},
        {u"kind"_s, rawValue(item.kind)},
        {u"raw"_s, textBelow(item.rawURL, card)},
        {u"preview"_s, textBelow(item.previewURL, card)},
        {u"video"_s, textBelow(item.videoURL, card)},
        {u"captureDate"_s, date},
    };
}

ExitStatus scanCommand(const QStringList &arguments)
{
    if (arguments.size() != 1) {
        return BadUsage;
    }
    const Location card(arguments.first().toStdString());

    QJsonArray enumeration;
    for (const auto &file : CardScanner::listFiles(card, PosixFileManager())) {
        enumeration.append(textBelow(file, card));
    }
    QJsonArray items;
    for (const auto &item : scannedCard(card)) {
        items.append(described(item, card));
    }
    const QJsonObject scan = {{u"enumeration"_s, enumeration}, {u"items"_s, items}};
    std::fputs(QJsonDocument(scan).toJson().constData(), stdout);
    return Success;
}
