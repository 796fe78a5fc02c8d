// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/shell/UpdateBench.h"

#include <QDesktopServices>
#include <QDir>
#include <QScreen>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The window about newer versions, in a build with a feed.
class UpdateWindowTest : public QObject, private UpdateBench {
    Q_OBJECT

public Q_SLOTS:
    /// In place of a browser and a file manager.
    void take(const QUrl &address) { m_opened.append(address); }

private Q_SLOTS:
    void initTestCase()
    {
        for (const auto *scheme : {"https", "file"}) {
            QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "take");
        }
    }

    void cleanupTestCase()
    {
        for (const auto *scheme : {"https", "file"}) {
            QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
        }
    }

    void init()
    {
        m_opened.clear();
        begin();
        QDir().mkpath(m_home->filePath(u"XDG_CONFIG_HOME"_s));
        std::ofstream(m_home->filePath(u"XDG_CONFIG_HOME/user-dirs.dirs"_s).toStdString())
            << "XDG_DOWNLOAD_DIR=\"" << downloads().toStdString() << "\"\n";
    }

    void cleanup() { end(); }

    void aSearchIsSeenAndCancelled()
    {
        auto *const window = ask();
        QCOMPARE(textOf(u"updateHeadline"_s), u"Looking for a newer version…"_s);
        QCOMPARE(textOf(u"closeUpdates"_s), u"Cancel"_s);
        QVERIFY(!find(window, u"updateNotes"_s) && !find(window, u"saveUpdate"_s));

        click(find(window, u"closeUpdates"_s));

        QVERIFY(!window->isVisible());
        QVERIFY(!m_search->isGoingOn);
    }

    void escapeBreaksASearchOff()
    {
        auto *const window = ask();

        QTest::keyClick(window, Qt::Key_Escape);

        QVERIFY(!window->isVisible());
        QVERIFY(!m_search->isGoingOn);
        QVERIFY(m_app->window()->isVisible());
    }

    void itIsSeenHowFarASearchIs()
    {
        auto *const window = ask();
        QVERIFY(!find(window, u"updateProgress"_s));

        m_search->progress(1'000'000, 4'000'000);

        QTRY_VERIFY(find(window, u"updateProgress"_s));
        const auto *const line = find(window, u"updateProgress"_s);
        QCOMPARE(find(window, u"progressDone"_s)->width(), line->width() / 4);
        QCOMPARE(textOf(u"updateDetail"_s), u"25% of its download is here."_s);
        m_search->end(newVersion());
        QTRY_VERIFY(!find(window, u"updateProgress"_s));
    }

    void aNewerVersionIsToldWithItsNotes()
    {
        auto *const window = ask();

        m_search->end(newVersion());

        QCOMPARE(textOf(u"updateHeadline"_s), u"There is a newer version, 2.0"_s);
        QCOMPARE(textOf(u"closeUpdates"_s), u"Close"_s);
        QVERIFY(find(window, u"updateNotes"_s));
        QVERIFY(!withText(window, u"Faster\nand smaller"_s).isEmpty());
        const auto *const close = laidOut(u"closeUpdates"_s);
        QCOMPARE(close->mapToScene(QPointF(close->width() + 24, close->height() + 24)),
                 QPointF(window->width(), window->height())); // all of it has room
    }

    void itStaysOnTheScreenWhenItGrows()
    {
        auto *const window = ask();
        const auto screen = window->screen()->geometry();
        window->setY(screen.bottom() - window->height() - 10);
        QTRY_COMPARE(window->y(), screen.bottom() - window->height() - 10);
        auto result = newVersion();
        result.notes = u"A line of what is new\n"_s.repeated(200);

        m_search->end(result);

        QTRY_VERIFY(window->height() > 300);
        QTRY_COMPARE(window->geometry().bottom(), screen.bottom());
    }

    void thePageIsOpened()
    {
        auto *const window = ask();
        m_search->end(newVersion());

        click(laidOut(u"updatePage"_s));

        QCOMPARE(m_opened, QList{QUrl(u"https://kestle.test/2"_s)});
        QVERIFY(window->isVisible());
    }

    void theDownloadIsSavedOnceByADoubleClick()
    {
        auto *const window = ask();
        m_search->end(newVersion());
        auto *const save = laidOut(u"saveUpdate"_s);

        const auto middle = save->mapToScene(QPointF(save->width() / 2, save->height() / 2));
        QTest::mouseClick(window, Qt::LeftButton, {}, middle.toPoint());
        QTest::mouseDClick(window, Qt::LeftButton, {}, middle.toPoint());

        QTRY_VERIFY(textOf(u"updateDetail"_s).startsWith(u"Saved as Kestle-2.0.tar.xz in "_s));
        QVERIFY(!save->isEnabled());
        QCOMPARE(QDir(downloads()).entryList(QDir::Files), QStringList{u"Kestle-2.0.tar.xz"_s});
        QCOMPARE(m_opened, QList{QUrl::fromLocalFile(downloads())});
        QTest::keyClick(window, Qt::Key_Escape);
        QVERIFY(!window->isVisible());
    }

    void longNotesAreScrolledByKeys()
    {
        auto *const window = ask();
        auto result = newVersion();
        result.notes = u"A line of what is new\n"_s.repeated(200);
        m_search->end(result);
        auto *const notes = find(window, u"updateNotes"_s);
        QTRY_VERIFY(notes && notes->hasActiveFocus());
        QVERIFY(notes->property("atYBeginning").toBool());

        QTest::keyClick(window, Qt::Key_Down);
        const auto line = notes->property("contentY").toReal();
        QVERIFY(line > 0);
        QTest::keyClick(window, Qt::Key_PageDown);
        QCOMPARE(notes->property("contentY").toReal(), line + notes->height());
        QTest::keyClick(window, Qt::Key_PageUp);
        QTest::keyClick(window, Qt::Key_Up);
        QCOMPARE(notes->property("contentY").toReal(), 0);
        QTest::keyClick(window, Qt::Key_End);
        QVERIFY(notes->property("atYEnd").toBool());
        QTest::keyClick(window, Qt::Key_Home);
        QVERIFY(notes->property("atYBeginning").toBool());
    }

    void noButtonIsPressedUntilSomebodyWentToIt()
    {
        auto *const window = ask();
        m_search->end(newVersion());
        QTRY_VERIFY(find(window, u"saveUpdate"_s));

        QTest::keyClick(window, Qt::Key_Return);
        QTest::keyClick(window, Qt::Key_Space);
        QVERIFY(window->isVisible());
        QVERIFY(m_app->updateController().canSave() && m_opened.isEmpty());

        QTest::keyClick(window, Qt::Key_Tab);
        QVERIFY(find(window, u"updatePage"_s)->hasActiveFocus());
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(m_opened, QList{QUrl(u"https://kestle.test/2"_s)});
        QTest::keyClick(window, Qt::Key_Tab);
        QVERIFY(find(window, u"saveUpdate"_s)->hasActiveFocus());
        QTest::keyClick(window, Qt::Key_Tab);
        QTest::keyClick(window, Qt::Key_Space);
        QVERIFY(!window->isVisible());
    }

    void aNewerVersionThatWasFoundUnaskedIsShown()
    {
        findUnasked();

        QTRY_VERIFY(updateWindow() && updateWindow()->isVisible());
        QCOMPARE(textOf(u"updateHeadline"_s), u"There is a newer version, 2.0"_s);
    }

    void whatWasFoundUnaskedStepsAsideWhileTheUserCulls()
    {
        findUnasked();
        QTRY_VERIFY(updateWindow() && updateWindow()->isVisible());
        activateMain();

        cull();
        QVERIFY(!updateWindow()->isVisible());
        key(Qt::Key_X);
        QCOMPARE(session().rejectedCount(), 1);

        key(Qt::Key_Escape); // to the card screen
        QTRY_COMPARE(m_app->appState().phase(), Phase::cardReady(true));
        QTRY_VERIFY(updateWindow()->isVisible());
        QCOMPARE(textOf(u"updateHeadline"_s), u"There is a newer version, 2.0"_s);
        QVERIFY(find(updateWindow(), u"saveUpdate"_s));
    }

    void whatTheUserAskedForStaysWhileHeCulls()
    {
        ask();
        activateMain();

        cull();
        m_search->end(newVersion());

        QVERIFY(updateWindow()->isVisible());
        key(Qt::Key_X);
        QCOMPARE(session().rejectedCount(), 1);
    }

    void whatTheDesktopClosedComesBackWithTheNextVersion()
    {
        findUnasked();
        QTRY_VERIFY(updateWindow() && updateWindow()->isVisible());

        updateWindow()->close();
        QVERIFY(!m_app->updateController().isShown());
        QVERIFY(!m_app->updateController().hasDownload());

        auto next = newVersion();
        next.shownVersion = u"3.0"_s;
        findUnasked(next);
        QTRY_VERIFY(updateWindow()->isVisible());
        QCOMPARE(textOf(u"updateHeadline"_s), u"There is a newer version, 3.0"_s);
    }

    void itDoesNotKeepTheProgramGoing()
    {
        ask();
        QTimer::singleShot(0, m_app->window(), &QWindow::close);
        QTimer::singleShot(5s, qGuiApp, [] { QGuiApplication::exit(1); });

        QCOMPARE(QGuiApplication::exec(), 0);
    }

private:
    [[nodiscard]] QString downloads() const { return m_home->filePath(u"Downloads"_s); }

    [[nodiscard]] static QString textOf(const QString &name)
    {
        const auto *const item = find(updateWindow(), name);
        return item ? item->property("text").toString() : u"(not on screen)"_s;
    }

    /// The item called @p name, where its window shows it.
    [[nodiscard]] static QQuickItem *laidOut(const QString &name)
    {
        (void)updateWindow()->grabWindow();
        return find(updateWindow(), name);
    }

    /// By the menu; the window that opens.
    QQuickWindow *ask()
    {
        choose(u"Kestle"_s, u"Check for Updates…"_s);
        if (!QTest::qWaitFor([] { return updateWindow() && updateWindow()->isVisible(); }) ||
            !hasKeys(updateWindow()) || !m_search || !m_search->isGoingOn) {
            qFatal("No search is seen");
        }
        return updateWindow();
    }

    void activateMain() const
    {
        m_app->window()->requestActivate();
        QVERIFY(hasKeys(m_app->window()));
    }

    QList<QUrl> m_opened;
};

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    KestleApp::introduce();
    UpdateWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "UpdateWindowTest.moc"
