// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/MenuCommands.h"
#include "tests/app/Workbench.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

class MenuCommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<Workbench>();
        m_menu = std::make_unique<MenuCommands>(app(), *m_bench->keys);
    }

    void cleanup() { m_menu.reset(); }

    void withoutACardNothingIsOffered()
    {
        QVERIFY(!m_menu->canUndo());
        QVERIFY(!m_menu->canFinish());
        QVERIFY(!m_menu->canGoBack());
    }

    void rejectDoesWhatTheKeyDoesAlsoInTheReview()
    {
        m_bench->cull(2);

        m_menu->sendKey(u"x"_s);
        QCOMPARE(app().session()->rejectedCount(), 1);
        QCOMPARE(app().session()->currentIndex(), 1);
        app().finishCulling();
        m_menu->sendKey(u"x"_s);

        QVERIFY(!app().session()->hasRejects());
    }

    void undoIsOfferedInCullingAndReviewButNotInTheConfirmation()
    {
        m_bench->cull(2);
        m_menu->sendKey(u"x"_s);
        QVERIFY(m_menu->canUndo());
        app().finishCulling();
        QVERIFY(m_menu->canUndo());
        app().setConfirmingDelete(true);
        QVERIFY(!m_menu->canUndo());
        m_menu->undoDecision();
        QVERIFY(app().session()->hasRejects());
        app().setConfirmingDelete(false);

        m_menu->undoDecision();

        QVERIFY(!app().session()->hasRejects());
    }

    void finishIsOfferedWhileCulling()
    {
        m_bench->cull(2);
        QVERIFY(m_menu->canFinish());

        m_menu->finishCulling();

        QCOMPARE(app().phase(), Phase::review());
        QVERIFY(!m_menu->canFinish());
    }

    void backGoesToTheCardScreenResumable()
    {
        m_bench->cull(2);
        m_menu->sendKey(u"x"_s);
        app().finishCulling();
        app().setConfirmingDelete(true);

        m_menu->backToCardScreen();

        QCOMPARE(app().phase(), Phase::cardReady(true));
        QVERIFY(!app().confirmingDelete());
    }

    void duringADeletionAndInItsSummaryNothingIsOffered()
    {
        m_bench->cull(2);
        m_menu->sendKey(u"x"_s);
        app().finishCulling();
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        QVERIFY(!m_menu->canUndo());
        QVERIFY(!m_menu->canGoBack());
        m_menu->backToCardScreen();
        QCOMPARE(app().phase(), Phase::deleting(0, 1));
        m_bench->files->removalIsHeld = false;
        QTRY_COMPARE(app().phase(), Phase::summary(1, 0, 1));

        QVERIFY(!m_menu->canGoBack());
        QVERIFY(!m_menu->canUndo());
    }

    void changesOfWhatIsOfferedAreTold()
    {
        m_bench->reach(Phase::Kind::CardReady);
        QSignalSpy spy(m_menu.get(), &MenuCommands::availabilityChanged);
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(spy.count(), 1);
        app().afterMove();
        QCOMPARE(spy.count(), 1);
        m_bench->rejectAll();

        app().finishCulling();
        QCOMPARE(spy.count(), 2); // nothing to finish
        app().setConfirmingDelete(true);
        QCOMPARE(spy.count(), 3); // nothing to undo
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        QCOMPARE(spy.count(), 4); // nowhere to go back to
        m_bench->files->removalIsHeld = false;

        QTRY_COMPARE(app().phase(), Phase::summary(3, 0, 0));
        QCOMPARE(spy.count(), 4);
    }

private:
    [[nodiscard]] AppState &app() const { return *m_bench->appState; }

    std::unique_ptr<Workbench> m_bench;
    std::unique_ptr<MenuCommands> m_menu;
};

QTEST_GUILESS_MAIN(MenuCommandsTest)
#include "MenuCommandsTest.moc"
