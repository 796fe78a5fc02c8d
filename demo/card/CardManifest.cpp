// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/CardManifest.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

QJsonObject CardManifest::toJson() const
{
    QJsonArray list;
    for (const auto &item : items) {
        list.append(QJsonObject{{u"id"_s, item.id},
                                {u"files"_s, QJsonArray::fromStringList(item.files)},
                                {u"captured"_s, item.captured}});
    }
    return {{u"items"_s, list},
            {u"companions"_s, QJsonArray::fromStringList(companions)},
            {u"notes"_s, QJsonArray::fromStringList(notes)}};
}
