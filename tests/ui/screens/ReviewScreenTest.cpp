// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

/// The review with its confirmation, the progress and the summary.
class ReviewScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutRejectsThereIsNothingToDelete()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(2));
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.text(u"nothing"_s), u"Nothing rejected. Esc to keep culling."_s);

        QVERIFY(!bench.find(u"grid"_s));
        QCOMPARE(bench.text(u"deleteButton"_s), u"Delete 0 items — 0 files, Zero KB"_s);
        QVERIFY(!bench.find(u"deleteButton"_s)->isEnabled());
        bench.key(Qt::Key_Return);
        bench.key(Qt::Key_Space);
        QVERIFY(!bench.appState.confirmingDelete());
        QVERIFY(!bench.find(u"enlarged"_s));
    }

    void theGridHasFiveColumns_data()
    {
        QTest::addColumn<int>("width");
        for (const int width : {1000, 1001, 1002, 1003, 1004, 1920}) {
            QTest::addRow("%d", width) << width;
        }
    }

    void theGridHasFiveColumns()
    {
        QFETCH(int, width);
        WindowBench bench({width, 700});
        review(bench, 7);

        QCOMPARE(bench.text(u"hint"_s), u"Esc back · Space enlarge · X rescue · ⏎ delete"_s);
        QTRY_COMPARE(bench.text(u"deleteButton"_s), u"Delete 7 items — 7 files, 700 bytes"_s);
        const auto cells = cellsOf(bench);
        QCOMPARE(cells.size(), 7);
        const auto left = WindowBench::rectOf(cells.at(0)).left();
        for (int i = 0; i < 7; ++i) {
            const auto rect = WindowBench::rectOf(cells.at(i));
            QCOMPARE(rect.left(), left + (i % 5) * (rect.width() + 8));
            QVERIFY(std::abs(rect.width() / rect.height() - 1.5) < 0.02);
        }
        const auto right = width - WindowBench::rectOf(cells.at(4)).right();
        QVERIFY(left >= 16 && left <= 18);
        QVERIFY(std::abs(left - right) <= 1);
    }

    void aWriteProtectedCardIsToldInTheFooter()
    {
        WindowBench bench;
        review(bench, 2);
        QVERIFY(!bench.find(u"readOnlyNote"_s));
        WindowBench locked;
        locked.files->makeReadOnly(locked.mountLater("CARD", {}));

        review(locked, 2);

        QVERIFY(locked.find(u"readOnlyNote"_s));
        QCOMPARE(locked.text(u"readOnlyNote"_s),
                 u"This card is write-protected. Kestle cannot delete from it."_s);
        const auto note = WindowBench::rectOf(locked.find(u"readOnlyNote"_s));
        QVERIFY(note.top() > WindowBench::rectOf(locked.find(u"grid"_s)).bottom());
        QVERIFY(note.bottom() <= locked.window->height());
        QVERIFY(note.right() < WindowBench::rectOf(locked.find(u"deleteButton"_s)).left());
        QVERIFY(locked.find(u"deleteButton"_s)->isEnabled());
    }

    void aClickSelectsACell()
    {
        WindowBench bench;
        review(bench, 7);

        bench.click(cellsOf(bench).at(6));

        QCOMPARE(bench.appState.reviewSelection(), 6);
        bench.key(Qt::Key_Up);
        QCOMPARE(bench.appState.reviewSelection(), 1);
    }

    void theSelectedCellIsScrolledIntoView()
    {
        WindowBench bench;
        review(bench, 60);
        auto *grid = bench.find(u"grid"_s);

        for (int i = 0; i < 11; ++i) {
            bench.key(Qt::Key_Down);
        }

        const qreal cellHeight = grid->property("cellHeight").toReal();
        QTRY_COMPARE(qRound(grid->property("contentY").toReal()),
                     qRound(12 * cellHeight - 8 - grid->height()));
    }

    void aCellThatIsInSightIsNotScrolledTo()
    {
        WindowBench bench;
        review(bench, 60);
        const auto *const grid = bench.find(u"grid"_s);
        for (int i = 0; i < 11; ++i) {
            bench.key(Qt::Key_Down);
        }
        QTRY_VERIFY(!isScrolling(grid));
        const auto place = grid->property("contentY").toReal();

        bench.key(Qt::Key_Up);
        QTest::qWait(200);
        QCOMPARE(grid->property("contentY").toReal(), place);

        for (int i = 0; i < 10; ++i) {
            bench.key(Qt::Key_Up);
        }
        QTRY_COMPARE(grid->property("contentY").toReal(), 0);
    }

    void aTurnBackOnTheWayEndsWhereTheSelectionIs()
    {
        WindowBench bench;
        review(bench, 60);
        const auto *const grid = bench.find(u"grid"_s);
        for (int i = 0; i < 11; ++i) {
            bench.key(Qt::Key_Down);
        }
        for (int i = 0; i < 11; ++i) {
            bench.key(Qt::Key_Up); // while it still scrolls down
        }

        QTest::qWait(250);

        QCOMPARE(grid->property("contentY").toReal(), 0);
    }

    void theSelectionStaysInSightWhenTheWindowChanges()
    {
        WindowBench bench({1000, 1100});
        review(bench, 60);
        const auto *const grid = bench.find(u"grid"_s);
        for (int i = 0; i < 5; ++i) {
            bench.key(Qt::Key_Down);
        }
        QTest::qWait(250);

        bench.window->resize(1000, 700);

        QTRY_VERIFY(grid->height() < 600);
        const auto bottom = 6 * grid->property("cellHeight").toReal() - 8;
        QTRY_VERIFY(grid->property("contentY").toReal() + grid->height() >= bottom);
    }

    void rescuingTheLastSelectsTheNewLast()
    {
        WindowBench bench;
        review(bench, 3);
        bench.click(cellsOf(bench).at(2));

        bench.key(Qt::Key_X);

        QCOMPARE(bench.appState.reviewSelection(), 1);
        QTRY_COMPARE(cellsOf(bench).size(), 2);
        bench.key(Qt::Key_U);
        bench.key(Qt::Key_U);
        QTRY_VERIFY(bench.find(u"nothing"_s));
    }

    void theEnlargedRejectCoversTheWindowAndBelowItNothingIsClicked()
    {
        WindowBench bench;
        review(bench, 7);

        bench.key(Qt::Key_Space);

        QTRY_VERIFY(bench.find(u"enlarged"_s));
        QCOMPARE(WindowBench::rectOf(bench.find(u"enlarged"_s)), QRectF(0, 0, 1000, 700));
        QCOMPARE(bench.text(u"enlargedHint"_s), u"Space to close · X to rescue · Z to zoom"_s);
        QTest::mouseClick(bench.window, Qt::LeftButton, {}, QPoint(300, 120));
        QCOMPARE(bench.appState.reviewSelection(), 0);
        bench.key(Qt::Key_Z);
        QTRY_VERIFY(bench.find(u"enlargedZoom"_s));
        bench.key(Qt::Key_X);
        QTRY_VERIFY(!bench.find(u"enlarged"_s));
        QCOMPARE(bench.appState.session()->rejectedCount(), 6);
    }

    void theConfirmationNamesWhatGoesAndCancelIsFocused()
    {
        WindowBench bench;
        review(bench, 2);
        QTRY_COMPARE(bench.text(u"deleteButton"_s), u"Delete 2 items — 2 files, 200 bytes"_s);

        bench.click(u"deleteButton"_s);

        QTRY_VERIFY(bench.find(u"cancelButton"_s));
        QCOMPARE(bench.text(u"confirmTitle"_s), u"Permanently delete 2 files from the card?"_s);
        QCOMPARE(
            bench.text(u"confirmMessage"_s),
            u"2 rejected items (200 bytes). SD cards have no trash — this cannot be undone."_s);
        QCOMPARE(bench.text(u"confirmButton"_s), u"Delete 2 files"_s);
        QVERIFY(bench.find(u"cancelButton"_s)->hasActiveFocus());
        QVERIFY(WindowBench::rectOf(bench.find(u"confirmButton"_s)).right() <
                WindowBench::rectOf(bench.find(u"cancelButton"_s)).left());
    }

    void returnOnCancelClosesAndDeletesNothing()
    {
        WindowBench bench;
        review(bench, 2);
        bench.key(Qt::Key_Return);
        QTRY_VERIFY(bench.find(u"cancelButton"_s));

        bench.key(Qt::Key_Return);

        QTRY_VERIFY(!bench.find(u"cancelButton"_s));
        QVERIFY(!bench.appState.confirmingDelete());
        QCOMPARE(bench.appState.phase(), Phase::review());
        QVERIFY(bench.has("DSCF0001.JPG"));
    }

    void escapeCancelsAndStaysInTheReview()
    {
        WindowBench bench;
        review(bench, 2);
        bench.key(Qt::Key_Return);
        QTRY_VERIFY(bench.find(u"cancelButton"_s));

        bench.key(Qt::Key_Escape);

        QTRY_VERIFY(!bench.appState.confirmingDelete());
        QCOMPARE(bench.appState.phase(), Phase::review());
    }

    void everyOpeningFocusesCancel_data()
    {
        QTest::addColumn<bool>("byMouse");
        QTest::newRow("cancelled by Escape") << false;
        QTest::newRow("cancelled by a click") << true;
    }

    void everyOpeningFocusesCancel()
    {
        QFETCH(bool, byMouse);
        WindowBench bench;
        review(bench, 2);
        bench.key(Qt::Key_Return);
        QTRY_VERIFY(bench.find(u"cancelButton"_s));
        bench.key(Qt::Key_Left);
        QVERIFY(bench.find(u"confirmButton"_s)->hasActiveFocus());
        if (byMouse) {
            bench.click(u"cancelButton"_s);
        } else {
            bench.key(Qt::Key_Escape);
        }
        QTRY_VERIFY(!bench.find(u"cancelButton"_s));

        bench.key(Qt::Key_Return);

        QTRY_VERIFY(bench.find(u"cancelButton"_s));
        QVERIFY(bench.find(u"cancelButton"_s)->hasActiveFocus());
        QVERIFY(!bench.find(u"confirmButton"_s)->hasActiveFocus());
        bench.key(Qt::Key_Return);
        QTRY_VERIFY(!bench.find(u"cancelButton"_s));
        QCOMPARE(bench.appState.phase(), Phase::review());
        QVERIFY(bench.has("DSCF0001.JPG"));
    }

    void leftRightAndTabMoveBetweenTheButtons_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Left") << Qt::Key_Left;
        QTest::newRow("Right") << Qt::Key_Right;
        QTest::newRow("Tab") << Qt::Key_Tab;
        QTest::newRow("Backtab") << Qt::Key_Backtab;
    }

    void leftRightAndTabMoveBetweenTheButtons()
    {
        QFETCH(Qt::Key, key);
        WindowBench bench;
        review(bench, 2);
        bench.key(Qt::Key_Return);
        QTRY_VERIFY(bench.find(u"cancelButton"_s));

        bench.key(key);
        QVERIFY(bench.find(u"confirmButton"_s)->hasActiveFocus());
        bench.key(key);
        QVERIFY(bench.find(u"cancelButton"_s)->hasActiveFocus());
        QCOMPARE(bench.appState.reviewSelection(), 0);
    }

    void theRemovalOfTheCardClosesTheConfirmation()
    {
        WindowBench bench;
        review(bench, 2);
        bench.key(Qt::Key_Return);
        QTRY_VERIFY(bench.find(u"cancelButton"_s));

        bench.volumes.unmount(bench.cardRoot);

        QTRY_COMPARE(bench.text(u"title"_s), u"Insert an SD card"_s);
        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
        QVERIFY(!bench.appState.confirmingDelete());
    }

    void duringAndAfterTheDeletionTheStepsAreDisabled()
    {
        WindowBench bench;
        review(bench, 2);
        bench.files->removalIsHeld = true;
        bench.appState.performDelete();
        QTRY_VERIFY(bench.find(u"progress"_s));
        QCOMPARE(bench.text(u"progressText"_s), u"Deleting 0 of 2"_s);
        QCOMPARE(bench.find(u"progress"_s)->width(), 320);

        bench.click(u"cardStep"_s);
        QCOMPARE(bench.appState.phase().kind, Phase::Kind::Deleting);
        bench.letGo();
        QTRY_COMPARE(bench.appState.phase().kind, Phase::Kind::Summary);
        bench.click(u"cullStep"_s);
        QCOMPARE(bench.appState.phase().kind, Phase::Kind::Summary);
        QVERIFY(!bench.has("DSCF0001.JPG"));
    }

    void failuresAreToldAndTheCardCanBeResumed()
    {
        WindowBench bench;
        review(bench, 2);
        bench.files->removalsFail = true;
        bench.appState.performDelete();
        QTRY_COMPARE(bench.text(u"counts"_s), u"Deleted 0 files, kept 1 items."_s);

        QCOMPARE(bench.text(u"failures"_s), u"2 could not be deleted."_s);
        QCOMPARE(bench.text(u"advice"_s),
                 u"Re-run the cull on this card to retry the remainder."_s);
        QCOMPARE(bench.find(u"outcome"_s)->property("color").value<QColor>(),
                 QColor(0xff, 0xd6, 0x0a));
        bench.click(u"doneButton"_s);
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(true));
    }

    void theFilesThatStayedAndTheReasonsCanBeUnfolded()
    {
        WindowBench bench;
        review(bench, 2);
        bench.files->removalsFail = true;
        bench.appState.performDelete();
        QTRY_VERIFY(bench.find(u"failuresButton"_s));
        QVERIFY(!bench.find(u"failureList"_s));

        bench.click(u"failuresButton"_s);

        const auto reason = QString::fromLocal8Bit(std::strerror(EIO));
        QTRY_COMPARE(bench.texts().count(reason), 2);
        const auto texts = bench.texts();
        QVERIFY(texts.contains(u"DCIM/100_FUJI/DSCF0001.JPG"_s));
        QVERIFY(texts.contains(u"DCIM/100_FUJI/DSCF0002.JPG"_s));
        const auto list = WindowBench::rectOf(bench.find(u"failureList"_s));
        QVERIFY(list.bottom() < WindowBench::rectOf(bench.find(u"doneButton"_s)).top());
        bench.key(Qt::Key_Return); // still what it was
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(true));
        QVERIFY(bench.appState.failures().isEmpty());
    }

    void theFilesThatStayedCanBeUnfoldedByKeysAlone()
    {
        WindowBench bench;
        review(bench, 30);
        bench.files->removalsFail = true;
        bench.appState.performDelete();
        QTRY_VERIFY(bench.find(u"failuresButton"_s));

        bench.key(Qt::Key_Tab);
        bench.key(Qt::Key_Space);

        QTRY_VERIFY(bench.find(u"failureList"_s));
        const auto *const list = bench.find(u"failureList"_s);
        QVERIFY(WindowBench::rectOf(bench.find(u"doneButton"_s)).bottom() < 700);
        for (int press = 0; press < 40; ++press) {
            bench.key(Qt::Key_Down);
        }
        QCOMPARE(list->property("contentY").toReal(),
                 list->property("contentHeight").toReal() - list->height());
        QTRY_VERIFY(bench.texts().contains(u"DCIM/100_FUJI/DSCF0030.JPG"_s));
        bench.key(Qt::Key_Space);
        QTRY_VERIFY(!bench.find(u"failureList"_s));
        bench.key(Qt::Key_Enter);
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(true));
    }

    void aDeletionWithoutFailuresHasNoListOfThem()
    {
        WindowBench bench;
        review(bench, 2);
        bench.appState.performDelete();
        QTRY_COMPARE(bench.text(u"counts"_s), u"Deleted 2 files, kept 1 items."_s);

        QVERIFY(!bench.find(u"failuresButton"_s));
        QVERIFY(!bench.find(u"failures"_s));
        QCOMPARE(bench.text(u"advice"_s), u"Card ready to import in Photos or Lightroom."_s);
        QCOMPARE(bench.find(u"outcome"_s)->property("color").value<QColor>(),
                 QColor(0x30, 0xd1, 0x58));
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
    }

    void aSecondReturnDoesNotCloseTheSummaryUnread()
    {
        WindowBench bench({1000, 700}, KeyHandler::glance);
        review(bench, 2);
        bench.files->removalsFail = true;
        bench.key(Qt::Key_Return);
        QTRY_VERIFY(bench.find(u"cancelButton"_s));
        bench.key(Qt::Key_Left);
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase().kind, Phase::Kind::Summary);

        bench.key(Qt::Key_Return);

        QCOMPARE(bench.appState.phase().kind, Phase::Kind::Summary);
        QTest::qWait(KeyHandler::glance.count() + 50);
        QCOMPARE(bench.text(u"failures"_s), u"2 could not be deleted."_s);
        bench.key(Qt::Key_Return);
        QCOMPARE(bench.appState.phase(), Phase::cardReady(true));
    }

    void theButtonOfTheSummaryCanBeClickedAtOnce()
    {
        WindowBench bench({1000, 700}, std::chrono::hours(1));
        review(bench, 2);
        bench.appState.performDelete();
        QTRY_VERIFY(bench.find(u"doneButton"_s));
        bench.waitForFrames();

        bench.click(u"doneButton"_s);

        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
    }

    void returnInAMenuOverTheSummaryDoesNotCloseTheSummary()
    {
        WindowBench bench;
        review(bench, 2);
        bench.files->removalIsHeld = true;
        bench.appState.performDelete();
        QTRY_COMPARE(bench.appState.phase().kind, Phase::Kind::Deleting);
        bench.click(u"menuButton"_s);
        QTRY_VERIFY(bench.window->property("popupOpen").toBool());
        bench.letGo();
        QTRY_COMPARE(bench.appState.phase().kind, Phase::Kind::Summary);

        bench.key(Qt::Key_Return);

        QCOMPARE(bench.appState.phase().kind, Phase::Kind::Summary);
        bench.key(Qt::Key_Escape);
        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
    }

    void ofManyRejectsOnlyThoseInViewAreMade()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(600));
        {
            const AppState::Operation operation(bench.appState);
            for (const auto &item : bench.appState.session()->items()) {
                bench.appState.session()->toggle(item.id);
            }
            bench.appState.recordChange();
        }
        QTRY_VERIFY(bench.find(u"border"_s));
        const auto before = bench.pictures.begun().size();

        bench.appState.goToReview();
        QTRY_VERIFY(bench.find(u"grid"_s));
        QTest::qWait(100);

        QVERIFY(bench.pictures.begun().size() - before < 100);
    }

