// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/SessionSnapshot.h"

#include "core/store/IsoDate.h"
#include "core/store/SnapshotReader.h"

QByteArray SessionSnapshot::toJson() const
{
    auto ids = nlohmann::ordered_json::array();
    for (const auto &id : rejectedIDs) {
        ids.push_back(id.toStdString());
    }
    const nlohmann::ordered_json json = {
        {"volumeUUID", volumeUUID.toStdString()},
        {"inventoryHash", inventoryHash.toStdString()},
        {"rejectedIDs", std::move(ids)},
        {"currentIndex", currentIndex},
        {"savedAt", IsoDate::text(savedAt).toStdString()},
    };
    return QByteArray::fromStdString(json.dump());
}

std::optional<SessionSnapshot> SessionSnapshot::fromJson(const QByteArray &json)
{
    if (json.contains('\0')) {
        return std::nullopt; // the parser would take a zero for the end
    }
    SnapshotReader reader;
    const bool isWhole = nlohmann::json::sax_parse(json.cbegin(), json.cend(), &reader);
    return isWhole ? std::move(reader).snapshot() : std::nullopt;
}
