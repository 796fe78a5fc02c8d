// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/KeyMonitor.h"

#include "ui/shell/LatinKey.h"

#include <QKeyEvent>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

class KeyMonitorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keysHaveTheCodesOfTheKeyTable_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("code");

        QTest::newRow("Return") << Qt::Key_Return << 36;
        QTest::newRow("keypad Enter") << Qt::Key_Enter << 36;
        QTest::newRow("Tab") << Qt::Key_Tab << 48;
        QTest::newRow("Shift and Tab") << Qt::Key_Backtab << 48;
        QTest::newRow("Space") << Qt::Key_Space << 49;
        QTest::newRow("Escape") << Qt::Key_Escape << 53;
        QTest::newRow("Left") << Qt::Key_Left << 123;
        QTest::newRow("Right") << Qt::Key_Right << 124;
        QTest::newRow("Down") << Qt::Key_Down << 125;
        QTest::newRow("Up") << Qt::Key_Up << 126;
        QTest::newRow("a letter") << Qt::Key_X << 0;
    }

    void keysHaveTheCodesOfTheKeyTable()
    {
        QFETCH(Qt::Key, key);
        QFETCH(int, code);
        const QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);

        QCOMPARE(int(KeyMonitor::keyPressOf(event).keyCode), code);
    }

    void lettersAreLowerCaseWithAndWithoutShift()
    {
        const QKeyEvent plain(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, u"x"_s);
        const QKeyEvent shifted(QEvent::KeyPress, Qt::Key_X, Qt::ShiftModifier, u"X"_s);
        const QKeyEvent command(QEvent::KeyPress, Qt::Key_Z, Qt::ControlModifier, u"\x1a"_s);

        QCOMPARE(KeyMonitor::keyPressOf(plain).chars, u"x"_s);
        QCOMPARE(KeyMonitor::keyPressOf(shifted).chars, u"x"_s);
        QCOMPARE(KeyMonitor::keyPressOf(command).chars, u"z"_s);
        QVERIFY(KeyMonitor::keyPressOf(command).command);
        QVERIFY(!KeyMonitor::keyPressOf(shifted).command);
    }

    void aLetterOfAnotherScriptCountsByItsPlace_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<quint32>("scanCode");
        QTest::addColumn<QChar>("letter");

        QTest::newRow("Cyrillic on X") << 0x0427 << 53U << QChar(u'x');
        QTest::newRow("Greek on Z") << 0x0396 << 52U << QChar(u'z');
        QTest::newRow("Hebrew on U") << 0x05D5 << 30U << QChar(u'u');
        QTest::newRow("Cyrillic on L") << 0x0414 << 46U << QChar(u'l');
        QTest::newRow("a Devanagari mark on X") << 0x0902 << 53U << QChar(u'x');
        QTest::newRow("a Thai mark on U") << 0x0E35 << 30U << QChar(u'u');
        QTest::newRow("a Thai mark on J") << 0x0E48 << 44U << QChar(u'j');
        QTest::newRow("Cyrillic on a key without a letter") << 0x0416 << 47U << QChar();
        QTest::newRow("a Latin letter goes by its name") << int(Qt::Key_Y) << 52U << QChar(u'y');
        QTest::newRow("an accented Latin letter is none") << 0xC4 << 53U << QChar();
        QTest::newRow("a digit is none") << int(Qt::Key_1) << 53U << QChar();
        QTest::newRow("an arrow is none") << int(Qt::Key_Left) << 53U << QChar();
    }

    void aLetterOfAnotherScriptCountsByItsPlace()
    {
        QFETCH(int, key);
        QFETCH(quint32, scanCode);
        QFETCH(QChar, letter);

        QCOMPARE(latinKey(key, scanCode), letter);
    }

    void aConsumedKeyIsSwallowedAndAnyOtherPasses()
    {
        Rig rig;
        rig.consumes = true;
        QVERIFY(rig.press(Qt::Key_X));
        rig.consumes = false;
        QVERIFY(!rig.press(Qt::Key_A));
        QCOMPARE(rig.handled, 2);
    }

    void altAndMetaChordsAndKeysForPopupsPassUnasked()
    {
        Rig rig;
        rig.consumes = true;

        QVERIFY(!rig.press(Qt::Key_X, Qt::AltModifier));
        QVERIFY(!rig.press(Qt::Key_X, Qt::MetaModifier));
        rig.popupIsOpen = true;
        QVERIFY(!rig.press(Qt::Key_Return));
        QCOMPARE(rig.handled, 0);
    }

    void aHeldKeyCountsOnlyInTheSituationInWhichItWentDown()
    {
        Rig rig;
        rig.consumes = true;
        rig.press(Qt::Key_X);
        rig.repeat(Qt::Key_X);
        QCOMPARE(rig.handled, 2);

        rig.situation = 2;

        QVERIFY(rig.repeat(Qt::Key_X));
        QCOMPARE(rig.handled, 2);
        rig.release(Qt::Key_X);
        rig.press(Qt::Key_X);
        QCOMPARE(rig.handled, 3);
    }

    void aHeldKeyThatLostItsMeaningWaitsForItsRelease()
    {
        Rig rig;
        rig.consumes = true;
        rig.press(Qt::Key_Right);
        rig.situation = 2;
        QVERIFY(rig.repeat(Qt::Key_Right));
        rig.situation = 1;

        QVERIFY(rig.repeat(Qt::Key_Right));

        QCOMPARE(rig.handled, 1);
        rig.release(Qt::Key_Right);
        rig.press(Qt::Key_Right);
        QCOMPARE(rig.handled, 2);
    }

    void aChordStaysOneWhenItsModifierIsLetGoFirst_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("Ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("Alt") << Qt::KeyboardModifiers(Qt::AltModifier);
        QTest::newRow("Meta") << Qt::KeyboardModifiers(Qt::MetaModifier);
    }

    void aChordStaysOneWhenItsModifierIsLetGoFirst()
    {
        QFETCH(const Qt::KeyboardModifiers, modifiers);
        Rig rig;
        rig.press(Qt::Key_X, modifiers);
        const int handled = rig.handled;

        QVERIFY(rig.repeat(Qt::Key_X));
        QVERIFY(rig.repeat(Qt::Key_X));

        QCOMPARE(rig.handled, handled);
    }

    void shiftMakesNoChord()
    {
        Rig rig;
        rig.consumes = true;
        rig.press(Qt::Key_X, Qt::ShiftModifier);

        QVERIFY(rig.repeat(Qt::Key_X));

        QCOMPARE(rig.handled, 2);
    }

    void aWindowThatLosesTheKeyboardForgetsWhatIsHeld()
    {
        Rig rig;
        rig.consumes = true;
        rig.press(Qt::Key_X);
        QFocusEvent lost(QEvent::FocusOut);
        QCoreApplication::sendEvent(&rig.window, &lost);

        QVERIFY(rig.repeat(Qt::Key_X));

        QCOMPARE(rig.handled, 1);
    }

    void aHeldKeyDoesNotReachAPopupThatItOpened()
    {
        Rig rig;
        rig.consumes = true;
        rig.press(Qt::Key_Return);
        rig.popupIsOpen = true;

        QVERIFY(rig.repeat(Qt::Key_Return));
    }

    void aRepeatWhoseBeginningWasNotSeenIsSwallowed()
    {
        Rig rig;
        QVERIFY(rig.repeat(Qt::Key_X));
        QCOMPARE(rig.handled, 0);
    }

    void installingTwiceAsksOnce()
    {
        Rig rig;
        rig.monitor.install(&rig.window);

        rig.press(Qt::Key_X);

        QCOMPARE(rig.handled, 1);
    }

private:
    struct Rig {
        bool press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
        {
            return send(QEvent::KeyPress, key, modifiers, false);
        }

        bool repeat(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
        {
            return send(QEvent::KeyPress, key, modifiers, true);
        }

        void release(Qt::Key key) { send(QEvent::KeyRelease, key, {}, false); }

        /// Whether the key was swallowed before the window saw it.
        bool send(QEvent::Type type, Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeats)
        {
            QKeyEvent event(type, key, modifiers, QString(), repeats);
            window.seen = false;
            QCoreApplication::sendEvent(&window, &event);
            return !window.seen;
        }

        class Window : public QWindow {
        public:
            bool seen = false;

        protected:
            void keyPressEvent(QKeyEvent *) override { seen = true; }
        };

        Rig() { monitor.install(&window); }

        bool consumes = false;
        bool popupIsOpen = false;
        quint64 situation = 1;
        int handled = 0;
        Window window;
        KeyMonitor monitor{{.handleKey =
                                [this](const KeyPress &) {
                                    ++handled;
                                    return consumes;
                                },
                            .isPopupOpen = [this] { return popupIsOpen; },
                            .situation = [this] { return situation; }}};
    };
};

QTEST_MAIN(KeyMonitorTest)
#include "KeyMonitorTest.moc"
