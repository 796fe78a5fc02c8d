// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifPlacement.h"

#include <QTest>

namespace {

using Step = HeifItem::Step;
using Steps = QList<Step>;

Step turn(int quarters)
{
    return {.kind = Step::Kind::Turn, .value = quarters};
}

Step mirror(int axis)
{
    return {.kind = Step::Kind::Mirror, .value = axis};
}

/// The centre's distance in half pixels.
Step crop(int width, int height, int x, int y)
{
    return {.kind = Step::Kind::Crop, .window = {width, 1, height, 1, x, 2, y, 2}};
}

} // namespace

class HeifPlacementTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void stepsAreFoldedIntoAWindowAndATurn_data()
    {
        QTest::addColumn<Steps>("steps");
        QTest::addColumn<QRect>("window");
        QTest::addColumn<int>("orientation");

        const QRect whole(0, 0, 100, 60);
        QTest::newRow("none") << Steps{} << whole << 1;
        QTest::newRow("a quarter anticlockwise") << Steps{turn(1)} << whole << 8;
        QTest::newRow("a quarter clockwise") << Steps{turn(3)} << whole << 6;
        QTest::newRow("half") << Steps{turn(2)} << whole << 3;
        QTest::newRow("left and right") << Steps{mirror(1)} << whole << 2;
        QTest::newRow("top and bottom") << Steps{mirror(0)} << whole << 4;
        QTest::newRow("turned, then mirrored") << Steps{turn(3), mirror(1)} << whole << 5;
        QTest::newRow("turned, then mirrored down") << Steps{turn(3), mirror(0)} << whole << 7;
        QTest::newRow("the middle") << Steps{crop(20, 10, 0, 0)} << QRect(40, 25, 20, 10) << 1;
        QTest::newRow("the top left") << Steps{crop(29, 60, -71, 0)} << QRect(0, 0, 29, 60) << 1;
        QTest::newRow("beyond the edge")
            << Steps{crop(20, 10, 90, 0)} << QRect(85, 25, 15, 10) << 1;
        QTest::newRow("cropped, then turned")
            << Steps{crop(20, 60, -80, 0), turn(3)} << QRect(0, 0, 20, 60) << 6;
        // Turned clockwise, what was at the left is on top.
        QTest::newRow("turned, then cropped")
            << Steps{turn(3), crop(60, 20, 0, -80)} << QRect(0, 0, 20, 60) << 6;
        QTest::newRow("turned anticlockwise, then cropped")
            << Steps{turn(1), crop(60, 20, 0, -80)} << QRect(80, 0, 20, 60) << 8;
        QTest::newRow("cropped twice")
            << Steps{crop(50, 40, 0, 0), crop(10, 10, -40, -30)} << QRect(25, 10, 10, 10) << 1;
        QTest::newRow("nothing left") << Steps{crop(0, 10, 0, 0)} << whole << 1;
        QTest::newRow("wholly outside") << Steps{crop(10, 10, 4000, 0)} << whole << 1;
        QTest::newRow("numbers that make no sense")
            << Steps{{.kind = Step::Kind::Crop,
                      .window = {-1, 0, 0x7fffffff, 0, 1, -5, 0x7fffffff, 1}}}
            << whole << 1;
    }

    void stepsAreFoldedIntoAWindowAndATurn()
    {
        QFETCH(Steps, steps);

        const auto placement = HeifPlacement::of({100, 60}, steps);

        QTEST(placement.window, "window");
        QTEST(placement.orientation, "orientation");
    }

    void theShownSizeIsThatOfTheTurnedWindow()
    {
        QCOMPARE(HeifPlacement::of({100, 60}, {crop(20, 10, 0, 0), turn(1)}).shownSize(),
                 QSize(10, 20));
    }
};

QTEST_GUILESS_MAIN(HeifPlacementTest)
#include "HeifPlacementTest.moc"
