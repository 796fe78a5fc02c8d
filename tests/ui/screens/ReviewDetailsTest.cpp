// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"
#include "ui/items/Symbol.h"
#include <algorithm>

#include <functional>

using namespace Qt::StringLiterals;

/// The rarer moments of the review, and of what follows it.
class ReviewDetailsTest : public QObject {
    Q_OBJECT

    using Road = std::function<void(WindowBench &)>;

private Q_SLOTS:
    void init() { m_bench = std::make_unique<WindowBench>(); }

    void cleanup()
    {
        QVERIFY(m_bench->warnings.isEmpty());
        m_bench.reset();
    }

    void aCellShowsItsNameAndTheSelectedOneItsBorder()
    {
        review(ScreenBench::shots(3));
        m_bench->key(Qt::Key_Right);

        QCOMPARE(part(0, u"name"_s)->property("text").toString(), u"DSCF0001.JPG"_s);
        QVERIFY(!part(0, u"border"_s)->isVisible());
        const auto *const border = part(1, u"border"_s);
        QVERIFY(border->isVisible());
        QCOMPARE(border->property("radius").toReal(), 6);
        const auto *const name = part(1, u"name"_s);
        QCOMPARE(name->property("font").value<QFont>().pixelSize(), 10);
        const auto cell = WindowBench::rectOf(cellAt(1));
        const auto label = WindowBench::rectOf(name->parentItem());
        QCOMPARE(label.left(), cell.left() + 4);
        QCOMPARE(label.bottom(), cell.bottom() - 4);
    }

    void aCellIsGreyUntilItHasItsThumbnail()
    {
        m_bench->pictures.thumbnailsAreHeld = true;
        review(ScreenBench::shots(2));
        QVERIFY(part(0, u"missingPicture"_s)->isVisible());
        QVERIFY(!part(0, u"broken"_s)->isVisible());

        m_bench->letGo();

        QTRY_VERIFY(!part(0, u"missingPicture"_s)->isVisible());
    }

    void aCellWhoseThumbnailCannotBeMadeHasAMark()
    {
        review({"DSCF0001.JPG", "BROKEN2.JPG"});

        const bool isFirst = m_bench->appState.session()->rejectedItem(0)->id.contains(u"BROKEN");
        QTRY_VERIFY(part(isFirst ? 0 : 1, u"broken"_s)->isVisible());
        QVERIFY(part(isFirst ? 0 : 1, u"missingPicture"_s)->isVisible());
        QVERIFY(!part(isFirst ? 1 : 0, u"broken"_s)->isVisible());
    }

    void pairsCountEachOfTheirFiles()
    {
        review({"DSCF0001.JPG", "DSCF0001.RAF", "DSCF0002.MOV", "DSCF0003.JPG"});

        QTRY_COMPARE(m_bench->text(u"deleteButton"_s), u"Delete 3 items — 4 files, 400 bytes"_s);
        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(m_bench->text(u"confirmTitle"_s),
                     u"Permanently delete 4 files from the card?"_s);
        QCOMPARE(
            m_bench->text(u"confirmMessage"_s),
            u"3 rejected items (400 bytes). SD cards have no trash — this cannot be undone."_s);
    }

    void untilTheSizesAreKnownTheyAreDots()
    {
        m_bench->files->sizesAreHeld = true;
        review(ScreenBench::shots(2));

        QCOMPARE(m_bench->text(u"deleteButton"_s), u"Delete 2 items — 2 files, …"_s);
        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(m_bench->text(u"confirmMessage"_s),
                     u"2 rejected items (…). SD cards have no trash — this cannot be undone."_s);

        m_bench->letGo();

        QTRY_COMPARE(
            m_bench->text(u"confirmMessage"_s),
            u"2 rejected items (200 bytes). SD cards have no trash — this cannot be undone."_s);
        QCOMPARE(m_bench->text(u"deleteButton"_s), u"Delete 2 items — 2 files, 200 bytes"_s);
    }

