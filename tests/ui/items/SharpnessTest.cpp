// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/items/SharpnessBench.h"

/// How sharp pictures come onto the screen. Run without a graphics card and with OpenGL.
class SharpnessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFinalPictureIsAsSharpAsAGoodResampleOfIt_data()
    {
        QTest::addColumn<QSize>("bitmap");
        QTest::newRow("enlarged by a third") << QSize(270, 180);
        QTest::newRow("enlarged to twice its size") << QSize(180, 120);
        QTest::newRow("enlarged much, as small originals are") << QSize(72, 48);
        QTest::newRow("hardly enlarged") << QSize(357, 238);
        QTest::newRow("as it is") << QSize(360, 240);
        QTest::newRow("hardly reduced") << QSize(363, 242);
        QTest::newRow("reduced to 0.73") << QSize(493, 329);
        QTest::newRow("reduced to 0.51") << QSize(705, 470);
        QTest::newRow("reduced to 0.4") << QSize(900, 600);
        QTest::newRow("reduced to 0.24") << QSize(1500, 1000);
    }

    void aFinalPictureIsAsSharpAsAGoodResampleOfIt()
    {
        QFETCH(const QSize, bitmap);
        SharpnessBench bench;

        bench.judge(bitmap, &bench.pool);
    }

    void aSubstituteIsScaledQuickly()
    {
        SharpnessBench bench;
        const QImage image = Resample::picture({180, 120});

        const QImage grab = bench.grabOf(image, &bench.pool, false);

        const QImage reference = Resample::lanczos(image, SharpnessBench::shownPixels);
        QVERIFY(Resample::gradientEnergy(grab) < 0.7 * Resample::gradientEnergy(reference));
    }
};

QTEST_MAIN(SharpnessTest)
#include "SharpnessTest.moc"
