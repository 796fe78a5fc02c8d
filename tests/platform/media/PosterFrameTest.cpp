// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/PosterFrame.h"
#include "platform/imageio/ToneCurve.h"
#include "tests/support/PictureSimilarity.h"

#include <QColor>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

using namespace Qt::StringLiterals;

namespace {

bool isClose(QRgb one, QRgb other)
{
    constexpr int tolerance = 24; // of the clip's lossy colours
    return std::abs(qRed(one) - qRed(other)) <= tolerance &&
           std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
           std::abs(qBlue(one) - qBlue(other)) <= tolerance;
}

} // namespace

class PosterFrameTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstFrameIsShownAndFits()
    {
        // Red for half a second, then blue; 640 x 360.
        if (!make("clip.mov", {})) {
            QSKIP("the ffmpeg command is missing");
        }

        const auto image = posterFrame(m_folder / "clip.mov");

        QCOMPARE(image.size(), QSize(256, 144));
        QCOMPARE(image.format(), QImage::Format_RGB32);
        QVERIFY(isClose(image.pixel(200, 70), qRgb(255, 0, 0)));
        QVERIFY(isClose(image.pixel(10, 10), qRgb(0, 128, 0))); // the top left corner is marked
    }

    void aSmallClipIsNotEnlarged()
    {
        if (!make("small.mp4", {u"-s"_s, u"64x36"_s})) {
            QSKIP("the ffmpeg command is missing");
        }

        QCOMPARE(posterFrame(m_folder / "small.mp4").size(), QSize(64, 36));
    }

    void aTurnedClipIsShownUpright_data()
    {
        // The command writes a matrix that turns by these degrees anticlockwise.
        QTest::addColumn<int>("degrees");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPoint>("mark");

        QTest::newRow("as it is") << 0 << QSize(256, 144) << QPoint(10, 10);
        QTest::newRow("anticlockwise") << 90 << QSize(144, 256) << QPoint(10, 246);
        QTest::newRow("upside down") << 180 << QSize(256, 144) << QPoint(246, 134);
        QTest::newRow("clockwise") << 270 << QSize(144, 256) << QPoint(134, 10);
    }

    void aTurnedClipIsShownUpright()
    {
        QFETCH(int, degrees);
        QFETCH(QSize, size);
        QFETCH(QPoint, mark);
        if (!make("straight.mov", {}) ||
            !run({u"-i"_s, path("straight.mov"), u"-c"_s, u"copy"_s, u"-metadata:s:v:0"_s,
                  u"rotate=%1"_s.arg(degrees), path("turned.mov")})) {
            QSKIP("the ffmpeg command is missing");
        }

        const auto image = posterFrame(m_folder / "turned.mov");

        QCOMPARE(image.size(), size);
        QVERIFY(isClose(image.pixel(mark), qRgb(0, 128, 0)));
    }

    void whatIsNoClipHasNoFrame()
    {
        std::ofstream(m_folder / "text.mov") << "No clip.";
        std::ofstream(m_folder / "empty.mov").flush();
        std::ofstream(m_folder / "list.avi") << "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n"
                                             << (m_folder / "clip.mov").string() << "\n";
        QCOMPARE(::mkfifo((m_folder / "fifo.mov").c_str(), 0600), 0);

        for (const auto *name :
             {"text.mov", "empty.mov", "list.avi", "fifo.mov", "gone.mov", "."}) {
            QVERIFY(posterFrame(m_folder / name).isNull());
        }
    }

    void aClipThatIsCutIsSurvived()
    {
        if (!make("whole.mov", {u"-movflags"_s, u"faststart"_s})) {
            QSKIP("the ffmpeg command is missing");
        }
        const auto size = std::filesystem::file_size(m_folder / "whole.mov");
        for (std::uintmax_t length = 0; length < size; length += size / 40 + 1) {
            std::filesystem::copy_file(m_folder / "whole.mov", m_folder / "cut.mov",
                                       std::filesystem::copy_options::overwrite_existing);
            std::filesystem::resize_file(m_folder / "cut.mov", length);
            const auto image = posterFrame(m_folder / "cut.mov");
            QVERIFY(image.isNull() || image.size() == QSize(256, 144));
        }
    }

    void everyExtensionAndUsualCodecHasAFrame_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("coding");

        const QStringList h264 = {u"-c:v"_s, u"libx264"_s, u"-pix_fmt"_s, u"yuv420p"_s};
        QTest::newRow("MOV, H.264") << u"clip.MOV"_s << h264;
        QTest::newRow("MOV, H.264 10 bit 4:2:2")
            << u"clip.mov"_s
            << QStringList{u"-c:v"_s, u"libx264"_s, u"-pix_fmt"_s, u"yuv422p10le"_s};
        QTest::newRow("MOV, HEVC 10 bit")
            << u"clip.mov"_s << QStringList{u"-c:v"_s,        u"libx265"_s,  u"-x265-params"_s,
                                            u"log-level=0"_s, u"-pix_fmt"_s, u"yuv420p10le"_s};
        QTest::newRow("MOV, ProRes") << u"clip.mov"_s << QStringList{u"-c:v"_s, u"prores"_s};
        QTest::newRow("MP4, H.264") << u"clip.MP4"_s << h264;
        QTest::newRow("MP4, with frames that refer to later ones")
            << u"clip.mp4"_s << h264 + QStringList{u"-bf"_s, u"3"_s};
        QTest::newRow("M4V, MPEG-4") << u"clip.M4V"_s << QStringList();
        QTest::newRow("AVI, Motion JPEG")
            << u"clip.AVI"_s << QStringList{u"-c:v"_s, u"mjpeg"_s, u"-pix_fmt"_s, u"yuvj422p"_s};
        QTest::newRow("MTS, H.264") << u"clip.MTS"_s << h264;
        QTest::newRow("M2TS, MPEG-2")
            << u"clip.M2TS"_s << QStringList{u"-c:v"_s, u"mpeg2video"_s, u"-r"_s, u"25"_s};
        QTest::newRow("3GP, H.264") << u"clip.3GP"_s << h264;
    }

    void everyExtensionAndUsualCodecHasAFrame()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, coding);
        const auto bytes = name.toLatin1();
        if (!make(bytes.constData(), coding)) {
            QSKIP("the ffmpeg command is missing, or does not write this");
        }

        const auto image = posterFrame(m_folder / bytes.toStdString());

        QCOMPARE(image.size(), QSize(256, 144));
        QVERIFY(isClose(image.pixel(200, 70), qRgb(255, 0, 0)));
        QVERIFY(isClose(image.pixel(10, 10), qRgb(0, 128, 0)));
    }

    void theColoursAreThoseOfTheClipsDefinition_data()
    {
        QTest::addColumn<QString>("size");
        QTest::addColumn<QString>("matrix");

        QTest::newRow("high definition") << u"1280x720"_s << u"bt709"_s;
        QTest::newRow("upright, of a telephone") << u"720x1280"_s << u"bt709"_s;
        QTest::newRow("standard definition") << u"720x576"_s << u"bt601"_s;
    }

    void theColoursAreThoseOfTheClipsDefinition()
    {
        QFETCH(QString, size);
        QFETCH(QString, matrix);
        if (!run({u"-f"_s, u"lavfi"_s, u"-i"_s,
                  u"color=0x20C080:s=%1:d=0.2:r=10,scale=out_color_matrix=%2,format=yuv420p"_s.arg(
                      size, matrix),
                  u"-c:v"_s, u"mpeg4"_s, u"-q:v"_s, u"1"_s, path("untold.mov")})) {
            QSKIP("the ffmpeg command is missing");
        }

        const auto image = posterFrame(m_folder / "untold.mov");

        const auto middle = image.pixel(image.width() / 2, image.height() / 2);
        QVERIFY2(isClose(middle, qRgb(0x20, 0xC0, 0x80)), qPrintable(QColor(middle).name()));
    }

    void highDynamicRangeIsDrawnIn_data()
    {
        QTest::addColumn<QString>("curve");
        QTest::addColumn<int>("transfer");

        QTest::newRow("HLG") << u"arib-std-b67"_s << 18;
        QTest::newRow("PQ") << u"smpte2084"_s << 16;
    }

    void highDynamicRangeIsDrawnIn()
    {
        QFETCH(QString, curve);
        QFETCH(int, transfer);
        constexpr int coded = 0xC0;
        if (!run({u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=0xC0C0C0:s=640x360:d=0.2:r=10"_s, u"-c:v"_s,
                  u"libx264"_s, u"-pix_fmt"_s, u"yuv420p10le"_s, u"-color_primaries"_s, u"bt2020"_s,
                  u"-color_trc"_s, curve, u"-colorspace"_s, u"bt2020nc"_s, path("bright.mov")})) {
            QSKIP("the ffmpeg command is missing");
        }
        const auto &table = *ToneCurve::table(transfer);
        const auto drawnIn = [&table](int value) {
            return int{table[static_cast<size_t>(value * (ToneCurve::steps - 1) / 255)]};
        };

        const auto image = posterFrame(m_folder / "bright.mov");

        const auto middle = image.pixel(100, 70);
        QVERIFY(qGreen(middle) >= drawnIn(coded - 2) && qGreen(middle) <= drawnIn(coded + 2));
        QVERIFY(std::abs(qRed(middle) - qBlue(middle)) <= 2);
        QVERIFY(drawnIn(coded - 2) > coded + 20); // as bright as on the screen it was made for
    }

    /// The command decodes with the same library, but picks the frame, turns, scales and converts
    /// by itself.
    void realClipsAreAsTheCommandShowsThem_data() { addRealFiles({"video"}); }

    void realClipsAreAsTheCommandShowsThem()
    {
        QFETCH(QString, file);
        constexpr QSize compared(32, 32);
        const auto shown = path("shown.png");
        QFile::remove(shown);
        (void)run({u"-i"_s, file, u"-frames:v"_s, u"1"_s, u"-vf"_s,
                   u"scale=256:256:flags=area,format=rgb24"_s, shown});
        const bool isShown = QFile::exists(shown); // it says yes also when there is no frame

        const auto image = posterFrame(file.toStdString());

        QCOMPARE(!image.isNull(), isShown);
        if (file.endsWith(u"androidx_sample_with_color_info.mp4"_s)) {
            QSKIP("the other does not draw in high dynamic range");
        }
        if (isShown) {
            const auto difference = PictureSimilarity::meanDifference(
                PictureSimilarity::averaged(image, compared),
                PictureSimilarity::averaged(QImage(shown), compared));
            qInfo("differs by %.1f", difference);
            QVERIFY(difference < 4);
        }
    }

    void realClipsHaveAFrame_data() { addRealFiles({"video", "corrupt"}); }

    void realClipsHaveAFrame()
    {
        QFETCH(QString, file);

        const auto image = posterFrame(file.toStdString());

        QVERIFY(image.width() <= posterPixel && image.height() <= posterPixel);
        if (file.contains(u"rotate270"_s)) {
            QVERIFY(image.height() > image.width());
        }
    }