    void ofTwoThousandRejectsOnlyThoseInViewAreMade()
    {
        review(ScreenBench::shots(2000));

        QVERIFY(cells().size() < 60);
        for (int row = 0; row < 100; ++row) {
            m_bench->key(Qt::Key_Down);
        }
        QTRY_VERIFY(cellAt(500));
        QTest::qWait(200);
        QVERIFY(cells().size() < 90);
    }

    void anUndoAboveTheViewLeavesTheSelectionInSight()
    {
        review(ScreenBench::shots(60));
        m_bench->key(Qt::Key_X); // the first one, which will come back above
        for (int row = 0; row < 11; ++row) {
            m_bench->key(Qt::Key_Down);
        }
        QTest::qWait(250);

        m_bench->key(Qt::Key_Z, Qt::ControlModifier);
        QTRY_COMPARE(grid()->property("count").toInt(), 60);

        const auto selected = m_bench->appState.reviewSelection();
        QTRY_VERIFY(cellAt(selected));
        QTest::qWait(250);
        const auto rect = WindowBench::rectOf(cellAt(selected));
        QVERIFY(WindowBench::rectOf(grid()).adjusted(-1, -1, 1, 1).contains(rect));
    }

    void theScrollIndicatorFadesWhenNothingMoves()
    {
        review(ScreenBench::shots(60));
        for (int row = 0; row < 6; ++row) {
            m_bench->key(Qt::Key_Down);
        }
        QTRY_VERIFY(m_bench->find(u"scrollIndicator"_s));
        const auto rect = WindowBench::rectOf(m_bench->find(u"scrollIndicator"_s));
        QVERIFY(rect.top() >= WindowBench::rectOf(grid()).top());
        QVERIFY(rect.bottom() <= WindowBench::rectOf(grid()).bottom());
        QVERIFY(rect.left() >= WindowBench::rectOf(grid()).right() - 8);

        QTRY_VERIFY(!m_bench->find(u"scrollIndicator"_s));
    }

    void fewRejectsNeedNoScrollIndicator()
    {
        review(ScreenBench::shots(3));
        m_bench->key(Qt::Key_Down);
        QTest::qWait(50);

        QVERIFY(!m_bench->find(u"scrollIndicator"_s));
    }

    void theEnlargedRejectSpinsUntilItHasItsPicture()
    {
        m_bench->pictures.hold("DSCF0001.JPG");
        review(ScreenBench::shots(2));

        m_bench->key(Qt::Key_Space);
        QTRY_VERIFY(m_bench->find(u"enlargedSpinner"_s));

        m_bench->letGo();
        QTRY_VERIFY(!m_bench->find(u"enlargedSpinner"_s));
        QVERIFY(!enlargedImage().isNull());
    }

    void aPictureThatComesLateIsNotShownForAnotherReject()
    {
        m_bench->pictures.hold("DSCF0031.JPG"); // far from what is fetched beforehand
        review(ScreenBench::shots(40));
        for (int row = 0; row < 6; ++row) {
            m_bench->key(Qt::Key_Down);
        }
        m_bench->key(Qt::Key_Space);
        QTRY_VERIFY(m_bench->find(u"enlargedSpinner"_s));
        // One that has not begun would never come.
        QTRY_VERIFY(std::ranges::count(m_bench->pictures.begun(), "DSCF0031.JPG") > 0);
        m_bench->key(Qt::Key_Space);
        m_bench->key(Qt::Key_Right);
        m_bench->key(Qt::Key_Space);
        QTRY_VERIFY(m_bench->find(u"enlarged"_s));
        QTRY_VERIFY(!enlargedImage().isNull());
        const auto shown = enlargedImage();

        m_bench->letGo();
        QTRY_VERIFY(!m_bench->pipeline.cachedScreenImage(m_bench->item(30)).isNull());
        QTest::qWait(50);

        QCOMPARE(enlargedImage(), shown);
        QCOMPARE(shown, m_bench->pipeline.cachedScreenImage(m_bench->item(31)));
    }

