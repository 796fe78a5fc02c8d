// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/RowFilters.h"

#include <QTest>

#include <array>
#include <cstdlib>
#include <random>

namespace {

constexpr size_t channels = 4;

int greatestDifference(const std::vector<QRgb> &a, const std::vector<QRgb> &b)
{
    int greatest = 0;
    for (size_t index = 0; index < a.size(); ++index) {
        for (const int shift : {0, 8, 16, 24}) {
            greatest = std::max(greatest, std::abs(static_cast<int>(a[index] >> shift & 0xff) -
                                                   static_cast<int>(b[index] >> shift & 0xff)));
        }
    }
    return greatest;
}

/// Two rows of @p pixels as floats, scaled to the columns and blended with @p rowWeights.
std::vector<QRgb> scaled(const RowFilters &filters, const std::vector<QRgb> &pixels,
                         const RowFilters::Columns &columns, std::array<float, 2> rowWeights)
{
    const auto width = pixels.size() / 2;
    const auto rowLength = (width + columns.taps) * channels;
    std::vector<float> wide(rowLength * 2);
    filters.widen(pixels.data(), wide.data(), width);
    filters.widen(pixels.data() + width, wide.data() + rowLength, width);
    const auto target = columns.first.size();
    std::vector<float> narrow(target * channels * 2);
    auto *const second = narrow.data() + target * channels;
    filters.narrow({{wide.data(), wide.data() + rowLength}, {narrow.data(), second}}, columns);
    const std::array<const float *, 2> rows = {narrow.data(), second};
    std::vector<QRgb> result(target);
    filters.blend(rows.data(), rowWeights.data(), rows.size(), result.data(), target);
    return result;
}

} // namespace

class RowFiltersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bothWaysGiveTheSamePixels_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("taps");
        for (const int taps : {2, 4, 6, 8, 10, 12, 14, 38}) {
            for (const int width : {1, 2, 7, 8, 9, 64, 333}) {
                QTest::addRow("%d pixels, %d weights", width, taps) << width << taps;
            }
        }
    }

    void bothWaysGiveTheSamePixels()
    {
        QFETCH(int, width);
        QFETCH(int, taps);
        const auto *const wide = RowFilters::wide();
        if (!wide) {
            QSKIP("this processor has the plain way only");
        }
        std::mt19937 random(static_cast<unsigned>(width * 100 + taps));
        std::vector<QRgb> pixels(static_cast<size_t>(width) * 2);
        for (auto &pixel : pixels) {
            pixel = random() | 0xff000000U;
        }
        RowFilters::Columns columns;
        columns.taps = static_cast<size_t>(taps);
        for (int column = 0; column < width; ++column) {
            columns.first.push_back(column);
            for (int tap = 0; tap < taps; ++tap) {
                // Beyond what is shown on both sides, as a filter with negative lobes goes.
                columns.weights.push_back(static_cast<float>(random() % 1000) / 400 - 1);
            }
        }

        for (const auto rowWeights : {std::array{0.5F, 0.5F}, std::array{1.3F, -0.4F}}) {
            QVERIFY(greatestDifference(scaled(*wide, pixels, columns, rowWeights),
                                       scaled(RowFilters::plain(), pixels, columns, rowWeights)) <=
                    1);
        }
    }

    void whatLiesBeyondBlackAndWhiteIsCut_data()
    {
        QTest::addColumn<bool>("isWide");
        QTest::newRow("plain") << false;
        QTest::newRow("wide") << true;
    }

    void whatLiesBeyondBlackAndWhiteIsCut()
    {
        QFETCH(bool, isWide);
        const auto *const filters = isWide ? RowFilters::wide() : &RowFilters::plain();
        if (!filters) {
            QSKIP("this processor has the plain way only");
        }
        // Nine pixels: the steps of eight and what is left over.
        std::vector<float> row;
        for (int pixel = 0; pixel < 9; ++pixel) {
            row.insert(row.end(), {-70000.F, 70000.F, 12.4F, 3.F});
        }
        const float one = 1;
        const auto *const rows = row.data();
        std::vector<QRgb> pixels(9);

        filters->blend(&rows, &one, 1, pixels.data(), pixels.size());

        QCOMPARE(pixels, std::vector<QRgb>(9, qRgb(12, 255, 0)));
    }
};

QTEST_GUILESS_MAIN(RowFiltersTest)
#include "RowFiltersTest.moc"
