// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/painting/Canvas.h"

#include <array>

Canvas::Canvas(int width, int height)
    : m_width(width)
    , m_height(height)
    , m_light(static_cast<size_t>(width) * height)
{
}

Rgb Canvas::sample(float x, float y) const
{
    x = std::clamp(x, 0.0F, static_cast<float>(m_width - 1));
    y = std::clamp(y, 0.0F, static_cast<float>(m_height - 1));
    const int x0 = static_cast<int>(x);
    const int y0 = static_cast<int>(y);
    const int x1 = std::min(x0 + 1, m_width - 1);
    const int y1 = std::min(y0 + 1, m_height - 1);
    const float fx = x - static_cast<float>(x0);
    const float fy = y - static_cast<float>(y0);
    return mix(mix(at(x0, y0), at(x1, y0), fx), mix(at(x0, y1), at(x1, y1), fx), fy);
}

void Canvas::draw(const QImage &drawing, float exposure)
{
    static const auto linear = [] {
        std::array<float, 256> table{};
        for (size_t i = 0; i < table.size(); ++i) {
            table[i] = std::pow(static_cast<float>(i) / 255.0F, 2.2F);
        }
        return table;
    }();
    for (int y = 0; y < std::min(m_height, drawing.height()); ++y) {
        const auto *source = reinterpret_cast<const QRgb *>(drawing.constScanLine(y));
        Rgb *light = row(y);
        for (int x = 0; x < std::min(m_width, drawing.width()); ++x) {
            const QRgb pixel = source[x];
            const int alpha = qAlpha(pixel);
            if (alpha == 0) {
                continue;
            }
            const QRgb plain = qUnpremultiply(pixel);
            const Rgb colour{linear[qRed(plain)], linear[qGreen(plain)], linear[qBlue(plain)]};
            light[x] = mix(light[x], colour * exposure, static_cast<float>(alpha) / 255.0F);
        }
    }
}

// One running-sum pass over a line of light with the given stride.
static void boxLine(const Rgb *in, Rgb *out, int count, size_t stride, int radius)
{
    const auto get = [&](int i) {
        return in[static_cast<size_t>(std::clamp(i, 0, count - 1)) * stride];
    };
    Rgb sum{};
    for (int i = -radius; i <= radius; ++i) {
        sum += get(i);
    }
    const float scale = 1.0F / static_cast<float>(2 * radius + 1);
    for (int i = 0; i < count; ++i) {
        out[static_cast<size_t>(i) * stride] = sum * scale;
        sum += get(i + radius + 1) - get(i - radius);
    }
}

void Canvas::blurAcross(float radius)
{
    const int box = static_cast<int>(std::lround(radius));
    if (box < 1) {
        return;
    }
    std::vector<Rgb> line(static_cast<size_t>(m_width));
    for (int y = 0; y < m_height; ++y) {
        Rgb *light = row(y);
        boxLine(light, line.data(), m_width, 1, box);
        boxLine(line.data(), light, m_width, 1, box);
        boxLine(light, line.data(), m_width, 1, box);
        std::copy(line.begin(), line.end(), light);
    }
}

// Row-wise running sums over all columns at once: the memory is walked in order.
static void boxDown(const Canvas &in, Canvas &out, int radius)
{
    const int width = in.width();
    const int height = in.height();
    std::vector<Rgb> sums(static_cast<size_t>(width));
    const auto add = [&](int y, float sign) {
        const Rgb *light = in.row(std::clamp(y, 0, height - 1));
        for (int x = 0; x < width; ++x) {
            sums[static_cast<size_t>(x)] += light[x] * sign;
        }
    };
    for (int y = -radius; y <= radius; ++y) {
        add(y, 1);
    }
    const float scale = 1.0F / static_cast<float>(2 * radius + 1);
    for (int y = 0; y < height; ++y) {
        Rgb *light = out.row(y);
        for (int x = 0; x < width; ++x) {
            light[x] = sums[static_cast<size_t>(x)] * scale;
        }
        add(y + radius + 1, 1);
        add(y - radius, -1);
    }
}

void Canvas::blurDown(float radius)
{
    const int box = static_cast<int>(std::lround(radius));
    if (box < 1) {
        return;
    }
    Canvas other(m_width, m_height);
    boxDown(*this, other, box);
    boxDown(other, *this, box);
    boxDown(*this, other, box);
    std::swap(m_light, other.m_light);
}

void Canvas::blur(float radius)
{
    if (radius >= 10 && m_width >= 64 && m_height >= 64) {
        Canvas small = scaled(m_width / 4, m_height / 4);
        small.blur(radius / 4);
        *this = small.scaled(m_width, m_height);
        return;
    }
    blurAcross(radius);
    blurDown(radius);
}

Canvas Canvas::scaled(int width, int height) const
{
    Canvas result(width, height);
    const float sx = static_cast<float>(m_width) / static_cast<float>(width);
    const float sy = static_cast<float>(m_height) / static_cast<float>(height);
    const int taps = std::max(1, static_cast<int>(sx + 0.5F));
    for (int y = 0; y < height; ++y) {
        Rgb *light = result.row(y);
        for (int x = 0; x < width; ++x) {
            Rgb sum{};
            for (int j = 0; j < taps; ++j) {
                for (int i = 0; i < taps; ++i) {
                    const float fx = (static_cast<float>(i) + 0.5F) / static_cast<float>(taps);
                    const float fy = (static_cast<float>(j) + 0.5F) / static_cast<float>(taps);
                    sum += sample((static_cast<float>(x) + fx) * sx - 0.5F,
                                  (static_cast<float>(y) + fy) * sy - 0.5F);
                }
            }
            light[x] = sum * (1.0F / static_cast<float>(taps * taps));
        }
    }
    return result;
}

void Canvas::addDisc(float x, float y, float radius, const Rgb &light, float rim)
{
    const int left = std::max(0, static_cast<int>(x - radius - 1));
    const int right = std::min(m_width - 1, static_cast<int>(x + radius + 1));
    const int top = std::max(0, static_cast<int>(y - radius - 1));
    const int bottom = std::min(m_height - 1, static_cast<int>(y + radius + 1));
    for (int py = top; py <= bottom; ++py) {
        for (int px = left; px <= right; ++px) {
            const float d = std::hypot(static_cast<float>(px) - x, static_cast<float>(py) - y);
            const float inside = clamp01(radius - d + 0.5F);
            if (inside > 0) {
                const float edge = d / radius;
                at(px, py) += light * (inside * (1 - rim + rim * 2 * edge * edge * edge * edge));
            }
        }
    }
}

void Canvas::addGlow(float x, float y, float radius, const Rgb &light)
{
    const int left = std::max(0, static_cast<int>(x - radius));
    const int right = std::min(m_width - 1, static_cast<int>(x + radius + 1));
    const int top = std::max(0, static_cast<int>(y - radius));
    const int bottom = std::min(m_height - 1, static_cast<int>(y + radius + 1));
    const float scale = 1 / (radius * radius);
    for (int py = top; py <= bottom; ++py) {
        const float dy = static_cast<float>(py) - y;
        for (int px = left; px <= right; ++px) {
            const float dx = static_cast<float>(px) - x;
            const float d = (dx * dx + dy * dy) * scale;
            if (d < 1) {
                const float fall = 1 - d;
                at(px, py) += light * (fall * fall * fall / (1 + 24 * d));
            }
        }
    }
}
