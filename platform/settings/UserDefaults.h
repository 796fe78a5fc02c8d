// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <filesystem>
#include <mutex>
#include <optional>

/// The user's settings, kept in one INI file. Any text is a key, and different texts are different
/// keys. What cannot be read is absent and what cannot be written is lost, without a message.
/// Every operation may block on the disk for a moment and may be called from any thread.
class UserDefaults {
public:
    /// Keeps the settings in @p file, whose folder is made when something is first written.
    explicit UserDefaults(const std::filesystem::path &file);

    /// Where this user's settings of Kestle belong, by the XDG Base Directory Specification.
    [[nodiscard]] static std::filesystem::path standardFile();

    /// What boolean() answers for keys that the file does not hold. Never written.
    void registerDefaults(const QVariantMap &defaults);

    /// The truth value of @p key, else its registered default, else false.
    [[nodiscard]] bool boolean(const QString &key) const;
    void setBoolean(const QString &key, bool value);

    /// The bytes stored under @p key; absent when there are none or something else is stored.
    [[nodiscard]] std::optional<QByteArray> bytes(const QString &key) const;
    void setBytes(const QString &key, const QByteArray &value);

    void remove(const QString &key);

    /// Stores @p value under @p key, or removes it, if the bytes there still are @p expected. For
    /// who took long to judge what he read.
    void replace(const QString &key, const QByteArray &expected,
                 const std::optional<QByteArray> &value);

private:
    [[nodiscard]] QVariant stored(const QString &key) const;
    [[nodiscard]] std::optional<QByteArray> storedBytes(const QString &key) const;
    void store(const QString &key, const QVariant &value);

    const QString m_file;
    mutable std::mutex m_mutex; ///< for m_defaults and what must not come between two steps
    QVariantMap m_defaults;
};
