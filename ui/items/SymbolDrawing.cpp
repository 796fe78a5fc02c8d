// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/SymbolDrawing.h"

#include <QPainter>
#include <QPainterPath>

static QPainterPath outlineOf(const QPainterPath &line, qreal width)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(line).simplified();
}

static QPainterPath lines(std::initializer_list<QLineF> segments, qreal width)
{
    QPainterPath path;
    for (const auto &segment : segments) {
        path.moveTo(segment.p1());
        path.lineTo(segment.p2());
    }
    return outlineOf(path, width);
}

static QPainterPath polyline(std::initializer_list<QPointF> points, qreal width)
{
    QPainterPath path(*points.begin());
    for (const auto &point : points) {
        path.lineTo(point);
    }
    return outlineOf(path, width);
}

static QPainterPath roundedRectangle(const QRectF &rectangle, qreal radius)
{
    QPainterPath path;
    path.addRoundedRect(rectangle, radius, radius);
    return path;
}

static QPainterPath cross(qreal from, qreal to, qreal width)
{
    return lines({{from, from, to, to}, {to, from, from, to}}, width);
}

static QPainterPath disc()
{
    QPainterPath path;
    path.addEllipse(QPointF(12, 12), 10.5, 10.5);
    return path;
}

static QPainterPath roundedPolygon(std::initializer_list<QPointF> points, qreal radius)
{
    QPainterPath path(*points.begin());
    for (const auto &point : points) {
        path.lineTo(point);
    }
    path.closeSubpath();
    return path.united(outlineOf(path, 2 * radius));
}

static QPainterPath card()
{
    QPainterPath body;
    body.moveTo(9.2, 1.8);
    body.lineTo(17.4, 1.8);
    body.quadTo(19.6, 1.8, 19.6, 4);
    body.lineTo(19.6, 20);
    body.quadTo(19.6, 22.2, 17.4, 22.2);
    body.lineTo(6.6, 22.2);
    body.quadTo(4.4, 22.2, 4.4, 20);
    body.lineTo(4.4, 7.3);
    body.quadTo(4.4, 6.4, 5.05, 5.7);
    body.lineTo(7.8, 2.5);
    body.quadTo(8.4, 1.8, 9.2, 1.8);
    body.closeSubpath();
    const QPainterPath contacts =
        lines({{9.4, 5, 9.4, 8.2}, {12.6, 5, 12.6, 8.2}, {15.8, 5, 15.8, 8.2}}, 1.3);
    return outlineOf(body, 1.3).united(contacts);
}

static QPainterPath bin()
{
    QPainterPath body(QPointF(5.6, 8));
    body.lineTo(18.4, 8);
    body.lineTo(17.5, 20.6);
    body.quadTo(17.4, 22.2, 15.8, 22.2);
    body.lineTo(8.2, 22.2);
    body.quadTo(6.6, 22.2, 6.5, 20.6);
    body.closeSubpath();
    const QPainterPath ribs =
        lines({{9.5, 11.2, 9.8, 19}, {12, 11.2, 12, 19}, {14.5, 11.2, 14.2, 19}}, 1.2);
    const QPainterPath lid = lines({{4.4, 5.6, 19.6, 5.6}}, 1.9);
    const QPainterPath handle = polyline({{9, 5}, {9.5, 2.8}, {14.5, 2.8}, {15, 5}}, 1.6);
    return body.subtracted(ribs).united(lid).united(handle);
}

static QPainterPath warningTriangle()
{
    QPainterPath dot;
    dot.addEllipse(QPointF(12, 17.6), 1.35, 1.35);
    return roundedPolygon({{12, 4}, {21.2, 20}, {2.8, 20}}, 1.6)
        .subtracted(lines({{12, 9, 12, 14}}, 2.1))
        .subtracted(dot);
}

static QPainterPath brokenPicture()
{
    const QPainterPath frame = outlineOf(roundedRectangle({2.5, 4.5, 19, 15}, 2), 1.5);
    const QPainterPath hills =
        polyline({{3.4, 17}, {8.6, 11.4}, {12, 15}, {14.6, 12.4}, {20.4, 18}}, 1.5);
    const QPainterPath gap = lines({{20.5, 1.5, 3.5, 22.5}}, 4.4);
    return frame.united(hills).subtracted(gap).united(lines({{20.5, 1.5, 3.5, 22.5}}, 1.5));
}

/// Twelve spokes that fade, so that turning them by steps shows that something is under way.
static void drawSpokes(QColor color, QPainter *painter)
{
    constexpr int count = 12;
    const qreal alpha = color.alphaF();
    for (int spoke = 0; spoke < count; ++spoke) {
        color.setAlphaF(static_cast<float>(alpha * (0.15 + 0.85 * spoke / (count - 1))));
        painter->save();
        painter->translate(12, 12);
        painter->rotate(360.0 * spoke / count);
        painter->fillPath(lines({{0, -6.2, 0, -10.6}}, 1.9), color);
        painter->restore();
    }
}

static QPainterPath path(Symbol::Kind kind)
{
    switch (kind) {
    case Symbol::Kind::Card:
        return card();
    case Symbol::Kind::Cross:
        return cross(5, 19, 3.6);
    case Symbol::Kind::CrossInCircle:
        return disc().subtracted(cross(8.3, 15.7, 2));
    case Symbol::Kind::Play:
        return roundedPolygon({{6.6, 4.6}, {19.4, 12}, {6.6, 19.4}}, 1.2);
    case Symbol::Kind::Bin:
        return bin();
    case Symbol::Kind::CheckInCircle:
        return disc().subtracted(polyline({{7.4, 12.5}, {10.7, 15.9}, {16.8, 8.4}}, 2.1));
    case Symbol::Kind::WarningTriangle:
        return warningTriangle();
    case Symbol::Kind::BrokenPicture:
        return brokenPicture();
    case Symbol::Kind::Menu:
        return lines({{4, 7, 20, 7}, {4, 12, 20, 12}, {4, 17, 20, 17}}, 1.6);
    case Symbol::Kind::Minimise:
        return lines({{6, 12, 18, 12}}, 1.6);
    case Symbol::Kind::Maximise:
        return outlineOf(roundedRectangle({6.5, 6.5, 11, 11}, 1), 1.6);
    case Symbol::Kind::Restore:
        return outlineOf(roundedRectangle({5.5, 9, 9.5, 9.5}, 1), 1.6)
            .united(polyline({{9, 5.5}, {18.5, 5.5}, {18.5, 15}}, 1.6));
    case Symbol::Kind::Chevron:
        return polyline({{6, 9}, {12, 15.5}, {18, 9}}, 2.2);
    case Symbol::Kind::Check:
        return polyline({{4.5, 12.8}, {9.8, 18.2}, {19.5, 6.4}}, 2.6);
    case Symbol::Kind::Spokes:
        break;
    }
    return {};
}

void SymbolDrawing::draw(Symbol::Kind kind, const QColor &color, QPainter *painter)
{
    if (kind == Symbol::Kind::Spokes) {
        drawSpokes(color, painter);
        return;
    }
    painter->fillPath(path(kind), color);
}
