// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/ImageMetadata.h"
#include "core/model/MediaItem.h"

#include <QFuture>
#include <QHash>
#include <QList>
#include <QThreadPool>

#include <filesystem>
#include <memory>
#include <stop_token>

class FileManager;
class MetadataReading;

/// What screens read from the card besides pictures, off the main thread.
///
/// All of it runs on one pool, which is waited for at the end: a screen that goes away never waits
/// for a slow card. A read that was stopped before it began brings nothing.
class CardReads {
public:
    CardReads(std::shared_ptr<const MetadataReading> reader,
              std::shared_ptr<const FileManager> fileManager);

    [[nodiscard]] QFuture<std::optional<ImageMetadata>> metadata(const std::filesystem::path &url,
                                                                 std::stop_token stop);

    /// Bytes that the files of each of @p items occupy, by id; a size that cannot be read counts
    /// as 0.
    [[nodiscard]] QFuture<QHash<QString, qint64>> sizes(const QList<MediaItem> &items,
                                                        std::stop_token stop);

private:
    std::shared_ptr<const MetadataReading> m_reader;
    std::shared_ptr<const FileManager> m_fileManager;
    QThreadPool m_pool;
};