    void anUndoWhileEnlargedShowsWhatIsSelectedThen()
    {
        review(ScreenBench::shots(4));
        m_bench->key(Qt::Key_X); // the first one
        m_bench->key(Qt::Key_Space);
        QTRY_VERIFY(m_bench->find(u"enlarged"_s));
        QTRY_COMPARE(enlargedImage(), m_bench->pipeline.cachedScreenImage(m_bench->item(1)));

        m_bench->key(Qt::Key_Z, Qt::ControlModifier);

        QTRY_COMPARE(m_bench->appState.session()->rejectedCount(), 4);
        QVERIFY(m_bench->find(u"enlarged"_s));
        QTRY_COMPARE(enlargedImage(), m_bench->pipeline.cachedScreenImage(m_bench->item(0)));
    }

    void anUndoOfTheOnlyRejectClosesTheEnlargedOne()
    {
        m_bench->cull(ScreenBench::shots(2));
        m_bench->key(Qt::Key_X);
        m_bench->key(Qt::Key_Return);
        m_bench->key(Qt::Key_Space);
        QTRY_VERIFY(m_bench->find(u"enlarged"_s));

        m_bench->key(Qt::Key_Z, Qt::ControlModifier);

        QTRY_VERIFY(!m_bench->find(u"enlarged"_s));
        QVERIFY(m_bench->find(u"nothing"_s));
    }

    void theZoomOfTheReviewStaysInCulling()
    {
        review(ScreenBench::shots(2));
        m_bench->key(Qt::Key_Space);
        m_bench->key(Qt::Key_Z);
        QTRY_VERIFY(m_bench->find(u"enlargedZoom"_s));

        m_bench->key(Qt::Key_Escape);
        QTRY_VERIFY(!m_bench->find(u"enlarged"_s));
        m_bench->key(Qt::Key_Escape);

        QTRY_COMPARE(m_bench->appState.phase(), Phase::culling());
        QTRY_VERIFY(m_bench->find(u"zoom"_s));
        QCOMPARE(m_bench->appState.zoomPan(), QSizeF(0, 0));
        m_bench->key(Qt::Key_Z);
        QTRY_VERIFY(!m_bench->find(u"zoom"_s));
    }

    void theCoveredStripNeitherMovesNorMaximisesTheWindow()
    {
        review(ScreenBench::shots(2));
        m_bench->key(Qt::Key_Space);
        QTRY_VERIFY(m_bench->find(u"enlarged"_s));
        QTest::mouseDClick(m_bench->window, Qt::LeftButton, {}, QPoint(400, 12));
        QTest::qWait(30);
        QVERIFY(m_bench->window->visibility() != QWindow::Maximized);
        m_bench->click(u"maximiseButton"_s); // stays on top
        QTRY_COMPARE(m_bench->window->visibility(), QWindow::Maximized);
        m_bench->click(u"maximiseButton"_s);
        QTRY_VERIFY(m_bench->window->visibility() != QWindow::Maximized);

        m_bench->key(Qt::Key_Escape);
        QTest::mouseDClick(m_bench->window, Qt::LeftButton, {}, QPoint(400, 12));

        QTRY_COMPARE(m_bench->window->visibility(), QWindow::Maximized);
    }

    void spacePressesTheFocusedButton_data()
    {
        QTest::addColumn<bool>("onDelete");
        QTest::newRow("Cancel") << false;
        QTest::newRow("Delete") << true;
    }

    void spacePressesTheFocusedButton()
    {
        QFETCH(const bool, onDelete);
        review(ScreenBench::shots(2));
        ask();
        if (onDelete) {
            m_bench->key(Qt::Key_Left);
        }

        m_bench->key(Qt::Key_Space);

        QTRY_VERIFY(!m_bench->window->property("popupOpen").toBool());
        if (onDelete) {
            QTRY_COMPARE(m_bench->appState.phase(), Phase::summary(2, 0, 0));
        } else {
            QCOMPARE(m_bench->appState.phase(), Phase::review());
        }
        QCOMPARE(m_bench->has("DSCF0001.JPG"), !onDelete);
    }

