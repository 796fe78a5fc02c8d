// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/settings/UserDefaults.h"

#include <QFile>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

/// QSettings takes both slashes apart into groups and drops empty ones, and refuses an empty key.
static QString escaped(QString key)
{
    if (key.isEmpty()) {
        return u"%"_s;
    }
    return key.replace(u'%', u"%25"_s).replace(u'/', u"%2F"_s).replace(u'\\', u"%5C"_s);
}

UserDefaults::UserDefaults(const std::filesystem::path &file)
    : m_file(QFile::decodeName(QByteArray::fromStdString(file.native())))
{
}

std::filesystem::path UserDefaults::standardFile()
{
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return std::filesystem::path(QFile::encodeName(folder).toStdString()) / "Kestle/Kestle.conf";
}

void UserDefaults::registerDefaults(const QVariantMap &defaults)
{
    const std::scoped_lock lock(m_mutex);
    m_defaults.insert(defaults);
}

bool UserDefaults::boolean(const QString &key) const
{
    // A truth value comes back from the file as text; any other text says nothing.
    const auto text = stored(key).toString();
    if (text == "true"_L1 || text == "false"_L1) {
        return text == "true"_L1;
    }
    const std::scoped_lock lock(m_mutex);
    return m_defaults.value(key).toBool();
}

void UserDefaults::setBoolean(const QString &key, bool value)
{
    store(key, value);
}

std::optional<QByteArray> UserDefaults::bytes(const QString &key) const
{
    const std::scoped_lock lock(m_mutex);
    return storedBytes(key);
}

std::optional<QByteArray> UserDefaults::storedBytes(const QString &key) const
{
    const auto value = stored(key);
    return value.metaType() == QMetaType::fromType<QByteArray>()
               ? std::optional(value.toByteArray())
               : std::nullopt;
}

void UserDefaults::setBytes(const QString &key, const QByteArray &value)
{
    store(key, value);
}

void UserDefaults::replace(const QString &key, const QByteArray &expected,
                           const std::optional<QByteArray> &value)
{
    const std::scoped_lock lock(m_mutex);
    if (storedBytes(key) != expected) {
        return;
    }
    QSettings settings(m_file, QSettings::IniFormat);
    value ? settings.setValue(escaped(key), *value) : settings.remove(escaped(key));
}

void UserDefaults::remove(const QString &key)
{
    const std::scoped_lock lock(m_mutex);
    QSettings(m_file, QSettings::IniFormat).remove(escaped(key));
}

// One QSettings object for each operation: objects on one file share its content and may be used
// on different threads, while one object belongs to one thread.

QVariant UserDefaults::stored(const QString &key) const
{
    return QSettings(m_file, QSettings::IniFormat).value(escaped(key));
}

void UserDefaults::store(const QString &key, const QVariant &value)
{
    const std::scoped_lock lock(m_mutex);
    QSettings(m_file, QSettings::IniFormat).setValue(escaped(key), value);
}
