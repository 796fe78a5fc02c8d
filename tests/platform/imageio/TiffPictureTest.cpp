// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/PictureBytes.h"
#include "tests/support/StoredQuarters.h"
#include "tests/support/TiffBytes.h"

#include <QColorSpace>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <cmath>
#include <iterator>

using namespace Qt::StringLiterals;
using TiffBytes::Layout;

namespace {

constexpr auto whole = std::nullopt;

// What the numbers mean is in TIFF 6.0, sections 8 and 16 to 23.
constexpr quint16 whiteIsZero = 0;
constexpr quint16 blackIsZero = 1;
constexpr quint16 rgb = 2;
constexpr quint16 palette = 3;
constexpr quint16 inks = 5;
constexpr quint16 yCbCr = 6;
constexpr quint16 cieLab = 8;
constexpr quint16 iccLab = 9;
constexpr quint16 signedNumbers = 2;
constexpr quint16 floating = 3;
constexpr quint16 associatedAlpha = 1;
constexpr quint16 separateAlpha = 2;

/// Red, green, blue and white by quarters, in reading direction.
using Color = std::array<double, 3>;
constexpr std::array<Color, 4> colors = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}}};
/// What grey pictures have in their place.
constexpr std::array<double, 4> greys = {1, 0, 1, 0};

size_t quarter(const Layout &layout, QPoint at)
{
    return (at.x() >= layout.size.width() / 2 ? 1 : 0) +
           (at.y() >= layout.size.height() / 2 ? 2 : 0);
}

/// The sample of the picture of four quarters at @p at in @p layout.
double sampleOf(const Layout &layout, QPoint at, int sample)
{
    const auto which = quarter(layout, at);
    const auto &color = colors.at(which);
    const auto channel = static_cast<size_t>(sample);
    switch (layout.photometric) {
    case whiteIsZero:
        return 1 - greys.at(which);
    case blackIsZero:
        return greys.at(which);
    case palette:
        return double(which) / ((1 << layout.bits) - 1);
    case inks:
        return sample < 3 ? 1 - color.at(channel) : 0;
    case yCbCr: {
        if (layout.compression == 7) {
            return color.at(channel);
        }
        const double luma = 0.299 * color[0] + 0.587 * color[1] + 0.114 * color[2];
        const double blue = 0.5 + (color[2] - luma) / 1.772;
        const double red = 0.5 + (color[0] - luma) / 1.402;
        return std::clamp(sample == 0 ? luma : sample == 1 ? blue : red, 0.0, 1.0);
    }
    case cieLab:
    case iccLab: {
        // Of sRGB's primaries and white, under D50.
        constexpr std::array<Color, 4> lab = {
            {{54.29, 80.81, 69.89}, {87.82, -79.27, 80.99}, {29.57, 68.30, -112.03}, {100, 0, 0}}};
        const double value = lab.at(which).at(channel);
        const bool icc = layout.photometric == iccLab;
        if (sample == 0) {
            return value / 100 * (icc && layout.bits == 16 ? 65280.0 / 65535 : 1);
        }
        const double units = layout.bits == 16 ? 256 : 1;
        const double steps = icc ? (value + 128) * units : value * units;
        const double range = layout.bits == 16 ? 65536 : 256;
        return std::fmod(steps + range, range) / (range - 1);
    }
    default:
        return color.at(channel);
    }
}

bool isClose(QRgb one, QRgb other, int tolerance)
{
    return std::abs(qRed(one) - qRed(other)) <= tolerance &&
           std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
           std::abs(qBlue(one) - qBlue(other)) <= tolerance;
}

QRgb shownColor(const Layout &layout, size_t which)
{
    if (layout.photometric == whiteIsZero || layout.photometric == blackIsZero) {
        const int grey = static_cast<int>(255 * greys.at(which));
        return qRgb(grey, grey, grey);
    }
    const auto &color = colors.at(which);
    return qRgb(static_cast<int>(255 * color[0]), static_cast<int>(255 * color[1]),
                static_cast<int>(255 * color[2]));
}

/// The colours in the middle of the four quarters, in reading direction.
std::array<QRgb, 4> quarters(const QImage &image)
{
    const int x = image.width() / 4;
    const int y = image.height() / 4;
    return {image.pixel(x, y), image.pixel(3 * x, y), image.pixel(x, 3 * y),
            image.pixel(3 * x, 3 * y)};
}

