// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/PictureTurn.h"

#include <QTest>

/// What a display matrix asks for.
class PictureTurnTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rightAnglesTurnAndMirror_data()
    {
        QTest::addColumn<PictureTurn::Matrix>("matrix");
        QTest::addColumn<int>("degrees");
        QTest::addColumn<bool>("isMirrored");
        const auto row = [](const char *name, int a, int b, int c, int d, int turn, bool mirrored) {
            constexpr int one = 1 << 16;
            const PictureTurn::Matrix matrix = {a * one, b * one, 0, c * one, d * one,
                                                0,       0,       0, 1 << 30};
            QTest::newRow(name) << matrix << turn << mirrored;
        };
        row("as it is", 1, 0, 0, 1, 0, false);
        row("clockwise", 0, 1, -1, 0, 90, false);
        row("upside down", -1, 0, 0, -1, 180, false);
        row("anticlockwise", 0, -1, 1, 0, 270, false);
        row("up is down", 1, 0, 0, -1, 0, true);
        row("left is right", -1, 0, 0, 1, 180, true);
        row("along one diagonal", 0, 1, 1, 0, 270, true);
        row("along the other", 0, -1, -1, 0, 90, true);
        row("with a stretch", 3, 0, 0, 1, 0, false);
    }

    void rightAnglesTurnAndMirror()
    {
        QFETCH(const PictureTurn::Matrix, matrix);
        QFETCH(const int, degrees);
        QFETCH(const bool, isMirrored);

        const auto turn = PictureTurn::of(matrix);

        QCOMPARE(turn.degrees, degrees);
        QCOMPARE(turn.isMirrored, isMirrored);
        const auto sign = [](int number) { return (number > 0) - (number < 0); };
        QCOMPARE(turn.transform(), QTransform(sign(matrix[0]), sign(matrix[1]), sign(matrix[3]),
                                              sign(matrix[4]), 0, 0));
    }

    void otherMatricesChangeNothing_data()
    {
        QTest::addColumn<PictureTurn::Matrix>("matrix");
        QTest::newRow("zero") << PictureTurn::Matrix{};
        QTest::newRow("by thirty degrees")
            << PictureTurn::Matrix{56756, 32768, 0, -32768, 56756, 0, 0, 0, 1 << 30};
        QTest::newRow("flat") << PictureTurn::Matrix{65536, 0, 0, 65536, 0, 0, 0, 0, 1 << 30};
        QTest::newRow("askew") << PictureTurn::Matrix{65536, 0, 0, 65536, 65536, 0, 0, 0, 1 << 30};
    }

    void otherMatricesChangeNothing()
    {
        QFETCH(const PictureTurn::Matrix, matrix);

        QCOMPARE(PictureTurn::of(matrix), PictureTurn());
    }
};

QTEST_APPLESS_MAIN(PictureTurnTest)
#include "PictureTurnTest.moc"
