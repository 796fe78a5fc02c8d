// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifPlacement.h"

#include "platform/imageio/Orientation.h"

#include <algorithm>
#include <cmath>

namespace {

/// The window of a "clap" box within a picture of the size @p picture (ISO 14496-12, 12.1.4).
QRect windowIn(QSize picture, const std::array<qint32, 8> &numbers)
{
    const auto number = [&](size_t index) {
        return numbers.at(index + 1) > 0 ? double(numbers.at(index)) / numbers.at(index + 1) : 0.0;
    };
    const auto edge = [](double centre, double length) {
        // Half a pixel is no place for an edge, and the limits are those of the picture.
        return static_cast<int>(std::lround(std::clamp(centre - length / 2, -1.0e6, 1.0e6)));
    };
    const double width = std::clamp(number(0), 0.0, 1.0e6);
    const double height = std::clamp(number(2), 0.0, 1.0e6);
    const QPoint corner(edge(picture.width() / 2.0 + number(4), width),
                        edge(picture.height() / 2.0 + number(6), height));
    const QSize size(static_cast<int>(std::lround(width)), static_cast<int>(std::lround(height)));
    return QRect(corner, size).intersected({QPoint(0, 0), picture});
}

/// The code that undoes @p code: only the quarter turns differ from their opposites.
int inverse(int code)
{
    constexpr int clockwise = 6;
    constexpr int anticlockwise = 8;
    return code == clockwise ? anticlockwise : code == anticlockwise ? clockwise : code;
}

} // namespace

QSize HeifPlacement::shownSize() const
{
    return Orientation::swapsEdges(orientation) ? window.size().transposed() : window.size();
}

HeifPlacement HeifPlacement::of(QSize stored, const QList<HeifItem::Step> &steps)
{
    HeifPlacement placement{.window = QRect(QPoint(0, 0), stored)};
    for (const auto &step : steps) {
        auto &code = placement.orientation;
        switch (step.kind) {
        case HeifItem::Step::Kind::Turn:
            code = Orientation::rotated(code, 4 - step.value);
            break;
        case HeifItem::Step::Kind::Mirror:
            // 1 exchanges left and right, 0 top and bottom; the first edition said it the other way
            // round, and no writer followed it.
            code = step.value == 1 ? Orientation::flippedHorizontally(code)
                                   : Orientation::flippedVertically(code);
            break;
        case HeifItem::Step::Kind::Crop: {
            const auto shown = placement.shownSize();
            const auto crop = windowIn(shown, step.window);
            if (crop.isEmpty()) {
                break;
            }
            const auto back = [&](QPoint point) {
                const auto place = Orientation::place(inverse(code), shown, point.x(), point.y());
                return QPoint(static_cast<int>(place.column), static_cast<int>(place.row));
            };
            const auto corner = placement.window.topLeft();
            placement.window = QRect(back(crop.topLeft()), QSize(1, 1))
                                   .united(QRect(back(crop.bottomRight()), QSize(1, 1)))
                                   .translated(corner);
            break;
        }
        }
    }
    return placement;
}