    void aPressThatIsHeldWhileTheQuestionGoesDeletesNothing()
    {
        review(ScreenBench::shots(2));
        ask();
        const auto place =
            WindowBench::rectOf(m_bench->find(u"confirmButton"_s)).center().toPoint();
        QTest::mousePress(m_bench->window, Qt::LeftButton, {}, place);

        m_bench->key(Qt::Key_Escape);
        QTRY_VERIFY(!m_bench->appState.confirmingDelete());
        QTest::mouseRelease(m_bench->window, Qt::LeftButton, {}, place);
        QTest::qWait(50);

        QCOMPARE(m_bench->appState.phase(), Phase::review());
        QVERIFY(m_bench->has("DSCF0001.JPG"));
    }

    void aClickOnTheGroundOfTheQuestionLeavesItItsKeys()
    {
        review(ScreenBench::shots(2));
        ask();
        m_bench->click(m_bench->find(u"confirmTitle"_s));
        QTest::mouseClick(m_bench->window, Qt::LeftButton, {}, QPoint(60, 400)); // beside it

        QVERIFY(m_bench->appState.confirmingDelete());
        m_bench->key(Qt::Key_Right);
        QVERIFY(m_bench->find(u"confirmButton"_s)->hasActiveFocus());
        m_bench->key(Qt::Key_Right);
        m_bench->key(Qt::Key_Return);

        QTRY_VERIFY(!m_bench->appState.confirmingDelete());
        QCOMPARE(m_bench->appState.phase(), Phase::review());
    }

    void returnInAMenuDoesNotReachTheScreenBehind_data()
    {
        QTest::addColumn<Road>("road");
        const auto row = [](const char *name, const Road &road) { QTest::newRow(name) << road; };
        row("ready", [](WindowBench &bench) {
            bench.appState.start();
            bench.mountCard("CARD", ScreenBench::shots(2));
            QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
        });
        row("permission needed", [](WindowBench &bench) {
            bench.appState.start();
            bench.access->closed.insert(bench.mountLater("CARD", {"A.JPG"}));
            bench.mountCard("CARD", {});
            QTRY_COMPARE(bench.appState.phase(), Phase::needsAccess());
        });
        row("culling", [](WindowBench &bench) { bench.cull(ScreenBench::shots(2)); });
        row("review", [](WindowBench &bench) {
            bench.cull(ScreenBench::shots(2));
            bench.key(Qt::Key_X);
            bench.key(Qt::Key_Return);
            QTRY_COMPARE(bench.appState.phase(), Phase::review());
        });
    }

    void returnInAMenuDoesNotReachTheScreenBehind()
    {
        QFETCH(Road, road);
        road(*m_bench);
        if (QTest::currentTestFailed()) {
            return;
        }
        const auto phase = m_bench->appState.phase();
        m_bench->key(Qt::Key_F10);
        QTRY_VERIFY(m_bench->window->property("popupOpen").toBool());

        m_bench->key(Qt::Key_Return); // opens the menu within
        QTest::qWait(30);

        QCOMPARE(m_bench->appState.phase(), phase);
        QCOMPARE(m_bench->dialog.opened, 0);
        QVERIFY(!m_bench->appState.confirmingDelete());
    }

    void returnInThePickerDoesNotStart()
    {
        m_bench->appState.start();
        m_bench->mountCard("ONE", ScreenBench::shots(2));
        m_bench->mountCard("TWO", ScreenBench::shots(2));
        QTRY_VERIFY(m_bench->find(u"cardPicker"_s));
        m_bench->waitForFrames();
        m_bench->click(u"cardPicker"_s);
        QTRY_VERIFY(m_bench->window->property("popupOpen").toBool());

        m_bench->key(Qt::Key_Down);
        m_bench->key(Qt::Key_Return);

        QTRY_COMPARE(m_bench->appState.cardName(), u"TWO"_s);
        QCOMPARE(m_bench->appState.phase().kind, Phase::Kind::CardReady);
        QTRY_VERIFY(!m_bench->window->property("popupOpen").toBool());
        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(m_bench->appState.phase(), Phase::culling());
    }

