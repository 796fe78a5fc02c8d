// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/RememberedMetadata.h"

/// Longer than any lens is called; a file that says more is read again.
static constexpr qsizetype longestText = 128;

RememberedMetadata::RememberedMetadata(std::shared_ptr<const MetadataReading> reader)
    : m_reader(std::move(reader))
{
}

std::optional<ImageMetadata> RememberedMetadata::read(const std::filesystem::path &url) const
{
    // Before the file is read: what changes meanwhile must not go by the newer stamp.
    const auto stamp = FileStamp::of(url);
    auto metadata = m_reader->read(url);
    if (stamp && metadata) {
        remember(url, *stamp, *metadata);
    }
    return metadata;
}

std::optional<ImageMetadata> RememberedMetadata::recall(const std::filesystem::path &url) const
{
    const auto stamp = FileStamp::of(url);
    const std::scoped_lock lock(m_mutex);
    const auto found = m_records.find(url.native());
    if (!stamp || found == m_records.end() || found->second.stamp != *stamp) {
        return std::nullopt;
    }
    return found->second.metadata;
}

void RememberedMetadata::remember(const std::filesystem::path &url, const FileStamp &stamp,
                                  ImageMetadata metadata) const
{
    const std::scoped_lock lock(m_mutex);
    if (metadata.lensModel && metadata.lensModel->size() > longestText) {
        m_records.erase(url.native());
        return;
    }
    if (m_records.size() >= mostFiles && !m_records.contains(url.native())) {
        return;
    }
    share(metadata.lensModel);
    if (auto &fuji = metadata.fuji) {
        for (auto *text : {&fuji->filmSimulation, &fuji->dynamicRange, &fuji->whiteBalanceShift,
                           &fuji->highlightTone, &fuji->shadowTone, &fuji->grain,
                           &fuji->colorChrome, &fuji->colorChromeBlue}) {
            share(*text);
        }
    }
    m_records.insert_or_assign(url.native(), Record{stamp, std::move(metadata)});
}

/// Called with the lock held.
void RememberedMetadata::share(std::optional<QString> &text) const
{
    if (text) {
        text = *m_texts.insert(*text);
    }
}