/// A palette whose first entries are the four colours.
QList<quint16> fourColors(int bits, quint16 largest)
{
    const auto entries = qsizetype{1} << bits;
    QList<quint16> result(3 * entries, 0);
    for (qsizetype entry = 0; entry < 4; ++entry) {
        for (qsizetype channel = 0; channel < 3; ++channel) {
            const auto value = colors.at(size_t(entry)).at(size_t(channel));
            result[channel * entries + entry] = static_cast<quint16>(value * largest);
        }
    }
    return result;
}

struct Page {
    QSize size = {800, 600};
    int grey = 0;
    bool isReduced = false;
    /// The numbers of the pages whose directories are in its own.
    QList<int> within = {};
    quint16 orientation = 0; ///< 0 for no such field
};

/// A TIFF file of plain pages; those within no other follow each other.
QByteArray document(const QList<Page> &pages)
{
    using namespace PictureBytes;
    QByteArray bytes = "II" + number(42, 2) + number(0, 4);
    QList<qint32> data;
    QList<int> inner;
    for (const auto &page : pages) {
        data.append(static_cast<qint32>(bytes.size()));
        bytes += QByteArray(qsizetype{page.size.width()} * page.size.height(), char(page.grey));
        inner += page.within;
    }
    QList<qint32> places(pages.size(), 0);
    QByteArray directories;
    for (int round = 0; round < 2; ++round) { // first for the places
        directories.clear();
        for (int number = 0; number < pages.size(); ++number) {
            const auto &page = pages.at(number);
            QList<Field> fields = {
                longs(0xfe, {page.isReduced ? 1 : 0}), longs(0x100, {page.size.width()}),
                longs(0x101, {page.size.height()}),    shorts(0x102, {8}),
                shorts(0x106, {blackIsZero}),          longs(0x111, {data.at(number)})};
            if (page.orientation != 0) {
                fields.append(shorts(0x112, {page.orientation}));
            }
            fields.append(longs(0x117, {page.size.width() * page.size.height()}));
            if (!page.within.isEmpty()) {
                QList<qint32> within;
                std::ranges::transform(page.within, std::back_inserter(within),
                                       [&](int inside) { return places.at(inside); });
                fields.append(longs(0x14a, within));
            }
            int next = number + 1;
            while (inner.contains(next)) {
                ++next;
            }
            const bool isLast = inner.contains(number) || next == pages.size();
            places[number] = static_cast<qint32>(bytes.size() + directories.size());
            directories += directory(fields, static_cast<quint32>(places.at(number)),
                                     isLast ? 0 : static_cast<quint32>(places.at(next)));
        }
    }
    bytes.replace(4, 4, number(static_cast<quint32>(places.constFirst()), 4));
    return bytes + directories;
}

} // namespace

Q_DECLARE_METATYPE(TiffBytes::Layout)
Q_DECLARE_METATYPE(Page)

class TiffPictureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyLayoutIsShown_data()
    {
        QTest::addColumn<Layout>("layout");

        QTest::newRow("RGB") << Layout{};
        QTest::newRow("RGB, BigTIFF") << Layout{.big = true};
        QTest::newRow("RGB, one strip") << Layout{.rowsPerStrip = 48};
        QTest::newRow("RGB, planes") << Layout{.planar = true};
        QTest::newRow("RGB, planes, deflated") << Layout{.compression = 8, .planar = true};
        QTest::newRow("RGB, tiles") << Layout{.tile = {16, 32}};
        QTest::newRow("RGB, tiles, planes") << Layout{.planar = true, .tile = {32, 16}};
        QTest::newRow("RGB, one tile larger than the picture") << Layout{.tile = {96, 64}};
        QTest::newRow("RGB, 16 bits") << Layout{.bits = 16};
        QTest::newRow("RGB, 16 bits, planes, tiles")
            << Layout{.bits = 16, .planar = true, .tile = {16, 16}};
        QTest::newRow("RGB, 16 bits, LZW") << Layout{.bits = 16, .compression = 5};
        QTest::newRow("RGB, 4 bits") << Layout{.bits = 4};
        QTest::newRow("RGB, 32 bits") << Layout{.bits = 32};
        QTest::newRow("RGB, half floats") << Layout{.bits = 16, .sampleFormat = floating};
        QTest::newRow("RGB, floats") << Layout{.bits = 32, .sampleFormat = floating};
        QTest::newRow("RGB, doubles") << Layout{.bits = 64, .sampleFormat = floating};
        QTest::newRow("RGB and a sample of no meaning")
            << Layout{.samples = 4, .extraSamples = {0}};
        QTest::newRow("grey, 1 bit") << Layout{.bits = 1, .samples = 1, .photometric = blackIsZero};
        QTest::newRow("grey, 1 bit, white is 0")
            << Layout{.bits = 1, .samples = 1, .photometric = whiteIsZero};
        QTest::newRow("grey, 1 bit, fax")
            << Layout{.bits = 1, .samples = 1, .photometric = whiteIsZero, .compression = 4};
        QTest::newRow("grey, 2 bits")
            << Layout{.bits = 2, .samples = 1, .photometric = blackIsZero};
        QTest::newRow("grey, 4 bits")
            << Layout{.bits = 4, .samples = 1, .photometric = blackIsZero};
        QTest::newRow("grey, 8 bits, white is 0")
            << Layout{.samples = 1, .photometric = whiteIsZero};
        QTest::newRow("grey, 16 bits")
            << Layout{.bits = 16, .samples = 1, .photometric = blackIsZero};
        QTest::newRow("grey, 16 bits, white is 0")
            << Layout{.bits = 16, .samples = 1, .photometric = whiteIsZero};
        QTest::newRow("palette, 2 bits") << Layout{
            .bits = 2, .samples = 1, .photometric = palette, .palette = fourColors(2, 65535)};
        QTest::newRow("palette, 8 bits")
            << Layout{.samples = 1, .photometric = palette, .palette = fourColors(8, 65535)};
        QTest::newRow("palette of 8-bit values")
            << Layout{.samples = 1, .photometric = palette, .palette = fourColors(8, 255)};
        QTest::newRow("CMYK") << Layout{.samples = 4, .photometric = inks};
        QTest::newRow("CMYK, 16 bits, planes")
            << Layout{.bits = 16, .samples = 4, .photometric = inks, .planar = true};
        QTest::newRow("YCbCr") << Layout{.photometric = yCbCr, .compression = 5};
        QTest::newRow("YCbCr, tiles")
            << Layout{.photometric = yCbCr, .compression = 5, .tile = {16, 16}};
        QTest::newRow("YCbCr, JPEG, a quarter of the colours")
            << Layout{.photometric = yCbCr, .compression = 7, .rowsPerStrip = 16};
        QTest::newRow("YCbCr, JPEG, tiles")
            << Layout{.photometric = yCbCr, .compression = 7, .tile = {32, 32}};
        QTest::newRow("grey, JPEG") << Layout{
            .samples = 1, .photometric = blackIsZero, .compression = 7, .rowsPerStrip = 16};
        QTest::newRow("L*a*b*") << Layout{.photometric = cieLab};
        QTest::newRow("L*a*b*, 16 bits") << Layout{.bits = 16, .photometric = cieLab};
        QTest::newRow("L*a*b* as ICC has it") << Layout{.photometric = iccLab};
        QTest::newRow("L*a*b* as ICC has it, 16 bits") << Layout{.bits = 16, .photometric = iccLab};
        QTest::newRow("L*a*b*, LZW, planes")
            << Layout{.photometric = cieLab, .compression = 5, .planar = true};
        QTest::newRow("LZW") << Layout{.compression = 5};
        QTest::newRow("Deflate") << Layout{.compression = 8};
        QTest::newRow("Deflate, the old number") << Layout{.compression = 32946};
        QTest::newRow("PackBits") << Layout{.compression = 32773};
        QTest::newRow("LZMA") << Layout{.compression = 34925};
        QTest::newRow("Zstandard") << Layout{.compression = 50000};
        QTest::newRow("WebP") << Layout{.compression = 50001, .rowsPerStrip = 48};
    }

    void everyLayoutIsShown()
    {
        QFETCH(Layout, layout);
        if (!TiffBytes::canCompress(layout.compression)) {
            QSKIP("this libtiff does not know the compression");
        }
        QVERIFY(write(layout));

        const bool isLossy = layout.compression == 7 || layout.compression == 50001;
        const bool isLab = layout.photometric == cieLab || layout.photometric == iccLab;
        // Of a byte each, a* and b* are coarse.
        const int tolerance = isLossy ? 8 : isLab ? (layout.bits == 8 ? 12 : 4) : 1;
        for (const std::optional<int> maxPixel : {std::optional<int>(), std::optional(32)}) {
            const auto image = decode(maxPixel);
            QCOMPARE(image.size(), maxPixel ? QSize(32, 24) : layout.size);
            QCOMPARE(image.format(), QImage::Format_RGB32);
            const auto shown = quarters(image);
            for (size_t which = 0; which < shown.size(); ++which) {
                QVERIFY2(isClose(shown.at(which), shownColor(layout, which), tolerance),
                         qPrintable(u"quarter %1 is %2"_s.arg(which).arg(shown.at(which), 0, 16)));
            }
        }
    }

    void everyOrientationIsShownUpright_data()
    {
        QTest::addColumn<quint16>("code");
        QTest::addColumn<QSize>("tile");
        for (quint16 code = 1; code <= 8; ++code) {
            QTest::addRow("code %d", code) << code << QSize();
            QTest::addRow("code %d, tiles", code) << code << QSize(16, 16);
        }
    }

    void everyOrientationIsShownUpright()
    {
        QFETCH(quint16, code);
        QFETCH(QSize, tile);
        const Layout layout = {.tile = tile, .orientation = code};
        QVERIFY(write(layout));

        for (const std::optional<int> maxPixel : {std::optional<int>(), std::optional(32)}) {
            const auto image = decode(maxPixel);
            QCOMPARE(image.height() > image.width(), code >= 5);
            const auto shown = quarters(image);
            for (size_t corner = 0; corner < 4; ++corner) {
                QCOMPARE(shown.at(corner),
                         shownColor(layout, storedQuarters.at(size_t(code - 1)).at(corner)));
            }
        }
    }

    void transparentPlacesLieOnBlack_data()
    {
        QTest::addColumn<Layout>("layout");
        QTest::addColumn<QRgb>("shown");

        const auto half = qRgb(128, 128, 128);
        const auto full = qRgb(255, 255, 255);
        QTest::newRow("separate") << Layout{.samples = 4, .extraSamples = {separateAlpha}} << half;
        QTest::newRow("separate, 16 bits, planes")
            << Layout{.bits = 16, .samples = 4, .planar = true, .extraSamples = {separateAlpha}}
            << half;
        QTest::newRow("separate, grey")
            << Layout{.samples = 2, .photometric = blackIsZero, .extraSamples = {separateAlpha}}
            << half;
        QTest::newRow("separate, behind another sample")
            << Layout{.samples = 5, .extraSamples = {0, separateAlpha}} << half;
        // The colours are dark already, as the writer must have made them.
        QTest::newRow("associated")
            << Layout{.samples = 4, .extraSamples = {associatedAlpha}} << full;
    }

    void transparentPlacesLieOnBlack()
    {
        QFETCH(Layout, layout);
        const int colorSamples = layout.photometric == rgb ? 3 : 1;
        QVERIFY(TiffBytes::append(
            m_path, layout, [&](QPoint, int sample) { return sample < colorSamples ? 1.0 : 0.5; }));

        const auto image = decode(whole);

        QVERIFY(!image.hasAlphaChannel());
        QTEST(image.pixel(10, 10), "shown");
    }

    void coloursOfAnotherSpaceBecomeSrgb()
    {
        const auto profile = QColorSpace(QColorSpace::DisplayP3).iccProfile();
        for (const quint16 bits : {8, 16}) {
            std::filesystem::remove(m_path);
            QVERIFY(TiffBytes::append(m_path, {.bits = bits, .profile = profile},
                                      [](QPoint, int sample) {
                                          return std::array{0.2, 0.6, 0.4}.at(size_t(sample));
                                      }));

            QImage expected(1, 1, QImage::Format_RGB32);
            expected.fill(qRgb(51, 153, 102));
            expected.setColorSpace(QColorSpace::DisplayP3);
            expected.convertToColorSpace(QColorSpace::SRgb);
            QVERIFY(isClose(decode(whole).pixel(9, 9), expected.pixel(0, 0), 1));
            QVERIFY(!isClose(decode(whole).pixel(9, 9), qRgb(51, 153, 102), 1));
        }
    }

    void floatingPointNumbersAreLight()
    {
        const Layout layout = {.bits = 32, .sampleFormat = floating};
        QVERIFY(TiffBytes::append(m_path, layout, [](QPoint at, int) {
            return std::array{0.2140, 4.0, -1.0, std::nan("")}.at(size_t(at.x() / 16));
        }));

        const auto image = decode(whole);

        QCOMPARE(qGreen(image.pixel(8, 8)), 127);  // half of the codes is a fifth of the light
        QCOMPARE(qGreen(image.pixel(24, 8)), 255); // brighter than white
        QCOMPARE(qGreen(image.pixel(40, 8)), 0);
        QCOMPARE(qGreen(image.pixel(56, 8)), 0);
    }

    void signedNumbersBeginAtBlack()
    {
        QVERIFY(TiffBytes::append(
            m_path, {.samples = 1, .photometric = blackIsZero, .sampleFormat = signedNumbers},
            [](QPoint at, int) { return at.x() < 32 ? 127.0 / 255 : 200.0 / 255; }));

        QCOMPARE(qGreen(decode(whole).pixel(8, 8)), 255);
        QCOMPARE(qGreen(decode(whole).pixel(40, 8)), 0);
    }

    void ofSeveralPagesTheFirstIsShown()
    {
        QVERIFY(write({}));
        QVERIFY(TiffBytes::append(m_path, {.size = {200, 200}}, [](QPoint, int) { return 0.5; }));

        QCOMPARE(decode(whole).size(), QSize(64, 48));
    }

    void aSmallerVersionStandsForASmallPicture_data()
    {
        QTest::addColumn<QSize>("smaller");
        QTest::addColumn<quint32>("subfile");
        QTest::addColumn<std::optional<int>>("maxPixel");
        QTest::addColumn<bool>("used");

        const auto bound = [](int pixels) { return std::optional(pixels); };
        QTest::newRow("just large enough") << QSize(256, 192) << 1U << bound(256) << true;
        QTest::newRow("too small") << QSize(255, 191) << 1U << bound(256) << false;
        QTest::newRow("too small for a screen") << QSize(256, 192) << 1U << bound(300) << false;
        QTest::newRow("another aspect ratio") << QSize(256, 171) << 1U << bound(256) << false;
        QTest::newRow("another page") << QSize(256, 192) << 0U << bound(256) << false;
        QTest::newRow("the whole is wanted")
            << QSize(256, 192) << 1U << std::optional<int>() << false;
    }

    void aSmallerVersionStandsForASmallPicture()
    {
        QFETCH(QSize, smaller);
        QFETCH(quint32, subfile);
        QFETCH(std::optional<int>, maxPixel);
        QFETCH(bool, used);
        QVERIFY(TiffBytes::append(m_path, {.size = {800, 600}, .orientation = 6},
                                  [](QPoint, int sample) { return sample == 2 ? 1.0 : 0.0; }));
        QVERIFY(TiffBytes::append(m_path, {.size = smaller, .orientation = 6, .subfile = subfile},
                                  [](QPoint, int sample) { return sample == 0 ? 1.0 : 0.0; }));

        const auto image = decode(maxPixel);

        QCOMPARE(image.height(), maxPixel.value_or(800));
        QVERIFY(image.width() < image.height());
        QCOMPARE(image.pixel(20, 20), used ? qRgb(255, 0, 0) : qRgb(0, 0, 255));
    }

    void onlyItsOwnSmallerVersionStandsForAPicture_data()
    {
        QTest::addColumn<QList<Page>>("pages");
        QTest::addColumn<int>("shown");

        const Page main = {.grey = 250};
        const Page next = {.grey = 100};
        const Page small = {.size = {400, 300}, .grey = 200, .isReduced = true};
        const Page foreign = {.size = {256, 192}, .grey = 50, .isReduced = true};
        const auto with = [](Page page, const QList<int> &within) {
            page.within = within;
            return page;
        };
        QTest::newRow("behind it") << QList{main, small} << 200;
        QTest::newRow("behind it, and one behind another")
            << QList{main, small, next, foreign} << 200;
        QTest::newRow("behind another") << QList{main, next, foreign} << 250;
        QTest::newRow("in front of it") << QList{foreign, main} << 250;
        QTest::newRow("within it") << QList{with(main, {1}), small} << 200;
        QTest::newRow("within it, and others within another")
            << QList{with(main, {1}), small, with(next, {3}), foreign} << 200;
        QTest::newRow("within it, behind a part that is none")
            << QList{with(main, {1, 2}), next, small} << 200;
        QTest::newRow("within another") << QList{main, with(next, {2}), foreign} << 250;
        QTest::newRow("beside it, within one in front")
            << QList{with(foreign, {1, 2}), main, small} << 200;
    }

    void onlyItsOwnSmallerVersionStandsForAPicture()
    {
        QFETCH(QList<Page>, pages);
        PictureBytes::write(m_path, document(pages));

        QCOMPARE(qGreen(decode(whole).pixel(20, 20)), 250);
        QCOMPARE(decode(256).size(), QSize(256, 192));
        QTEST(qGreen(decode(256).pixel(20, 20)), "shown");
    }

    void aSmallerVersionThatIsTurnedOtherwiseDoesNotStandForIt_data()
    {
        QTest::addColumn<int>("mains");
        QTest::addColumn<int>("smallers");
        QTest::addColumn<bool>("used");
        QTest::newRow("the same") << 3 << 3 << true;
        QTest::newRow("nothing is said of it") << 3 << 0 << true;
        QTest::newRow("it is upright") << 3 << 1 << false;
        QTest::newRow("it alone is turned") << 0 << 3 << false;
        QTest::newRow("it alone is said to be upright") << 0 << 1 << true;
        QTest::newRow("both stand, on other sides") << 6 << 8 << false;
        QTest::newRow("a code that is none") << 3 << 9 << true;
    }

    void aSmallerVersionThatIsTurnedOtherwiseDoesNotStandForIt()
    {
        QFETCH(int, mains);
        QFETCH(int, smallers);
        QFETCH(bool, used);
        PictureBytes::write(m_path, document({{.grey = 250, .orientation = quint16(mains)},
                                              {.size = {400, 300},
                                               .grey = 200,
                                               .isReduced = true,
                                               .orientation = quint16(smallers)}}));

        const auto image = decode(256);

        QCOMPARE(image.height() > image.width(), mains >= 5);
        QCOMPARE(qGreen(image.pixel(20, 20)), used ? 200 : 250);
    }

    void aSmallerVersionOfAnotherProfileDoesNotStandForIt_data()
    {
        QTest::addColumn<QByteArray>("mains");
        QTest::addColumn<QByteArray>("smallers");
        QTest::addColumn<bool>("used");
        const auto wide = QColorSpace(QColorSpace::DisplayP3).iccProfile();
        const auto plain = QColorSpace(QColorSpace::SRgb).iccProfile();
        QTest::newRow("the same") << wide << wide << true;
        QTest::newRow("the picture's alone") << wide << QByteArray() << true;
        QTest::newRow("another") << wide << plain << false;
        QTest::newRow("the smaller one's alone") << QByteArray() << wide << false;
    }

    void aSmallerVersionOfAnotherProfileDoesNotStandForIt()
    {
        QFETCH(QByteArray, mains);
        QFETCH(QByteArray, smallers);
        QFETCH(bool, used);
        const auto grey = [](double value) { return [value](QPoint, int) { return value; }; };
        QVERIFY(TiffBytes::append(m_path, {.size = {800, 600}, .profile = mains}, grey(1)));
        QVERIFY(TiffBytes::append(m_path, {.size = {400, 300}, .profile = smallers, .subfile = 1},
                                  grey(0)));

        QCOMPARE(qGreen(decode(256).pixel(20, 20)), used ? 0 : 255);
    }

    void aSmallerVersionInFrontIsNotThePicture()
    {
        QVERIFY(TiffBytes::append(m_path, {.size = {80, 60}, .subfile = 1},
                                  [](QPoint, int) { return 0.5; }));
        QVERIFY(TiffBytes::append(m_path, {.size = {800, 600}}, [](QPoint, int) { return 1.0; }));

        QCOMPARE(decode(whole).size(), QSize(800, 600));
        QCOMPARE(decode(100).size(), QSize(100, 75));
    }

    void whatIsNoPictureOfOursIsAbsent_data()
    {
        QTest::addColumn<Layout>("layout");

        QTest::newRow("sensor data") << Layout{.samples = 1, .photometric = 32803};
        QTest::newRow("a palette without colours")
            << Layout{.bits = 4, .samples = 1, .photometric = palette};
    }

    void whatIsNoPictureOfOursIsAbsent()
    {
        QFETCH(Layout, layout);
        QVERIFY(TiffBytes::append(m_path, layout, [](QPoint, int) { return 0.5; }));

        QVERIFY(decode(whole).isNull());
        QVERIFY(decode(256).isNull());
    }

    void cleanup() { std::filesystem::remove(m_path); }

private:
    [[nodiscard]] bool write(const Layout &layout) const
    {
        return TiffBytes::append(m_path, layout, [&](QPoint at, int sample) {
            const int colorSamples = layout.photometric == inks ? 4 : 3;
            return sample < colorSamples ? sampleOf(layout, at, sample) : 0.0;
        });
    }

    [[nodiscard]] QImage decode(std::optional<int> maxPixel) const
    {
        return ImageSource::open(m_path)->image(maxPixel);
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_path =
        std::filesystem::path(m_directory.path().toStdString()) / "picture.tif";
};

QTEST_MAIN(TiffPictureTest)
#include "TiffPictureTest.moc"
