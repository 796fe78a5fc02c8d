// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/shell/ShellBench.h"

using namespace Qt::StringLiterals;

/// The whole program as its user has it: windows, menus, settings.
class ShellTest : public QObject, private ShellBench {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }

    void cleanup() { end(); }

    void settingsOpenByTheirKey()
    {
        key(Qt::Key_Comma, Qt::ControlModifier);

        auto *const settings = sideWindow(u"settingsWindow"_s);
        QVERIFY(settings && settings->isVisible());
        QCOMPARE(settings->width(), 360);
        const auto *const toggle = find(settings, u"autoAdvance"_s);
        QVERIFY(toggle);
        QCOMPARE(toggle->property("text"), u"X auto-advances to the next frame"_s);
        QCOMPARE(toggle->property("checked"), true);
        const auto place = toggle->mapRectToScene(toggle->boundingRect());
        QCOMPARE(place, QRectF(20, 20, 320, settings->height() - 40));
    }

    void escapeClosesAWindowBesideTheMainOne_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("name");
        QTest::newRow("settings") << u"Settings…"_s << u"settingsWindow"_s;
        QTest::newRow("about") << u"About Kestle"_s << u"aboutWindow"_s;
        QTest::newRow("updates") << u"Check for Updates…"_s << u"updateWindow"_s;
    }

    void escapeClosesAWindowBesideTheMainOne()
    {
        QFETCH(const QString, command);
        QFETCH(const QString, name);
        choose(u"Kestle"_s, command);
        QTRY_VERIFY(sideWindow(name) && sideWindow(name)->isVisible());
        auto *const window = sideWindow(name);
        QVERIFY(QTest::qWaitForWindowActive(window));
        // It goes with the main window and does not keep the program going.
        QCOMPARE(window->transientParent(), m_app->window());

        QTest::keyClick(window, Qt::Key_Escape);

        QVERIFY(!window->isVisible());
        choose(u"Kestle"_s, command);
        QTRY_VERIFY(window->isVisible()); // the same again
    }

    void theSwitchTakesEffectAtTheNextX_data()
    {
        QTest::addColumn<bool>("byMouse");
        QTest::newRow("by Space") << false;
        QTest::newRow("by mouse") << true;
    }

    void theSwitchTakesEffectAtTheNextX()
    {
        QFETCH(const bool, byMouse);
        cull();
        const auto toggle = [&] {
            key(Qt::Key_Comma, Qt::ControlModifier);
            auto *const settings = sideWindow(u"settingsWindow"_s);
            QVERIFY(QTest::qWaitForWindowActive(settings));
            byMouse ? click(find(settings, u"autoAdvance"_s))
                    : QTest::keyClick(settings, Qt::Key_Space);
            QTest::keyClick(settings, Qt::Key_Escape);
            m_app->window()->requestActivate();
            QVERIFY(QTest::qWaitForWindowActive(m_app->window()));
        };

        toggle();
        key(Qt::Key_X);
        QCOMPARE(session().rejectedCount(), 1);
        QCOMPARE(session().currentIndex(), 0);

        key(Qt::Key_X);
        toggle();
        key(Qt::Key_X);
        QCOMPARE(session().rejectedCount(), 1);
        QCOMPARE(session().currentIndex(), 1);
    }

    void theSwitchIsRemembered()
    {
        key(Qt::Key_Comma, Qt::ControlModifier);
        click(find(sideWindow(u"settingsWindow"_s), u"autoAdvance"_s));
        start();

        key(Qt::Key_Comma, Qt::ControlModifier);

        QCOMPARE(find(sideWindow(u"settingsWindow"_s), u"autoAdvance"_s)->property("checked"),
                 false);
    }

    void showingTheMainWindowAgainInstallsNoSecondKeyMonitor()
    {
        cull();
        auto *const window = m_app->window();
        window->hide();
        QVERIFY(m_app->show());
        m_app->raise();
        QCOMPARE(m_app->window(), window);
        QVERIFY(QTest::qWaitForWindowActive(window));

        key(Qt::Key_Right);

        QCOMPARE(session().currentIndex(), 1);
        QCOMPARE(QGuiApplication::topLevelWindows().size(), 1);
    }

    void aboutTellsVersionLicenceAndLibraries()
    {
        choose(u"Kestle"_s, u"About Kestle"_s);
        QTRY_VERIFY(sideWindow(u"aboutWindow"_s));
        auto *const about = sideWindow(u"aboutWindow"_s);
        QVERIFY(QTest::qWaitForWindowActive(about));
        QCOMPARE(find(about, u"aboutVersion"_s)->property("text"),
                 QString(u"Version "_s + QGuiApplication::applicationVersion()));
        QVERIFY(find(about, u"aboutLicence"_s)
                    ->property("text")
                    .toString()
                    .contains(u"GNU General Public License, version 3 or later"));
        auto *const list = find(about, u"libraries"_s);
        QCOMPARE(list->property("count").toInt(), 11);
        QVERIFY(!withText(about, u"Qt"_s).isEmpty());

        QTest::keyClick(about, Qt::Key_PageDown);
        QTest::keyClick(about, Qt::Key_PageDown);

        QVERIFY(list->property("atYEnd").toBool());
        QTRY_VERIFY(!withText(about, u"OpenSSL"_s).isEmpty());
        QTest::keyClick(about, Qt::Key_PageUp);
        QTest::keyClick(about, Qt::Key_PageUp);
        QVERIFY(list->property("atYBeginning").toBool());
    }

    void checkingForUpdatesTellsWhoUpdatesKestle()
    {
        choose(u"Kestle"_s, u"Check for Updates…"_s);

        QTRY_VERIFY(sideWindow(u"updateWindow"_s));
        auto *const updates = sideWindow(u"updateWindow"_s);
        QCOMPARE(find(updates, u"updateHeadline"_s)->property("text"),
                 u"Your system keeps Kestle up to date"_s);
        QVERIFY(find(updates, u"softwareCentre"_s));
        QVERIFY(!find(updates, u"saveUpdate"_s));
        click(find(updates, u"closeUpdates"_s));
        QVERIFY(!updates->isVisible());
    }

    void f11FillsTheScreenWithoutTheStripAndBack()
    {
        QVERIFY(find(m_app->window(), u"titleStrip"_s));

        key(Qt::Key_F11);
        QTRY_COMPARE(m_app->window()->visibility(), QWindow::FullScreen);
        QVERIFY(!find(m_app->window(), u"titleStrip"_s));

        key(Qt::Key_F11);
        QTRY_COMPARE(m_app->window()->visibility(), QWindow::Windowed);
        QVERIFY(find(m_app->window(), u"titleStrip"_s));
    }

    void f11GoesBackToAMaximisedWindow()
    {
        click(find(m_app->window(), u"maximiseButton"_s));
        QTRY_COMPARE(m_app->window()->visibility(), QWindow::Maximized);

        key(Qt::Key_F11);
        QTRY_COMPARE(m_app->window()->visibility(), QWindow::FullScreen);
        key(Qt::Key_F11);

        QTRY_COMPARE(m_app->window()->visibility(), QWindow::Maximized);
    }

    void theSizeIsRemembered_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QSize>("size");
        // The offscreen screen has 800 by 800 points: nothing larger than the least size fits.
        QTest::newRow("nothing") << QByteArray() << QSize(1200, 800);
        QTest::newRow("a size") << "1000x750"_ba << QSize(1000, 750);
        QTest::newRow("smaller than the least") << "300x200"_ba << QSize(1000, 700);
        QTest::newRow("larger than the screen") << "5000x5000"_ba << QSize(1000, 800);
        QTest::newRow("no size") << "large"_ba << QSize(1200, 800);
        QTest::newRow("below nothing") << "-5x-5"_ba << QSize(1200, 800);
    }

    void theSizeIsRemembered()
    {
        QFETCH(const QByteArray, stored);
        QFETCH(const QSize, size);
        m_app.reset();
        if (!stored.isEmpty()) {
            UserDefaults(UserDefaults::standardFile()).setBytes(u"windowSize"_s, stored);
        }

        start();

        QCOMPARE(m_app->window()->size(), size);
    }

    void aNewSizeIsStored()
    {
        m_app->window()->resize(1010, 720);
        const UserDefaults defaults(UserDefaults::standardFile());
        QTRY_COMPARE(defaults.bytes(u"windowSize"_s), "1010x720"_ba);

        m_app->window()->resize(1020, 730);
        QTRY_COMPARE(m_app->window()->height(), 730);
        QCoreApplication::processEvents();
        m_app->window()->close(); // before it has come to rest

        QCOMPARE(defaults.bytes(u"windowSize"_s).value_or(QByteArray()), "1020x730"_ba);
    }

    void theFullScreensSizeIsNotRemembered_data()
    {
        QTest::addColumn<int>("presses");
        QTest::newRow("right after a new size") << 1;
        QTest::newRow("and back, and again") << 3;
    }

    void theFullScreensSizeIsNotRemembered()
    {
        QFETCH(const int, presses);
        m_app->window()->resize(1010, 720);
        QTRY_COMPARE(m_app->window()->height(), 720);
        QCoreApplication::processEvents();
        for (int press = 0; press < presses; ++press) {
            key(Qt::Key_F11);
        }
        QTRY_COMPARE(m_app->window()->visibility(), QWindow::FullScreen);
        const UserDefaults defaults(UserDefaults::standardFile());
        QVERIFY(!QTest::qWaitFor([&] { return defaults.bytes(u"windowSize"_s).has_value(); }, 800));

        key(Qt::Key_F11);

        QTRY_COMPARE(m_app->window()->visibility(), QWindow::Windowed);
        QTRY_COMPARE(defaults.bytes(u"windowSize"_s).value_or(QByteArray()), "1010x720"_ba);
    }

    void f10OpensNoMenuBehindAnotherWindow()
    {
        key(Qt::Key_Comma, Qt::ControlModifier);
        auto *const settings = sideWindow(u"settingsWindow"_s);
        QVERIFY(QTest::qWaitForWindowActive(settings));

        QTest::keyClick(settings, Qt::Key_F10);
        QVERIFY(!m_app->window()->property("popupOpen").toBool());

        QTest::keyClick(settings, Qt::Key_Escape);
        m_app->window()->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_app->window()));
        key(Qt::Key_F10);
        QVERIFY(m_app->window()->property("popupOpen").toBool());
        key(Qt::Key_F10);
        QTRY_VERIFY(!m_app->window()->property("popupOpen").toBool());
    }

    void anOpenMenuHasTheKeysThatNobodyElseHas()
    {
        auto *const window = m_app->window();
        key(Qt::Key_F10);
        QTRY_VERIFY(window->property("popupOpen").toBool());

        window->contentItem()->forceActiveFocus();
        key(Qt::Key_Escape);

        QTRY_VERIFY(!window->property("popupOpen").toBool());
    }

    void aMinimisedWindowComesBackAsItWas_data()
    {
        QTest::addColumn<QWindow::Visibility>("before");
        QTest::newRow("a window") << QWindow::Windowed;
        QTest::newRow("maximised") << QWindow::Maximized;
    }

    void aMinimisedWindowComesBackAsItWas()
    {
        QFETCH(const QWindow::Visibility, before);
        m_app->window()->setVisibility(before);
        m_app->window()->showMinimized();
        QTRY_COMPARE(m_app->window()->visibility(), QWindow::Minimized);

        m_app->raise();

        QTRY_COMPARE(m_app->window()->visibility(), before);
    }

    void aMaximisedWindowComesBackAsOne()
    {
        m_app->window()->showMaximized();
        const UserDefaults defaults(UserDefaults::standardFile());
        QTRY_COMPARE(defaults.bytes(u"windowSize"_s), "1200x800 maximised"_ba);

        start();

        QCOMPARE(m_app->window()->visibility(), QWindow::Maximized);
    }
};

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    KestleApp::introduce();
    ShellTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ShellTest.moc"
