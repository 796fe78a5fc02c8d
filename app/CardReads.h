// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/ImageMetadata.h"
#include "core/model/MediaItem.h"
#include "platform/threads/RenewablePool.h"

#include <QFuture>
#include <QList>

#include <filesystem>
#include <memory>
#include <stop_token>

class FileManager;
class MetadataReading;
class RememberedMetadata;

/// What screens read from the card besides pictures, off the main thread.
///
/// All of it runs on threads that are waited for at the end: a screen that goes away never waits
/// for a slow card. A read that was stopped before it began brings nothing. Main thread only.
class CardReads {
public:
    CardReads(std::shared_ptr<const MetadataReading> reader,
              std::shared_ptr<const FileManager> fileManager);

    /// To be told before the first read from a card. When @p number differs from the last one, what
    /// has not begun will bring nothing, and a card that hangs holds up no other.
    void beginSelection(qint64 number);

    /// What has been read of the files already; null when there is nothing or the card is gone.
    void setRemembered(std::shared_ptr<const RememberedMetadata> remembered);

    /// The settings of the file at @p url, which is opened only when they are not remembered.
    [[nodiscard]] QFuture<std::optional<ImageMetadata>> metadata(const std::filesystem::path &url,
                                                                 std::stop_token stop);

    /// Bytes that the files of those of @p items occupy that are in these @p rows, in their order;
    /// a size that cannot be read counts as 0. There are fewer when it was stopped.
    [[nodiscard]] QFuture<QList<qint64>> sizes(const QList<MediaItem> &items,
                                               const QList<qint64> &rows, std::stop_token stop);

    /// Keeps what sizes() has brought, bytes for each of @p items or -1, for as long as the card
    /// stays selected.
    void rememberSizes(const QList<MediaItem> &items, const QList<qint64> &sizes);

    /// One for each of @p items; -1 for one that is not known, or for all of another list.
    [[nodiscard]] QList<qint64> rememberedSizes(const QList<MediaItem> &items) const;

private:
    std::shared_ptr<const MetadataReading> m_reader;
    std::shared_ptr<const FileManager> m_fileManager;
    std::shared_ptr<const RememberedMetadata> m_remembered;
    QList<MediaItem> m_sizedItems;
    QList<qint64> m_sizes; ///< of m_sizedItems
    RenewablePool m_pool;
    qint64 m_selection = 0;
};
