// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FatProtection.h"

#include "platform/files/FileDescriptor.h"

#include <QFile>
#include <QList>

#include <fcntl.h>
#include <linux/magic.h>
#include <linux/msdos_fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

/// f_type of statfs(2) on exFAT; not in the kernel's headers for programs before Linux 6.2.
constexpr auto exfatMagic = 0x2011BAB0;

constexpr mode_t anyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;

static bool isFatFamily(int folder)
{
    struct statfs status = {};
    return ::fstatfs(folder, &status) == 0 &&
           (status.f_type == MSDOS_SUPER_MAGIC || status.f_type == exfatMagic);
}

static std::optional<quint64> mountIdOf(int folder)
{
    struct statx status = {};
    if (::statx(folder, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) != 0 ||
        (status.stx_mask & STATX_MNT_ID) == 0) {
        return std::nullopt;
    }
    return status.stx_mnt_id;
}

static QByteArray mountInfo()
{
    QFile file(u"/proc/self/mountinfo"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The mode bits that an option such as "fmask=0022" takes away.
static std::optional<uint> maskIn(const QByteArray &superOptions, QByteArrayView name)
{
    for (const auto &option : superOptions.split(',')) {
        if (option.startsWith(name)) {
            bool isOctal = false;
            const auto mask = option.mid(name.size()).toUInt(&isOctal, 8);
            return isOctal ? std::optional(mask) : std::nullopt;
        }
    }
    return std::nullopt;
}

bool FatProtection::letsFilesBeWritable(QByteArrayView mountInfo, quint64 mountId)
{
    for (const auto &line : mountInfo.toByteArray().split('\n')) {
        const auto fields = line.split(' ');
        if (fields.first().toULongLong() == mountId && !line.isEmpty()) {
            const auto mask = maskIn(fields.last(), "fmask=");
            return !mask || (*mask & anyWriteBit) != anyWriteBit;
        }
    }
    return true;
}

FatProtection::FatProtection(int root)
    : m_isFat(isFatFamily(root))
{
    if (m_isFat) {
        const auto mountId = mountIdOf(root);
        m_filesMayBeWritable = !mountId || letsFilesBeWritable(mountInfo(), *mountId);
    }
}

bool FatProtection::protects(int folder, const std::filesystem::path &name) const
{
    struct stat status = {};
    if (!m_isFat || ::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        !S_ISREG(status.st_mode)) {
        return false;
    }
    const int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    FileDescriptor file(::openat(folder, name.c_str(), flags | O_NOATIME));
    if (!file.isOpen() && errno == EPERM) {
        file = FileDescriptor(::openat(folder, name.c_str(), flags));
    }
    __u32 attributes = 0;
    if (file.isOpen() && ::ioctl(file.number(), FAT_IOCTL_GET_ATTRIBUTES, &attributes) == 0) {
        return (attributes & ATTR_RO) != 0;
    }
    // Kernels whose exFAT cannot be asked show the attribute as missing write bits.
    return m_filesMayBeWritable && (status.st_mode & anyWriteBit) == 0;
}
