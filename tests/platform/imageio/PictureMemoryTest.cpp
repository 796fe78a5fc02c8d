// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/PictureMemory.h"

#include <QTest>

class PictureMemoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPictureOfAnySizeIsAnOrdinaryPicture_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("one pixel") << QSize(1, 1);
        QTest::newRow("small, odd") << QSize(333, 77);
        QTest::newRow("large") << QSize(4001, 3001);
        QTest::newRow("large, one column") << QSize(1, 9'000'001);
    }

    void aPictureOfAnySizeIsAnOrdinaryPicture()
    {
        QFETCH(QSize, size);

        auto picture = PictureMemory::picture(size);

        QCOMPARE(picture.size(), size);
        QCOMPARE(picture.format(), QImage::Format_RGB32);
        QCOMPARE(picture.bytesPerLine(), qsizetype{size.width()} * 4);
        picture.fill(Qt::red);
        const auto shared = picture;
        picture.setPixel(size.width() - 1, size.height() - 1, qRgb(1, 2, 3));
        QCOMPARE(picture.pixel(size.width() - 1, size.height() - 1), qRgb(1, 2, 3));
        QCOMPARE(shared.pixel(size.width() - 1, size.height() - 1), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(0, 0), size == QSize(1, 1) ? qRgb(1, 2, 3) : qRgb(255, 0, 0));
    }

    void aSizeWithoutAreaGivesNone()
    {
        QVERIFY(PictureMemory::picture({0, 10}).isNull());
        QVERIFY(PictureMemory::picture({10, 0}).isNull());
        QVERIFY(PictureMemory::picture({-1, -1}).isNull());
    }
};

QTEST_GUILESS_MAIN(PictureMemoryTest)
#include "PictureMemoryTest.moc"
