// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/PeakMemory.h"
#include "tests/support/PictureBytes.h"
#include "tests/support/StandardError.h"
#include "tests/support/TiffBytes.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <array>
#include <random>
#include <thread>

using namespace Qt::StringLiterals;
using PictureBytes::longs;
using PictureBytes::number;
using PictureBytes::shorts;
using TiffBytes::Layout;

namespace {

constexpr auto whole = std::nullopt;
constexpr qint64 mebibyte = qint64{1024} * 1024;

/// A TIFF file of one directory, with data behind it that its fields may claim.
QByteArray tiffFile(const QList<PictureBytes::Field> &fields, const QByteArray &data = {})
{
    return "II" + number(42, 2) + number(8, 4) + PictureBytes::directory(fields, 8, 0) + data;
}

/// Grey of one byte, claimed to lie in one strip at the beginning of the file.
QByteArray claimed(qint32 width, qint32 height, qint32 rowsPerStrip, quint16 compression,
                   quint16 samples = 1)
{
    return tiffFile({longs(0x100, {width}), longs(0x101, {height}), shorts(0x102, {8}),
                     shorts(0x103, {compression}), shorts(0x106, {1}), longs(0x111, {8}),
                     shorts(0x115, {samples}), longs(0x116, {rowsPerStrip}),
                     longs(0x117, {100'000})},
                    QByteArray(100'000, '\x55'));
}

/// RGBA, deflated, of strips that all lie in the same place, with @p rest behind them.
QByteArray repeated(QSize size, int rowsPerStrip, qsizetype rest = 0)
{
    const QByteArray strip(qsizetype{4} * size.width() * rowsPerStrip, '\x80');
    const auto stored = qCompress(strip, 9).sliced(4); // behind Qt's length
    const auto count = (size.height() + rowsPerStrip - 1) / rowsPerStrip;
    const auto fields = [&](qint32 place) {
        return QList{longs(0x100, {size.width()}),
                     longs(0x101, {size.height()}),
                     shorts(0x102, {8, 8, 8, 8}),
                     shorts(0x103, {8}),
                     shorts(0x106, {2}),
                     longs(0x111, QList<qint32>(count, place)),
                     shorts(0x115, {4}),
                     longs(0x116, {rowsPerStrip}),
                     longs(0x117, QList<qint32>(count, static_cast<qint32>(stored.size()))),
                     shorts(0x152, {2})};
    };
    const auto place = static_cast<qint32>(tiffFile(fields(0)).size());
    return tiffFile(fields(place), stored + QByteArray(rest, '\x55'));
}

} // namespace

Q_DECLARE_METATYPE(TiffBytes::Layout)

/// Damaged, hostile and simultaneous reading of TIFF files.
class TiffDamageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsLeftOfACutPictureIsShown_data()
    {
        QTest::addColumn<Layout>("layout");
        QTest::newRow("strips") << Layout{.size = {160, 160}, .rowsPerStrip = 10};
        QTest::newRow("strips, LZW")
            << Layout{.size = {160, 160}, .compression = 5, .rowsPerStrip = 10};
        QTest::newRow("tiles") << Layout{.size = {160, 160}, .tile = {16, 16}};
    }

    void whatIsLeftOfACutPictureIsShown()
    {
        QFETCH(Layout, layout);
        // The directory stands in front, so that a cut leaves it: after all data it would be lost.
        QVERIFY(TiffBytes::append(m_path, layout, noise));
        auto bytes = read();
        const auto directoryAt = qFromLittleEndian<quint32>(bytes.constData() + 4);
        std::fill(bytes.begin() + directoryAt / 2, bytes.begin() + directoryAt, '\0');
        PictureBytes::write(m_path, bytes);

        const auto image = decode(whole);

        QCOMPARE(image.size(), QSize(160, 160));
        QVERIFY(qGreen(image.pixel(5, 5)) > 0);
        QCOMPARE(image.pixel(155, 155), qRgb(0, 0, 0));
    }

    void everyTruncationIsSurvived_data() { addLayouts(); }

    void everyTruncationIsSurvived()
    {
        QFETCH(Layout, layout);
        QVERIFY(TiffBytes::append(m_path, layout, noise));
        const auto bytes = read();

        StandardError output;
        for (qsizetype length = 0; length < bytes.size(); length += 1 + bytes.size() / 200) {
            verifySurvived(bytes.first(length));
        }
        QCOMPARE(output.text(), QByteArray());
    }

    void everyDamageIsSurvived_data() { addLayouts(); }

    void everyDamageIsSurvived()
    {
        QFETCH(Layout, layout);
        QVERIFY(TiffBytes::append(m_path, layout, noise));
        const auto bytes = read();
        std::mt19937 dice(20240315); // fixed, so that a failure comes again
        const auto directoryAt = qFromLittleEndian<quint32>(bytes.constData() + 4);

        StandardError output;
        for (int round = 0; round < 400; ++round) {
            auto damaged = bytes;
            // Mostly in the directory, where the sizes and places are.
            const auto from = round % 4 == 0 ? 0U : directoryAt;
            for (int flip = 0; flip <= round % 3; ++flip) {
                const auto at = from + dice() % (static_cast<quint32>(bytes.size()) - from);
                damaged[at] = static_cast<char>(damaged.at(at) ^ (1U << dice() % 8));
            }
            verifySurvived(damaged);
        }
        QCOMPARE(output.text(), QByteArray());
    }

    void whatIsTooMuchIsRefusedQuickly_data()
    {
        QTest::addColumn<QByteArray>("file");

        QTest::newRow("a strip of 4 GB") << claimed(60000, 70000, 70000, 5);
        QTest::newRow("400 megapixels and one") << claimed(20001, 20000, 20000, 5);
        QTest::newRow("a hundred thousand strips") << claimed(200, 100'000, 1, 5);
        QTest::newRow("rows of a hundred thousand") << claimed(100'000, 200, 1, 5);
        QTest::newRow("65535 samples") << claimed(10000, 10000, 1, 1, 65535);
        QTest::newRow("a size below zero") << claimed(-5, -5, 1, 1);
        QTest::newRow("a tile of 4 GB")
            << tiffFile({longs(0x100, {100}), longs(0x101, {100}), shorts(0x102, {8}),
                         shorts(0x103, {5}), shorts(0x106, {1}), longs(0x142, {65520}),
                         longs(0x143, {65520}), longs(0x144, {8}), longs(0x145, {100})},
                        QByteArray(1000, '\x55'));
        QTest::newRow("tiles of one pixel")
            << tiffFile({longs(0x100, {20000}), longs(0x101, {20000}), shorts(0x102, {8}),
                         shorts(0x103, {5}), shorts(0x106, {1}), longs(0x142, {1}),
                         longs(0x143, {1}), longs(0x144, {8}), longs(0x145, {100})},
                        QByteArray(1000, '\x55'));
        QTest::newRow("a profile of 4 GB")
            << tiffFile({longs(0x100, {10}), longs(0x101, {10}), shorts(0x102, {8}),
                         longs(0x111, {8}), longs(0x117, {100}),
                         PictureBytes::Field{0x8773, 7, 0xfffffff0, QByteArray(4, '\x10')}},
                        QByteArray(1000, '\x55'));
    }

    void whatIsTooMuchIsRefusedQuickly()
    {
        QFETCH(QByteArray, file);
        const PeakMemory memory;
        QElapsedTimer timer;
        timer.start();

        verifySurvived(file);

        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(memory.bytes() < 256 * mebibyte);
    }

    void whatClaimsFarMoreThanItStoresIsRefusedQuickly_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("strips in one place") << repeated({20000, 20000}, 400);
        QTest::newRow("strips in one place of a large file")
            << repeated({20000, 20000}, 400, 30'000'000);
        QTest::newRow("one strip of a thousand megabytes") << repeated({20000, 13000}, 13000);
        QTest::newRow("white rows of a fax")
            << tiffFile({longs(0x100, {20000}), longs(0x101, {20000}), shorts(0x102, {1}),
                         shorts(0x103, {4}), shorts(0x106, {0}), longs(0x111, {160}),
                         shorts(0x115, {1}), longs(0x116, {20000}), longs(0x117, {2500})},
                        QByteArray(2600, '\xff'));
    }

    void whatClaimsFarMoreThanItStoresIsRefusedQuickly()
    {
        QFETCH(QByteArray, file);
        PictureBytes::write(m_path, file);
        const PeakMemory memory;
        QElapsedTimer timer;
        timer.start();

        QVERIFY(decode(2160).isNull());
        QVERIFY(decode(whole).isNull());

        QVERIFY2(timer.elapsed() < 20'000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(memory.bytes() < 64 * mebibyte);
    }

    void aSmallPictureMayHaveItsStripsInOnePlace()
    {
        PictureBytes::write(m_path, repeated({2000, 1500}, 100));

        const auto image = decode(whole);

        QCOMPARE(image.size(), QSize(2000, 1500));
        // Grey of a half, on black.
        QVERIFY(std::abs(qGreen(image.pixel(1000, 1450)) - 64) <= 1);
    }

    void directoriesInACircleEnd()
    {
        const auto fields = QList{longs(0x00fe, {1}), longs(0x100, {10}),  longs(0x101, {10}),
                                  longs(0x111, {8}),  longs(0x117, {100}), longs(0x14a, {8})};
        const auto file = "II" + number(42, 2) + number(8, 4) +
                          PictureBytes::directory(fields, 8, 8) + QByteArray(1000, '\x55');

        verifySurvived(file);
    }

    void severalThreadsReadAtOnce()
    {
        QVERIFY(TiffBytes::append(m_path, {.size = {300, 200}, .compression = 8}, noise));
        const auto expected = decode(100);
        QVERIFY(!expected.isNull());

        std::array<int, 4> equal = {};
        std::vector<std::thread> threads;
        for (auto &count : equal) {
            threads.emplace_back([&] {
                for (int round = 0; round < 20; ++round) {
                    count += decode(100) == expected ? 1 : 0;
                }
            });
        }
        for (auto &thread : threads) {
            thread.join();
        }

        QCOMPARE(equal, (std::array{20, 20, 20, 20}));
    }

    void cleanup() { std::filesystem::remove(m_path); }

private:
    static void addLayouts()
    {
        QTest::addColumn<Layout>("layout");
        QTest::newRow("plain") << Layout{};
        QTest::newRow("BigTIFF") << Layout{.big = true};
        QTest::newRow("LZW, 16 bits") << Layout{.bits = 16, .compression = 5};
        QTest::newRow("Deflate, planes") << Layout{.compression = 8, .planar = true};
        QTest::newRow("tiles") << Layout{.compression = 8, .tile = {16, 16}};
        QTest::newRow("JPEG") << Layout{.photometric = 6, .compression = 7, .rowsPerStrip = 16};
        QTest::newRow("JPEG, tiles")
            << Layout{.photometric = 6, .compression = 7, .tile = {16, 16}};
        QTest::newRow("YCbCr") << Layout{.photometric = 6, .compression = 5};
        QTest::newRow("fax") << Layout{.bits = 1, .samples = 1, .photometric = 0, .compression = 4};
        QTest::newRow("PackBits, palette") << Layout{.bits = 4,
                                                     .samples = 1,
                                                     .photometric = 3,
                                                     .compression = 32773,
                                                     .palette = QList<quint16>(48, 999)};
    }

    /// Bright everywhere, and the same in every run.
    static double noise(QPoint at, int sample)
    {
        return (128 + (at.x() * 37 + at.y() * 91 + sample * 53) % 128) / 255.0;
    }

    void verifySurvived(const QByteArray &bytes) const
    {
        const PeakMemory memory;
        QElapsedTimer timer;
        timer.start();
        PictureBytes::write(m_path, bytes);
        const auto source = ImageSource::open(m_path);
        (void)source->properties();
        const auto image = source->image(16);
        QVERIFY(image.width() <= 16 && image.height() <= 16);
        (void)source->image(whole);
        QVERIFY2(timer.elapsed() < 20'000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(memory.bytes() < 1024 * mebibyte);
    }

    [[nodiscard]] QByteArray read() const
    {
        QFile file(QString::fromStdString(m_path.string()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] QImage decode(std::optional<int> maxPixel) const
    {
        return ImageSource::open(m_path)->image(maxPixel);
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_path =
        std::filesystem::path(m_directory.path().toStdString()) / "picture.tif";
};

QTEST_GUILESS_MAIN(TiffDamageTest)
#include "TiffDamageTest.moc"
