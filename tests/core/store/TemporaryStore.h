// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/store/SessionStore.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <functional>

/// When the tests take place.
inline const QDateTime noon(QDate(2026, 11, 15), QTime(12, 0), Qt::UTC);

[[nodiscard]] inline SessionSnapshot sample(const QString &volumeUUID = QStringLiteral("ABC"),
                                            qint64 index = 7)
{
    return {
        .volumeUUID = volumeUUID,
        .inventoryHash = QString(64, u'a'),
        .rejectedIDs = {QStringLiteral("100_FUJI/DSCF0001"), QStringLiteral("100_FUJI/DSCF0002")},
        .currentIndex = index,
        .savedAt = noon};
}

/// A store in a temporary folder, and what is to be found there.
class TemporaryStore {
public:
    using Make = std::function<void(const std::filesystem::path &)>;

    [[nodiscard]] const SessionStore &store() const { return m_store; }

    [[nodiscard]] const std::filesystem::path &directory() const { return m_store.directory(); }

    /// Makes the file @p name in the folder.
    std::filesystem::path add(const std::filesystem::path &name, const QByteArray &bytes) const
    {
        write(directory() / name, bytes);
        return directory() / name;
    }

    [[nodiscard]] bool has(const std::filesystem::path &name) const
    {
        return std::filesystem::exists(std::filesystem::symlink_status(directory() / name));
    }

    /// The name of the card's file.
    [[nodiscard]] QString fileName(const QString &volumeUUID) const
    {
        return QString::fromStdString(m_store.fileURL(volumeUUID).filename().native());
    }

    /// What is in the folder, sorted.
    [[nodiscard]] QStringList names() const
    {
        QStringList names;
        for (const auto &entry : std::filesystem::directory_iterator(directory())) {
            names.append(QString::fromStdString(entry.path().filename().native()));
        }
        names.sort();
        return names;
    }

    /// Rows of what may stand in the place of a snapshot, each a function that makes it.
    static void addDamageRows()
    {
        QTest::addColumn<Make>("make");
        const auto usual = sample().toJson();
        const auto row = [](const char *name, Make make) { QTest::newRow(name) << make; };
        row("nothing in it", [](const auto &file) { write(file, ""); });
        row("half", [=](const auto &file) { write(file, usual.left(usual.size() / 2)); });
        row("zeros", [](const auto &file) { write(file, QByteArray(4096, '\0')); });
        row("an index missing", [=](const auto &file) {
            write(file, QByteArray(usual).replace("\"currentIndex\":7,", ""));
        });
        row("another program's", [](const auto &file) { write(file, "[{\"name\":\"x\"}]"); });
        row("1 GB", [](const auto &file) {
            write(file, "{");
            std::filesystem::resize_file(file, 1'000'000'000);
        });
        row("nested deeply", [](const auto &file) { write(file, QByteArray(1'000'000, '[')); });
        row("a folder", [](const auto &file) { std::filesystem::create_directory(file); });
        row("a FIFO", [](const auto &file) { QCOMPARE(::mkfifo(file.c_str(), 0600), 0); });
        row("a link to nowhere",
            [](const auto &file) { std::filesystem::create_symlink("nowhere", file); });
        row("a link to itself",
            [](const auto &file) { std::filesystem::create_symlink(file, file); });
        row("a link to a device",
            [](const auto &file) { std::filesystem::create_symlink("/dev/zero", file); });
        row("a link to a terminal",
            [](const auto &file) { std::filesystem::create_symlink("/dev/tty", file); });
    }

private:
    static void write(const std::filesystem::path &file, const QByteArray &bytes)
    {
        std::ofstream(file, std::ios::binary).write(bytes.constData(), bytes.size());
    }

    QTemporaryDir m_folder;
    SessionStore m_store{std::filesystem::path(m_folder.path().toStdString()) / "sessions"};
};
