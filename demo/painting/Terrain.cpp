// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/painting/Terrain.h"

Terrain::Terrain(int size, const std::function<float(float, float)> &height)
    : m_size(size)
    , m_heights(static_cast<size_t>(size) * size)
    , m_sun(static_cast<size_t>(size) * size, 1.0F)
{
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            m_heights[static_cast<size_t>(y) * size + x] =
                height(static_cast<float>(x) / static_cast<float>(size - 1),
                       static_cast<float>(y) / static_cast<float>(size - 1));
        }
    }
}

int Terrain::sizeFor(const View &view)
{
    return std::clamp(std::max(view.width, view.height) * 6 / 10, 120, 800);
}

static float between(const std::vector<float> &grid, int size, float x, float y)
{
    const float gx = std::clamp(x, 0.0F, 1.0F) * static_cast<float>(size - 1);
    const float gy = std::clamp(y, 0.0F, 1.0F) * static_cast<float>(size - 1);
    const int x0 = std::min(static_cast<int>(gx), size - 2);
    const int y0 = std::min(static_cast<int>(gy), size - 2);
    const float fx = gx - static_cast<float>(x0);
    const float fy = gy - static_cast<float>(y0);
    const float *p = grid.data() + static_cast<size_t>(y0) * size + x0;
    return mix(mix(p[0], p[1], fx), mix(p[size], p[size + 1], fx), fy);
}

float Terrain::heightAt(float x, float y) const
{
    return between(m_heights, m_size, x, y);
}

float Terrain::sunAt(float x, float y) const
{
    return between(m_sun, m_size, x, y);
}

void Terrain::light(float x, float up, float y)
{
    const float length = std::sqrt(x * x + up * up + y * y);
    m_sunX = x / length;
    m_sunUp = up / length;
    m_sunY = y / length;
    const float flat = std::max(std::sqrt(m_sunX * m_sunX + m_sunY * m_sunY), 1e-4F);
    const float stepX = m_sunX / flat;
    const float stepY = m_sunY / flat;
    const float climb = m_sunUp / flat;
    for (int gy = 0; gy < m_size; ++gy) {
        for (int gx = 0; gx < m_size; ++gx) {
            const float px = static_cast<float>(gx) / static_cast<float>(m_size - 1);
            const float py = static_cast<float>(gy) / static_cast<float>(m_size - 1);
            const size_t index = static_cast<size_t>(gy) * m_size + gx;
            float open = 1;
            float t = 2.0F / static_cast<float>(m_size);
            while (t < 0.4F && open > 0) {
                const float sx = px + stepX * t;
                const float sy = py + stepY * t;
                if (sx < 0 || sy < 0 || sx > 1 || sy > 1) {
                    break;
                }
                const float clearance = m_heights[index] + climb * t - heightAt(sx, sy);
                open = std::min(open, clamp01(0.5F + clearance * 18 / (t + 0.02F)));
                t *= 1.3F;
            }
            m_sun[index] = open;
        }
    }
}

void Terrain::paint(Canvas &canvas, const View &view, const Camera &camera,
                    const std::function<Rgb(const Point &)> &colour) const
{
    const float cell = 1.0F / static_cast<float>(m_size - 1);
    const float growth = 1.0F + 1.2F / static_cast<float>(canvas.width());
    for (int px = 0; px < canvas.width(); ++px) {
        const float across = view.sceneX(static_cast<float>(px)) / camera.lens;
        float filled = static_cast<float>(canvas.height());
        float t = 0.012F;
        Rgb before{};
        float beforeRow = filled;
        while (t < camera.reach && filled > 0) {
            const float wx = camera.x + across * t;
            const float wy = camera.y + t;
            const float h = heightAt(wx, wy);
            const float up = (h - camera.height) / t * camera.lens + camera.tilt;
            const float row = view.pixelY(up);
            if (row < filled - 0.2F) { // finer steps would not be seen
                const float e = std::max(cell, t * 0.0012F);
                Point point{};
                point.x = wx;
                point.y = wy;
                point.height = h;
                point.distance = t;
                point.slopeX = (heightAt(wx + e, wy) - heightAt(wx - e, wy)) / (2 * e);
                point.slopeY = (heightAt(wx, wy + e) - heightAt(wx, wy - e)) / (2 * e);
                const float n =
                    std::sqrt(point.slopeX * point.slopeX + point.slopeY * point.slopeY + 1);
                point.facing =
                    std::max((m_sunUp - point.slopeX * m_sunX - point.slopeY * m_sunY) / n, 0.0F);
                point.sunlight = sunAt(wx, wy);
                const Rgb now = colour(point);
                const int bottom =
                    std::min(static_cast<int>(std::ceil(filled)), canvas.height()) - 1;
                const int top = std::max(static_cast<int>(row), 0);
                const bool joined = beforeRow - row < 40 && beforeRow <= filled + 1;
                for (int y = bottom; y >= top; --y) {
                    const float depth = beforeRow - static_cast<float>(y);
                    const float k =
                        joined && beforeRow > row ? clamp01(depth / (beforeRow - row)) : 1;
                    // The uppermost pixel of a crest is only partly covered.
                    const float cover = clamp01(static_cast<float>(y) + 1 - row);
                    canvas.at(px, y) = mix(canvas.at(px, y), mix(before, now, k), cover);
                }
                before = now;
                beforeRow = row;
                filled = row;
            } else {
                beforeRow = static_cast<float>(canvas.height()) * 2;
            }
            t *= growth;
        }
    }
}
