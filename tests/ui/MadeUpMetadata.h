// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/MetadataReading.h"

#include <atomic>
#include <map>
#include <thread>

/// Settings by file name as a test says. Reads can be held back until a test lets them go.
class MadeUpMetadata final : public MetadataReading {
public:
    [[nodiscard]] std::optional<ImageMetadata> read(const std::filesystem::path &url) const override
    {
        ++reads;
        while (isHeld) {
            std::this_thread::yield();
        }
        const auto found = byName.find(url.filename().string());
        return found != byName.end() ? found->second : otherwise;
    }

    /// Not to be changed while reads may run.
    std::map<std::string, std::optional<ImageMetadata>> byName;
    std::optional<ImageMetadata> otherwise;
    std::atomic_bool isHeld = false;
    mutable std::atomic_int reads = 0;
};
