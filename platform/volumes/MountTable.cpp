// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/volumes/MountTable.h"

#include <QByteArrayList>
#include <QFile>

#include <sys/sysmacros.h>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Fields before the optional ones, by their place in the line.
enum Field { Device = 2, MountPoint = 4, Options = 5, FirstOptional = 6 };

bool isOctal(char c)
{
    return c >= '0' && c <= '7';
}

/// Space, tab, newline and backslash are written as a backslash and three octal digits.
std::string unescaped(const QByteArray &field)
{
    std::string plain;
    for (qsizetype i = 0; i < field.size(); ++i) {
        const auto digits =
            QByteArrayView(field).sliced(i + 1).first(std::min<qsizetype>(3, field.size() - i - 1));
        if (field[i] == '\\' && digits.size() == 3 && std::ranges::all_of(digits, isOctal)) {
            plain += char((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0'));
            i += 3;
        } else {
            plain += field[i];
        }
    }
    return plain;
}

std::optional<quint64> deviceNumber(const QByteArray &field)
{
    const auto parts = field.split(':');
    bool hasMajor = false;
    bool hasMinor = false;
    if (parts.size() != 2) {
        return std::nullopt;
    }
    const auto major = parts[0].toUInt(&hasMajor);
    const auto minor = parts[1].toUInt(&hasMinor);
    return hasMajor && hasMinor ? std::optional<quint64>(makedev(major, minor)) : std::nullopt;
}

bool saysReadOnly(const QByteArray &options)
{
    return options.split(',').contains("ro"_ba);
}

std::optional<Mount> parseLine(const QByteArray &line)
{
    const auto fields = line.split(' ');
    const auto separator = fields.indexOf("-"_ba, FirstOptional);
    // After the separator: type, source, and the options of the file system as a whole.
    if (separator < 0 || fields.size() < separator + 4) {
        return std::nullopt;
    }
    const auto device = deviceNumber(fields[Device]);
    auto mountPoint = unescaped(fields[MountPoint]);
    if (!device || !mountPoint.starts_with('/') || mountPoint.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    return Mount{.mountPoint = std::move(mountPoint),
                 .device = *device,
                 .isReadOnly =
                     saysReadOnly(fields[Options]) || saysReadOnly(fields[separator + 3])};
}

} // namespace

QList<Mount> MountTable::parse(QByteArrayView text)
{
    QList<Mount> mounts;
    for (const auto &line : text.toByteArray().split('\n')) {
        if (auto mount = parseLine(line)) {
            mounts.append(*std::move(mount));
        }
    }
    return mounts;
}

QList<Mount> MountTable::current()
{
    QFile file(u"/proc/self/mountinfo"_s);
    return file.open(QIODevice::ReadOnly) ? parse(file.readAll()) : QList<Mount>();
}