private:
    static void addRealFiles(const std::vector<const char *> &folders)
    {
        QTest::addColumn<QString>("file");
        const std::filesystem::path media =
            qEnvironmentVariable("KESTLE_SHARED_MEDIA").toStdString();
        for (const auto *folder : folders) {
            if (!std::filesystem::is_directory(media / folder)) {
                QSKIP("the folder of real camera files is missing");
            }
            for (const auto &entry : std::filesystem::directory_iterator(media / folder)) {
                const auto file = QString::fromStdString(entry.path().string());
                QTest::newRow(qPrintable(file.section(u'/', -2))) << file;
            }
        }
    }

    [[nodiscard]] QString path(const char *name) const
    {
        return QString::fromStdString((m_folder / name).string());
    }

    static bool run(const QStringList &arguments)
    {
        return QProcess::execute(u"ffmpeg"_s,
                                 QStringList{u"-v"_s, u"quiet"_s, u"-y"_s} + arguments) == 0;
    }

    [[nodiscard]] bool make(const char *name, const QStringList &options) const
    {
        return run(QStringList{u"-f"_s, u"lavfi"_s, u"-i"_s,
                               u"color=red:s=640x360:d=0.5:r=10,"
                               "drawbox=x=0:y=0:w=160:h=90:color=0x008000:t=fill"_s,
                               u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=blue:s=640x360:d=0.5:r=10"_s,
                               u"-filter_complex"_s, u"[0][1]concat=n=2:v=1"_s, u"-c:v"_s,
                               u"mpeg4"_s, u"-q:v"_s, u"2"_s} +
                   options + QStringList{path(name)});
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_folder = m_directory.path().toStdString();
};

QTEST_GUILESS_MAIN(PosterFrameTest)
#include "PosterFrameTest.moc"
