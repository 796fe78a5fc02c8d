// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/FileDescriptor.h"

#include <QtGlobal>

#include <filesystem>
#include <functional>
#include <optional>
#include <system_error>

/// A file that is held open to tell whether its medium is still there: only a read past the cache
/// (O_DIRECT) of a block that lies on the medium tells.
class LifeWitness {
public:
    /// The file beneath the folder @p root that serves best, of those that @p mayServe. Absent when
    /// there is none.
    [[nodiscard]] static std::optional<LifeWitness>
    beneath(int root, const std::function<bool(const std::filesystem::path &)> &mayServe);

    /// What a read says.
    struct Statement {
        bool isProof = false;  ///< false where such reads are not possible
        std::error_code error; ///< why the medium could not be read
    };

    /// Reads another block each time, so that no cache further down has it already.
    [[nodiscard]] Statement ask();

private:
    LifeWitness(FileDescriptor file, qint64 size)
        : m_file(std::move(file))
        , m_size(size)
    {
    }

    FileDescriptor m_file;
    qint64 m_size; ///< bytes, at least 1
    qint64 m_next = 0;
};
