// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QSettings>
#include <QVariant>

#include <filesystem>
#include <mutex>
#include <optional>

/// The user's settings, kept in an INI file below the desktop's configuration folder. Safe from
/// several threads.
class UserDefaults {
public:
    /// In the file @p file, which need not exist.
    explicit UserDefaults(const std::filesystem::path &file);

    /// The application's own file, below the XDG configuration folder.
    [[nodiscard]] static std::filesystem::path standardFile();

    /// The value of @p key as long as the user has set none. Not written to the file.
    void registerDefault(const QString &key, bool value);

    /// False when @p key is neither set nor registered.
    [[nodiscard]] bool boolValue(const QString &key) const;
    void setBool(const QString &key, bool value);

    [[nodiscard]] std::optional<QByteArray> data(const QString &key) const;
    void setData(const QString &key, const QByteArray &value);

    void remove(const QString &key);

private:
    mutable std::mutex m_mutex;
    mutable QSettings m_settings;
    QHash<QString, bool> m_registered;
};
