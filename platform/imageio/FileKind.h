// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/PagedReader.h"

/// What a file is by its first bytes, whatever its name says.
enum class FileKind {
    Unknown,
    Jpeg,
    /// TIFF 6.0, BigTIFF, and the RAW files built like them.
    Tiff,
    Raf,
    /// Canon's CR3, an ISO base media file.
    Cr3,
    /// An ISO base media file: HEIF when it has item boxes.
    Media,
    /// Canon's CRW.
    Ciff,
    /// Sigma's.
    X3f,
    /// Minolta's MRW and PNG: not a card's business, but they turn up under names that are.
    Other,
};

[[nodiscard]] FileKind fileKind(PagedReader &reader);
