// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/CardReads.h"

#include "core/metadata/RememberedMetadata.h"
#include "platform/files/FileManager.h"

/// The newest item's settings should not wait behind a read that is no longer wanted.
static constexpr int readsAtOnce = 2;

CardReads::CardReads(std::shared_ptr<const MetadataReading> reader,
                     std::shared_ptr<const FileManager> fileManager)
    : m_reader(std::move(reader))
    , m_fileManager(std::move(fileManager))
    , m_pool(readsAtOnce)
{
}

void CardReads::beginSelection(qint64 number)
{
    if (m_selection != number) {
        m_selection = number;
        m_pool.renew();
        m_sizedItems.clear();
        m_sizes.clear();
    }
}

void CardReads::setRemembered(std::shared_ptr<const RememberedMetadata> remembered)
{
    m_remembered = std::move(remembered);
}

QFuture<std::optional<ImageMetadata>> CardReads::metadata(const std::filesystem::path &url,
                                                          std::stop_token stop)
{
    auto read = [reader = m_reader, remembered = m_remembered, url,
                 stop = std::move(stop)]() -> std::optional<ImageMetadata> {
        if (stop.stop_requested()) {
            return std::nullopt;
        }
        auto known = remembered ? remembered->recall(url) : std::nullopt;
        return known ? std::move(known) : reader->read(url);
    };
    return m_pool.run(std::move(read));
}

QFuture<QList<qint64>> CardReads::sizes(const QList<MediaItem> &items, const QList<qint64> &rows,
                                        std::stop_token stop)
{
    auto ask = [fileManager = m_fileManager, items, rows, stop = std::move(stop)] {
        QList<qint64> sizes;
        sizes.reserve(rows.size());
        for (const auto row : rows) {
            if (stop.stop_requested()) {
                break;
            }
            qint64 bytes = 0;
            for (const auto &url : items.at(row).allURLs()) {
                bytes += fileManager->fileSize(url).value_or(0);
            }
            sizes.append(bytes);
        }
        return sizes;
    };
    return m_pool.run(std::move(ask));
}

void CardReads::rememberSizes(const QList<MediaItem> &items, const QList<qint64> &sizes)
{
    m_sizedItems = items;
    m_sizes = sizes;
}

QList<qint64> CardReads::rememberedSizes(const QList<MediaItem> &items) const
{
    return m_sizedItems.isSharedWith(items) ? m_sizes : QList<qint64>(items.size(), -1);
}
