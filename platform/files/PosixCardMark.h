// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/CardMark.h"
#include "platform/files/FileDescriptor.h"
#include "platform/files/FolderIdentity.h"

#include <atomic>

/// The numbers of a card's root and, where those of its mount may be given again, a watch on it:
/// root folders of FAT have the same number on every card, and before Linux 6.8 the next card gets
/// the lowest free device and mount number. The watch (inotify(7)) goes when the card is unmounted,
/// which it does not prevent.
///
/// A folder that a portal shows of a card is no root of a mount. It has no watch, which would make
/// the portal hold the card, and its numbers do not tell whether the card behind it was exchanged.
class PosixCardMark final : public CardMark {
public:
    enum class Watch { WhereNeeded, Always };

    /// Of the card whose root is open as @p root. Where no watch is to be had, the numbers have to
    /// do.
    explicit PosixCardMark(int root, Watch watch = Watch::WhereNeeded);
    ~PosixCardMark() override;

    /// Whether @p identity is that of the root, and the card has been mounted all the time.
    [[nodiscard]] bool isOf(const FolderIdentity &identity) const;

    /// As far as the watch tells.
    [[nodiscard]] bool wasUnmounted() const;

private:
    void startWatch(int root);

    std::optional<FolderIdentity> m_identity;
    FileDescriptor m_watches;
    mutable std::atomic_bool m_unmounted = false;
};
