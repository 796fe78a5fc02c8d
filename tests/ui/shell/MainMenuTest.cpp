// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

#include <QAccessible>
#include <QStyleHints>

using namespace Qt::StringLiterals;

/// The menus as they are clicked through.
class MainMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QGuiApplication::styleHints()->setUseHoverEffects(true); // as desktops have it
    }

    void init()
    {
        m_bench = std::make_unique<WindowBench>();
        m_bench->cull(WindowBench::shots(3));
    }

    void rejectDoesWhatTheKeyDoes()
    {
        choose(u"Cull"_s, u"Reject (X)"_s);

        QTRY_COMPARE(app().session()->rejectedCount(), 1);
        QCOMPARE(app().session()->currentIndex(), 1);
    }

    void rejectRescuesInTheReview()
    {
        m_bench->key(Qt::Key_X);
        m_bench->key(Qt::Key_Return);
        QCOMPARE(app().phase(), Phase::review());

        choose(u"Cull"_s, u"Reject (X)"_s);

        QTRY_COMPARE(app().session()->rejectedCount(), 0);
    }

    void zoomZooms()
    {
        choose(u"Cull"_s, u"Zoom 100% (Z)"_s);

        QTRY_VERIFY(app().zoomed());
    }

    void toggleInfoTogglesIt()
    {
        choose(u"Cull"_s, u"Toggle Info (I)"_s);

        QTRY_VERIFY(!app().showExifBar());
    }

    void finishShowsTheReview()
    {
        choose(u"Cull"_s, u"Finish Culling → Review"_s);

        QTRY_COMPARE(app().phase(), Phase::review());
    }

    void backShowsTheCardScreen()
    {
        choose(u"Cull"_s, u"Back to Card Screen"_s);

        QTRY_COMPARE(app().phase(), Phase::cardReady(true));
    }

    void undoTakesTheLastDecisionBack()
    {
        m_bench->key(Qt::Key_X);

        choose(u"Edit"_s, u"Undo Decision"_s);

        QTRY_COMPARE(app().session()->rejectedCount(), 0);
    }

    void whatIsNotPossibleIsDisabled()
    {
        m_bench->key(Qt::Key_Return);
        QCOMPARE(app().phase(), Phase::review());

        openMenu(u"Cull"_s);

        const auto items = m_bench->itemsShowing(u"Finish Culling → Review"_s);
        QVERIFY(!items.isEmpty());
        QVERIFY(!items.first()->isEnabled());
        m_bench->click(items.first());
        QTest::qWait(50);
        QCOMPARE(app().phase(), Phase::review());
    }

    void theKeysAreTheWindowsAgainAfterwards()
    {
        choose(u"Cull"_s, u"Toggle Info (I)"_s);
        QTRY_VERIFY(!m_bench->window->property("popupOpen").toBool());

        m_bench->key(Qt::Key_Right);

        QCOMPARE(app().session()->currentIndex(), 1);
    }

    void f10OpensTheMenuAndArrowsGoThroughIt()
    {
        m_bench->key(Qt::Key_F10);
        QTRY_VERIFY(!m_bench->itemsShowing(u"Cull"_s).isEmpty());
        QTRY_VERIFY(chosen(u"Kestle"_s));

        m_bench->key(Qt::Key_Down);
        m_bench->key(Qt::Key_Down);
        m_bench->key(Qt::Key_Right);
        QTRY_VERIFY(chosen(u"Reject (X)"_s));
        m_bench->key(Qt::Key_Down);
        m_bench->key(Qt::Key_Down);
        QTRY_VERIFY(chosen(u"Toggle Info (I)"_s));
        m_bench->key(Qt::Key_Return);

        QTRY_VERIFY(!app().showExifBar());
        expectKeysInTheWindow();
    }

    void f10AndEscapeCloseTheMenu_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("F10") << Qt::Key_F10;
        QTest::newRow("Escape") << Qt::Key_Escape;
    }

    void f10AndEscapeCloseTheMenu()
    {
        QFETCH(const Qt::Key, key);
        m_bench->key(Qt::Key_F10);
        QTRY_VERIFY(!m_bench->itemsShowing(u"Cull"_s).isEmpty());

        m_bench->key(key);

        expectKeysInTheWindow();
    }

    void f10OpensTheMenuOfAStripThatIsHidden()
    {
        m_bench->key(Qt::Key_F11);
        QVERIFY(!m_bench->find(u"menuButton"_s));

        m_bench->key(Qt::Key_F10);

        QTRY_VERIFY(!m_bench->itemsShowing(u"Cull"_s).isEmpty());
        m_bench->key(Qt::Key_Escape);
        expectKeysInTheWindow();
    }

    void f10DoesNotReachAroundTheQuestion()
    {
        m_bench->key(Qt::Key_X);
        m_bench->key(Qt::Key_Return);
        m_bench->key(Qt::Key_Return);
        QTRY_VERIFY(m_bench->find(u"cancelButton"_s));

        m_bench->key(Qt::Key_F10);
        QTest::qWait(50);

        QVERIFY(m_bench->itemsShowing(u"Kestle"_s).isEmpty());
        m_bench->key(Qt::Key_Escape);
        QTRY_VERIFY(!app().confirmingDelete());
        QCOMPARE(app().phase(), Phase::review());
    }

    void aClickThatClosesTheMenuDoesNothingBelow_data()
    {
        QTest::addColumn<QString>("below");
        QTest::addColumn<bool>("withinMenu");
        for (const bool withinMenu : {false, true}) {
            const auto *const depth = withinMenu ? "%s, below a menu within the menu" : "%s";
            QTest::addRow(depth, "thumbnail") << u"thumbnail"_s << withinMenu;
            QTest::addRow(depth, "step") << u"reviewStep"_s << withinMenu;
            QTest::addRow(depth, "menu's own button") << u"menuButton"_s << withinMenu;
            QTest::addRow(depth, "button of the window") << u"maximiseButton"_s << withinMenu;
        }
    }

    void aClickThatClosesTheMenuDoesNothingBelow()
    {
        QFETCH(const QString, below);
        QFETCH(const bool, withinMenu);
        m_bench->key(Qt::Key_Right);
        const auto *const item = itemBelow(below);
        QVERIFY(item);
        m_bench->click(u"menuButton"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(u"Cull"_s).isEmpty());
        if (withinMenu) {
            m_bench->click(m_bench->itemsShowing(u"Kestle"_s).last());
            QTRY_VERIFY(!m_bench->itemsShowing(u"About Kestle"_s).isEmpty());
        }

        m_bench->click(item);

        QTRY_VERIFY(!isMenuOpen());
        QTest::qWait(50);
        QVERIFY(!isMenuOpen()); // nor opened again
        QCOMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->currentIndex(), 1);
        QVERIFY(m_bench->window->visibility() != QWindow::Maximized);
        expectKeysInTheWindow();
        // The next click is for what is below.
        m_bench->click(itemBelow(u"thumbnail"_s));
        QTRY_COMPARE(app().session()->currentIndex(), 0);
    }

    void theWheelTurnsNothingBelowTheMenu()
    {
        const auto *const strip = m_bench->find(u"strip"_s);
        m_bench->window->resize(1000, 700);
        m_bench->waitForFrames();
        const auto before = strip->property("contentX");
        m_bench->click(u"menuButton"_s);
        QTRY_VERIFY(isMenuOpen());

        const auto place = WindowBench::rectOf(strip).center();
        QWheelEvent event(place, m_bench->window->mapToGlobal(place), {}, QPoint(0, 120), {}, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_bench->window, &event);

        QCOMPARE(strip->property("contentX"), before);
        QVERIFY(isMenuOpen());
    }

    void aMenuThatTheMouseOpenedAnswersKeys()
    {
        m_bench->click(u"menuButton"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(u"Cull"_s).isEmpty());

        m_bench->key(Qt::Key_Down);
        QTRY_VERIFY(chosen(u"Kestle"_s));
        m_bench->key(Qt::Key_Down);
        m_bench->key(Qt::Key_Down);
        m_bench->key(Qt::Key_Return);
        QTRY_VERIFY(chosen(u"Reject (X)"_s));
        m_bench->key(Qt::Key_Left);
        QTRY_VERIFY(m_bench->itemsShowing(u"Reject (X)"_s).isEmpty());
        m_bench->key(Qt::Key_Right);
        QTRY_VERIFY(chosen(u"Reject (X)"_s));
        m_bench->key(Qt::Key_Down);
        m_bench->key(Qt::Key_Down);
        m_bench->key(Qt::Key_Return);

        QTRY_VERIFY(!app().showExifBar());
        expectKeysInTheWindow();
    }

    void escapeClosesWhatTheMouseOpened()
    {
        m_bench->click(u"menuButton"_s);
        QTRY_VERIFY(isMenuOpen());

        m_bench->key(Qt::Key_Escape);

        expectKeysInTheWindow();
    }

    void escapeClosesMenusOneByOne()
    {
        openMenu(u"Cull"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(u"Reject (X)"_s).isEmpty());

        m_bench->key(Qt::Key_Escape);
        QTRY_VERIFY(m_bench->itemsShowing(u"Reject (X)"_s).isEmpty());
        QVERIFY(isMenuOpen());
        m_bench->key(Qt::Key_Escape);

        expectKeysInTheWindow();
    }

    void menusOpenAsTheMousePassesAndAnswerKeys()
    {
        m_bench->click(u"menuButton"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(u"Cull"_s).isEmpty());

        hover(u"Kestle"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(u"About Kestle"_s).isEmpty());
        hover(u"About Kestle"_s);
        QTRY_VERIFY(chosen(u"About Kestle"_s));
        hover(u"Cull"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(u"Reject (X)"_s).isEmpty());
        QTRY_VERIFY(m_bench->itemsShowing(u"About Kestle"_s).isEmpty());
        hover(u"Reject (X)"_s);
        QTRY_VERIFY(chosen(u"Reject (X)"_s));
        m_bench->key(Qt::Key_Down);
        QTRY_VERIFY(chosen(u"Zoom 100% (Z)"_s));
        m_bench->key(Qt::Key_Return);

        QTRY_VERIFY(app().zoomed());
        QTRY_VERIFY(!isMenuOpen());
    }

    void anEntryCanBeClickedWhileAnotherMenuIsOpen()
    {
        openMenu(u"Kestle"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(u"About Kestle"_s).isEmpty());

        m_bench->click(m_bench->itemsShowing(u"Cull"_s).last());
        QTRY_VERIFY(!m_bench->itemsShowing(u"Toggle Info (I)"_s).isEmpty());
        m_bench->click(m_bench->itemsShowing(u"Toggle Info (I)"_s).last());

        QTRY_VERIFY(!app().showExifBar());
        expectKeysInTheWindow();
    }

    void aReaderOpensAndClosesTheMenuByItsButton()
    {
        press(m_bench->find(u"menuButton"_s));
        QTRY_VERIFY(isMenuOpen());

        press(m_bench->find(u"menuButton"_s));

        QTRY_VERIFY(!isMenuOpen());
        expectKeysInTheWindow();
    }

    void aReadersPressOnACommandWithAShortcutClosesTheMenu()
    {
        m_bench->key(Qt::Key_X);
        openMenu(u"Edit"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(u"Undo Decision"_s).isEmpty());

        press(entryOf(u"Undo Decision"_s));

        QTRY_COMPARE(app().session()->rejectedCount(), 0);
        QTRY_VERIFY(!isMenuOpen());
    }