    void theWholeRoadByKeysWithFilesThatStay()
    {
        m_bench->files->stubborn = {"DSCF0002.JPG"};
        m_bench->cull(ScreenBench::shots(4));
        for (int reject = 0; reject < 3; ++reject) {
            m_bench->key(Qt::Key_X);
        }
        m_bench->key(Qt::Key_Return);
        confirmByKeys();
        QTRY_COMPARE(m_bench->appState.phase(), Phase::summary(2, 1, 1));
        QTRY_COMPARE(m_bench->text(u"failures"_s), u"1 could not be deleted."_s);
        QCOMPARE(outcome(), Symbol::Kind::WarningTriangle);
        QCOMPARE(m_bench->text(u"counts"_s), u"Deleted 2 files, kept 1 items."_s);
        QVERIFY(m_bench->has("DSCF0002.JPG") && !m_bench->has("DSCF0003.JPG"));

        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(m_bench->appState.phase(), Phase::cardReady(true));
        m_bench->files->stubborn.clear();
        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(m_bench->appState.phase(), Phase::culling());
        QCOMPARE(m_bench->text(u"rejectCount"_s), u"1 rejected"_s);
        m_bench->key(Qt::Key_Return);
        confirmByKeys();
        QTRY_COMPARE(m_bench->appState.phase(), Phase::summary(1, 0, 1));
        QTRY_COMPARE(outcome(), Symbol::Kind::CheckInCircle);
        QVERIFY(!m_bench->find(u"failures"_s));
        QVERIFY(!m_bench->has("DSCF0002.JPG") && m_bench->has("DSCF0004.JPG"));
        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(m_bench->appState.phase(), Phase::cardReady(false));
    }

private:
    /// All rejected, in the review.
    void review(const std::vector<std::string> &shots)
    {
        m_bench->cull(shots);
        {
            const AppState::Operation operation(m_bench->appState);
            for (const auto &item : m_bench->appState.session()->items()) {
                m_bench->appState.session()->toggle(item.id);
            }
            m_bench->appState.recordChange();
        }
        m_bench->key(Qt::Key_Return);
        QTRY_VERIFY(m_bench->find(u"grid"_s));
        m_bench->waitForFrames();
        QTRY_VERIFY(cellAt(0));
    }

    void ask()
    {
        m_bench->key(Qt::Key_Return);
        QTRY_VERIFY(m_bench->find(u"cancelButton"_s));
        QTRY_VERIFY(m_bench->find(u"cancelButton"_s)->hasActiveFocus());
        m_bench->waitForFrames();
    }

    void confirmByKeys()
    {
        QTRY_COMPARE(m_bench->appState.phase(), Phase::review());
        ask();
        m_bench->key(Qt::Key_Left);
        m_bench->key(Qt::Key_Return);
    }

    [[nodiscard]] QQuickItem *grid() const { return m_bench->find(u"grid"_s); }

    [[nodiscard]] Symbol::Kind outcome() const
    {
        const auto *const symbol = qobject_cast<Symbol *>(m_bench->find(u"outcome"_s));
        return symbol ? symbol->kind() : Symbol::Kind::Card;
    }

    [[nodiscard]] QImage enlargedImage() const
    {
        const auto *const picture = m_bench->find(u"enlargedPicture"_s);
        return picture ? picture->property("image").value<QImage>() : QImage();
    }

    [[nodiscard]] QList<QQuickItem *> cells() const
    {
        QList<QQuickItem *> cells;
        const auto *const content = grid()->property("contentItem").value<QQuickItem *>();
        for (auto *child : content->childItems()) {
            if (child->property("selected").isValid()) {
                cells.append(child);
            }
        }
        return cells;
    }

    [[nodiscard]] QQuickItem *cellAt(qint64 index) const
    {
        for (auto *cell : cells()) {
            if (cell->property("index").toLongLong() == index && cell->isVisible()) {
                return cell;
            }
        }
        return nullptr;
    }

    [[nodiscard]] QQuickItem *part(qint64 index, const QString &name) const
    {
        return cellAt(index)->findChild<QQuickItem *>(name);
    }

    std::unique_ptr<WindowBench> m_bench;
};

Q_DECLARE_METATYPE(std::function<void(WindowBench &)>)

QTEST_MAIN(ReviewDetailsTest)
#include "ReviewDetailsTest.moc"
