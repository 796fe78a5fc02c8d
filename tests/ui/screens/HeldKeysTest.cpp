// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

using namespace Qt::StringLiterals;

/// Keys that are held while the screen changes, and keys with modifiers, in the real window.
class HeldKeysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<WindowBench>();
        m_bench->appState.start();
        m_bench->cardRoot = m_bench->mountCard("CARD", WindowBench::shots(4));
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
    }

    void xHeldOverTheLastItemRescuesNothing()
    {
        cull();

        hold(Qt::Key_X, 10);

        QCOMPARE(app().phase(), Phase::review());
        QCOMPARE(app().session()->rejectedCount(), 4);
    }

    void rightHeldOverTheLastItemLeavesTheReviewAtItsFirstReject()
    {
        cull();
        m_bench->key(Qt::Key_X);
        m_bench->key(Qt::Key_X);

        hold(Qt::Key_Right, 10);

        QCOMPARE(app().phase(), Phase::review());
        QCOMPARE(app().reviewSelection(), 0);
    }

    void returnHeldOnTheCardScreenStopsAtTheFirstItem()
    {
        press(Qt::Key_Return);
        QTRY_COMPARE(app().phase(), Phase::culling());

        repeat(Qt::Key_Return, 10);

        QCOMPARE(app().phase(), Phase::culling());
        release(Qt::Key_Return);
        m_bench->key(Qt::Key_Return);
        QCOMPARE(app().phase(), Phase::review());
    }

    void returnHeldInTheReviewOnlyOpensTheQuestion()
    {
        cull();
        m_bench->key(Qt::Key_X);
        m_bench->key(Qt::Key_Return);
        QCOMPARE(app().phase(), Phase::review());

        hold(Qt::Key_Return, 10);

        QCOMPARE(app().phase(), Phase::review());
        QVERIFY(app().confirmingDelete());
    }

    void escapeHeldInTheReviewStopsAtCulling()
    {
        cull();
        m_bench->key(Qt::Key_Return);

        hold(Qt::Key_Escape, 10);

        QCOMPARE(app().phase(), Phase::culling());
    }

    void escapeHeldOverTheEnlargedRejectStopsAtTheGrid()
    {
        cull();
        m_bench->key(Qt::Key_X);
        m_bench->key(Qt::Key_Return);
        m_bench->key(Qt::Key_Space);
        QVERIFY(app().reviewEnlarged());

        hold(Qt::Key_Escape, 10);

        QVERIFY(!app().reviewEnlarged());
        QCOMPARE(app().phase(), Phase::review());
    }

    void spaceHeldDoesNotFlicker()
    {
        cull();
        m_bench->key(Qt::Key_X);
        m_bench->key(Qt::Key_Return);

        hold(Qt::Key_Space, 11);

        QVERIFY(app().reviewEnlarged());
    }

    void rightHeldWithinTheWalkGoesOn()
    {
        cull();

        hold(Qt::Key_Right, 2);

        QCOMPARE(app().session()->currentIndex(), 3);
    }

    void chordsDoNothingInTheWalk_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("Ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("Alt") << Qt::KeyboardModifiers(Qt::AltModifier);
        QTest::newRow("Meta") << Qt::KeyboardModifiers(Qt::MetaModifier);
        QTest::newRow("Ctrl+Shift") << (Qt::ControlModifier | Qt::ShiftModifier);
    }

    void chordsDoNothingInTheWalk()
    {
        QFETCH(const Qt::KeyboardModifiers, modifiers);
        cull();

        for (const auto key : {Qt::Key_X, Qt::Key_I, Qt::Key_Return, Qt::Key_Right, Qt::Key_Tab}) {
            m_bench->key(key, modifiers);
        }

        QCOMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->currentIndex(), 0);
        QVERIFY(!app().session()->hasRejects());
        QVERIFY(app().showExifBar());
    }

    void shiftChangesNoLetter()
    {
        cull();

        m_bench->key(Qt::Key_X, Qt::ShiftModifier);

        QCOMPARE(app().session()->rejectedCount(), 1);
    }

    void theKeypadsEnterIsReturn()
    {
        m_bench->key(Qt::Key_Enter, Qt::KeypadModifier);

        QTRY_COMPARE(app().phase(), Phase::culling());
    }

    void tabBackwardsGoesToAnotherCardToo()
    {
        m_bench->mountCard("TWO", WindowBench::shots(1));
        QTRY_VERIFY(app().canSwitchCards());

        m_bench->key(Qt::Key_Backtab, Qt::ShiftModifier);

        QTRY_COMPARE(app().cardName(), u"TWO"_s);
    }

private:
    AppState &app() const { return m_bench->appState; }

    void cull() const
    {
        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(app().phase(), Phase::culling());
    }

    void hold(Qt::Key key, int repeats) const
    {
        press(key);
        repeat(key, repeats);
        release(key);
    }

    void press(Qt::Key key) const { send(QEvent::KeyPress, key, false); }

    void repeat(Qt::Key key, int times) const
    {
        for (int count = 0; count < times; ++count) {
            send(QEvent::KeyPress, key, true);
            QCoreApplication::processEvents();
        }
    }

    void release(Qt::Key key) const { send(QEvent::KeyRelease, key, false); }

    void send(QEvent::Type type, Qt::Key key, bool repeats) const
    {
        QKeyEvent event(type, key, {}, QString(), repeats);
        QCoreApplication::sendEvent(m_bench->window, &event);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<WindowBench> m_bench;
};

QTEST_MAIN(HeldKeysTest)
#include "HeldKeysTest.moc"
