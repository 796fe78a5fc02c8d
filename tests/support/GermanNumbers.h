// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLocale>

#include <clocale>
#include <string>

/// While it lives, Qt and, where the system has such a locale, the C library write a decimal comma
/// and group digits by points.
class GermanNumbers {
public:
    GermanNumbers()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        for (const char *name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE"}) {
            if (std::setlocale(LC_NUMERIC, name) != nullptr) {
                break;
            }
        }
    }

    ~GermanNumbers()
    {
        QLocale::setDefault(m_locale);
        std::setlocale(LC_NUMERIC, m_numeric.c_str());
    }

    Q_DISABLE_COPY_MOVE(GermanNumbers)

private:
    QLocale m_locale;
    std::string m_numeric = std::setlocale(LC_NUMERIC, nullptr);
};
