// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/Orientation.h"
#include "platform/imageio/UprightPicture.h"

#include <QTest>
#include <QTransform>

namespace {

/// What the code means, by Qt's own transformations: EXIF 2.32, 4.6.4 says where the stored
/// picture's row 0 and column 0 belong.
QImage byQt(const QImage &stored, int code)
{
    const auto turned = [](const QImage &image, int degrees) {
        return image.transformed(QTransform().rotate(degrees));
    };
    switch (code) {
    case 2:
        return stored.mirrored(true, false);
    case 3:
        return turned(stored, 180);
    case 4:
        return stored.mirrored(false, true);
    case 5:
        return turned(stored, 90).mirrored(true, false);
    case 6:
        return turned(stored, 90);
    case 7:
        return turned(stored, 270).mirrored(true, false);
    case 8:
        return turned(stored, 270);
    default:
        return stored;
    }
}

QImage numbered(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixel(x, y, qRgb(x, y, (x * 7 + y * 13) & 0xff));
        }
    }
    return image;
}

QImage upright(const QImage &stored, int code)
{
    UprightPicture picture(stored.size(), code);
    for (int row = 0; row < stored.height(); ++row) {
        picture.addRow(reinterpret_cast<const QRgb *>(stored.constScanLine(row)));
    }
    return picture.take();
}

} // namespace

class OrientationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyCodeTurnsThePictureUpright_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("code");
        for (const auto size : {QSize(37, 21), QSize(1, 1), QSize(1, 40), QSize(40, 1),
                                QSize(16, 32), QSize(5, 17)}) {
            for (int code = 0; code <= 9; ++code) {
                QTest::addRow("%dx%d code %d", size.width(), size.height(), code) << size << code;
            }
        }
    }

    void everyCodeTurnsThePictureUpright()
    {
        QFETCH(QSize, size);
        QFETCH(int, code);
        const auto stored = numbered(size);

        QCOMPARE(upright(stored, code), byQt(stored, code));
    }

    void operationsAfterACodeGiveTheCodeOfBoth()
    {
        const auto stored = numbered({9, 5});
        for (int code = 1; code <= 8; ++code) {
            const auto turned = byQt(stored, code);

            QCOMPARE(byQt(stored, Orientation::rotated(code, 1)), byQt(turned, 6));
            QCOMPARE(byQt(stored, Orientation::rotated(code, 3)), byQt(turned, 8));
            QCOMPARE(byQt(stored, Orientation::flippedHorizontally(code)), byQt(turned, 2));
            QCOMPARE(byQt(stored, Orientation::flippedVertically(code)), byQt(turned, 4));
        }
    }

    void rowsThatNeverCameAreBlack()
    {
        const auto stored = numbered({4, 3});
        UprightPicture picture(stored.size(), 6);

        picture.addRow(reinterpret_cast<const QRgb *>(stored.constScanLine(0)));
        const auto image = picture.take();

        QCOMPARE(image.size(), QSize(3, 4));
        QCOMPARE(image.pixel(2, 3), stored.pixel(3, 0));
        QCOMPARE(image.pixel(0, 0), qRgb(0, 0, 0));
    }

    void rowsTooManyAreIgnored()
    {
        const auto stored = numbered({4, 1});
        UprightPicture picture(stored.size(), 1);

        for (int time = 0; time < 40; ++time) {
            picture.addRow(reinterpret_cast<const QRgb *>(stored.constScanLine(0)));
        }

        QCOMPARE(picture.take(), stored);
    }
};

QTEST_GUILESS_MAIN(OrientationTest)
#include "OrientationTest.moc"