private:
    bool chosen(const QString &command) const
    {
        const auto *const entry = entryOf(command);
        return entry && entry->property("highlighted").toBool();
    }

    const QQuickItem *entryOf(const QString &command) const
    {
        const auto items = m_bench->itemsShowing(command);
        return items.isEmpty() ? nullptr : items.last()->parentItem()->parentItem();
    }

    bool isMenuOpen() const { return m_bench->window->property("popupOpen").toBool(); }

    /// A thumbnail is that of the first item.
    const QQuickItem *itemBelow(const QString &name) const
    {
        const auto *const item = m_bench->find(name);
        return item && name == u"thumbnail"_s ? item->parentItem() : item;
    }

    void hover(const QString &command) const
    {
        const auto place = WindowBench::rectOf(entryOf(command)).center().toPoint();
        QTest::mouseMove(m_bench->window, place - QPoint(3, 0));
        QTest::mouseMove(m_bench->window, place);
    }

    static void press(const QQuickItem *item)
    {
        QVERIFY(item);
        QAccessible::queryAccessibleInterface(const_cast<QQuickItem *>(item))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
    }

    void expectKeysInTheWindow() const
    {
        QTRY_VERIFY(!isMenuOpen());
        const auto index = app().session()->currentIndex();
        m_bench->key(Qt::Key_Right);
        QCOMPARE(app().session()->currentIndex(), index + 1);
    }

    AppState &app() const { return m_bench->appState; }

    void openMenu(const QString &menu) const
    {
        m_bench->click(u"menuButton"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(menu).isEmpty());
        m_bench->click(m_bench->itemsShowing(menu).last());
    }

    void choose(const QString &menu, const QString &command) const
    {
        openMenu(menu);
        QTRY_VERIFY(!m_bench->itemsShowing(command).isEmpty());
        m_bench->click(m_bench->itemsShowing(command).last());
    }

    std::unique_ptr<WindowBench> m_bench;
};

QTEST_MAIN(MainMenuTest)
#include "MainMenuTest.moc"
