// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/LifeWitness.h"

#include "platform/files/FolderWalk.h"
#include "platform/files/OpenBeneath.h"
#include "platform/files/SystemCall.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

/// Address, offset and length of a direct read: a multiple of every block size of cards and disks.
constexpr qint64 blockSize = 4096;

/// The distance from one block read to the next, beyond what is read ahead.
constexpr qint64 stride = 1024 * 1024 + blockSize;

/// A file as large as this has enough blocks that nobody has read lately.
constexpr qint64 largeEnough = 4 * 1024 * 1024;

/// Looking for a large file ends after so many: a card of thousands of small ones is not searched.
constexpr int mostCandidates = 256;

std::optional<LifeWitness>
LifeWitness::beneath(int root, const std::function<bool(const std::filesystem::path &)> &mayServe)
{
    std::filesystem::path best;
    qint64 bestSize = 0;
    int candidates = 0;
    FolderWalk::regularFiles(root, {}, [&](const std::filesystem::path &path) {
        struct stat status = {};
        if (mayServe(path) && ::fstatat(root, path.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISREG(status.st_mode)) {
            ++candidates;
            if (status.st_size > bestSize) {
                best = path;
                bestSize = status.st_size;
            }
        }
        return bestSize < largeEnough && candidates < mostCandidates;
    });
    if (bestSize == 0) {
        return std::nullopt;
    }
    auto file = openBeneathForReading(root, best, O_DIRECT | O_NONBLOCK);
    return file.isOpen() ? std::optional(LifeWitness(std::move(file), bestSize)) : std::nullopt;
}

LifeWitness::Statement LifeWitness::ask()
{
    alignas(blockSize) std::array<char, blockSize> block;
    const auto offset = m_next / blockSize * blockSize;
    m_next = (m_next + stride) % m_size;
    const auto count = ::pread(m_file.number(), block.data(), block.size(), offset);
    if (count > 0) {
        return {.isProof = true, .error = {}};
    }
    if (count == 0 || isUnsupported(errno)) { // shortened meanwhile, or not possible here
        return {};
    }
    return {.isProof = true, .error = {errno, std::generic_category()}};
}
