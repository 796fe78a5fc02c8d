// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

#include <QAccessible>

using namespace Qt::StringLiterals;

class CardScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutACardItAsksForOne()
    {
        WindowBench bench;

        QCOMPARE(bench.text(u"title"_s), u"Insert an SD card"_s);
        QCOMPARE(bench.text(u"message"_s), u"Kestle is waiting for a volume with a DCIM folder."_s);
        for (const auto &absent : {u"startButton"_s, u"grantButton"_s, u"picker"_s}) {
            QVERIFY(!bench.find(absent));
        }
    }

    void theColumnIsSparseAndInTheMiddle_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("the smallest window") << QSize(1000, 700);
        QTest::newRow("a large window") << QSize(1920, 1200);
    }

    void theColumnIsSparseAndInTheMiddle()
    {
        QFETCH(QSize, size);
        WindowBench bench(size);
        bench.appState.start();
        bench.mountCard("ONE", ScreenBench::shots(1));
        bench.mountCard("TWO", ScreenBench::shots(1));
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
        QTRY_VERIFY(bench.find(u"picker"_s));
        bench.waitForFrames();

        // From top to bottom, without touching each other, each in the middle of the width.
        qreal above = 32; // the title strip
        for (const auto &name : {u"cardSymbol"_s, u"title"_s, u"message"_s, u"startButton"_s,
                                 u"cardPicker"_s, u"pickerHint"_s}) {
            const auto *const item = bench.find(name);
            QVERIFY2(item, qPrintable(name));
            const auto rect = WindowBench::rectOf(item);
            QVERIFY2(rect.top() > above, qPrintable(name));
            above = rect.bottom();
            if (name != u"cardPicker"_s) {
                QVERIFY2(std::abs(rect.center().x() - size.width() / 2.0) <= 0.5, qPrintable(name));
            }
        }
        QVERIFY(above < size.height());
        QCOMPARE(bench.find(u"cardSymbol"_s)->size(), QSizeF(56, 56));
        const auto top = WindowBench::rectOf(bench.find(u"cardSymbol"_s)).top();
        QCOMPARE(top, size.height() - above);
    }

    void theTextsHaveTheirSizesAndShades_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("pixels");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<double>("shade");
        QTest::newRow("name") << u"title"_s << 22 << true << 0.92;
        QTest::newRow("message") << u"message"_s << 13 << false << 0.6;
        QTest::newRow("formats") << u"formats"_s << 12 << false << 0.45;
        QTest::newRow("hint") << u"pickerHint"_s << 10 << false << 0.45;
    }

    void theTextsHaveTheirSizesAndShades()
    {
        QFETCH(QString, item);
        QFETCH(int, pixels);
        QFETCH(bool, bold);
        QFETCH(double, shade);
        WindowBench bench;
        bench.appState.start();
        bench.mountCard("ONE", {"NOTES.TXT"});
        bench.mountCard("TWO", {"NOTES.TXT"});
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::noMedia());

        const auto *const text = bench.find(item);
        QVERIFY(text);
        const auto font = text->property("font").value<QFont>();
        const auto color = text->property("color").value<QColor>();
        QCOMPARE(font.pixelSize(), pixels);
        QCOMPARE(font.bold(), bold);
        QCOMPARE(color.rgb(), qRgb(255, 255, 255));
        QVERIFY(std::abs(color.alphaF() - shade) < 0.005);
    }

    void aVeryLongNameStaysInTheWindow()
    {
        WindowBench bench;
        bench.appState.start();
        bench.volumes.mount(bench.mountLater("ONE", ScreenBench::shots(1)), u"1"_s,
                            QString(300, u'M'));
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));

        const auto rect = WindowBench::rectOf(bench.find(u"title"_s));
        QVERIFY(rect.left() >= 0 && rect.right() <= 1000);
        QVERIFY(rect.height() < 40);
    }

    void aClickBesideAnOpenPickerClosesItAndGivesTheKeysBack()
    {
        WindowBench bench;
        openPicker(bench);

        QTest::mouseClick(bench.window, Qt::LeftButton, {}, QPoint(60, 600));

        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
        QCOMPARE(bench.text(u"title"_s), u"ONE"_s);
        bench.key(Qt::Key_Tab);
        QTRY_COMPARE(bench.text(u"title"_s), u"TWO"_s);
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
    }

    void aClickThatClosesThePickerDoesNothingBelow_data()
    {
        QTest::addColumn<QString>("below");
        QTest::newRow("button") << u"startButton"_s;
        QTest::newRow("picker itself") << u"cardPicker"_s;
        QTest::newRow("menu's button") << u"menuButton"_s;
    }

    void aClickThatClosesThePickerDoesNothingBelow()
    {
        QFETCH(const QString, below);
        WindowBench bench;
        openPicker(bench);

        bench.click(below);

        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
        QTest::qWait(50);
        QVERIFY(!bench.window->property("popupOpen").toBool()); // nor opened again
        QCOMPARE(bench.appState.phase(), Phase::cardReady(false));
        QCOMPARE(bench.appState.currentCardIndex(), 0);
        bench.click(u"startButton"_s);
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
    }

    void aPickerThatTheMouseOpenedAnswersKeys_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("card");
        QTest::newRow("Return takes the choice") << Qt::Key_Return << u"TWO"_s;
        QTest::newRow("Escape takes none") << Qt::Key_Escape << u"ONE"_s;
    }

    void aPickerThatTheMouseOpenedAnswersKeys()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const QString, card);
        WindowBench bench;
        openPicker(bench);

        bench.key(Qt::Key_Down);
        bench.key(key);

        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
        QTRY_COMPARE(bench.text(u"title"_s), card);
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
    }

    void aReaderOpensAndClosesThePicker()
    {
        WindowBench bench;
        openPicker(bench);

        pressByReader(bench.find(u"cardPicker"_s));
        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
        pressByReader(bench.find(u"cardPicker"_s));
        QTRY_VERIFY(!bench.itemsShowing(u"TWO"_s).isEmpty());
        pressByReader(bench.itemsShowing(u"TWO"_s).last()->parentItem());

        QTRY_COMPARE(bench.text(u"title"_s), u"TWO"_s);
        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
    }

    void aCardThatIsReadyCanBeStartedByItsButton()
    {
        WindowBench bench;
        bench.appState.start();
        bench.mountCard("CARD", ScreenBench::shots(2));
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
        QCOMPARE(bench.text(u"startButton"_s), u"Start"_s);
        QVERIFY(!bench.find(u"picker"_s));
        QVERIFY(!bench.texts().contains(u"⇥ Tab to switch card"_s));

        bench.click(u"startButton"_s);

        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
    }

    void aSessionThatIsThereIsResumed()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(2));

        bench.key(Qt::Key_Escape);

        QTRY_COMPARE(bench.text(u"startButton"_s), u"Resume"_s);
        QCOMPARE(bench.text(u"message"_s), u"Session found — press ⏎ to resume"_s);
    }

    void aWriteProtectedCardIsToldBelowTheTexts()
    {
        WindowBench bench;
        bench.appState.start();
        bench.files->makeReadOnly(bench.mountLater("LOCKED", ScreenBench::shots(1)));
        bench.mountCard("CARD", ScreenBench::shots(1));
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
        QVERIFY(!bench.find(u"readOnlyNote"_s));
        bench.mountCard("LOCKED", {});
        QTRY_VERIFY(bench.appState.canSwitchCards());

        bench.key(Qt::Key_Tab);

        QTRY_VERIFY(bench.find(u"readOnlyNote"_s));
        QCOMPARE(bench.text(u"readOnlyNote"_s),
                 u"This card is write-protected. Kestle cannot delete from it."_s);
        const auto rect = [&](const QString &name) {
            return WindowBench::rectOf(bench.find(name));
        };
        QTRY_VERIFY(rect(u"readOnlyNote"_s).top() > rect(u"message"_s).bottom());
        QVERIFY(rect(u"readOnlyNote"_s).bottom() < rect(u"startButton"_s).top());
    }

    void aClosedCardAsksForAccess()
    {
        WindowBench bench;
        bench.appState.start();
        bench.access->closed.insert(bench.mountLater("CARD", ScreenBench::shots(1)));
        bench.mountCard("CARD", {});
        QTRY_COMPARE(bench.appState.phase(), Phase::needsAccess());

        QCOMPARE(bench.text(u"grantButton"_s), u"Grant Access…"_s);
        QCOMPARE(bench.text(u"message"_s),
                 u"macOS requires a one-time permission to read this card."_s);
        bench.dialog.user = FakeDialog::User::Waits;
        bench.click(u"grantButton"_s);
        QTRY_COMPARE(bench.text(u"question"_s),
                     u"Kestle needs permission to read and delete files on “CARD”. Click Grant "
                     "Access to allow it."_s);
        const auto question = WindowBench::rectOf(bench.find(u"question"_s));
        QVERIFY(question.left() >= 0 && question.right() <= bench.window->width());
        QVERIFY(question.top() >= WindowBench::rectOf(bench.find(u"cardStep"_s)).bottom());
        bench.dialog.answer(std::nullopt);
        QTRY_VERIFY(!bench.find(u"question"_s));
        bench.key(Qt::Key_Return);
        bench.dialog.answer(bench.dialog.question.directory);
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
    }

    void theStepOfTheCardOpensNoCardThatCannotBeRead()
    {
        WindowBench bench;
        bench.appState.start();
        bench.access->closed.insert(bench.mountLater("CARD", ScreenBench::shots(1)));
        bench.mountCard("CARD", {});
        QTRY_COMPARE(bench.appState.phase(), Phase::needsAccess());

        bench.click(u"cardStep"_s);

        QCOMPARE(bench.appState.phase(), Phase::needsAccess());
    }

    void theStepOfTheCardEndsAScan()
    {
        WindowBench bench;
        bench.appState.start();
        bench.mountCard("CARD", ScreenBench::shots(1));
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
        bench.files->scanIsHeld = true;
        bench.key(Qt::Key_Return);
        QCOMPARE(bench.appState.phase(), Phase::scanning());

        bench.click(u"cardStep"_s);

        QCOMPARE(bench.appState.phase(), Phase::cardReady(false));
    }

    void scanningShowsNoPickerEvenWithSeveralCards()
    {
        WindowBench bench;
        bench.appState.start();
        bench.mountCard("ONE", ScreenBench::shots(2));
        bench.mountCard("TWO", ScreenBench::shots(2));
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
        QTRY_VERIFY(bench.find(u"picker"_s));
        QVERIFY(bench.texts().contains(u"⇥ Tab to switch card"_s));
        bench.files->scanIsHeld = true;

        bench.key(Qt::Key_Return);

        QTRY_VERIFY(bench.find(u"scanning"_s));
        QVERIFY(bench.texts().contains(u"Scanning…"_s));
        QVERIFY(!bench.find(u"picker"_s));
        bench.letGo();
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
    }

    void tabSwitchesCardsAndThePickerFollows()
    {
        WindowBench bench;
        bench.appState.start();
        bench.mountCard("ONE", ScreenBench::shots(2));
        bench.mountCard("TWO", ScreenBench::shots(2));
        QTRY_COMPARE(bench.text(u"title"_s), u"ONE"_s);
        QTRY_VERIFY(bench.find(u"cardPicker"_s));
        QCOMPARE(bench.find(u"cardPicker"_s)->property("displayText").toString(), u"ONE"_s);

        bench.key(Qt::Key_Tab);

        QTRY_COMPARE(bench.text(u"title"_s), u"TWO"_s);
        QTRY_COMPARE(bench.find(u"cardPicker"_s)->property("displayText").toString(), u"TWO"_s);
        QVERIFY(bench.find(u"cardPicker"_s)->width() <= 260);
    }

    void aCardsNameIsNeverTakenForMarkup()
    {
        const auto name = u"<img src='x'>"_s;
        WindowBench bench;
        bench.appState.start();
        bench.volumes.mount(bench.mountLater("ONE", ScreenBench::shots(2)), u"1"_s, name);
        bench.mountCard("TWO", ScreenBench::shots(2));
        QTRY_COMPARE(bench.text(u"title"_s), name);
        QTRY_VERIFY(bench.find(u"cardPicker"_s));

        bench.click(u"cardPicker"_s);

        QTRY_COMPARE(bench.itemsShowing(name).size(), 3); // title, picker, its list
        for (const auto *item : bench.itemsShowing(name)) {
            QCOMPARE(item->property("textFormat").toInt(), int(Qt::PlainText));
        }
    }

    void anOpenPickerHasTheKeysAndChoosesACard()
    {
        WindowBench bench;
        bench.appState.start();
        bench.mountCard("ONE", ScreenBench::shots(2));
        bench.mountCard("TWO", ScreenBench::shots(2));
        QTRY_COMPARE(bench.text(u"title"_s), u"ONE"_s);
        QTRY_VERIFY(bench.find(u"cardPicker"_s));

        bench.click(u"cardPicker"_s);
        QTRY_VERIFY(bench.window->property("popupOpen").toBool());
        QTest::qWait(50);
        bench.key(Qt::Key_Down);
        bench.key(Qt::Key_Return);

        QTRY_COMPARE(bench.text(u"title"_s), u"TWO"_s);
        QCOMPARE(bench.appState.phase(), Phase::cardReady(false));
    }

    void anEmptyCardSaysWhatCanBeRead()
    {
        WindowBench bench;
        bench.appState.start();
        bench.mountCard("CARD", {"NOTES.TXT"});
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));

        bench.key(Qt::Key_Return);

        QTRY_COMPARE(bench.appState.phase(), Phase::noMedia());
        QCOMPARE(bench.text(u"message"_s), u"No photos or videos found on this card."_s);
        QVERIFY(bench.find(u"formats"_s));
        QVERIFY(bench.find(u"formats"_s)->width() <= 380);
    }

private:
    static void openPicker(WindowBench &bench)
    {
        bench.appState.start();
        bench.mountCard("ONE", ScreenBench::shots(2));
        bench.mountCard("TWO", ScreenBench::shots(2));
        QTRY_COMPARE(bench.text(u"title"_s), u"ONE"_s);
        QTRY_VERIFY(bench.find(u"cardPicker"_s));
        bench.click(u"cardPicker"_s);
        QTRY_VERIFY(bench.window->property("popupOpen").toBool());
    }

    static void pressByReader(QQuickItem *item)
    {
        QVERIFY(item);
        QAccessible::queryAccessibleInterface(item)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    }
};

QTEST_MAIN(CardScreenTest)
#include "CardScreenTest.moc"
