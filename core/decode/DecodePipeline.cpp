// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/decode/DecodePipeline.h"

#include <QCoroFuture>
#include <QPointer>

static constexpr qint64 prefetchAhead = 8;
static constexpr qint64 prefetchBehind = 4;

DecodePipeline::DecodePipeline(Decoders decoders, QObject *parent)
    : QObject(parent)
    , m_decoders(std::make_shared<const Decoders>(std::move(decoders)))
    , m_pool(QThread::idealThreadCount())
{
}

DecodePipeline::~DecodePipeline()
{
    m_prefetchStop.request_stop();
}

void DecodePipeline::beginSelection(qint64 number)
{
    if (m_selection == number) {
        return;
    }
    m_selection = number;
    m_prefetchStop.request_stop();
    m_pool.renew();
    m_decoders->forget();
    m_screenCache.clear();
    m_thumbCache.clear();
    m_fullCache.clear();
    m_inFlight.clear();
    m_skipped.clear();
}

QCoro::Task<QImage> DecodePipeline::decodeOffActor(std::filesystem::path url,
                                                   std::optional<int> maxPixel, Priority priority,
                                                   std::stop_token stop)
{
    auto decode = [decoders = m_decoders, url = std::move(url), maxPixel, stop = std::move(stop)] {
        return stop.stop_requested() ? QImage() : decoders->picture(url, maxPixel);
    };
    const auto result = m_pool.run(std::move(decode), priority);
    co_return co_await result;
}

QCoro::Task<QImage> DecodePipeline::videoFrame(std::filesystem::path url, Priority priority,
                                               std::stop_token stop)
{
    auto decode = [decoders = m_decoders, url = std::move(url), stop = std::move(stop)] {
        return stop.stop_requested() ? QImage() : decoders->videoFrame(url);
    };
    const auto result = m_pool.run(std::move(decode), priority);
    co_return co_await result;
}

QCoro::Task<QImage> DecodePipeline::screenImage(MediaItem item, int maxPixel, std::stop_token stop)
{
    return screenImage(std::move(item), maxPixel, Current, std::move(stop));
}

QCoro::Task<QImage> DecodePipeline::screenImage(MediaItem item, int maxPixel, Priority priority,
                                                std::stop_token stop)
{
    if (m_screenCache.contains(item.id)) {
        co_return m_screenCache.value(item.id);
    }
    if (item.kind == MediaKind::video) {
        co_return co_await thumbnail(item, priority, stop);
    }
    const QPointer self(this);
    const auto selection = m_selection;
    const QImage image = co_await decodeOffActor(item.displayURL(), maxPixel, priority, stop);
    if (!self || selection != m_selection) {
        co_return QImage();
    }
    m_screenCache.insert(item.id, image);
    co_return image;
}

QImage DecodePipeline::cachedScreenImage(const MediaItem &item) const
{
    return m_screenCache.value(item.id);
}

QCoro::Task<QImage> DecodePipeline::thumbnail(MediaItem item, Priority priority,
                                              std::stop_token stop)
{
    if (m_thumbCache.contains(item.id)) {
        co_return m_thumbCache.value(item.id);
    }
    const QPointer self(this);
    const auto selection = m_selection;
    QImage image;
    if (item.kind == MediaKind::video) {
        image = co_await videoFrame(*item.videoURL, priority, stop);
    } else {
        image = co_await decodeOffActor(item.displayURL(), thumbnailMaxPixel, priority, stop);
    }
    if (!self || selection != m_selection) {
        co_return QImage();
    }
    m_thumbCache.insert(item.id, image);
    co_return image;
}

QCoro::Task<QImage> DecodePipeline::fullImage(MediaItem item, std::stop_token stop)
{
    if (m_fullCache.contains(item.id)) {
        co_return m_fullCache.value(item.id);
    }
    if (item.kind == MediaKind::video) {
        co_return QImage();
    }
    const QPointer self(this);
    const auto selection = m_selection;
    const QImage image = co_await decodeOffActor(item.displayURL(), std::nullopt, Current, stop);
    if (!self || selection != m_selection) {
        co_return QImage();
    }
    m_fullCache.insert(item.id, image);
    co_return image;
}

QList<qint64> DecodePipeline::neighbours(qint64 current, qint64 count)
{
    QList<qint64> indices;
    if (count < 1) {
        return indices;
    }
    indices.append(current);
    for (qint64 distance = 1; distance <= std::max(prefetchAhead, prefetchBehind); ++distance) {
        if (distance <= prefetchAhead && current + distance < count) {
            indices.append(current + distance);
        }
        if (distance <= prefetchBehind && current - distance >= 0) {
            indices.append(current - distance);
        }
    }
    indices.removeIf([count](qint64 index) { return index >= count; });
    return indices;
}

void DecodePipeline::prefetch(const QList<MediaItem> &items, qint64 current, int maxPixel)
{
    m_prefetchStop.request_stop();
    m_prefetchStop = std::stop_source();
    m_prefetchMaxPixel = maxPixel;
    QList<MediaItem> candidates;
    for (const auto index : neighbours(current, items.size())) {
        candidates.append(items.at(index));
    }
    startPrefetch(candidates);
}

void DecodePipeline::startPrefetch(const QList<MediaItem> &candidates)
{
    QList<MediaItem> wanted;
    m_skipped.clear();
    for (const auto &item : candidates) {
        if (item.kind == MediaKind::video || m_screenCache.contains(item.id)) {
            continue;
        }
        (m_inFlight.contains(item.id) ? m_skipped : wanted).append(item);
    }
    if (wanted.isEmpty()) {
        return;
    }
    for (const auto &item : wanted) {
        m_inFlight.insert(item.id);
    }
    runPrefetch(wanted, m_prefetchMaxPixel, m_prefetchStop.get_token());
}

QCoro::Task<> DecodePipeline::runPrefetch(QList<MediaItem> items, int maxPixel,
                                          std::stop_token stop)
{
    const QPointer self(this);
    const auto selection = m_selection;
    for (const auto &item : items) {
        if (stop.stop_requested()) {
            break;
        }
        co_await screenImage(item, maxPixel, Prefetch, stop);
        if (!self) {
            co_return;
        }
    }
    // Ids of another card's prefetch may spell the same; they are not ours to clear.
    if (selection == m_selection) {
        clearInFlight(items);
    }
}

void DecodePipeline::clearInFlight(const QList<MediaItem> &items)
{
    for (const auto &item : items) {
        m_inFlight.remove(item.id);
    }
    // The newest prefetch could not take these while an older one held their ids.
    if (!m_skipped.isEmpty()) {
        startPrefetch(QList<MediaItem>(m_skipped));
    }
}
