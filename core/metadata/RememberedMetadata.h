// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/MetadataReading.h"
#include "platform/files/FileStamp.h"

#include <QSet>

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

/// Reads settings through another reader and remembers them, so that no file is opened twice for
/// what it says. Made for one scan of one card and dropped with what that scan found: paths repeat
/// from card to card. Safe from several threads at once.
class RememberedMetadata final : public MetadataReading {
public:
    /// Settings of so many files are remembered, each in well under a kibibyte.
    static constexpr size_t mostFiles = 50'000;

    explicit RememberedMetadata(std::shared_ptr<const MetadataReading> reader);

    /// Always what the reader says. It is remembered unless the file cannot be read.
    [[nodiscard]] std::optional<ImageMetadata>
    read(const std::filesystem::path &url) const override;

    /// What was read of the file at @p url, while that is the same file with the same content as
    /// far as the file system tells. Opens nothing, but blocks.
    [[nodiscard]] std::optional<ImageMetadata> recall(const std::filesystem::path &url) const;

private:
    struct Record {
        FileStamp stamp;
        ImageMetadata metadata;
    };

    void remember(const std::filesystem::path &url, const FileStamp &stamp,
                  ImageMetadata metadata) const;
    void share(std::optional<QString> &text) const;

    std::shared_ptr<const MetadataReading> m_reader;
    mutable std::mutex m_mutex; ///< of what follows
    mutable std::unordered_map<std::string, Record> m_records;
    mutable QSet<QString> m_texts; ///< the same few lenses and looks, once each
};
