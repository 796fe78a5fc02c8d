// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/FileDescriptor.h"

#include <QByteArray>

#include <filesystem>
#include <optional>

/// A regular file that is open for reading. Reads never map it: a card may be pulled at any moment,
/// and a failed page of a mapping would end the program where a failed read is only short.
/// Every operation blocks; safe from several threads.
class InputFile {
public:
    /// Nothing when @p path cannot be opened or is no regular file; never waits for a FIFO. Links
    /// are followed. The access time stays as it is where the system allows that.
    [[nodiscard]] static std::optional<InputFile> open(const std::filesystem::path &path);

    /// Bytes, as they were when the file was opened.
    [[nodiscard]] qint64 size() const { return m_size; }

    [[nodiscard]] int descriptor() const { return m_descriptor.number(); }

    /// Whether the system reads more than it is asked for, in the hope that it will be wanted soon,
    /// as it does at first. A few small pieces of each of many files would make it read several
    /// times their size from the card.
    enum class ReadAhead { Usual, None };
    void setReadAhead(ReadAhead readAhead) const;

    /// Fills @p target from @p offset on and returns the number of bytes read: fewer than
    /// @p length at the end of the file or after an error.
    qint64 read(qint64 offset, char *target, qint64 length) const;

    /// The same into a new array. @p length must be bounded by the caller.
    [[nodiscard]] QByteArray bytes(qint64 offset, qint64 length) const;

private:
    InputFile(FileDescriptor descriptor, qint64 size);

    FileDescriptor m_descriptor;
    qint64 m_size;
};
