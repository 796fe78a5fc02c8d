// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/BoxBytes.h"
#include "tests/support/HeifPictures.h"
#include "tests/support/PictureBytes.h"

#include <QColorSpace>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <fstream>
#include <string>

using namespace HeifBytes;
using namespace HeifPictures;
using BoxBytes::sizeProperty;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool measuresMemory = false;
#else
constexpr bool measuresMemory = true;
#endif

/// What the process took at most, in MiB, since it was last asked.
qint64 peakMemory()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    qint64 peak = 0;
    while (std::getline(status, line)) {
        if (line.starts_with("VmHWM:")) {
            peak = std::stoll(line.substr(6)) / 1024;
        }
    }
    std::ofstream("/proc/self/clear_refs") << 5;
    return peak;
}

/// A grid of 64 x 64 times the item 2, each @p tile large.
Item largeGrid(QSize tile)
{
    const auto size = tile * 64;
    return {.id = main,
            .type = "grid",
            .properties = {sizeProperty(size)},
            .data = gridData(64, 64, size),
            .references = {{"dimg", QList<quint16>(4096, 2)}}};
}

/// Three storeys of overlays of @p size, each of which names the one below 16 times.
QList<Item> piledOverlays(QSize size)
{
    QList<Item> items;
    for (quint16 id = main; id < main + 3; ++id) {
        items.append({.id = id,
                      .type = "iovl",
                      .properties = {sizeProperty(size)},
                      .data = overlayData(size, QList<QPoint>(16)),
                      .references = {{"dimg", QList<quint16>(16, id + 1)}}});
    }
    items.append(coded(main + 3, plain({64, 64}, red)));
    return items;
}

} // namespace

/// HEIF files of few bytes that name some of them again and again: they cost neither much time nor
/// much memory.
class HeifCostTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!canEncode()) {
            QSKIP("libheif has no HEVC encoder");
        }
    }

    void littleIsDone_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("shown");

        const auto tile = coded(2, plain({64, 64}, red));
        QTest::newRow("one tile, many times") << file(main, {largeGrid({64, 64}), tile}) << true;
        auto profiled = tile;
        const auto profile = QColorSpace(QColorSpace::SRgb).iccProfile();
        constexpr qsizetype large = 4 * 1024 * 1024 - 64;
        profiled.properties.append(
            profileProperty(profile + QByteArray(large - profile.size(), '\0')));
        QTest::newRow("one tile with a large profile, many times")
            << file(main, {largeGrid({64, 64}), profiled}) << true;
        auto configured = tile;
        configured.properties += QList<QByteArray>(
            250, BoxBytes::box("hvcC", tile.properties.at(1).mid(8) + QByteArray(16000, '\0')));
        QTest::newRow("one tile with many configurations, many times")
            << file(main, {largeGrid({64, 64}), configured}) << true;
        auto padded = tile;
        constexpr char unit[] = "\0\xc0\0\0\x7e\1"; // 12 MiB of a kind that nobody reads
        padded.data.prepend(QByteArray(unit, 6) + QByteArray(0xc00000 - 2, '\x5a'));
        QTest::newRow("one tile of many bytes, many times")
            << file(main, {largeGrid({64, 64}), padded}) << false;
        auto larger = coded(2, plain({3008, 2000}, red));
        larger.properties[0] = sizeProperty({64, 64});
        QTest::newRow("one tile, far larger than said, many times")
            << file(main, {largeGrid({64, 64}), larger}) << false;
        larger.properties.removeFirst();
        QTest::newRow("one large tile that does not say how large, many times")
            << file(main, {largeGrid({64, 64}), larger}) << false;
        auto named = tile;
        named.id = main;
        auto small = coded(2, plain({64, 64}, red), QList<QByteArray>(200, sizeProperty({64, 64})));
        small.references = QList<Reference>(30, {"thmb", QList<quint16>(60'000, main)});
        small.references += QList<Reference>(30, {"auxl", QList<quint16>(60'000, main)});
        QTest::newRow("one thumbnail, many times") << file(main, {named, small}) << true;
        const auto stream = PictureBytes::jpeg(plain({3000, 2000}, red));
        const Item wrong{
            .id = 2, .type = "jpeg", .properties = {sizeProperty({10, 10})}, .data = stream};
        QTest::newRow("one JPEG stream, far larger than said, many times")
            << file(main, {largeGrid({10, 10}), wrong}) << false;
        auto honest = wrong;
        honest.properties[0] = sizeProperty({3000, 2000});
        QTest::newRow("one large JPEG stream, many times")
            << file(main, {largeGrid({10, 10}), honest}) << false;
        const Item spot{.id = 2,
                        .type = "jpeg",
                        .properties = {sizeProperty({8, 8})},
                        .data = PictureBytes::jpeg(plain({8, 8}, red))};
        QTest::newRow("one small JPEG stream, many times")
            << file(main, {largeGrid({8, 8}), spot}) << true;
        QTest::newRow("overlays over overlays") << file(main, piledOverlays({5000, 4000})) << false;
    }

    void littleIsDone()
    {
        QFETCH(QByteArray, file);
        PictureBytes::write(m_path, file);
        (void)peakMemory();
        const auto before = peakMemory();
        QElapsedTimer timer;
        timer.start();

        const auto image = ImageSource::open(m_path)->image(256);

        // A few seconds on a busy machine, and the picture itself; it was minutes and gigabytes.
        constexpr qint64 mostTime = 20'000;
        constexpr qint64 mostMemory = 512;
        const auto time = timer.elapsed();
        const auto memory = peakMemory() - before;
        qInfo("%lld ms, %lld MiB", time, memory);
        QVERIFY(time < mostTime);
        QVERIFY(!measuresMemory || (before > 0 && memory < mostMemory));
        QTEST(!image.isNull(), "shown");
    }

private:
    QTemporaryDir m_directory;
    std::filesystem::path m_path =
        std::filesystem::path(m_directory.path().toStdString()) / "picture.hif";
};

QTEST_MAIN(HeifCostTest)
#include "HeifCostTest.moc"
