// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/ClipMaker.h"

#include "demo/painting/Development.h"
#include "demo/painting/Noise.h"
#include "demo/scenes/Scenes.h"

#include <QPainter>
#include <QProcess>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace ClipMaker {

constexpr int width = 1280;
constexpr int height = 720;
constexpr int framesPerSecond = 25;
constexpr int frameCount = 100;

static QImage background(quint32 seed)
{
    View view;
    view.width = 960;
    view.height = 540;
    view.seed = seed;
    view.moment = 1;
    Development development;
    development.exposure = 1.2F;
    development.grain = 0.4F;
    return development.develop(Scenes::winterTree(view), width + 40, seed);
}

static QImage flakeImage()
{
    QImage flake(64, 64, QImage::Format_ARGB32_Premultiplied);
    flake.fill(Qt::transparent);
    QPainter painter(&flake);
    QRadialGradient soft(32, 32, 32);
    soft.setColorAt(0, QColor(255, 240, 220, 230));
    soft.setColorAt(0.55, QColor(255, 232, 205, 170));
    soft.setColorAt(1, QColor(255, 225, 190, 0));
    painter.fillRect(flake.rect(), soft);
    return flake;
}

// A hand-held camera: the frame sways by a few pixels. Flakes fall at the speed of their depth.
static QImage frame(const QImage &scene, const QImage &flake, int number)
{
    const double t = static_cast<double>(number) / framesPerSecond;
    QImage picture(width, height, QImage::Format_RGB32);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QPointF sway(-20 + 9 * std::sin(t * 1.3) + 3 * std::sin(t * 4.1),
                       -11 + 5 * std::sin(t * 1.7 + 1));
    painter.drawImage(sway, scene);
    for (quint32 i = 0; i < 420; ++i) {
        const double near = Noise::hash(i, 1);
        const double size = 2.2 + 26 * std::pow(near, 9.0);
        const double fall = 70 + 330 * near * near;
        const double x =
            std::fmod(Noise::hash(i, 2) * (width + 80) + t * (18 + 40 * near) +
                          14 * std::sin(t * (1 + Noise::hash(i, 3)) + 6 * Noise::hash(i, 4)),
                      width + 80.0) -
            40;
        const double y =
            std::fmod(Noise::hash(i, 5) * (height + 80) + t * fall, height + 80.0) - 40;
        const double away = std::hypot(x - 0.60 * width, y - 0.30 * height) / width;
        painter.setOpacity(
            std::min(1.0, (0.16 + 0.95 * std::exp(-away * away * 14)) * (size > 8 ? 0.35 : 0.9)));
        painter.drawImage(QRectF(x - size, y - size, 2 * size, 2 * size), flake);
    }
    return picture;
}

QString make(const std::filesystem::path &file, quint32 seed)
{
    const QString program = QStandardPaths::findExecutable(u"ffmpeg"_s);
    if (program.isEmpty()) {
        return u"The clip is left out: ffmpeg is not installed."_s;
    }
    QProcess encoder;
    encoder.setProcessChannelMode(QProcess::SeparateChannels);
    encoder.start(program, {u"-v"_s,        u"error"_s,
                            u"-f"_s,        u"rawvideo"_s,
                            u"-pix_fmt"_s,  u"bgra"_s,
                            u"-s"_s,        u"%1x%2"_s.arg(width).arg(height),
                            u"-r"_s,        QString::number(framesPerSecond),
                            u"-i"_s,        u"-"_s,
                            u"-c:v"_s,      u"libx264"_s,
                            u"-preset"_s,   u"veryfast"_s,
                            u"-crf"_s,      u"21"_s,
                            u"-pix_fmt"_s,  u"yuv420p"_s,
                            u"-threads"_s,  u"2"_s,
                            u"-flags:v"_s,  u"+bitexact"_s,
                            u"-fflags"_s,   u"+bitexact"_s,
                            u"-movflags"_s, u"+faststart"_s,
                            u"-y"_s,        QString::fromStdString(file.string())});
    const QImage scene = background(seed);
    const QImage flake = flakeImage();
    constexpr int patience = 30'000;
    for (int i = 0; i < frameCount; ++i) {
        const QImage picture = frame(scene, flake, i);
        encoder.write(reinterpret_cast<const char *>(picture.constBits()), picture.sizeInBytes());
        // The pipe is kept short, or all frames would pile up in memory.
        while (encoder.bytesToWrite() > 2 * picture.sizeInBytes()) {
            if (!encoder.waitForBytesWritten(patience)) {
                encoder.kill();
                encoder.waitForFinished();
                return u"The clip is left out: ffmpeg stopped. "_s +
                       QString::fromLocal8Bit(encoder.readAllStandardError()).trimmed();
            }
        }
    }
    encoder.closeWriteChannel();
    if (!encoder.waitForFinished(patience) || encoder.exitStatus() != QProcess::NormalExit ||
        encoder.exitCode() != 0) {
        encoder.kill();
        encoder.waitForFinished();
        return u"The clip is left out: "_s +
               QString::fromLocal8Bit(encoder.readAllStandardError()).trimmed();
    }
    return {};
}

} // namespace ClipMaker
