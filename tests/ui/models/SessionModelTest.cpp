// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/models/SessionModel.h"

#include "tests/ui/ScreenBench.h"
#include "ui/models/ItemRole.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class SessionModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutASessionThereIsNoItem()
    {
        ScreenBench bench;
        SessionModel model;
        model.setAppState(&bench.appState);

        QCOMPARE(model.count(), 0);
        QVERIFY(!model.hasCurrent());
        QVERIFY(model.currentItemId().isEmpty());
        QVERIFY(model.currentName().isEmpty());
        QVERIFY(!model.currentRejected());
    }

    void aSessionResetsTheRows()
    {
        ScreenBench bench;
        SessionModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAppState(&bench.appState);
        const QSignalSpy resets(&model, &SessionModel::modelReset);

        bench.cull({"DSCF0001.JPG", "DSCF0002.MOV"});

        QCOMPARE(resets.size(), 1);
        QCOMPARE(model.rowCount(), 2);
        const auto clip = model.index(1);
        QCOMPARE(clip.data(ItemRole::DisplayName).toString(), u"DSCF0002.MOV"_s);
        QCOMPARE(clip.data(ItemRole::IsVideo).toBool(), true);
        QCOMPARE(clip.data(ItemRole::ItemId).toString(), bench.item(1).id);
        QCOMPARE(clip.data(ItemRole::Item).value<MediaItem>(), bench.item(1));
        QCOMPARE(model.currentName(), u"DSCF0001.JPG"_s);
    }

    void aRejectChangesItsRowOnlyAndUndoTakesItBack()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(3));
        SessionModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAppState(&bench.appState);
        QSignalSpy changes(&model, &SessionModel::dataChanged);
        const QSignalSpy resets(&model, &SessionModel::modelReset);

        bench.press(u"x"_s);

        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.at(0).at(0).toModelIndex().row(), 0);
        QCOMPARE(changes.at(0).at(1).toModelIndex().row(), 0);
        QVERIFY(model.index(0).data(ItemRole::Rejected).toBool());
        QCOMPARE(model.rejectedCount(), 1);
        QCOMPARE(model.currentIndex(), 1);
        QVERIFY(!model.currentRejected());

        bench.appState.undoDecision();

        QCOMPARE(changes.size(), 2);
        QCOMPARE(model.rejectedCount(), 0);
        QCOMPARE(model.currentIndex(), 0);
        QCOMPARE(resets.size(), 0);
    }

    void aStepTellsTheNewCurrentItemOnce()
    {
        ScreenBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002.MOV"});
        SessionModel model;
        model.setAppState(&bench.appState);
        const QSignalSpy index(&model, &SessionModel::currentIndexChanged);
        const QSignalSpy item(&model, &SessionModel::currentItemChanged);
        const QSignalSpy rejected(&model, &SessionModel::rejectedCountChanged);

        bench.press(KeyPress::Right);

        QCOMPARE(index.size(), 1);
        QCOMPARE(item.size(), 1);
        QCOMPARE(rejected.size(), 0);
        QVERIFY(model.currentIsVideo());
    }

    void removingTheCardEmptiesTheList()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(3));
        SessionModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAppState(&bench.appState);

        bench.volumes.unmount(bench.cardRoot);

        QTRY_COMPARE(model.count(), 0);
        QVERIFY(!model.hasCurrent());
    }

    void severalDecisionsOfOneOperationAreToldByTheirOutcome()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(3));
        SessionModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAppState(&bench.appState);
        QSignalSpy changes(&model, &SessionModel::dataChanged);
        QSignalSpy counts(&model, &SessionModel::rejectedCountChanged);

        {
            const AppState::Operation operation(bench.appState);
            auto *session = bench.appState.session();
            session->toggle(bench.item(0).id);
            session->toggle(bench.item(2).id);
            session->toggle(bench.item(0).id);
            bench.appState.recordChange();
        }

        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.at(0).at(0).toModelIndex().row(), 2);
        QCOMPARE(counts.size(), 1);
        QCOMPARE(model.rejectedCount(), 1);
    }

    void everyRecordedChangeIsToldAlsoOneThatMovesNothing()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(3));
        SessionModel model;
        model.setAppState(&bench.appState);
        const QSignalSpy followed(&model, &SessionModel::changeFollowed);
        const QSignalSpy index(&model, &SessionModel::currentIndexChanged);

        bench.press(KeyPress::Left);

        QCOMPARE(followed.size(), 1);
        QCOMPARE(index.size(), 0);
    }
};

QTEST_MAIN(SessionModelTest)
#include "SessionModelTest.moc"
