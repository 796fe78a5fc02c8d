// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/ClipPainter.h"

#include "demo/painting/Noise.h"

#include <QPainter>

#include <cmath>

using Weather = PlannedClip::Weather;

// Painted around the frame, for the sway and the pan.
constexpr int margin = 40;
constexpr int paintedEdge = 960; // more than this only grain can add

static QImage scene(const PlannedClip &clip, QSize size)
{
    const QSize full = size + QSize(margin, margin * size.height() / size.width());
    const QSize painted = full.scaled(paintedEdge, paintedEdge, Qt::KeepAspectRatio);
    View view;
    view.width = painted.width();
    view.height = painted.height();
    view.seed = clip.place;
    view.moment = clip.moment;
    return clip.development.develop(clip.scene(view), std::max(full.width(), full.height()),
                                    clip.place);
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

// Flakes fall through the light of a lamp, at the speed of their depth.
static void paintSnow(QPainter &painter, const QImage &flake, QSize size, double t)
{
    const double width = size.width();
    const double height = size.height();
    for (quint32 i = 0; i < 420; ++i) {
        const double near = Noise::hash(i, 1);
        const double radius = 2.2 + 26 * std::pow(near, 9.0);
        const double fall = 70 + 330 * near * near;
        const double x =
            std::fmod(Noise::hash(i, 2) * (width + 80) + t * (18 + 40 * near) +
                          14 * std::sin(t * (1 + Noise::hash(i, 3)) + 6 * Noise::hash(i, 4)),
                      width + 80) -
            40;
        const double y = std::fmod(Noise::hash(i, 5) * (height + 80) + t * fall, height + 80) - 40;
        const double away = std::hypot(x - 0.60 * width, y - 0.30 * height) / width;
        painter.setOpacity(
            std::min(1.0, (0.16 + 0.95 * std::exp(-away * away * 14)) * (radius > 8 ? 0.35 : 0.9)));
        painter.drawImage(QRectF(x - radius, y - radius, 2 * radius, 2 * radius), flake);
    }
}

// Drops are lines: they fall far while the shutter is open.
static void paintRain(QPainter &painter, QSize size, double t)
{
    const double width = size.width();
    const double height = size.height();
    painter.setRenderHint(QPainter::Antialiasing);
    for (quint32 i = 0; i < 300; ++i) {
        const double near = Noise::hash(i, 1);
        const double length = 12 + 46 * near * near;
        const double fall = 700 + 900 * near;
        const double x =
            std::fmod(Noise::hash(i, 2) * (width + 80) + 0.06 * fall * t, width + 80) - 40;
        const double y =
            std::fmod(Noise::hash(i, 5) * (height + 120) + fall * t, height + 120) - 60;
        painter.setPen(QPen(QColor(225, 232, 245, static_cast<int>(26 + 54 * near)),
                            0.8 + 1.2 * near * near, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(x, y), QPointF(x + 0.06 * length, y + length));
    }
}

ClipPainter::ClipPainter(const PlannedClip &clip)
    : m_clip(clip)
    , m_size(clip.upright ? sensor.transposed() : sensor)
    , m_scene(scene(clip, m_size))
    , m_flake(flakeImage())
{
}

QImage ClipPainter::frame(int number) const
{
    const double t = static_cast<double>(number) / framesPerSecond;
    const QPointF middle(0.5 * (m_size.width() - m_scene.width()),
                         0.5 * (m_size.height() - m_scene.height()));
    const double halfTime = 0.5 * m_clip.frames / framesPerSecond;
    const QPointF sway(9 * std::sin(t * 1.3) + 3 * std::sin(t * 4.1) + m_clip.pan * (halfTime - t),
                       5 * std::sin(t * 1.7 + 1));
    QImage picture(m_size, QImage::Format_RGB32);
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(middle + sway, m_scene);
        if (m_clip.weather == Weather::Snow) {
            paintSnow(painter, m_flake, m_size, t);
        } else if (m_clip.weather == Weather::Rain) {
            paintRain(painter, m_size, t);
        }
    }
    return m_clip.upright ? picture.transformed(QTransform().rotate(-90)) : picture;
}
