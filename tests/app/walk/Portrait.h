// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <utility>
#include <vector>

/// All that can be seen of a controller, as text: two that look the same are equal.
class Portrait {
public:
    void add(const char *name, const QString &value) { m_lines.emplace_back(name, value); }

    void add(const char *name, const char *value) { add(name, QString::fromLatin1(value)); }

    void add(const char *name, qint64 value) { add(name, QString::number(value)); }

    bool operator==(const Portrait &) const = default;

    /// The lines in which @p seen differs from @p expected; both have the same names in order.
    [[nodiscard]] static QString difference(const Portrait &seen, const Portrait &expected)
    {
        QString text;
        for (size_t line = 0; line < seen.m_lines.size(); ++line) {
            const auto &[name, value] = seen.m_lines[line];
            const auto &wanted = expected.m_lines.at(line).second;
            if (value != wanted) {
                text +=
                    QStringLiteral("  %1 is %2\n  %3 should be %4\n")
                        .arg(QString::fromLatin1(name), value, QString::fromLatin1(name), wanted);
            }
        }
        return text;
    }

private:
    std::vector<std::pair<const char *, QString>> m_lines;
};
