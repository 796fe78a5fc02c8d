// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/PortalAccess.h"
#include "platform/files/PosixFileManager.h"
#include "platform/settings/UserDefaults.h"
#include "tests/app/SlowFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/xattr.h>

using namespace Qt::StringLiterals;
using Path = std::filesystem::path;

class PortalAccessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_home = m_folder->path().toStdString();
        m_defaults = std::make_unique<UserDefaults>(m_home / "defaults.ini");
        m_documents = m_home / "run/doc";
        m_seen = documentAt(m_documents);
        begin(m_documents);
    }

    void aDocumentResolvesAlsoNextTime()
    {
        m_access->saveBookmark(m_seen, u"UUID"_s);
        begin(m_documents);

        QCOMPARE(m_access->resolveBookmark(u"UUID"_s), m_seen);
        QCOMPARE(m_access->resolveBookmark(u"UUID"_s), m_seen);
    }

    void aDocumentThatListsNoMoreIsForgotten()
    {
        m_access->saveBookmark(m_seen, u"UUID"_s);
        std::filesystem::remove_all(m_documents);

        QVERIFY(!m_access->resolveBookmark(u"UUID"_s));
        m_seen = documentAt(m_documents);

        QVERIFY(!m_access->resolveBookmark(u"UUID"_s)); // asked for again
    }

    void aDocumentThatIsSeenElsewhereByNowIsRenewed()
    {
        m_access->saveBookmark(m_seen, u"UUID"_s);
        std::filesystem::remove_all(m_documents);
        const auto documents = m_home / "run2/doc";
        const auto seen = documentAt(documents);
        begin(documents);

        QCOMPARE(m_access->resolveBookmark(u"UUID"_s), seen);
        begin(m_documents); // what is stored is the new place

        QCOMPARE(m_access->resolveBookmark(u"UUID"_s), seen);
    }

    void whatTheSandboxShowsIsAccessedDirectly()
    {
        const auto card = m_home / "media/CARD";
        std::filesystem::create_directories(card);
        m_access->saveBookmark(card, u"UUID"_s);

        QCOMPARE(m_access->resolveBookmark(u"UUID"_s), card);
        QCOMPARE(m_access->root(card, card), card);
    }

    void theFilesOfADocumentAreSeenThroughIt()
    {
        QCOMPARE(m_access->root("/media/user/CARD", m_seen), m_seen);
    }

    void anotherFolderIsNotTakenForTheCard()
    {
        const Path card = "/media/user/CARD";

        QCOMPARE(m_access->root(card, m_documents / "1a2b3c4d/OTHER"), card);
        QCOMPARE(m_access->root(card, m_documents / "1a2b3c4d/OTHER/CARD"), card);
        QCOMPARE(m_access->root("/media/user/CARD1", m_seen), Path("/media/user/CARD1"));
    }

    /// Newer portals tell where a folder really is.
    void aFolderOfTheSameNameElsewhereIsNotTakenForTheCard()
    {
        const Path card = "/media/user/CARD";
        const auto originIs = [this](std::string_view origin) {
            return ::setxattr(m_seen.c_str(), "user.document-portal.host-path", origin.data(),
                              origin.size(), 0) == 0;
        };
        if (!originIs("/media/user/CARD")) {
            QSKIP("the temporary folder knows no extended attributes");
        }

        QCOMPARE(m_access->root(card, m_seen), m_seen);
        QVERIFY(originIs("/home/user/CARD"));
        QCOMPARE(m_access->root(card, m_seen), card);
        QVERIFY(originIs({"/media/user/CARD", 17})); // with its terminator
        QCOMPARE(m_access->root(card, m_seen), m_seen);
        QVERIFY(originIs("")); // it is nowhere
        QCOMPARE(m_access->root(card, m_seen), card);
    }

    void aGrantGivenWhileTheOldOneIsJudgedStays()
    {
        const auto newer = m_documents / "5e6f/CARD";
        const auto files = std::make_shared<SlowFiles>();
        files->meanwhile = [&] { m_access->saveBookmark(newer, u"UUID"_s); };
        m_access->saveBookmark(m_seen, u"UUID"_s);
        PortalAccess slow(files, *m_defaults, m_documents);

        QVERIFY(!slow.resolveBookmark(u"UUID"_s));

        std::filesystem::create_directories(newer);
        QCOMPARE(m_access->resolveBookmark(u"UUID"_s), newer);
    }

    void anUnknownVolumeHasNoGrant() { QVERIFY(!m_access->resolveBookmark(u"OTHER"_s)); }

    void readableIsWhatLists()
    {
        QVERIFY(m_access->isReadable(m_seen));
        QVERIFY(!m_access->isReadable(m_seen / "missing"));
    }

private:
    void begin(const Path &documents)
    {
        m_access = std::make_unique<PortalAccess>(std::make_shared<PosixFileManager>(), *m_defaults,
                                                  documents);
    }

    static Path documentAt(const Path &documents)
    {
        const auto seen = documents / "1a2b3c4d/CARD";
        std::filesystem::create_directories(seen);
        return seen;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    Path m_home;
    Path m_documents;
    Path m_seen;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<PortalAccess> m_access;
};

QTEST_GUILESS_MAIN(PortalAccessTest)
#include "PortalAccessTest.moc"
