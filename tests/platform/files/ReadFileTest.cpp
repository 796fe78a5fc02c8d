// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/ReadFile.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <fstream>

namespace fs = std::filesystem;

class ReadFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_file = fs::path(m_folder->path().toStdString()) / "file";
    }

    void readsUpToTheLimit()
    {
        std::ofstream(m_file, std::ios::binary).write("a\0b", 3);

        QCOMPARE(readFile(m_file, 4), std::optional(QByteArray("a\0b", 3)));
        QCOMPARE(readFile(m_file, 3), std::optional(QByteArray("a\0b", 3)));
        QCOMPARE(readFile(m_file, 2), std::nullopt);
    }

    void anEmptyFileIsNotAbsent()
    {
        std::ofstream(m_file).flush();

        QCOMPARE(readFile(m_file, 0), std::optional(QByteArray()));
    }

    void aLinkIsFollowed()
    {
        std::ofstream(m_file) << "a";
        fs::create_symlink(m_file, m_file.native() + "-link");

        QCOMPARE(readFile(m_file.native() + "-link", 10), std::optional(QByteArray("a")));
    }

    void absentForWhatIsNoRegularFile()
    {
        QCOMPARE(readFile(m_file, 10), std::nullopt);
        QCOMPARE(readFile(m_file.parent_path(), 10), std::nullopt);
        QCOMPARE(readFile("/dev/zero", 10), std::nullopt);
        QCOMPARE(readFile("/dev/null", 10), std::nullopt);
    }

    void neverWaitsForAFifo()
    {
        QCOMPARE(::mkfifo(m_file.c_str(), 0600), 0);

        QCOMPARE(readFile(m_file, 10), std::nullopt);
    }

    void absentForASocket()
    {
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, m_file.c_str(), sizeof(address.sun_path) - 1);
        const int bound =
            ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address));
        ::close(socket);

        QCOMPARE(bound, 0);
        QCOMPARE(readFile(m_file, 10), std::nullopt);
    }

    void aHugeFileCostsNothing()
    {
        std::ofstream(m_file).flush();
        fs::resize_file(m_file, 1'000'000'000'000);

        QCOMPARE(readFile(m_file, 1'000'000), std::nullopt);
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    fs::path m_file;
};

QTEST_GUILESS_MAIN(ReadFileTest)
#include "ReadFileTest.moc"
