// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>
#include <QPainter>

#include <atomic>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <thread>

/// Decoders that draw a landscape of their own for every file. Larger pictures than thumbnails can
/// be held back until a test lets them go. Safe from several threads.
class MadeUpPictures {
public:
    static constexpr QSize fullSize{3000, 2000};

    [[nodiscard]] QImage picture(const std::filesystem::path &url, std::optional<int> maxPixel)
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_begun.push_back(url.filename().string() + (maxPixel == 256 ? " small"
                                                         : maxPixel      ? ""
                                                                         : " whole"));
        }
        while (screensAreHeld && maxPixel != 256) {
            std::this_thread::yield();
        }
        while (thumbnailsAreHeld && maxPixel == 256) {
            std::this_thread::yield();
        }
        while (maxPixel != 256 && isHeld(url.filename().string())) {
            std::this_thread::yield();
        }
        if (url.string().find("BROKEN") != std::string::npos) {
            return {};
        }
        if (!maxPixel && full) {
            return full(url);
        }
        const QSize size =
            maxPixel ? fullSize.scaled(*maxPixel, *maxPixel, Qt::KeepAspectRatio) : fullSize;
        return landscape(hueOf(url), arePlain ? size / 20 : size);
    }

    /// The hue of the file's sky, in degrees; tells files apart.
    [[nodiscard]] static int hueOf(const std::filesystem::path &url)
    {
        int number = 0;
        for (const char letter : url.stem().string()) {
            if (letter >= '0' && letter <= '9') {
                number = number * 10 + (letter - '0');
            }
        }
        return number * 47 % 360;
    }

    /// What was asked for so far, in this order; "small" after the names of thumbnails
    /// and "whole" after those of pictures in full resolution.
    [[nodiscard]] std::vector<std::string> begun() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_begun;
    }

    /// Holds back the larger pictures of the file called @p name, or lets them go.
    void hold(const std::string &name, bool held = true)
    {
        const std::scoped_lock lock(m_mutex);
        held ? (void)m_held.insert(name) : (void)m_held.erase(name);
    }

    void letAllGo()
    {
        screensAreHeld = false;
        thumbnailsAreHeld = false;
        const std::scoped_lock lock(m_mutex);
        m_held.clear();
    }

    /// The pictures in full resolution, where they are not to be landscapes. Not to be changed
    /// while decoders may run.
    std::function<QImage(const std::filesystem::path &url)> full;
    /// Whether pictures are a twentieth as wide and high: cheap, where nobody looks at them.
    std::atomic_bool arePlain = false;
    std::atomic_bool screensAreHeld = false;
    std::atomic_bool thumbnailsAreHeld = false;

private:
    [[nodiscard]] bool isHeld(const std::string &name) const
    {
        const std::scoped_lock lock(m_mutex);
        return m_held.contains(name);
    }

    [[nodiscard]] static QImage landscape(int hue, QSize size)
    {
        QImage image(size, QImage::Format_RGB32);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        QLinearGradient sky(0, 0, 0, size.height());
        sky.setColorAt(0, QColor::fromHsv(hue, 150, 120));
        sky.setColorAt(0.7, QColor::fromHsv(hue, 60, 235));
        painter.fillRect(image.rect(), sky);
        for (int ridge = 0; ridge < 4; ++ridge) {
            QPolygonF hills{QPointF(0, size.height())};
            for (int step = 0; step <= 60; ++step) {
                const double x = step / 60.0;
                const double y = 0.5 + 0.12 * ridge +
                                 0.06 * std::sin(x * (5 + 3 * ridge) + hue + ridge * 2) +
                                 0.02 * std::sin(x * 31 + hue * ridge);
                hills << QPointF(x * size.width(), y * size.height());
            }
            hills << QPointF(size.width(), size.height());
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor::fromHsv(hue, 110, 150 - 35 * ridge));
            painter.drawPolygon(hills);
        }
        return image;
    }

    mutable std::mutex m_mutex;
    std::vector<std::string> m_begun;
    std::set<std::string> m_held;
};
