// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArrayView>

#include <filesystem>

/// The protection that a camera gives a picture: the read-only attribute of FAT and exFAT, which
/// unlink(2) does not mind on Linux.
class FatProtection {
public:
    /// For the file system that the folder @p root lies on.
    explicit FatProtection(int root);

    /// Whether the file @p name in the folder @p folder is protected. Always false for folders,
    /// links, and on other file systems.
    [[nodiscard]] bool protects(int folder, const std::filesystem::path &name) const;

    /// Whether the mount numbered @p mountId in @p mountInfo (the text of /proc/self/mountinfo, see
    /// proc(5)) lets files have a write bit. True when it does not say otherwise.
    [[nodiscard]] static bool letsFilesBeWritable(QByteArrayView mountInfo, quint64 mountId);

private:
    bool m_isFat = false;
    bool m_filesMayBeWritable = false;
};
