// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/SessionStore.h"

#include "core/text/UnicodeOrder.h"
#include "platform/checks/Precondition.h"
#include "platform/files/PrivateFolder.h"
#include "platform/files/ReadFile.h"
#include "platform/files/ReplaceFile.h"
#include "platform/files/SyncedFolder.h"

#include <QCryptographicHash>
#include <QStringList>

#include <unistd.h>

#include <algorithm>
#include <system_error>
#include <vector>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

/// A card of 100,000 rejects takes some 3 MiB. What is longer than this was not written by us, and
/// reading it would only cost memory.
constexpr qint64 longestSnapshot = 64 * 1024 * 1024;

static QByteArray sha256InHex(const QString &text)
{
    return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex();
}

static std::optional<SessionSnapshot> snapshotIn(const fs::path &file)
{
    const auto json = readFile(file, longestSnapshot);
    return json ? SessionSnapshot::fromJson(*json) : std::nullopt;
}

/// Unicode order. Ids that are equal in it are told apart all the same, so that the order in which
/// they come never shows.
static bool precedes(const QString &left, const QString &right)
{
    const int order = compareInUnicodeOrder(left, right);
    return order != 0 ? order < 0 : left < right;
}

/// Complete before anything is removed: what a listing tells of a folder that changes meanwhile is
/// left to the file system. Empty when it fails.
static std::vector<fs::path> snapshotFilesIn(const fs::path &directory)
{
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(directory, error); entry != fs::directory_iterator();
         entry.increment(error)) {
        if (entry->path().extension() == ".json") {
            files.push_back(entry->path());
        }
    }
    return error ? std::vector<fs::path>() : files;
}

static std::optional<SyncedFolder> heldAlone(const fs::path &directory)
{
    try {
        SyncedFolder folder(directory);
        return folder.holdAlone() ? std::optional(std::move(folder)) : std::nullopt;
    } catch (const std::system_error &) {
        return std::nullopt;
    }
}

// QStandardPaths would take a relative XDG_DATA_HOME, which does not count, and the root of the
// file system for the home of a user who has none.
fs::path SessionStore::defaultDirectory()
{
    const auto dataHome = qgetenv("XDG_DATA_HOME").toStdString();
    if (dataHome.starts_with('/')) {
        return fs::path(dataHome) / "Kestle/sessions";
    }
    const auto home = qgetenv("HOME").toStdString();
    precondition(home.starts_with('/'), "there is no folder for this user's data");
    return fs::path(home) / ".local/share/Kestle/sessions";
}

SessionStore::SessionStore(fs::path directory)
    : m_directory(std::move(directory))
{
    makePrivateFolder(m_directory);
}

fs::path SessionStore::fileURL(const QString &volumeUUID) const
{
    return m_directory / (sha256InHex(volumeUUID).toStdString() + ".json");
}

void SessionStore::save(const SessionSnapshot &snapshot) const
{
    const auto json = snapshot.toJson();
    if (json.size() > longestSnapshot) {
        throw std::system_error(EFBIG, std::system_category()); // nobody would read it again
    }
    replaceFile(fileURL(snapshot.volumeUUID), json);
}

std::optional<SessionSnapshot> SessionStore::load(const QString &volumeUUID) const
{
    return snapshotIn(fileURL(volumeUUID));
}

// Removals are unlink(2): the functions of the standard library would remove an empty folder, too.

void SessionStore::deleteSnapshot(const QString &volumeUUID) const
{
    ::unlink(fileURL(volumeUUID).c_str());
}

void SessionStore::prune(int days, const QDateTime &now) const
{
    const auto folder = heldAlone(m_directory);
    if (!folder) {
        return; // somebody saves; the next start prunes as well
    }
    const auto cutoff = now.addSecs(-24 * 3600 * qint64(days));
    for (const auto &file : snapshotFilesIn(m_directory)) {
        const auto snapshot = snapshotIn(file);
        if (!snapshot || snapshot->savedAt < cutoff) {
            ::unlink(file.c_str());
        }
    }
}

QString SessionStore::inventoryHash(const QList<MediaItem> &items)
{
    QStringList ids;
    ids.reserve(items.size());
    for (const auto &item : items) {
        ids.append(item.id);
    }
    std::ranges::sort(ids, precedes);
    return QString::fromLatin1(sha256InHex(ids.join(u'\n')));
}
