// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/PortalAccess.h"
#include "tests/app/Workbench.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

/// A card that cannot be read without the user's grant: the question and its answers.
class AppStateAccessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<Workbench>();
        m_bench->dialog.user = FakeDialog::User::Waits;
    }

    void theDialogAsksForTheCard()
    {
        needAccess();
        m_bench->services.parentWindow = [] { return u"x11:1a"_s; };
        m_bench->begin();
        app().start();
        QTRY_COMPARE(app().phase(), Phase::needsAccess());
        QSignalSpy told(&app(), &AppState::requestingAccessChanged);

        app().grantAccess();

        QVERIFY(dialog().isOpen);
        QCOMPARE(dialog().question.acceptLabel, u"Grant Access"_s);
        QCOMPARE(dialog().question.directory, m_bench->cardRoot);
        QCOMPARE(dialog().question.parentWindow, u"x11:1a"_s);
        QVERIFY(app().requestingAccess());
        QCOMPARE(told.count(), 1);
        dialog().answer(std::nullopt);
        QVERIFY(!app().requestingAccess());
        QCOMPARE(app().phase(), Phase::needsAccess());
    }

    void whoeverAsksAgainIsNotAskedTwice()
    {
        needAccess();

        for (int count = 0; count < 50; ++count) {
            (void)m_bench->press(KeyPress::Return);
        }

        QCOMPARE(dialog().opened, 1);
        dialog().answer(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
    }

    void whileAGrantIsLookedAtNobodyIsAskedAgain()
    {
        needAccess();
        app().grantAccess();
        m_bench->access->hold(m_bench->cardRoot);
        dialog().answer(m_bench->cardRoot);

        app().grantAccess();

        QCOMPARE(dialog().opened, 1);
        m_bench->access->letAllGo();
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QVERIFY(m_bench->access->bookmarks.contains(u"UUID-CARD"_s));
    }

    void aRefusalCanBeReconsidered()
    {
        needAccess();
        app().grantAccess();
        dialog().answer(std::nullopt);

        app().grantAccess();
        QCOMPARE(dialog().opened, 2);
        dialog().answer(m_bench->cardRoot);

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QCOMPARE(m_bench->access->bookmarks.at(u"UUID-CARD"_s), m_bench->cardRoot);
    }

    void theWrongFolderOfACardWithoutDcimIsLetGo()
    {
        m_bench->cardRoot = m_bench->makeCard("CARD", {});
        needAccess();
        app().grantAccess();

        dialog().answer(m_bench->makeCard("WRONG", {}));

        QTRY_COMPARE(app().phase(), Phase::noMedia());
        QVERIFY(m_bench->access->bookmarks.empty());
        QTRY_COMPARE(m_bench->access->stopCount(), size_t(1));
    }

    void aCardThatIsRemovedClosesItsDialog()
    {
        needAccess();
        app().grantAccess();

        m_bench->volumes.unmount(m_bench->cardRoot);

        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        QVERIFY(!dialog().isOpen);
        QVERIFY(!app().requestingAccess());
        dialog().answer(m_bench->cardRoot); // too late
        QTest::qWait(20);
        QCOMPARE(app().phase(), Phase::waitingForCard());
        QVERIFY(m_bench->access->bookmarks.empty());
    }

    void anotherCardClosesTheDialog()
    {
        needAccess();
        m_bench->mountCard("TWO", Workbench::shots(1));
        QTRY_VERIFY(app().canSwitchCards());
        app().grantAccess();

        app().cycleCard();

        QTRY_COMPARE(app().cardName(), u"TWO"_s);
        QVERIFY(!dialog().isOpen);
        QVERIFY(!app().requestingAccess());
    }

    void whoAsksForAccessWishesForNoOtherCard()
    {
        needAccess();
        const auto two = m_bench->makeCard("TWO", Workbench::shots(1));
        m_bench->access->hold(two);
        m_bench->mountCard("TWO", {});
        QTRY_VERIFY(app().canSwitchCards());
        app().cycleCard();

        app().grantAccess();
        m_bench->access->letAllGo();

        QTest::qWait(50);
        QCOMPARE(app().cardName(), u"CARD"_s);
        QVERIFY(dialog().isOpen);
    }

    void theEndClosesTheDialog()
    {
        needAccess();
        app().grantAccess();

        m_bench->begin();

        QVERIFY(!dialog().isOpen);
    }

    void withoutADialogNothingIsGranted()
    {
        m_bench->services.folderDialog = nullptr;
        m_bench->begin();
        needAccess();

        app().grantAccess();

        QVERIFY(!app().requestingAccess());
        QCOMPARE(app().phase(), Phase::needsAccess());
    }

    void theGrantIsRememberedAtTheNextMount()
    {
        needAccess();
        app().grantAccess();
        dialog().answer(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());

        m_bench->mountCard("CARD", {});

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QCOMPARE(dialog().opened, 1);
    }

    /// In a sandbox the volume itself cannot be seen: all that is done goes through the grant.
    void theCardIsReadAndCleanedThroughTheGrant()
    {
        m_bench->access->grantsLead = true;
        const auto seen = m_bench->makeCard("SEEN", Workbench::shots(2));
        m_bench->cardRoot = m_bench->makeCard("CARD", {});
        needAccess();
        app().grantAccess();
        dialog().answer(seen);
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QCOMPARE(app().card()->volumeURL, m_bench->cardRoot);

        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->items().size(), 2);
        (void)m_bench->press(u"x"_s);
        app().finishCulling();
        app().performDelete();

        QTRY_COMPARE(app().phase(), Phase::summary(1, 0, 1));
        m_bench->cardRoot = seen;
        QVERIFY(!m_bench->has("DSCF0001.JPG"));
        QVERIFY(m_bench->has("DSCF0002.JPG"));
    }

private:
    AppState &app() const { return *m_bench->appState; }

    FakeDialog &dialog() const { return m_bench->dialog; }

    void needAccess()
    {
        if (m_bench->cardRoot.empty()) {
            m_bench->cardRoot = m_bench->makeCard("CARD", Workbench::shots(1));
        }
        m_bench->access->closed.insert(m_bench->cardRoot);
        app().start();
        m_bench->mountCard("CARD", {});
        QTRY_COMPARE(app().phase(), Phase::needsAccess());
    }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(AppStateAccessTest)
#include "AppStateAccessTest.moc"
