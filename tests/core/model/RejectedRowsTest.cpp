// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/RejectedRows.h"

#include <QTest>

#include <random>
#include <set>

class RejectedRowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anEmptyListHasNoRejects()
    {
        const RejectedRows rows;

        QCOMPARE(rows.count(), 0);
        QCOMPARE(rows.countBefore(0), 0);
        QCOMPARE(rows.at(0), -1);
        QVERIFY(rows.rows().isEmpty());
    }

    void aCopyKeepsWhatWasRejectedThen()
    {
        RejectedRows rows(100);
        rows.flip(70);
        const RejectedRows before = rows;

        rows.flip(70);
        rows.flip(3);

        QCOMPARE(before.rows(), QList<qint64>{70});
        QCOMPARE(rows.rows(), QList<qint64>{3});
    }

    void randomFlipsAgreeWithASet_data()
    {
        QTest::addColumn<int>("size");
        for (const int size : {1, 63, 64, 65, 128, 1000}) {
            QTest::addRow("%d rows", size) << size;
        }
    }

    void randomFlipsAgreeWithASet()
    {
        QFETCH(int, size);
        std::mt19937 random(5);
        RejectedRows rows(size);
        std::set<qint64> model;
        for (int step = 0; step < 500; ++step) {
            const qint64 row = random() % unsigned(size);
            rows.flip(row);
            if (!model.erase(row)) {
                model.insert(row);
            }
            const QList<qint64> all(model.begin(), model.end());
            QCOMPARE(rows.count(), all.size());
            QCOMPARE(rows.rows(), all);
            QCOMPARE(rows.contains(row), model.contains(row));
            QCOMPARE(rows.countBefore(row), std::distance(model.begin(), model.lower_bound(row)));
            for (qint64 number = -1; number <= all.size(); ++number) {
                QCOMPARE(rows.at(number), all.value(number, -1));
            }
        }
    }
};

QTEST_GUILESS_MAIN(RejectedRowsTest)
#include "RejectedRowsTest.moc"
