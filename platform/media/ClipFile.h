// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"

#include <memory>
#include <mutex>
#include <optional>

/// A clip's file that several threads read from, and any one can take away from the others. Safe
/// from several threads.
class ClipFile {
public:
    /// Blocks. Nothing to read when @p path cannot be opened.
    explicit ClipFile(const std::filesystem::path &path);

    /// Null when it could not be opened or is closed.
    [[nodiscard]] std::shared_ptr<const InputFile> file() const;

    /// Up to @p length bytes from @p position on, fewer only at the end of the file, where there
    /// are none. Nothing when they cannot be had: the card fails, the file was cut or is closed.
    /// Blocks.
    [[nodiscard]] std::optional<qint64> read(qint64 position, char *target, qint64 length) const;

    /// The descriptor is closed as soon as no read is under way; later ones read nothing. May block
    /// on a card that hangs.
    void close();

private:
    mutable std::mutex m_mutex;
    std::shared_ptr<const InputFile> m_file;
};
