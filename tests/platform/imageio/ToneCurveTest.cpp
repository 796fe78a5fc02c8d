// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ToneCurve.h"

#include <QTest>

#include <algorithm>
#include <cmath>

constexpr int pq = 16;
constexpr int hlg = 18;

class ToneCurveTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyHighDynamicRangeHasATable()
    {
        for (const int transfer : {1, 2, 4, 6, 8, 13, 14, 15, 17}) {
            QVERIFY(ToneCurve::table(transfer) == nullptr);
        }
    }

    void codesBecomeWhatAPlainScreenShows_data()
    {
        QTest::addColumn<int>("transfer");
        QTest::addColumn<double>("code");
        QTest::addColumn<int>("shown");

        // PQ codes of 0, 26, 90, 203, 1000 and 10000 cd/m², by BT.2100.
        QTest::newRow("PQ, black") << pq << 0.0 << 0;
        QTest::newRow("PQ, middle grey") << pq << 0.3800 << 100;
        QTest::newRow("PQ, below the knee") << pq << 0.4975 << 177;
        QTest::newRow("PQ, paper") << pq << 0.5807 << 231;
        QTest::newRow("PQ, the peak") << pq << 0.7518 << 255;
        QTest::newRow("PQ, above the peak") << pq << 1.0 << 255;
        QTest::newRow("HLG, black") << hlg << 0.0 << 0;
        // 75 % is the same 203 cd/m².
        QTest::newRow("HLG, paper") << hlg << 0.75 << 231;
        QTest::newRow("HLG, the peak") << hlg << 1.0 << 255;
    }

    void codesBecomeWhatAPlainScreenShows()
    {
        QFETCH(int, transfer);
        QFETCH(double, code);
        QFETCH(int, shown);

        const auto &table = *ToneCurve::table(transfer);
        const auto value = table.at(static_cast<size_t>(std::lround(code * (table.size() - 1))));

        QVERIFY2(std::abs(int{value} - shown) <= 2, qPrintable(QString::number(value)));
    }

    void brighterIsNeverDarker()
    {
        QVERIFY(std::ranges::is_sorted(*ToneCurve::table(pq)));
        QVERIFY(std::ranges::is_sorted(*ToneCurve::table(hlg)));
    }
};

QTEST_GUILESS_MAIN(ToneCurveTest)
#include "ToneCurveTest.moc"
