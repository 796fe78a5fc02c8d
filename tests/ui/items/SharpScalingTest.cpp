// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/SharpScaling.h"
#include "tests/ui/items/Resample.h"

#include <QSemaphore>
#include <QTest>
#include <QThreadPool>

class SharpScalingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void manyThreadsMakeWhatOneMakes_data()
    {
        QTest::addColumn<QRect>("source");
        QTest::addColumn<QSize>("target");
        QTest::newRow("reduced") << QRect(0, 0, 800, 533) << QSize(301, 203);
        QTest::newRow("much reduced") << QRect(0, 0, 800, 533) << QSize(37, 130);
        QTest::newRow("enlarged") << QRect(0, 0, 800, 533) << QSize(1201, 801);
        QTest::newRow("a part") << QRect(13, 57, 401, 301) << QSize(500, 1100);
        QTest::newRow("of one row") << QRect(5, 532, 300, 1) << QSize(300, 200);
        QTest::newRow("to one row") << QRect(0, 0, 800, 533) << QSize(300, 1);
        QTest::newRow("of one pixel") << QRect(799, 532, 1, 1) << QSize(150, 150);
    }

    void manyThreadsMakeWhatOneMakes()
    {
        QFETCH(const QRect, source);
        QFETCH(const QSize, target);
        const QImage image = Resample::picture({800, 533});
        QThreadPool helpers;
        helpers.setMaxThreadCount(5);

        const QImage alone = SharpScaling::scaled(image, source, target);

        QCOMPARE(alone.size(), target);
        for (int time = 0; time < 20; ++time) {
            QCOMPARE(SharpScaling::scaled(image, source, target, &helpers), alone);
        }
    }

    void helpersThatAreBusyAreNotWaitedFor()
    {
        const QImage image = Resample::picture({800, 533});
        QThreadPool helpers;
        helpers.setMaxThreadCount(1);
        QSemaphore end;
        helpers.start([&] { end.acquire(); });

        const QImage scaled = SharpScaling::scaled(image, image.rect(), {400, 266}, &helpers);

        QCOMPARE(scaled, SharpScaling::scaled(image, image.rect(), {400, 266}));
        end.release();
        helpers.waitForDone();
    }
};

QTEST_GUILESS_MAIN(SharpScalingTest)
#include "SharpScalingTest.moc"
