// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/PrivateFolder.h"
#include "tests/support/Umask.h"

#include <QTemporaryDir>
#include <QTest>

#include <fstream>
#include <system_error>
#include <thread>
#include <vector>

namespace fs = std::filesystem;

class PrivateFolderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_root = fs::path(m_folder->path().toStdString());
    }

    void makesWhatIsMissingForThisUserAlone_data()
    {
        QTest::addColumn<int>("mask");
        QTest::newRow("open umask") << 0;
        QTest::newRow("usual umask") << 022;
        QTest::newRow("strict umask") << 0777;
    }

    void makesWhatIsMissingForThisUserAlone()
    {
        QFETCH(const int, mask);
        fs::permissions(m_root, fs::perms(0755));
        const Umask umask(static_cast<mode_t>(mask));

        makePrivateFolder(m_root / "a" / "b" / "c");

        QCOMPARE(modeOf(m_root), fs::perms(0755));
        QCOMPARE(modeOf(m_root / "a"), fs::perms(0700));
        QCOMPARE(modeOf(m_root / "a" / "b"), fs::perms(0700));
        QCOMPARE(modeOf(m_root / "a" / "b" / "c"), fs::perms(0700));
    }

    void pathsInOtherForms()
    {
        makePrivateFolder(m_root / "slash/");
        makePrivateFolder(m_root / "a//b/./c");
        makePrivateFolder("/");
        const auto before = fs::current_path();
        fs::current_path(m_root);
        makePrivateFolder("relative");
        makePrivateFolder("relative/below");
        fs::current_path(before);

        QVERIFY(fs::is_directory(m_root / "slash"));
        QVERIFY(fs::is_directory(m_root / "a/b/c"));
        QVERIFY(fs::is_directory(m_root / "relative/below"));
    }

    void anExistingFolderStaysAsItIs()
    {
        fs::create_directory(m_root / "a");
        fs::permissions(m_root / "a", fs::perms(0775));
        fs::create_directory_symlink("a", m_root / "link");

        makePrivateFolder(m_root / "a");
        makePrivateFolder(m_root / "link");
        makePrivateFolder(m_root / "link" / "below");

        QCOMPARE(modeOf(m_root / "a"), fs::perms(0775));
        QCOMPARE(modeOf(m_root / "a" / "below"), fs::perms(0700));
    }

    void throwsTheReason_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<int>("error");
        QTest::newRow("a file") << QByteArray("file") << EEXIST;
        QTest::newRow("below a file") << QByteArray("file/a") << EEXIST;
        QTest::newRow("a link to nowhere") << QByteArray("link") << EEXIST;
        QTest::newRow("a name too long") << QByteArray(300, 'x') << ENAMETOOLONG;
    }

    void throwsTheReason()
    {
        QFETCH(const QByteArray, path);
        QFETCH(const int, error);
        std::ofstream(m_root / "file").flush();
        fs::create_symlink("nowhere", m_root / "link");

        int thrown = 0;
        try {
            makePrivateFolder(m_root / path.toStdString());
        } catch (const std::system_error &failure) {
            thrown = failure.code().value();
        }

        QCOMPARE(thrown, error);
    }

    void manyAtOnceAllSucceed()
    {
        for (int round = 0; round < 20; ++round) {
            const auto path = m_root / std::to_string(round) / "a" / "b";
            std::atomic_int failures = 0;
            std::vector<std::jthread> threads;
            for (int thread = 0; thread < 4; ++thread) {
                threads.emplace_back([&] {
                    try {
                        makePrivateFolder(path);
                    } catch (const std::system_error &) {
                        ++failures;
                    }
                });
            }
            threads.clear();
            QCOMPARE(failures, 0);
        }
    }

private:
    static fs::perms modeOf(const fs::path &path) { return fs::status(path).permissions(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    fs::path m_root;
};

QTEST_GUILESS_MAIN(PrivateFolderTest)
#include "PrivateFolderTest.moc"
