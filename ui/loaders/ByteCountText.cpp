// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/ByteCountText.h"

#include <QCoreApplication>

#include <array>

static QString withoutTrailingZeros(QString number)
{
    if (!number.contains(u'.')) {
        return number;
    }
    while (number.endsWith(u'0')) {
        number.chop(1);
    }
    if (number.endsWith(u'.')) {
        number.chop(1);
    }
    return number;
}

QString byteCountText(qint64 bytes, const QLocale &locale)
{
    struct Unit {
        double size;
        int decimals;
        const char *text;
    };

    static constexpr std::array units{
        Unit{1e3, 0, QT_TRANSLATE_NOOP("ByteCountText", "%1 KB")},
        Unit{1e6, 1, QT_TRANSLATE_NOOP("ByteCountText", "%1 MB")},
        Unit{1e9, 2, QT_TRANSLATE_NOOP("ByteCountText", "%1 GB")},
        Unit{1e12, 2, QT_TRANSLATE_NOOP("ByteCountText", "%1 TB")},
        Unit{1e15, 2, QT_TRANSLATE_NOOP("ByteCountText", "%1 PB")},
        Unit{1e18, 2, QT_TRANSLATE_NOOP("ByteCountText", "%1 EB")},
    };
    if (bytes == 0) {
        return QCoreApplication::translate("ByteCountText", "Zero KB");
    }
    if (bytes == 1) {
        return QCoreApplication::translate("ByteCountText", "1 byte");
    }
    if (bytes < 1000) {
        return QCoreApplication::translate("ByteCountText", "%1 bytes").arg(bytes);
    }
    for (const auto &unit : units) {
        const QString number =
            QString::number(static_cast<double>(bytes) / unit.size, 'f', unit.decimals);
        // A number that rounds up to a thousand is one of the next unit.
        if (number.toDouble() < 1000) {
            return QCoreApplication::translate("ByteCountText", unit.text)
                .arg(withoutTrailingZeros(number).replace(u'.', locale.decimalPoint()));
        }
    }
    Q_UNREACHABLE();
}
