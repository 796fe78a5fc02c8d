// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifItems.h"
#include "tests/support/BoxBytes.h"
#include "tests/support/PictureBytes.h"

#include <QTemporaryDir>
#include <QTest>

using namespace BoxBytes;
using PictureBytes::exifBlock;
using PictureBytes::number;
using PictureBytes::Order;
using PictureBytes::shorts;

namespace {

QByteArray big(quint64 value, int size)
{
    return number(value, size, Order::Big);
}

} // namespace

/// Some of these files would keep a reader busy for minutes: its time limit is the assertion.
class HeifItemsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sizeOrientationAndExifAreFound()
    {
        const auto block = exifBlock({shorts(0x0112, {6})}, {});
        const auto file = heif({.properties = {sizeProperty({40, 30}), turnProperty(1)},
                                .associations = associations(Heif::pictureItem, {1, 2}),
                                .exif = block});

        const auto items = read(file);

        QCOMPARE(items->width, std::optional<qint64>(40));
        QCOMPARE(items->height, std::optional<qint64>(30));
        QCOMPARE(items->orientation, 8);
        QCOMPARE(file.mid(items->exif->offset, items->exif->length), block);
    }

    void propertiesApplyInTheOrderOfTheirAssociation()
    {
        const QList<QByteArray> properties = {turnProperty(1), mirrorProperty(1)};

        QCOMPARE(read(heif({.properties = properties,
                            .associations = associations(Heif::pictureItem, {1, 2})}))
                     ->orientation,
                 7);
        QCOMPARE(read(heif({.properties = properties,
                            .associations = associations(Heif::pictureItem, {2, 1})}))
                     ->orientation,
                 5);
    }

    void theFirstAssociationThatNamesTheItemCounts()
    {
        const auto file = heif({.properties = {turnProperty(1), turnProperty(2)},
                                .associations = associations(Heif::exifItem, {2}) +
                                                associations(Heif::pictureItem, {1}) +
                                                associations(Heif::pictureItem, {1})});

        QCOMPARE(read(file)->orientation, 8);
    }

    void anAssociationWithoutPropertiesCountsToo()
    {
        const auto file = heif({.properties = {turnProperty(1)},
                                .associations = associations(Heif::pictureItem, {}) +
                                                associations(Heif::pictureItem, {1})});

        QCOMPARE(read(file)->orientation, 1);
    }

    void numbersWithoutAPropertyAreLeftOut()
    {
        const auto file = heif({.properties = {turnProperty(1)},
                                .associations = associations(Heif::pictureItem, {0, 7, 1})});

        QCOMPARE(read(file)->orientation, 8);
    }

    void manyLargePropertiesEnd()
    {
        const auto large =
            fullBox("ispe", 0, 0, big(40, 4) + big(30, 4) + QByteArray(256 * 1024, '\0'));
        const auto all = associations(Heif::pictureItem, QList<int>(255, 1));

        const auto items = read(heif({.properties = {large}, .associations = all.repeated(2500)}));

        QCOMPARE(items->width, std::optional<qint64>(40));
    }

    void extentsThatTakeNoBytesEnd()
    {
        const auto sizes = big(0, 2);
        constexpr quint64 items = 43'000; // what the longest box holds
        const auto item = big(7, 2) + big(0, 2) + big(0xffff, 2);
        const auto locations = fullBox("iloc", 0, 0, sizes + big(items, 2) + item.repeated(items));

        const auto found = read(heif({.locations = locations}));

        QVERIFY(found && !found->exif);
    }

    void anExtentOfTheWantedItemThatTakesNoBytesIsNone()
    {
        const auto item = big(Heif::exifItem, 2) + big(0, 2) + big(0xffff, 2);
        const auto locations = fullBox("iloc", 0, 0, big(0, 2) + big(1, 2) + item);

        QVERIFY(!read(heif({.locations = locations}))->exif);
    }

    void theExifItemMayLieInTheItemData()
    {
        const auto block = exifBlock({shorts(0x0112, {6})}, {});
        // Method 1, an index of two bytes, a base of one.
        const auto item = big(Heif::exifItem, 2) + big(1, 2) + big(0, 2) + big(3, 1) + big(1, 2) +
                          big(9, 2) + big(2, 1) + big(quint64(block.size()) + 4, 2);
        const auto locations = fullBox("iloc", 1, 0, big(0x1212, 2) + big(1, 2) + item);
        const auto data = box("idat", "12345" + big(0, 4) + block);
        const auto file = heif({.locations = locations + data});

        const auto found = read(file);

        QVERIFY(found->exif);
        QCOMPARE(file.mid(found->exif->offset, found->exif->length), block);
    }

private:
    std::optional<HeifItems> read(const QByteArray &bytes) const
    {
        const auto path = std::filesystem::path(m_directory.path().toStdString()) / "file.heic";
        PictureBytes::write(path, bytes);
        const auto file = InputFile::open(path);
        if (!file) {
            return std::nullopt;
        }
        PagedReader reader(*file);
        return HeifItems::read(reader);
    }

    QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(HeifItemsTest)
#include "HeifItemsTest.moc"
