// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/PosixCardMark.h"

#include <QThreadPool>

#include <sys/inotify.h>
#include <unistd.h>

#include <string>

PosixCardMark::PosixCardMark(int root, Watch watch)
    : m_identity(FolderIdentity::of(root))
{
    const bool isNeeded = m_identity && m_identity->isMountRoot && !m_identity->mountIsUnique;
    if (isNeeded || watch == Watch::Always) {
        startWatch(root);
    }
}

void PosixCardMark::startWatch(int root)
{
    m_watches = FileDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    // By the descriptor, not by the card's path: another card may stand there by now.
    const auto opened = "/proc/self/fd/" + std::to_string(root);
    if (!m_watches.isOpen() ||
        ::inotify_add_watch(m_watches.number(), opened.c_str(), IN_DELETE_SELF) < 0) {
        m_watches = FileDescriptor();
    }
}

/// Closing watches takes the kernel up to 20 ms, which whoever drops a mark may not have.
PosixCardMark::~PosixCardMark()
{
    // There is none after the application's end.
    if (auto *pool = QThreadPool::globalInstance(); pool && m_watches.isOpen()) {
        pool->start([descriptor = m_watches.release()] { ::close(descriptor); });
    }
}

bool PosixCardMark::isOf(const FolderIdentity &identity) const
{
    return m_identity == identity && !wasUnmounted();
}

/// Nothing is watched for but the end of what is watched: any event is one.
bool PosixCardMark::wasUnmounted() const
{
    alignas(inotify_event) char event[sizeof(inotify_event)];
    if (!m_unmounted && m_watches.isOpen()) {
        m_unmounted = ::read(m_watches.number(), event, sizeof event) > 0;
    }
    return m_unmounted;
}
