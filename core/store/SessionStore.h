// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/model/MediaItem.h"
#include "core/store/SessionSnapshot.h"

#include <QList>

#include <filesystem>
#include <optional>

/// Keeps one snapshot per card, each in a file of its own. Holds no state: every operation may be
/// called from any thread and blocks on the disk. A reader sees the old snapshot or the new one,
/// whatever happens while it is replaced.
class SessionStore {
public:
    /// Where this user's sessions belong, by the XDG Base Directory Specification. Without a home
    /// the program stops.
    [[nodiscard]] static std::filesystem::path defaultDirectory();

    /// Keeps the snapshots in @p directory and makes it, for this user's eyes only, when it is
    /// missing. Throws std::system_error when it cannot.
    explicit SessionStore(std::filesystem::path directory);

    [[nodiscard]] const std::filesystem::path &directory() const { return m_directory; }

    /// Named by the SHA-256 of the UUID, because a UUID may hold any character.
    [[nodiscard]] std::filesystem::path fileURL(const QString &volumeUUID) const;

    /// Replaces what was kept for the card. When it returns, the snapshot is on the disk. Throws
    /// std::system_error when that fails; the file then holds what it held before, or, where only
    /// its folder could not be synced, the new snapshot.
    void save(const SessionSnapshot &snapshot) const;

    /// Absent when nothing readable is kept for the card, or more than 64 MiB; no file is touched.
    /// Never waits for anything but the disk, whatever bears the file's name.
    [[nodiscard]] std::optional<SessionSnapshot> load(const QString &volumeUUID) const;

    /// Forgets what was kept for the card, if anything.
    void deleteSnapshot(const QString &volumeUUID) const;

    /// Removes snapshots that were saved more than @p days days before @p now, and those that
    /// cannot be read: they can never be resumed. Files that do not end in ".json" stay, and so do
    /// folders; of a link, only the link is removed. Does nothing while somebody saves, in this
    /// process or another: a snapshot that is half written looks damaged.
    void prune(int days, const QDateTime &now) const;

    /// Tells whether a card holds the same items: 64 lower-case hexadecimal digits over their ids
    /// alone, in whatever order they come.
    [[nodiscard]] static QString inventoryHash(const QList<MediaItem> &items);

private:
    std::filesystem::path m_directory;
};
