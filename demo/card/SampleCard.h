// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/card/CardManifest.h"
#include "demo/card/HeifWriter.h"

#include <filesystem>
#include <optional>

/// Makes a memory card that looks as if somebody had been out with a camera for two days: pictures
/// of our own painting, RAW files beside a third of them, HEIF pictures, clips, and the files that
/// cameras and computers leave beside them.
namespace SampleCard {

struct Options {
    int longEdge = 3000; ///< of the pictures, in pixels
    quint32 seed = 1;    ///< the same seed gives the same pictures, byte for byte
    bool clips = true;
    /// Shots whose HEIF picture it cannot make are left out, with a note.
    HeifWriter::Written (*writeHeif)(const QImage &, const CaptureSettings &) = HeifWriter::write;
};

/// Fills @p root (made if missing). Absent when a file cannot be written. Works on all cores and
/// blocks for some seconds.
[[nodiscard]] std::optional<CardManifest> make(const std::filesystem::path &root,
                                               const Options &options = {});

} // namespace SampleCard
