// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/RowRelay.h"

#include <QTest>

#include <chrono>

namespace {

constexpr int width = 5;

/// Sends @p count rows that hold their numbers and returns what arrived.
std::vector<QRgb> relayed(int count, int makerPausesAt, int workerPausesAt)
{
    std::vector<QRgb> taken;
    const auto pause = [] { std::this_thread::sleep_for(std::chrono::milliseconds(20)); };
    RowRelay relay(width, [&](const QRgb *pixels) {
        if (static_cast<int>(taken.size()) == workerPausesAt) {
            pause();
        }
        const bool isWhole =
            std::all_of(pixels, pixels + width, [&](QRgb pixel) { return pixel == *pixels; });
        taken.push_back(isWhole ? *pixels : ~QRgb{0});
    });
    for (int number = 0; number < count; ++number) {
        if (number == makerPausesAt) {
            pause();
        }
        std::fill_n(relay.nextRow(), width, static_cast<QRgb>(number));
        relay.rowWritten();
    }
    relay.finish();
    return taken;
}

} // namespace

class RowRelayTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyRowArrivesOnceAndInOrder_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("makerPausesAt");
        QTest::addColumn<int>("workerPausesAt");
        for (const int count : {0, 1, 15, 16, 17, 95, 96, 97, 1000, 20'000}) {
            QTest::addRow("%d rows", count) << count << -1 << -1;
            QTest::addRow("%d rows, slow to come", count) << count << count / 2 << -1;
            QTest::addRow("%d rows, slow to be taken", count) << count << -1 << count / 3;
        }
    }

    void everyRowArrivesOnceAndInOrder()
    {
        QFETCH(int, count);
        QFETCH(int, makerPausesAt);
        QFETCH(int, workerPausesAt);

        const auto taken = relayed(count, makerPausesAt, workerPausesAt);

        QCOMPARE(taken.size(), static_cast<size_t>(count));
        for (int number = 0; number < count; ++number) {
            QCOMPARE(taken[static_cast<size_t>(number)], static_cast<QRgb>(number));
        }
    }

    void oneThatIsGivenUpTakesWhatWasHandedOver()
    {
        int taken = 0;
        {
            RowRelay relay(width, [&](const QRgb *) { ++taken; });
            for (int number = 0; number < 40; ++number) {
                std::fill_n(relay.nextRow(), width, QRgb{0});
                relay.rowWritten();
            }
        }
        QCOMPARE(taken, 40);
    }
};

QTEST_GUILESS_MAIN(RowRelayTest)
#include "RowRelayTest.moc"