private:
    /// A card of one shot more than @p rejects, all but the last rejected, in the review.
    static void review(WindowBench &bench, int rejects)
    {
        bench.cull(ScreenBench::shots(rejects + 1));
        for (int i = 0; i < rejects; ++i) {
            bench.key(Qt::Key_X);
        }
        QCOMPARE(bench.appState.session()->rejectedCount(), rejects);
        bench.key(Qt::Key_Return);
        QTRY_VERIFY(bench.find(u"grid"_s));
        QTRY_VERIFY(cellsOf(bench).size() >= std::min(rejects, 10));
    }

    static bool isScrolling(const QQuickItem *grid)
    {
        const auto place = grid->property("contentY").toReal();
        QTest::qWait(40);
        return grid->property("contentY").toReal() != place;
    }

    /// The cells that exist, in order.
    static QList<QQuickItem *> cellsOf(const WindowBench &bench)
    {
        QList<QQuickItem *> cells;
        auto *content = bench.find(u"grid"_s)->property("contentItem").value<QQuickItem *>();
        for (auto *child : content->childItems()) {
            if (child->property("selected").isValid()) {
                cells.append(child);
            }
        }
        std::ranges::sort(cells, {},
                          [](const auto *cell) { return cell->property("index").toInt(); });
        return cells;
    }
};

QTEST_MAIN(ReviewScreenTest)
#include "ReviewScreenTest.moc"
