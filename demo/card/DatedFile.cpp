// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/DatedFile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace DatedFile {

bool write(const std::filesystem::path &path, const QByteArray &bytes, const QDateTime &when)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        return false;
    }
    file.close();
    return date(path, when);
}

bool date(const std::filesystem::path &path, const QDateTime &when)
{
    const timespec time{static_cast<time_t>(when.toSecsSinceEpoch()), 0};
    const timespec both[2] = {time, time};
    return ::utimensat(AT_FDCWD, path.c_str(), both, 0) == 0;
}

} // namespace DatedFile
