// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/ReplaceFile.h"
#include "tests/support/Umask.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>

#include <csignal>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

class ReplaceFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_root = fs::path(m_folder->path().toStdString());
    }

    void makesTheFile_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char *name : {"a.json", "a", ".a", "a.b.json", "a.", "a b", "XXXXXX", "\xFF"}) {
            QTest::newRow(name) << QByteArray(name);
        }
    }

    void makesTheFile()
    {
        QFETCH(const QByteArray, name);

        replaceFile(m_root / name.toStdString(), "new");

        QCOMPARE(content(name.toStdString()), "new");
        QCOMPARE(fileCount(), 1);
        fs::remove(m_root / name.toStdString()); // QTemporaryDir cannot name them all
    }

    void replacesShorterAndLongerContent()
    {
        for (const auto &bytes : {QByteArray(3'000'000, 'x'), QByteArray("short"),
                                  QByteArray("a\0b", 3), QByteArray()}) {
            replaceFile(m_root / "a", bytes);
            QCOMPARE(content("a"), bytes);
        }
        QCOMPARE(fileCount(), 1);
    }

    void theFileIsForThisUserAlone_data()
    {
        QTest::addColumn<int>("mask");
        QTest::newRow("open umask") << 0;
        QTest::newRow("usual umask") << 022;
        QTest::newRow("strict umask") << 0777;
    }

    void theFileIsForThisUserAlone()
    {
        QFETCH(const int, mask);
        std::ofstream(m_root / "a") << "old";
        fs::permissions(m_root / "a", fs::perms(0644));
        const Umask umask(static_cast<mode_t>(mask));

        replaceFile(m_root / "a", "new");

        QCOMPARE(fs::status(m_root / "a").permissions(), fs::perms(0600));
    }

    void whoHasTheOldFileOpenKeepsIt()
    {
        replaceFile(m_root / "a", "old");
        std::ifstream old(m_root / "a");

        replaceFile(m_root / "a", "new");

        std::string text;
        old >> text;
        QCOMPARE(text, "old");
    }

    void aLinkIsReplacedNotFollowed()
    {
        std::ofstream(m_root / "target") << "mine";
        fs::create_symlink("target", m_root / "a");

        replaceFile(m_root / "a", "new");

        QCOMPARE(content("target"), "mine");
        QVERIFY(fs::is_regular_file(fs::symlink_status(m_root / "a")));
    }

    void aRelativeNameIsInTheWorkingDirectory()
    {
        const auto before = fs::current_path();
        fs::current_path(m_root);

        replaceFile("a.json", "new");

        fs::current_path(before);
        QCOMPARE(content("a.json"), "new");
    }

    void aFullDiskThrowsAndKeepsTheOldContent()
    {
        replaceFile(m_root / "a", "old");
        rlimit before = {};
        ::getrlimit(RLIMIT_FSIZE, &before);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {.rlim_cur = 1000, .rlim_max = before.rlim_max};

        // The first write is short, the second one fails.
        ::setrlimit(RLIMIT_FSIZE, &limit);
        int error = 0;
        try {
            replaceFile(m_root / "a", QByteArray(5000, 'x'));
        } catch (const std::system_error &failure) {
            error = failure.code().value();
        }
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);

        QCOMPARE(error, EFBIG);
        QCOMPARE(content("a"), "old");
        QCOMPARE(fileCount(), 1);
    }

    void aFolderInItsPlaceThrowsAndStays()
    {
        fs::create_directory(m_root / "a");

        QVERIFY_THROWS_EXCEPTION(std::system_error, replaceFile(m_root / "a", "new"));
        QVERIFY(fs::is_directory(m_root / "a"));
        QCOMPARE(fileCount(), 1);
    }

    void aMissingFolderThrows()
    {
        QVERIFY_THROWS_EXCEPTION(std::system_error, replaceFile(m_root / "missing/a", "new"));
        QCOMPARE(fileCount(), 0);
    }

private:
    [[nodiscard]] QByteArray content(const fs::path &name) const
    {
        std::ifstream stream(m_root / name, std::ios::binary);
        return QByteArray::fromStdString(std::string(std::istreambuf_iterator(stream), {}));
    }

    [[nodiscard]] long fileCount() const
    {
        return std::distance(fs::directory_iterator(m_root), fs::directory_iterator());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    fs::path m_root;
};

QTEST_GUILESS_MAIN(ReplaceFileTest)
#include "ReplaceFileTest.moc"
