// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/DirectBookmark.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

static const auto grantKey = u"grant"_s;
static const auto pathKey = u"path"_s;
static const auto uuidKey = u"volumeUUID"_s;
static const auto directGrant = u"direct"_s;

QByteArray DirectBookmark::data() const
{
    const auto path = QByteArray::fromStdString(url.native()).toPercentEncoding("/"_ba);
    const QJsonObject object = {
        {grantKey, directGrant}, {pathKey, QString::fromLatin1(path)}, {uuidKey, volumeUUID}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<DirectBookmark> DirectBookmark::from(const QByteArray &data)
{
    const auto object = QJsonDocument::fromJson(data).object();
    const auto path = QByteArray::fromPercentEncoding(object.value(pathKey).toString().toLatin1());
    if (object.value(grantKey).toString() != directGrant || !path.startsWith('/') ||
        path.contains('\0') || !object.value(uuidKey).isString()) {
        return std::nullopt;
    }
    return DirectBookmark{.url = path.toStdString(),
                          .volumeUUID = object.value(uuidKey).toString()};
}
