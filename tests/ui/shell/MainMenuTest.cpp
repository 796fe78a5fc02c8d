// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

using namespace Qt::StringLiterals;

/// The menus as they are clicked through.
class MainMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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

private:
    bool chosen(const QString &command) const
    {
        const auto items = m_bench->itemsShowing(command);
        return !items.isEmpty() &&
               items.last()->parentItem()->parentItem()->property("highlighted").toBool();
    }

    void expectKeysInTheWindow() const
    {
        QTRY_VERIFY(!m_bench->window->property("popupOpen").toBool());
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
