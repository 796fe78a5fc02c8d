// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

// One balloon, its envelope in gores, lit from the right.
static void paintBalloon(QPainter &painter, float x, float y, float size, const QColor &first,
                         const QColor &second)
{
    painter.save();
    painter.translate(x, y);
    painter.scale(size, size);
    QPainterPath envelope;
    envelope.moveTo(-0.09, -0.62);
    envelope.cubicTo(-0.30, -0.35, -0.5, -0.2, -0.5, 0.08);
    envelope.cubicTo(-0.5, 0.38, -0.27, 0.56, 0, 0.56);
    envelope.cubicTo(0.27, 0.56, 0.5, 0.38, 0.5, 0.08);
    envelope.cubicTo(0.5, -0.2, 0.30, -0.35, 0.09, -0.62);
    envelope.closeSubpath();
    painter.setPen(Qt::NoPen);
    painter.setClipPath(envelope);
    constexpr int gores = 12;
    for (int i = 0; i < gores; ++i) {
        const double left = 0.5 * std::cos(M_PI * (i + 1) / gores);
        const double right = 0.5 * std::cos(M_PI * i / gores);
        QPainterPath gore;
        gore.moveTo(0, 0.57);
        gore.cubicTo(left * 0.75, 0.52, left, 0.35, left, 0.06);
        gore.cubicTo(left, -0.2, left * 0.5, -0.4, left * 0.18, -0.63);
        gore.lineTo(right * 0.18, -0.63);
        gore.cubicTo(right * 0.5, -0.4, right, -0.2, right, 0.06);
        gore.cubicTo(right, 0.35, right * 0.75, 0.52, 0, 0.57);
        painter.setBrush(i % 2 == 0 ? first : second);
        painter.drawPath(gore);
    }
    painter.setBrush(second.darker(130));
    painter.drawRect(QRectF(-0.5, -0.05, 1, 0.07));
    QLinearGradient shade(-0.5, -0.2, 0.5, 0.15);
    shade.setColorAt(0, QColor(8, 10, 30, 190));
    shade.setColorAt(0.55, QColor(20, 10, 20, 70));
    shade.setColorAt(0.85, QColor(255, 220, 160, 50));
    shade.setColorAt(1, QColor(255, 230, 180, 110));
    painter.setBrush(shade);
    painter.drawPath(envelope);
    painter.setClipping(false);
    painter.setPen(QPen(QColor(30, 24, 24), 0.012));
    painter.drawLine(QPointF(-0.08, -0.62), QPointF(-0.055, -0.76));
    painter.drawLine(QPointF(0.08, -0.62), QPointF(0.055, -0.76));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(46, 32, 24));
    painter.drawRoundedRect(QRectF(-0.065, -0.86, 0.13, 0.11), 0.02, 0.02);
    painter.restore();
}

Canvas Scenes::balloons(const View &view)
{
    Canvas canvas = mistyRidges(view);
    QImage drawing(view.width, view.height, QImage::Format_ARGB32_Premultiplied);
    drawing.fill(Qt::transparent);
    QPainter painter(&drawing);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(view.transform());
    struct Balloon {
        float x, y, size;
        QRgb first, second;
    };
    constexpr Balloon all[] = {{-0.34F, 0.17F, 0.27F, 0xFFB23A2A, 0xFFE6B453},
                               {0.02F, 0.27F, 0.105F, 0xFF2E5F86, 0xFFE8DCC4},
                               {0.17F, 0.06F, 0.07F, 0xFFC8752E, 0xFF7A2E35},
                               {0.46F, 0.31F, 0.055F, 0xFF8A3A5A, 0xFFD9A9A0},
                               {-0.08F, -0.02F, 0.042F, 0xFF4C7A5A, 0xFFE0C98A},
                               {0.55F, 0.08F, 0.036F, 0xFF55426E, 0xFFB9A0B8}};
    for (const auto &one : all) {
        const float drift = 0.02F * view.moment;
        paintBalloon(painter, one.x + drift, one.y + 0.6F * drift, one.size, QColor(one.first),
                     QColor(one.second));
    }
    painter.end();
    canvas.draw(drawing, 0.95F);
    return canvas;
}
