// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/settings/UserDefaults.h"

#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

/// Any text survives as a key: a separator would make a group, and letter case may be lost.
static QString escaped(const QString &key)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(key));
}

UserDefaults::UserDefaults(const std::filesystem::path &file)
    : m_settings(QString::fromStdString(file.native()), QSettings::IniFormat)
{
    m_settings.setFallbacksEnabled(false);
}

std::filesystem::path UserDefaults::standardFile()
{
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return std::filesystem::path(folder.toStdString()) / "Kestle" / "Kestle.ini";
}

void UserDefaults::registerDefault(const QString &key, bool value)
{
    const std::scoped_lock lock(m_mutex);
    m_registered.insert(key, value);
}

bool UserDefaults::boolValue(const QString &key) const
{
    const std::scoped_lock lock(m_mutex);
    return m_settings.value(escaped(key), m_registered.value(key, false)).toBool();
}

void UserDefaults::setBool(const QString &key, bool value)
{
    const std::scoped_lock lock(m_mutex);
    m_settings.setValue(escaped(key), value);
}

std::optional<QByteArray> UserDefaults::data(const QString &key) const
{
    const std::scoped_lock lock(m_mutex);
    const auto value = m_settings.value(escaped(key));
    return value.isValid() ? std::optional(value.toByteArray()) : std::nullopt;
}

void UserDefaults::setData(const QString &key, const QByteArray &value)
{
    const std::scoped_lock lock(m_mutex);
    m_settings.setValue(escaped(key), value);
}

void UserDefaults::remove(const QString &key)
{
    const std::scoped_lock lock(m_mutex);
    m_settings.remove(escaped(key));
}
