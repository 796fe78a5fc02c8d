// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/ClipMaker.h"

#include "demo/card/ClipPainter.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace ClipMaker {

constexpr int patience = 30'000; // milliseconds

static QStringList codecOptions(PlannedClip::Codec codec)
{
    if (codec == PlannedClip::Codec::Hevc) {
        return {u"-c:v"_s,         u"libx265"_s,
                u"-preset"_s,      u"ultrafast"_s,
                u"-crf"_s,         u"24"_s,
                u"-x265-params"_s, u"log-level=error:pools=none:frame-threads=1"_s};
    }
    return {u"-c:v"_s, u"libx264"_s, u"-preset"_s,  u"veryfast"_s,
            u"-crf"_s, u"21"_s,      u"-threads"_s, u"2"_s};
}

static QString ended(QProcess &ffmpeg)
{
    const bool hasEnded = ffmpeg.waitForFinished(patience);
    if (hasEnded && ffmpeg.exitStatus() == QProcess::NormalExit && ffmpeg.exitCode() == 0) {
        return {};
    }
    ffmpeg.kill();
    ffmpeg.waitForFinished();
    return u"ffmpeg stopped. "_s + QString::fromLocal8Bit(ffmpeg.readAllStandardError()).trimmed();
}

static QString encode(const QString &program, const PlannedClip &clip, const QString &file)
{
    QProcess ffmpeg;
    ffmpeg.start(
        program,
        QStringList{u"-v"_s, u"error"_s, u"-f"_s, u"rawvideo"_s, u"-pix_fmt"_s, u"bgra"_s, u"-s"_s,
                    u"%1x%2"_s.arg(ClipPainter::sensor.width()).arg(ClipPainter::sensor.height()),
                    u"-r"_s, QString::number(ClipPainter::framesPerSecond), u"-i"_s, u"-"_s} +
            codecOptions(clip.codec) +
            QStringList{u"-pix_fmt"_s, u"yuv420p"_s, u"-flags:v"_s, u"+bitexact"_s, u"-y"_s, file});
    const ClipPainter painter(clip);
    for (int i = 0; i < clip.frames; ++i) {
        const QImage picture = painter.frame(i);
        ffmpeg.write(reinterpret_cast<const char *>(picture.constBits()), picture.sizeInBytes());
        // The pipe is kept short, or all frames would pile up in memory.
        while (ffmpeg.bytesToWrite() > 2 * picture.sizeInBytes()) {
            if (!ffmpeg.waitForBytesWritten(patience)) {
                return ended(ffmpeg);
            }
        }
    }
    ffmpeg.closeWriteChannel();
    return ended(ffmpeg);
}

// Waves come and go.
static QStringList surf(const PlannedClip &clip)
{
    const double seconds = static_cast<double>(clip.frames) / ClipPainter::framesPerSecond;
    return {u"-f"_s, u"lavfi"_s, u"-i"_s,
            u"anoisesrc=color=brown:seed=1:sample_rate=48000:amplitude=0.4:duration=%1,"
            "tremolo=f=0.4:d=0.8"_s.arg(seconds)};
}

// ffmpeg keeps a turn only where it does not encode: hence a second run, over the coded frames.
static QString wrap(const QString &program, const PlannedClip &clip, const QString &coded,
                    const QString &file)
{
    QStringList arguments{u"-v"_s, u"error"_s, u"-i"_s, coded};
    if (clip.hasSound) {
        arguments += surf(clip);
        arguments += {u"-c:a"_s, u"aac"_s, u"-b:a"_s, u"96k"_s, u"-flags:a"_s, u"+bitexact"_s};
    }
    arguments += {u"-c:v"_s, u"copy"_s};
    if (clip.codec == PlannedClip::Codec::Hevc) {
        arguments += {u"-tag:v"_s, u"hvc1"_s}; // other players know no other
    }
    if (clip.upright) {
        arguments += {u"-metadata:s:v:0"_s, u"rotate=270"_s}; // counted anticlockwise
    }
    arguments += {u"-metadata"_s, u"creation_time="_s + clip.captured.toString(Qt::ISODate),
                  u"-fflags"_s,   u"+bitexact"_s,
                  u"-movflags"_s, u"+faststart"_s,
                  u"-y"_s,        file};
    QProcess ffmpeg;
    ffmpeg.start(program, arguments);
    return ended(ffmpeg);
}

QString make(const std::filesystem::path &file, const PlannedClip &clip)
{
    const QString program = QStandardPaths::findExecutable(u"ffmpeg"_s);
    if (program.isEmpty()) {
        return u"ffmpeg is not installed."_s;
    }
    const QTemporaryDir folder;
    const QString coded = folder.filePath(u"coded.mov"_s);
    QString problem = encode(program, clip, coded);
    if (problem.isEmpty()) {
        problem = wrap(program, clip, coded, QString::fromStdString(file.string()));
    }
    if (!problem.isEmpty()) {
        std::error_code error;
        std::filesystem::remove(file, error);
    }
    return problem;
}

} // namespace ClipMaker
