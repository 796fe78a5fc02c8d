// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/decode/BitmapCache.h"
#include "core/model/MediaItem.h"
#include "platform/threads/RenewablePool.h"

#include <QCoroTask>
#include <QObject>
#include <QSet>

#include <functional>
#include <memory>
#include <stop_token>

/// Turns media items into bitmaps at three sizes and keeps bounded caches of each.
///
/// All state belongs to the thread of this object; only the decoding runs elsewhere, on a pool of
/// its own that is waited for at the end. A result that is null means that there is no picture;
/// it is never cached, so that a later request tries again. Item ids repeat from card to card:
/// the pipeline holds pictures of one selection of a card only, see beginSelection().
class DecodePipeline : public QObject {
    Q_OBJECT

public:
    static constexpr int thumbnailMaxPixel = 256;
    static constexpr qint64 screenCap = 30;
    static constexpr qint64 thumbCap = 2000;
    static constexpr qint64 fullCap = 3;

    /// What the eye waits for most comes first.
    enum Priority {
        Prefetch,
        Visible, ///< a thumbnail among others
        Current, ///< what stands for the item that is looked at
    };

    /// What turns a file into an upright sRGB bitmap; null on failure. Called on several threads.
    struct Decoders {
        /// The picture of a file, its longest edge at most as given; whole without a size.
        std::function<QImage(const std::filesystem::path &url, std::optional<int> maxPixel)>
            picture;
        /// The frame at time zero of a clip, within thumbnailMaxPixel.
        std::function<QImage(const std::filesystem::path &url)> videoFrame;
        /// Told on the pipeline's thread when pictures of another card follow, whose files may
        /// bear the same names.
        std::function<void()> forget = [] {};
    };

    explicit DecodePipeline(Decoders decoders, QObject *parent = nullptr);
    ~DecodePipeline() override;

    /// To be told before the first request for a card. When @p number differs from the last one,
    /// the caches and the set of ids in flight are emptied, the prefetch is cancelled, and decodes
    /// that are still running bring nothing; a card that hangs holds up no other.
    void beginSelection(qint64 number);

    /// The picture to show full screen, its longest edge at most @p maxPixel; of a clip the
    /// thumbnail. A request whose @p stop comes before its decoding begins brings nothing, here
    /// and below: who walks fast does not wait for what he passed.
    [[nodiscard]] QCoro::Task<QImage> screenImage(MediaItem item, int maxPixel,
                                                  std::stop_token stop = {});

    /// The screen image if it is cached; never decodes.
    [[nodiscard]] QImage cachedScreenImage(const MediaItem &item) const;

    /// The small picture, its longest edge at most thumbnailMaxPixel.
    [[nodiscard]] QCoro::Task<QImage> thumbnail(MediaItem item, Priority priority = Visible,
                                                std::stop_token stop = {});

    /// The picture in full resolution; null for a clip.
    [[nodiscard]] QCoro::Task<QImage> fullImage(MediaItem item, std::stop_token stop = {});

    /// Decodes the photos around index @p current into the screen cache, nearest first, in the
    /// background. Replaces the prefetch that is running.
    void prefetch(const QList<MediaItem> &items, qint64 current, int maxPixel);

    /// The indices to prefetch around @p current of @p count items, in order: up to 8 ahead and 4
    /// behind, the ones ahead first.
    [[nodiscard]] static QList<qint64> neighbours(qint64 current, qint64 count);

    /// The ids that a prefetch which has not ended is responsible for.
    [[nodiscard]] const QSet<QString> &inFlight() const { return m_inFlight; }

private:
    [[nodiscard]] QCoro::Task<QImage> decodeOffActor(std::filesystem::path url,
                                                     std::optional<int> maxPixel, Priority priority,
                                                     std::stop_token stop);
    [[nodiscard]] QCoro::Task<QImage> videoFrame(std::filesystem::path url, Priority priority,
                                                 std::stop_token stop);
    [[nodiscard]] QCoro::Task<QImage> screenImage(MediaItem item, int maxPixel, Priority priority,
                                                  std::stop_token stop);
    void startPrefetch(const QList<MediaItem> &candidates);
    QCoro::Task<> runPrefetch(QList<MediaItem> items, int maxPixel, std::stop_token stop);
    void clearInFlight(const QList<MediaItem> &items);

    std::shared_ptr<const Decoders> m_decoders;
    BitmapCache m_screenCache{screenCap};
    BitmapCache m_thumbCache{thumbCap};
    BitmapCache m_fullCache{fullCap};
    QSet<QString> m_inFlight;
    std::stop_source m_prefetchStop;
    int m_prefetchMaxPixel = 0;
    QList<MediaItem> m_skipped; ///< of the newest prefetch, as an older one still held their ids
    qint64 m_selection = 0;
    RenewablePool m_pool; ///< new for each selection: the last one's card may hang
};
