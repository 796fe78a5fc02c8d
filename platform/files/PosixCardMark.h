// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/CardMark.h"
#include "platform/files/FileDescriptor.h"
#include "platform/files/FolderIdentity.h"

#include <atomic>

/// The numbers of a card's root, and a watch on it. The numbers alone would not do: root folders of
/// FAT have the same one on every card, and the kernel gives the lowest free device and mount
/// number to the next card. The watch (inotify(7)) goes when the card is unmounted, which it does
/// not prevent.
class PosixCardMark final : public CardMark {
public:
    /// Of the card whose root is open as @p root. Where there are no watches left, the numbers have
    /// to do.
    explicit PosixCardMark(int root);
    ~PosixCardMark() override;

    /// Whether @p identity is that of the root, and the card has been mounted all the time.
    [[nodiscard]] bool isOf(const FolderIdentity &identity) const;

private:
    [[nodiscard]] bool wasUnmounted() const;

    std::optional<FolderIdentity> m_identity;
    FileDescriptor m_watches;
    mutable std::atomic_bool m_unmounted = false;
};
