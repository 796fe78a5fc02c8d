// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDateTime>
#include <QStringList>

class UserDefaults;

/// When to look for a newer version without being asked, and of which one the user knows. Kept in
/// the user defaults.
class UpdateSchedule {
public:
    explicit UpdateSchedule(UserDefaults &defaults)
        : m_defaults(defaults)
    {
    }

    /// Once a day at most. Never at first: the first question only begins the day. A last search
    /// that is still to come, because a clock was set back, does not count.
    [[nodiscard]] bool isDue(const QDateTime &now);

    void noteSearch(const QDateTime &now);

    /// Versions that are not to be fetched unasked: the one that the user was told of last, and for
    /// a week the one whose download failed last.
    [[nodiscard]] QStringList knownVersions(const QDateTime &now) const;
    void noteTold(const QString &version);
    void noteFailed(const QString &version, const QDateTime &now);

private:
    UserDefaults &m_defaults;
};
