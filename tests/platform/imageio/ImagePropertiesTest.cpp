// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/PictureBytes.h"

#include <QBuffer>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <atomic>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;
using namespace PictureBytes;

namespace {

QByteArray png(const QImage &image)
{
    QBuffer buffer;
    image.save(&buffer, "PNG");
    return buffer.data();
}

/// Of a chunk's type and content (PNG, annex D).
quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = ~0U;
    for (const char byte : bytes) {
        sum ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum & 1) != 0 ? 0xedb88320U ^ sum >> 1 : sum >> 1;
        }
    }
    return ~sum;
}

/// A PNG picture with a packet of XMP whose namespace no other file has.
QByteArray pngWithXmp(int number)
{
    const auto packet =
        QByteArray(
            "<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
            "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
            "<rdf:Description rdf:about='' xmlns:own%='http://example.org/%/' own%:name='x'/>"
            "</rdf:RDF></x:xmpmeta>")
            .replace('%', QByteArray::number(number));
    const auto chunk = QByteArray("iTXtXML:com.adobe.xmp\0\0\0\0\0", 26) + packet;
    const auto length = static_cast<quint64>(chunk.size()) - 4;
    constexpr qsizetype headerEnd = 33;
    return png(corners({8, 8}))
        .insert(headerEnd, PictureBytes::number(length, 4, Order::Big) + chunk +
                               PictureBytes::number(checksum(chunk), 4, Order::Big));
}

qsizetype openDescriptors()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System).size();
}

} // namespace

class ImagePropertiesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsNoRegularFileIsNotOpened()
    {
        const auto fifo = m_folder / "fifo.jpg";
        QCOMPARE(::mkfifo(fifo.c_str(), 0600), 0);

        QVERIFY(!ImageSource::open(fifo)); // and does not wait for a writer
        QVERIFY(!ImageSource::open(m_folder));
        QVERIFY(!ImageSource::open(m_folder / "gone.jpg"));
        QVERIFY(!ImageSource::open("/dev/zero"));
    }

    void theContentTellsTheKindNotTheName()
    {
        QCOMPARE(propertiesOf(jpeg(corners({30, 20})), "named.RAF"),
                 (PropertyDictionary{{u"PixelWidth"_s, 30LL}, {u"PixelHeight"_s, 20LL}}));
    }

    void noPictureHasNoProperties()
    {
        QVERIFY(!read("No picture.", "text.jpg"));
        QVERIFY(!read("", "empty.jpg"));
        QVERIFY(!read(QByteArray(100'000, '\0'), "zeros.jpg"));
        QVERIFY(!read("II*", "short.tif"));
        QVERIFY(!read(QByteArray("\xff\xd8\xff", 3), "start.jpg"));
    }

    void typesArePassedOnAsTheFileHasThem()
    {
        const auto exif = exifOf({fraction(0x829a, 1, 250), shorts(0x829d, {4}),
                                  longs(0x8827, {400}), shorts(0x9214, {1, 2})});

        QCOMPARE(exif.value(u"ExposureTime"_s), QVariant(0.004));
        QCOMPARE(exif.value(u"FNumber"_s), QVariant(4LL));
        QCOMPARE(exif.value(u"ISOSpeedRatings"_s), QVariant(QVariantList{400LL}));
        QCOMPARE(exif.value(u"SubjectArea"_s), QVariant(QVariantList{1LL, 2LL}));
    }

    void aFractionOverZeroIsAbsent()
    {
        QVERIFY(!exifOf({fraction(0x829a, 1, 0)}).contains(u"ExposureTime"_s));
    }

    void aTextEndsWithItsFirstNul()
    {
        QCOMPARE(exifOf({text(0xa434, QByteArray("XF35\0junk", 9))}).value(u"LensModel"_s),
                 QVariant(u"XF35"_s));
    }

    void bothByteOrdersAreRead()
    {
        const auto block = exifBlock({shorts(0x0112, {8}, Order::Big)},
                                     {fraction(0x829d, 28, 10, Order::Big)}, {}, Order::Big);

        const auto properties = propertiesOf(withExif(jpeg(corners({8, 8})), block), "big.jpg");

        QCOMPARE(integerValue(properties, u"Orientation"_s), std::optional<qint64>(8));
        QCOMPARE(properties.value(u"{Exif}"_s).toMap().value(u"FNumber"_s), QVariant(2.8));
    }

    void everyTagOfFujifilmHasItsName()
    {
        const auto note = fujiNote({
            shorts(0x1003, {0x500}),
            signedLongs(0x100a, {40, -60}),
            signedLongs(0x1040, {-16}),
            signedLongs(0x1041, {32}),
            signedLongs(0x1047, {0x20}),
            signedLongs(0x1048, {0x40}),
            shorts(0x104c, {0x10}),
            signedLongs(0x104e, {0x20}),
            shorts(0x1401, {0x600}),
            shorts(0x1402, {1}),
            shorts(0x1403, {400}),
        });
        const auto block = exifBlock({}, {opaque(0x927c, note)}, {}, Order::Little);

        const auto properties = propertiesOf(withExif(jpeg(corners({8, 8})), block), "fuji.jpg");

        const PropertyDictionary expected = {
            {u"Saturation"_s, 0x500LL},
            {u"WhiteBalanceFineTune"_s, QVariantList{40LL, -60LL}},
            {u"ShadowTone"_s, -16LL},
            {u"HighlightTone"_s, 32LL},
            {u"GrainEffectRoughness"_s, 0x20LL},
            {u"ColorChromeEffect"_s, 0x40LL},
            {u"GrainEffectSize"_s, 0x10LL},
            {u"ColorChromeFXBlue"_s, 0x20LL},
            {u"FilmMode"_s, 0x600LL},
            {u"DynamicRangeSetting"_s, 1LL},
            {u"DevelopmentDynamicRange"_s, 400LL},
        };
        QCOMPARE(properties.value(u"{MakerFuji}"_s).toMap(), expected);
    }

    void anotherMakersNoteIsNoFujifilmNote()
    {
        const auto block = exifBlock({}, {opaque(0x927c, QByteArray("Nikon\0\2\0\0\0", 10))});

        QVERIFY(!propertiesOf(withExif(jpeg(corners({8, 8})), block), "nikon.jpg")
                     .contains(u"{MakerFuji}"_s));
    }

    void theSizeIsFoundBehindLargeSegments()
    {
        auto stream = jpeg(corners({30, 20}));
        for (int segment = 0; segment < 5; ++segment) {
            stream = withSegment(stream, 0xe5, QByteArray(65'000, 'x'));
        }

        const auto properties = propertiesOf(stream, "far.jpg");

        QCOMPARE(integerValue(properties, u"PixelWidth"_s), std::optional<qint64>(30));
        QCOMPARE(integerValue(properties, u"PixelHeight"_s), std::optional<qint64>(20));
    }

    void aRafHasTheSensorsSizeAndTheJpegsSettings()
    {
        const auto block = exifBlock({shorts(0x0112, {6})}, {fraction(0x829d, 28, 10)});
        const auto file = raf(withExif(jpeg(corners({30, 20})), block), {6240, 4160});

        const auto properties = propertiesOf(file, "shot.raf");

        QCOMPARE(integerValue(properties, u"PixelWidth"_s), std::optional<qint64>(6240));
        QCOMPARE(integerValue(properties, u"PixelHeight"_s), std::optional<qint64>(4160));
        QCOMPARE(integerValue(properties, u"Orientation"_s), std::optional<qint64>(6));
        QCOMPARE(properties.value(u"{Exif}"_s).toMap().value(u"FNumber"_s), QVariant(2.8));
    }

    void anX3fHasTheSensorsSizeAndTheJpegsSettings_data()
    {
        QTest::addColumn<quint16>("version");
        QTest::newRow("older cameras") << quint16{2};
        QTest::newRow("newer cameras") << quint16{4};
    }

    void anX3fHasTheSensorsSizeAndTheJpegsSettings()
    {
        QFETCH(quint16, version);
        const auto block = exifBlock({shorts(0x0112, {6})}, {fraction(0x829d, 28, 10)});
        const auto file = x3f(withExif(jpeg(corners({30, 20})), block), {2640, 1760}, version);

        const auto properties = propertiesOf(file, "shot.x3f");

        QCOMPARE(integerValue(properties, u"PixelWidth"_s), std::optional<qint64>(2640));
        QCOMPARE(integerValue(properties, u"PixelHeight"_s), std::optional<qint64>(1760));
        QCOMPARE(integerValue(properties, u"Orientation"_s), std::optional<qint64>(6));
        QCOMPARE(properties.value(u"{Exif}"_s).toMap().value(u"FNumber"_s), QVariant(2.8));
    }

    void anX3fThatWasCutHasNoProperties()
    {
        const auto file = x3f(jpeg(corners({30, 20})), {2640, 1760});

        QVERIFY(!read(file.chopped(4), "cut.x3f"));
    }

    void aRawFileBelowAPreviewHasTheSensorsSize()
    {
        const auto sensor =
            directory({longs(0x00fe, {0}), longs(0x0100, {6000}), longs(0x0101, {4000})}, 8, 0);
        const auto mainAt = static_cast<quint32>(8 + sensor.size());
        const auto file = "II" + number(42, 2) + number(mainAt, 4) + sensor +
                          directory({longs(0x00fe, {1}), longs(0x0100, {160}), longs(0x0101, {120}),
                                     longs(0x014a, {8})},
                                    mainAt, 0);

        const auto properties = propertiesOf(file, "shot.nef");

        QCOMPARE(integerValue(properties, u"PixelWidth"_s), std::optional<qint64>(6000));
        QCOMPARE(integerValue(properties, u"PixelHeight"_s), std::optional<qint64>(4000));
    }

    void everyTruncationIsSurvived()
    {
        const auto note = fujiNote({shorts(0x1401, {0x600})});
        const auto block = exifBlock({shorts(0x0112, {6})}, {opaque(0x927c, note)});
        const auto file = raf(withExif(jpeg(corners({16, 16})), block), {100, 80});

        for (qsizetype length = 0; length < file.size(); ++length) {
            const auto properties = read(file.first(length), "cut.raf");
            QVERIFY(!properties || properties->size() <= 5);
        }
    }

    void everyDamagedByteIsSurvived()
    {
        const auto note = fujiNote({signedLongs(0x100a, {40, -60})});
        const auto block =
            exifBlock({shorts(0x0112, {6})}, {fraction(0x829a, 1, 250), opaque(0x927c, note)});
        const auto file = withExif(jpeg(corners({16, 16})), block);

        for (qsizetype at = 0; at < 400; ++at) {
            for (const char value : {'\0', '\x7f', '\xff'}) {
                auto damaged = file;
                damaged[at] = value;
                const auto properties = read(damaged, "damaged.jpg");
                QVERIFY(!properties || properties->size() <= 5);
            }
        }
    }

    void directoriesThatLeadInACircleEnd()
    {
        // Each of the two is the next and the one below of the other and of itself.
        const QList<Field> fields = {longs(0x00fe, {1}), longs(0x014a, {8, 100, 8, 100}),
                                     longs(0x8769, {8})};
        const auto block = ("II" + number(42, 2) + number(8, 4) + directory(fields, 8, 100))
                               .leftJustified(100, '\0') +
                           directory(fields, 100, 8);
        write(m_folder / "circle.tif", block);
        const auto source = ImageSource::open(m_folder / "circle.tif");

        QVERIFY(source->properties());
        QVERIFY(source->image(256).isNull());
        QVERIFY(source->image(std::nullopt).isNull());
    }

    void fillBytesAreNoSegments()
    {
        const auto stream = jpeg(corners({30, 20}));

        QCOMPARE(propertiesOf(stream.first(2) + QByteArray(2000, '\xff') + stream.mid(2), "f.jpg"),
                 propertiesOf(stream, "plain.jpg"));
        QCOMPARE(propertiesOf(stream.first(2) + QByteArray("\xff\xe5\0\2zz", 6).repeated(900) +
                                  QByteArray(60'000, '\xff') + stream.mid(2),
                              "filled.jpg"),
                 propertiesOf(stream, "plain.jpg"));
    }

    void fillBytesAndSegmentsWithoutEndAreGivenUp()
    {
        const auto stream = jpeg(corners({30, 20}));
        const auto filled = [&stream](const QByteArray &filling) {
            return stream.first(2) + filling + stream.mid(2);
        };

        QVERIFY(!read(filled(QByteArray(70'000, '\xff')), "filled.jpg"));
        QVERIFY(!read(filled("\xff\xe5" + QByteArray(70'000, '\0')), "strayed.jpg"));
        QVERIFY(!read(filled(QByteArray("\xff\xe5\0\2", 4).repeated(1001)), "many.jpg"));
    }

    void noDescriptorStaysOpen()
    {
        write(m_folder / "plain.jpg", jpeg(corners({8, 8})));
        const auto before = openDescriptors();

        for (int time = 0; time < 20; ++time) {
            const auto source = ImageSource::open(m_folder / "plain.jpg");
            QVERIFY(source->properties());
            QVERIFY(!source->image(std::nullopt).isNull());
        }

        QCOMPARE(openDescriptors(), before);
    }

    void severalThreadsReadAtOnce()
    {
        const auto note = fujiNote({shorts(0x1401, {0x600})});
        const auto block = exifBlock({shorts(0x0112, {6})}, {opaque(0x927c, note)});
        const auto path = m_folder / "shared.jpg";
        write(path, withExif(jpeg(corners({300, 200})), block));
        const auto expected = ImageSource::open(path)->properties();
        const auto picture = ImageSource::open(path)->image(100);
        std::atomic_int different = 0;

        std::vector<std::thread> threads;
        for (int thread = 0; thread < 8; ++thread) {
            threads.emplace_back([&] {
                for (int time = 0; time < 25; ++time) {
                    const auto source = ImageSource::open(path);
                    different += source->properties() != expected;
                    different += source->image(100) != picture;
                }
            });
        }
        for (auto &thread : threads) {
            thread.join();
        }

        QCOMPARE(different, 0);
    }

    void severalThreadsRegisterNamespacesAtOnce()
    {
        constexpr int threadCount = 8;
        constexpr int filesEach = 20;
        for (int file = 0; file < threadCount * filesEach; ++file) {
            write(m_folder / ("xmp" + std::to_string(file)), pngWithXmp(file));
        }
        std::atomic_int read = 0;

        std::vector<std::thread> threads;
        for (int thread = 0; thread < threadCount; ++thread) {
            threads.emplace_back([&, thread] {
                for (int file = thread; file < threadCount * filesEach; file += threadCount) {
                    const auto path = m_folder / ("xmp" + std::to_string(file));
                    const auto properties = ImageSource::open(path)->properties();
                    read += properties && properties->value(u"PixelWidth"_s) == 8LL;
                }
            });
        }
        for (auto &thread : threads) {
            thread.join();
        }

        QCOMPARE(read, threadCount * filesEach);
    }

private:
    std::optional<PropertyDictionary> read(const QByteArray &bytes, const char *name) const
    {
        write(m_folder / name, bytes);
        const auto source = ImageSource::open(m_folder / name);
        return source ? source->properties() : std::nullopt;
    }

    PropertyDictionary propertiesOf(const QByteArray &bytes, const char *name) const
    {
        return read(bytes, name).value_or(PropertyDictionary{{u"none"_s, true}});
    }

    PropertyDictionary exifOf(const QList<Field> &fields) const
    {
        const auto stream = withExif(jpeg(corners({8, 8})), exifBlock({}, fields));
        return propertiesOf(stream, "exif.jpg").value(u"{Exif}"_s).toMap();
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_folder = m_directory.path().toStdString();
};

QTEST_GUILESS_MAIN(ImagePropertiesTest)
#include "ImagePropertiesTest.moc"
