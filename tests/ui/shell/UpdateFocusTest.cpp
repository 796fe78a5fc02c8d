// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/shell/UpdateBench.h"

#include <QProcess>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

/// Who has the keys, under a window manager and with keys that come from outside.
class UpdateFocusTest : public QObject, private UpdateBench {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(u"xdotool"_s).isEmpty()) {
            QSKIP("There is no xdotool.");
        }
    }

    void init() { begin(); }

    void cleanup() { end(); }

    void whatWasFoundUnaskedLeavesTheKeysWithTheMainWindow()
    {
        makeReady();

        findUnasked();
        QTRY_VERIFY(updateWindow() && updateWindow()->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(updateWindow()));
        type(u"Return"_s);
        QTRY_COMPARE(m_app->appState().phase(), Phase::culling());
        QVERIFY(!updateWindow()->isVisible());
        type(u"x"_s);
        QTRY_COMPARE(session().rejectedCount(), 1);

        type(u"Escape"_s); // to the card screen, where the window comes back
        QTRY_COMPARE(m_app->appState().phase(), Phase::cardReady(true));
        QTRY_VERIFY(updateWindow()->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(updateWindow()));
        type(u"Return"_s);
        QTRY_COMPARE(m_app->appState().phase(), Phase::culling());
    }

    void whatTheUserAskedForHasTheKeys()
    {
        makeReady();

        choose(u"Kestle"_s, u"Check for Updates…"_s);
        QVERIFY(hasKeys(updateWindow()));
        type(u"Escape"_s);

        QTRY_VERIFY(!updateWindow()->isVisible());
        QVERIFY(!m_search->isGoingOn);
        QVERIFY(hasKeys(m_app->window()));
        type(u"Return"_s);
        QTRY_COMPARE(m_app->appState().phase(), Phase::culling());
    }

private:
    void makeReady()
    {
        mountCard();
        QTRY_COMPARE(m_app->appState().phase(), Phase::cardReady(false));
    }

    static void type(const QString &key)
    {
        QProcess xdotool;
        xdotool.start(u"xdotool"_s, {u"key"_s, key});
        QTRY_COMPARE(xdotool.state(), QProcess::NotRunning);
        QCOMPARE(xdotool.exitCode(), 0);
    }
};

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    KestleApp::introduce();
    UpdateFocusTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "UpdateFocusTest.moc"
