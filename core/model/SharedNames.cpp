// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/SharedNames.h"

#include <QHash>

using namespace Qt::StringLiterals;

/// Ends the id of a file whose place was taken, after its extension.
static const auto duplicateMark = u"#dup"_s;
static const auto videoMark = u"#video"_s;

/// Where the files of an item would be without duplicates: folder and stem.
static QString sharedName(const QString &id)
{
    if (const auto mark = id.lastIndexOf(duplicateMark); mark >= 0) {
        return id.left(std::max<qsizetype>(id.lastIndexOf(u'.', mark), 0));
    }
    return id.endsWith(videoMark) ? id.chopped(videoMark.size()) : id;
}

QSet<QString> rejectsWithKeptHeirs(const QList<MediaItem> &items, const QSet<QString> &rejectedIDs)
{
    QSet<QString> contested; // names under which a duplicate is there
    for (const auto &item : items) {
        if (item.id.contains(duplicateMark)) {
            contested.insert(sharedName(item.id));
        }
    }
    if (contested.isEmpty()) {
        return {};
    }
    QSet<QString> kept;
    QHash<QString, QList<QString>> rejects;
    for (const auto &item : items) {
        const auto name = sharedName(item.id);
        if (!contested.contains(name)) {
            continue;
        }
        if (rejectedIDs.contains(item.id)) {
            rejects[name].append(item.id);
        } else {
            kept.insert(name);
        }
    }
    QSet<QString> endangered;
    for (const auto &name : std::as_const(kept)) {
        for (const auto &id : rejects.value(name)) {
            endangered.insert(id);
        }
    }
    return endangered;
}
