// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/decode/JoinedDecodes.h"

#include <algorithm>

/// Enough for the two that ask for one picture; those who keep pictures are others.
constexpr size_t mostRecent = 2;

JoinedDecodes::JoinedDecodes(Decode decode)
    : m_decode(std::move(decode))
{
}

QImage JoinedDecodes::picture(const std::filesystem::path &url, std::optional<int> maxPixel)
{
    const Key key = {url, maxPixel};
    const auto running = std::make_shared<Running>();
    {
        std::unique_lock lock(m_mutex);
        const auto recent = std::ranges::find(m_recent, key, &Recent::key);
        if (recent != m_recent.end()) {
            return recent->image;
        }
        const auto [place, isFirst] = m_running.try_emplace(key, running);
        if (!isFirst) {
            const auto first = place->second;
            m_changed.wait(lock, [&] { return first->isDone; });
            return first->image;
        }
    }
    QImage image;
    try {
        image = m_decode(url, maxPixel);
    } catch (...) {
        finish(key, running, {});
        throw;
    }
    finish(key, running, image);
    return image;
}

void JoinedDecodes::finish(const Key &key, const std::shared_ptr<Running> &running,
                           const QImage &image)
{
    const std::lock_guard lock(m_mutex);
    running->isDone = true;
    running->image = image;
    m_changed.notify_all();
    const auto place = m_running.find(key);
    if (place == m_running.end() || place->second != running) {
        return; // forgotten
    }
    m_running.erase(place);
    // Whole pictures are too large to be kept for the chance of a second question.
    if (!image.isNull() && key.maxPixel) {
        m_recent.push_back({key, image});
        if (m_recent.size() > mostRecent) {
            m_recent.pop_front();
        }
    }
}

void JoinedDecodes::forget()
{
    const std::lock_guard lock(m_mutex);
    m_running.clear();
    m_recent.clear();
}
