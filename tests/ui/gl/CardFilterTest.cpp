// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/items/SharpnessBench.h"

/// Draws as on a machine with a graphics card.
class CardBench : public SharpnessBench {
public:
    CardBench()
    {
        if (!isOpenGL()) {
            qFatal("There is no OpenGL");
        }
        Rasterizer::of(&window)->pretendToBeACard();
    }
};

/// Pictures that the graphics card scales itself, because their copies are not there yet.
class CardFilterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theCardFiltersAsWellAsTheProcessor_data()
    {
        QTest::addColumn<QSize>("bitmap");
        QTest::newRow("enlarged by a third") << QSize(270, 180);
        QTest::newRow("enlarged to twice its size") << QSize(180, 120);
        QTest::newRow("enlarged much, as small originals are") << QSize(72, 48);
        QTest::newRow("hardly enlarged") << QSize(357, 238);
        QTest::newRow("hardly reduced") << QSize(363, 242);
        QTest::newRow("reduced to 0.73") << QSize(493, 329);
        QTest::newRow("reduced to 0.51") << QSize(705, 470);
    }

    void theCardFiltersAsWellAsTheProcessor()
    {
        QFETCH(const QSize, bitmap);
        CardBench bench;

        bench.judge(bitmap, nullptr); // so that no copy ever comes
    }

    void nobodySeesTheCopyCome()
    {
        CardBench bench;
        const QImage image = Resample::picture({270, 180});

        const QImage byCard = bench.grabOf(image, nullptr, true);
        const QImage byProcessor = bench.grabOf(image, &bench.pool, true);

        QVERIFY(Resample::difference(byCard, byProcessor) < 1);
    }

    void whatIsMuchReducedIsSmoothAtLeast()
    {
        CardBench bench;
        QImage pattern(1500, 1000, QImage::Format_RGB32);
        for (int y = 0; y < pattern.height(); ++y) {
            for (int x = 0; x < pattern.width(); ++x) {
                pattern.setPixel(x, y, (x + y) % 2 == 0 ? 0xffffffff : 0xff000000);
            }
        }

        const QImage grab = bench.grabOf(pattern, nullptr, true);

        QVERIFY(Resample::gradientEnergy(grab) < 4);
        QVERIFY(std::abs(qGreen(grab.pixel(180, 120)) - 128) < 4);
    }
};

QTEST_MAIN(CardFilterTest)
#include "CardFilterTest.moc"
