// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/DirectAccess.h"

#include "app/DirectBookmark.h"
#include "platform/files/PosixFileManager.h"
#include "platform/settings/UserDefaults.h"
#include "tests/app/SlowFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

class DirectAccessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        const fs::path root = m_folder->path().toStdString();
        m_card = root / "CARD";
        fs::create_directory(m_card);
        m_defaults = std::make_unique<UserDefaults>(root / "Kestle.conf");
        m_access =
            std::make_unique<DirectAccess>(std::make_shared<PosixFileManager>(), *m_defaults);
    }

    void cleanup()
    {
        m_access.reset();
        fs::remove_all(m_card); // the temporary folder cannot remove names that are not UTF-8
    }

    void aFolderThatListsIsReadable()
    {
        QVERIFY(m_access->isReadable(m_card));
        QVERIFY(!m_access->isReadable(m_card / "missing"));
    }

    void withoutABookmarkNothingResolves() { QVERIFY(!m_access->resolveBookmark(u"ABCD-0001"_s)); }

    void aSavedBookmarkResolvesAlsoNextTime()
    {
        m_access->saveBookmark(m_card, u"ABCD-0001"_s);
        DirectAccess next(std::make_shared<PosixFileManager>(), *m_defaults);

        QCOMPARE(m_access->resolveBookmark(u"ABCD-0001"_s), m_card);
        QCOMPARE(next.resolveBookmark(u"ABCD-0001"_s), m_card);
        QVERIFY(m_defaults->bytes(u"cardBookmark.ABCD-0001"_s));
        QVERIFY(!m_access->resolveBookmark(u"ABCD-0002"_s));
    }

    void aLaterBookmarkReplacesTheEarlierOne()
    {
        fs::create_directory(m_card / "deeper");
        m_access->saveBookmark(m_card, u"1"_s);

        m_access->saveBookmark(m_card / "deeper", u"1"_s);

        QCOMPARE(m_access->resolveBookmark(u"1"_s), m_card / "deeper");
    }

    void aBookmarkThatListsNoMoreIsForgotten()
    {
        m_access->saveBookmark(m_card, u"1"_s);
        fs::remove(m_card);

        QVERIFY(!m_access->resolveBookmark(u"1"_s));

        QVERIFY(!m_defaults->bytes(u"cardBookmark.1"_s));
        fs::create_directory(m_card);
        QVERIFY(!m_access->resolveBookmark(u"1"_s));
    }

    void aBookmarkWhoseUUIDNamesAnotherVolumeResolvesOnlyIfItsFolderLists()
    {
        m_access->saveBookmark(m_card, u"1"_s);
        fs::remove(m_card);
        fs::create_directory(m_folder->filePath(u"OTHER"_s).toStdString());

        QVERIFY(!m_access->resolveBookmark(u"1"_s));

        fs::create_directory(m_card);
        m_access->saveBookmark(m_card, u"1"_s);
        QCOMPARE(m_access->resolveBookmark(u"1"_s), m_card);
    }

    void aGrantGivenWhileTheOldOneIsJudgedStays()
    {
        const auto newer = m_card / "newer";
        fs::create_directory(newer);
        const auto files = std::make_shared<SlowFiles>();
        files->meanwhile = [&] { m_access->saveBookmark(newer, u"1"_s); };
        m_access->saveBookmark(m_card, u"1"_s);

        QVERIFY(!DirectAccess(files, *m_defaults).resolveBookmark(u"1"_s));

        QCOMPARE(m_access->resolveBookmark(u"1"_s), newer);
    }

    void anUnusableBookmarkIsForgotten_data()
    {
        QTest::addColumn<QByteArray>("data");

        QTest::newRow("empty") << ""_ba;
        QTest::newRow("no JSON") << "\x01\x02"_ba;
        QTest::newRow("JSON of another shape") << "[1,2]"_ba;
        QTest::newRow("another form of access")
            << R"({"grant":"portal","path":"/","volumeUUID":"1"})"_ba;
        QTest::newRow("no form") << R"({"path":"/","volumeUUID":"1"})"_ba;
        QTest::newRow("relative place") << R"({"grant":"direct","path":".","volumeUUID":"1"})"_ba;
        QTest::newRow("NUL in the place")
            << R"({"grant":"direct","path":"/%00","volumeUUID":"1"})"_ba;
        QTest::newRow("no place") << R"({"grant":"direct","volumeUUID":"1"})"_ba;
        QTest::newRow("another card's") << R"({"grant":"direct","path":"/","volumeUUID":"2"})"_ba;
        QTest::newRow("no card's") << R"({"grant":"direct","path":"/"})"_ba;
    }

    void anUnusableBookmarkIsForgotten()
    {
        QFETCH(QByteArray, data);
        m_defaults->setBytes(u"cardBookmark.1"_s, data);

        QVERIFY(!m_access->resolveBookmark(u"1"_s));
        QVERIFY(!m_defaults->bytes(u"cardBookmark.1"_s));
    }

    void anyPlaceAndAnyUUIDSurvive_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("uuid");

        QTest::newRow("spaces and percent") << "MY CARD %2F"_ba << u"a/b %"_s;
        QTest::newRow("not UTF-8") << "caf\xE9"_ba << u"caf\U0010FEE9"_s;
        QTest::newRow("quotes and newline") << "\"\n\\"_ba << u"\"\n\\"_s;
        QTest::newRow("empty UUID") << "x"_ba << u""_s;
        QTest::newRow("not normalised") << "e\xCC\x81"_ba << u"e\u0301"_s;
    }

    void anyPlaceAndAnyUUIDSurvive()
    {
        QFETCH(QByteArray, name);
        QFETCH(QString, uuid);
        const auto place = m_card / name.toStdString();
        fs::create_directory(place);

        m_access->saveBookmark(place, uuid);

        QCOMPARE(m_access->resolveBookmark(uuid), place);
    }

    void aRelativePlaceIsNotRemembered()
    {
        m_access->saveBookmark("CARD", u"1"_s);

        QVERIFY(!m_defaults->bytes(u"cardBookmark.1"_s));
    }

    void theFilesAreOnTheCardWhateverWasGranted()
    {
        QCOMPARE(m_access->root(m_card, m_card / "elsewhere"), m_card);
    }

    void endingAnAccessLeavesTheFolderReadable()
    {
        m_access->stopAccess(m_card);

        QVERIFY(m_access->isReadable(m_card));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    fs::path m_card;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<DirectAccess> m_access;
};

QTEST_GUILESS_MAIN(DirectAccessTest)
#include "DirectAccessTest.moc"
