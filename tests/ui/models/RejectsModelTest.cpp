// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/models/RejectsModel.h"

#include "tests/ui/ScreenBench.h"
#include "ui/models/ItemRole.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class RejectsModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void listsTheRejectsInShootingOrder()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(5));
        rejectRows(bench, {4, 0, 2});
        RejectsModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAppState(&bench.appState);

        QCOMPARE(names(model),
                 (QStringList{u"DSCF0001.JPG"_s, u"DSCF0003.JPG"_s, u"DSCF0005.JPG"_s}));
    }

    void aRescueRemovesOneRow()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(5));
        rejectRows(bench, {0, 2, 4});
        bench.appState.finishCulling();
        RejectsModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAppState(&bench.appState);
        QSignalSpy removed(&model, &RejectsModel::rowsRemoved);
        const QSignalSpy resets(&model, &RejectsModel::modelReset);

        bench.press(KeyPress::Right);
        bench.press(u"u"_s);

        QCOMPARE(removed.size(), 1);
        QCOMPARE(removed.at(0).at(1).toInt(), 1);
        QCOMPARE(removed.at(0).at(2).toInt(), 1);
        QCOMPARE(resets.size(), 0);
        QCOMPARE(model.selectedItem().displayName(), u"DSCF0005.JPG"_s);
    }

    void anUndoneRescueInsertsItsRowWhereItWas()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(5));
        rejectRows(bench, {0, 2, 4});
        bench.appState.finishCulling();
        RejectsModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAppState(&bench.appState);
        bench.press(KeyPress::Right);
        bench.press(u"u"_s);
        QSignalSpy inserted(&model, &RejectsModel::rowsInserted);

        bench.appState.undoDecision();

        QCOMPARE(inserted.size(), 1);
        QCOMPARE(inserted.at(0).at(1).toInt(), 1);
        QCOMPARE(model.count(), 3);
    }

    void severalRescuesOfOneOperationRemoveTheirRows()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(200));
        rejectRows(bench, {0, 2, 63, 64, 65, 130, 199});
        RejectsModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAppState(&bench.appState);

        {
            const AppState::Operation operation(bench.appState);
            for (const qint64 row : {64, 0, 199, 1}) {
                bench.appState.session()->toggle(bench.item(row).id);
            }
            bench.appState.recordChange();
        }

        QCOMPARE(names(model), (QStringList{u"DSCF0002.JPG"_s, u"DSCF0003.JPG"_s, u"DSCF0064.JPG"_s,
                                            u"DSCF0066.JPG"_s, u"DSCF0131.JPG"_s}));
    }

    void rescuingTheOnlyRejectLeavesNothingSelected()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(2));
        rejectRows(bench, {1});
        bench.appState.finishCulling();
        RejectsModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAppState(&bench.appState);
        QVERIFY(model.hasSelected());

        bench.press(u"x"_s);

        QCOMPARE(model.count(), 0);
        QVERIFY(!model.hasSelected());
    }

private:
    static void rejectRows(ScreenBench &bench, const QList<int> &rows)
    {
        bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        for (const int row : rows) {
            bench.appState.selectItem(row);
            bench.press(u"x"_s);
        }
    }

    static QStringList names(const RejectsModel &model)
    {
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row) {
            names.append(model.index(row).data(ItemRole::DisplayName).toString());
        }
        return names;
    }
};

QTEST_MAIN(RejectsModelTest)
#include "RejectsModelTest.moc"
