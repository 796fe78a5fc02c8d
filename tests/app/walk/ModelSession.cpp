// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/ModelSession.h"

#include <QCryptographicHash>
#include <QStringList>

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

std::vector<ModelSession::Item> ModelSession::itemsOf(const WalkCard &card, const std::string &path)
{
    std::map<std::string, Item> items;
    for (const auto &[file, number] : card.files) {
        const std::filesystem::path name(file);
        const auto url = path + "/DCIM/" + file;
        const auto stem = (name.parent_path() / name.stem()).native();
        const bool isVideo = name.extension() == ".MOV";
        auto &item = items[isVideo ? file + "#video" : stem];
        item.isVideo = isVideo;
        item.files.push_back(url);
        // The JPEG comes before its RAW file in the map, and is what is shown of both.
        if (item.shown.empty()) {
            item.shown = url;
            item.shownNumber = number;
        }
    }
    std::vector<Item> inOrder;
    for (auto &[id, item] : items) {
        item.id = QString::fromStdString(id);
        std::ranges::reverse(item.files);
        inOrder.push_back(item);
    }
    std::ranges::sort(inOrder, {}, [](const Item &item) {
        return std::pair(std::filesystem::path(item.shown).filename().native(), item.id);
    });
    return inOrder;
}

std::vector<ModelSession::Item> ModelSession::rejects() const
{
    std::vector<Item> found;
    std::ranges::copy_if(items, std::back_inserter(found),
                         [this](const Item &item) { return rejected.contains(item.id); });
    return found;
}

bool ModelSession::toggle(const QString &id)
{
    undoStack.push_back(id);
    if (rejected.erase(id) == 0) {
        rejected.insert(id);
    }
    return rejected.contains(id);
}

bool ModelSession::undo()
{
    if (undoStack.empty()) {
        return false;
    }
    const auto id = undoStack.back();
    toggle(id);
    undoStack.resize(undoStack.size() - 2);
    index = std::ranges::find(items, id, &Item::id) - items.begin();
    return true;
}

QString ModelSession::inventoryHash() const
{
    QStringList ids;
    for (const auto &item : items) {
        ids.append(item.id);
    }
    ids.sort();
    return QString::fromLatin1(
        QCryptographicHash::hash(ids.join(u'\n').toUtf8(), QCryptographicHash::Sha256).toHex());
}
