// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/BoxBytes.h"
#include "tests/support/HeifPictures.h"
#include "tests/support/PictureBytes.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <future>

using namespace HeifBytes;
using namespace HeifPictures;
using BoxBytes::sizeProperty;
using BoxBytes::turnProperty;
using PictureBytes::corners;

constexpr auto whole = std::nullopt;

/// HEIF files that are damaged or want to do harm.
class HeifDamageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!canEncode()) {
            QSKIP("libheif has no HEVC encoder");
        }
    }

    void whatCannotBeDecodedIsNoPicture_data()
    {
        QTest::addColumn<QByteArray>("file");

        const auto picture = coded(main, plain({64, 64}, red));
        const auto changed = [&](auto change) {
            auto item = picture;
            change(item);
            return HeifBytes::file(main, {item});
        };
        QTest::newRow("no such item") << file(7, {picture});
        QTest::newRow("another codec") << changed([](Item &item) { item.type = "vvc1"; });
        QTest::newRow("no size") << changed([](Item &item) { item.properties.removeFirst(); });
        QTest::newRow("no configuration") << changed([](Item &item) { item.properties.resize(1); });
        QTest::newRow("no data") << changed([](Item &item) { item.data.clear(); });
        QTest::newRow("too many pixels") << changed([](Item &item) {
            item.properties[0] = sizeProperty({30000, 30000});
        });
        auto larger = coded(main, plain({256, 256}, red));
        larger.properties[0] = sizeProperty({8, 8});
        QTest::newRow("more pixels than said") << file(main, {larger});
        QTest::newRow("made of itself") << changed([](Item &item) {
            item.type = "iden";
            item.references = {{"dimg", {main}}};
        });
        QTest::newRow("laid over itself") << changed([](Item &item) {
            item.type = "iovl";
            item.data = overlayData({64, 64}, QList<QPoint>(16));
            item.references = {{"dimg", QList<quint16>(16, main)}};
        });
        QTest::newRow("made of nothing") << changed([](Item &item) { item.type = "iden"; });
        QTest::newRow("a grid of too few") << changed([](Item &item) {
            item.type = "grid";
            item.data = gridData(2, 2, {64, 64});
            item.references = {{"dimg", {main}}};
        });
        QTest::newRow("an endless grid") << changed([](Item &item) {
            item.type = "grid";
            item.properties[0] = sizeProperty({19000, 19000});
            item.data = gridData(256, 256, {0x7fffffff, 0x7fffffff});
            item.references = {{"dimg", QList<quint16>(65535, main)}};
        });
    }

    void whatCannotBeDecodedIsNoPicture()
    {
        QFETCH(QByteArray, file);

        QVERIFY(decode(file, whole).isNull());
        QVERIFY(decode(file, 256).isNull());
    }

    void manyLargeTilesOfFewBytesAreNoPicture()
    {
        // 4096 times the same tile of 4 megapixels.
        Item grid{.id = main,
                  .type = "grid",
                  .properties = {sizeProperty({19000, 19000})},
                  .data = gridData(64, 64, {19000, 19000}),
                  .references = {{"dimg", QList<quint16>(4096, 2)}}};
        auto tile = coded(2, plain({64, 64}, red));
        tile.properties[0] = sizeProperty({2048, 2048});

        QVERIFY(decode(file(main, {grid, tile}), 256).isNull());
    }

    void manyLargeCanvasesOfFewBytesAreNoPicture()
    {
        // Sixteen of 36 megapixels, each of sixteen more.
        QList<Item> items;
        for (quint16 storey = 0; storey < 3; ++storey) {
            const auto below = static_cast<quint16>(main + storey + 1);
            items.append({.id = static_cast<quint16>(main + storey),
                          .type = "iovl",
                          .properties = {sizeProperty({6000, 6000})},
                          .data = overlayData({6000, 6000}, QList<QPoint>(16)),
                          .references = {{"dimg", QList<quint16>(16, below)}}});
        }
        items.append(coded(main + 3, plain({64, 64}, red)));

        QElapsedTimer timer;
        timer.start();
        QVERIFY(decode(file(main, items), 256).isNull());
        QVERIFY(timer.elapsed() < 5000);
    }

    void partsThatLieFarAwayAreNotSeen()
    {
        // With numbers of 32 bits: on red, 64 x 64, a part at the outermost places there are.
        for (const auto *corner :
             {"8000000080000000", "8000000000000000", "7fffffff7fffffff", "0000000080000000"}) {
            const Item overlay{.id = main,
                               .type = "iovl",
                               .properties = {sizeProperty({64, 64})},
                               .data = QByteArray::fromHex("0001ffff00000000ffff"
                                                           "0000004000000040") +
                                       QByteArray::fromHex(corner),
                               .references = {{"dimg", {2}}}};

            const auto image =
                decode(file(main, {overlay, coded(2, plain({64, 64}, green))}), whole);

            QCOMPARE(image.size(), QSize(64, 64));
            QVERIFY(isClose(image.pixel(0, 0), red) && isClose(image.pixel(63, 63), red));
        }
    }

    void manyGridsOfGridsAreNoPicture()
    {
        QList<Item> items;
        for (quint16 storey = 0; storey < 3; ++storey) {
            const auto below = static_cast<quint16>(main + storey + 1);
            items.append({.id = static_cast<quint16>(main + storey),
                          .type = "grid",
                          .properties = {sizeProperty({1, 1}), turnProperty(1)},
                          .data = gridData(64, 64, {1, 1}),
                          .references = {{"dimg", QList<quint16>(4096, below)}}});
        }
        items.append({.id = main + 3,
                      .type = "jpeg",
                      .properties = {sizeProperty({8, 8}), turnProperty(1)},
                      .data = PictureBytes::jpeg(plain({8, 8}, red))});

        QElapsedTimer timer;
        timer.start();
        QVERIFY(decode(file(main, items), 256).isNull());
        QVERIFY(timer.elapsed() < 5000);
    }

    void aJpegItemOfMorePixelsThanSaidIsNoPicture()
    {
        Item item{.id = main,
                  .type = "jpeg",
                  .properties = {sizeProperty({256, 256}), cropProperty({128, 128}, {0, 0})},
                  .data = PictureBytes::jpeg(plain({256, 256}, red))};
        QVERIFY(!decode(file(main, {item}), whole).isNull());

        item.properties = {sizeProperty({64, 64}), cropProperty({32, 32}, {0, 0})};
        QVERIFY(decode(file(main, {item}), whole).isNull());
    }

    void everyTruncationIsSurvived()
    {
        const auto file =
            HeifBytes::file(main, {coded(main, corners({128, 64}), {turnProperty(1)})});

        for (qsizetype length = 0; length < file.size(); length += 7) {
            const auto image = decode(file.first(length), 32);
            QVERIFY(image.isNull() || image.size() == QSize(16, 32));
        }
    }

    void aCutPictureShowsWhatThereIs()
    {
        QImage noisy(256, 256, QImage::Format_RGB32);
        QRandomGenerator random(1);
        noisy.fill(red);
        for (int row = 128; row < noisy.height(); ++row) {
            random.fillRange(reinterpret_cast<quint32 *>(noisy.scanLine(row)), noisy.width());
        }
        const auto file = HeifBytes::file(main, {coded(main, noisy)});

        const auto image = decode(file.first(file.size() / 2), whole);

        QCOMPARE(image.size(), QSize(256, 256));
        QVERIFY(qRed(image.pixel(20, 20)) > 245 && qGreen(image.pixel(20, 20)) < 10);
    }

    void everyDamageIsSurvived()
    {
        auto items = tiled(2, {red, green, blue, white}, {64, 64}, {128, 128});
        auto thumbnail = coded(2, corners({64, 64}));
        thumbnail.references = {{"thmb", {main}}};
        auto alpha = coded(3, plain({128, 128}, grey),
                           {purposeProperty("urn:mpeg:hevc:2015:auxid:1")}, "400", 10);
        alpha.references = {{"auxl", {main}}};
        const auto sound = file(main, items + QList{thumbnail, alpha});
        QRandomGenerator random(20260101);

        for (int round = 0; round < 1500; ++round) {
            auto damaged = sound;
            const auto flips = random.bounded(1, 12);
            for (int flip = 0; flip < flips; ++flip) {
                const auto at = random.bounded(static_cast<int>(damaged.size()));
                damaged[at] = static_cast<char>(damaged.at(at) ^ (1 << random.bounded(8)));
            }
            const auto image = decode(damaged, 200);
            QVERIFY(image.width() <= 200 && image.height() <= 200);
        }
    }

    void severalThreadsDecodeAtOnce()
    {
        const auto bytes = file(main, tiled(2, {red, green, blue, white}, {64, 64}, {128, 128}));
        const auto expected = decode(bytes, 100);

        std::vector<std::future<QImage>> running;
        for (int thread = 0; thread < 8; ++thread) {
            running.push_back(std::async(std::launch::async,
                                         [this] { return ImageSource::open(m_path)->image(100); }));
        }

        for (auto &one : running) {
            QCOMPARE(one.get(), expected);
        }
    }

private:
    QImage decode(const QByteArray &bytes, std::optional<int> maxPixel) const
    {
        PictureBytes::write(m_path, bytes);
        return ImageSource::open(m_path)->image(maxPixel);
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_path =
        std::filesystem::path(m_directory.path().toStdString()) / "picture.hif";
};

QTEST_MAIN(HeifDamageTest)
#include "HeifDamageTest.moc"
