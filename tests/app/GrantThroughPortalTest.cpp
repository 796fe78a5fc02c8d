// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/DirectAccess.h"
#include "platform/access/PortalFolderDialog.h"
#include "platform/files/PosixFileManager.h"
#include "tests/app/Workbench.h"
#include "tests/platform/access/FakePortal.h"
#include "tests/support/PrivateBus.h"

using namespace Qt::StringLiterals;

/// The real access and the real dialog over a portal on a bus: what a user of a card goes through
/// whose folder cannot be listed.
class GrantThroughPortalTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        QVERIFY(!m_bus->address().isEmpty());
        m_portal = std::make_unique<FakePortal>(connectAs(u"portal"_s));
        QVERIFY(m_portal->start());
        m_dialog = std::make_unique<PortalFolderDialog>(connectAs(u"client"_s), nullptr);
        m_bench = std::make_unique<Workbench>();
        m_files = std::make_shared<LockedFiles>();
        m_bench->services.fileManager = m_files;
        m_bench->services.access = std::make_shared<DirectAccess>(m_files, m_bench->defaults);
        m_bench->services.folderDialog = m_dialog.get();
        m_bench->begin();
        m_card = m_bench->makeCard("CARD", Workbench::shots(2));
        m_elsewhere = m_bench->makeCard("ELSEWHERE", {});
        m_files->lock(m_card);
        app().start();
        m_bench->mountCard("CARD", {});
        QTRY_COMPARE(app().phase(), Phase::needsAccess());
    }

    void cleanup()
    {
        m_bench.reset();
        m_dialog.reset();
        m_portal.reset();
        QDBusConnection::disconnectFromBus(u"portal"_s);
        QDBusConnection::disconnectFromBus(u"client"_s);
        m_bus.reset();
    }

    void anAcceptedCardIsOpenedAndRemembered()
    {
        ask();
        m_files->lock({}); // the user has seen to it meanwhile
        m_portal->choose({QUrl::fromLocalFile(QString::fromStdString(m_card)).toString()});
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QVERIFY(m_bench->defaults.bytes(u"cardBookmark.UUID-CARD"_s));

        remount();

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QCOMPARE(m_portal->opened.size(), 1);
    }

    void aBookmarkThatLeadsNowhereIsRemovedAndTheUserAskedAgain()
    {
        ask();
        m_portal->choose({QUrl::fromLocalFile(QString::fromStdString(m_elsewhere)).toString()});
        QTRY_COMPARE(app().phase(), Phase::cardReady(false)); // the card has DCIM, whatever it is
        remount();
        QTRY_COMPARE(app().phase(), Phase::cardReady(false)); // silently, by the bookmark
        std::filesystem::remove_all(m_elsewhere);

        remount();

        QTRY_COMPARE(app().phase(), Phase::needsAccess());
        QVERIFY(!m_bench->defaults.bytes(u"cardBookmark.UUID-CARD"_s));
        app().grantAccess();
        QTRY_COMPARE(m_portal->opened.size(), 2);
    }

    void aCancelledQuestionChangesNothing()
    {
        ask();

        m_portal->respond(1);

        QTRY_VERIFY(!app().requestingAccess());
        QCOMPARE(app().phase(), Phase::needsAccess());
        QVERIFY(!m_bench->defaults.bytes(u"cardBookmark.UUID-CARD"_s));
    }

    void aCardThatIsRemovedClosesTheDialog()
    {
        ask();

        m_bench->volumes.unmount(m_card);

        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        QTRY_COMPARE(m_portal->closed.size(), 1);
        m_portal->choose({u"file:///"_s}); // too late
        QTest::qWait(50);
        QCOMPARE(app().phase(), Phase::waitingForCard());
    }

private:
    /// One folder cannot be listed, whoever runs the test.
    class LockedFiles final : public ForwardingFiles {
    public:
        bool isListable(const Path &folder) const override
        {
            const std::scoped_lock lock(m_mutex);
            return folder != m_locked && ForwardingFiles::isListable(folder);
        }

        void lock(const Path &folder)
        {
            const std::scoped_lock lock(m_mutex);
            m_locked = folder;
        }

    private:
        mutable std::mutex m_mutex;
        Path m_locked;
    };

    AppState &app() const { return *m_bench->appState; }

    QDBusConnection connectAs(const QString &name) const
    {
        return QDBusConnection::connectToBus(m_bus->address(), name);
    }

    void ask()
    {
        app().grantAccess();
        QTRY_COMPARE(m_portal->opened.size(), 1);
        QVERIFY(app().requestingAccess());
    }

    void remount()
    {
        m_bench->volumes.unmount(m_card);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        m_bench->mountCard("CARD", {});
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FakePortal> m_portal;
    std::unique_ptr<PortalFolderDialog> m_dialog;
    std::unique_ptr<Workbench> m_bench;
    std::shared_ptr<LockedFiles> m_files;
    std::filesystem::path m_card;
    std::filesystem::path m_elsewhere;
};

QTEST_GUILESS_MAIN(GrantThroughPortalTest)
#include "GrantThroughPortalTest.moc"
