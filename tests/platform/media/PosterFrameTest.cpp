// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/PosterFrame.h"

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

    void realClipsHaveAFrame_data()
    {
        QTest::addColumn<QString>("file");
        const std::filesystem::path media =
            qEnvironmentVariable("KESTLE_SHARED_MEDIA").toStdString();
        for (const auto *folder : {"video", "corrupt"}) {
            if (!std::filesystem::is_directory(media / folder)) {
                QSKIP("the folder of real camera files is missing");
            }
            for (const auto &entry : std::filesystem::directory_iterator(media / folder)) {
                const auto file = QString::fromStdString(entry.path().string());
                QTest::newRow(qPrintable(file.section(u'/', -2))) << file;
            }
        }
    }

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
