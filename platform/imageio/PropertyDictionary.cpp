// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/PropertyDictionary.h"

/// The value as exactly a T. qint64 is the only integer type that a dictionary holds.
template<typename T>
static std::optional<T> exactly(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<T>()) {
        return std::nullopt;
    }
    return value.value<T>();
}

std::optional<qint64> integerValue(const PropertyDictionary &properties, const QString &key)
{
    return exactly<qint64>(properties.value(key));
}

std::optional<double> doubleValue(const PropertyDictionary &properties, const QString &key)
{
    return exactly<double>(properties.value(key));
}

std::optional<QString> textValue(const PropertyDictionary &properties, const QString &key)
{
    return exactly<QString>(properties.value(key));
}

std::optional<QList<qint64>> integerList(const PropertyDictionary &properties, const QString &key)
{
    const auto list = exactly<QVariantList>(properties.value(key));
    if (!list) {
        return std::nullopt;
    }
    QList<qint64> integers;
    for (const auto &element : *list) {
        const auto integer = exactly<qint64>(element);
        if (!integer) {
            return std::nullopt;
        }
        integers.append(*integer);
    }
    return integers;
}

std::optional<PropertyDictionary> dictionary(const PropertyDictionary &properties,
                                             const QString &key)
{
    return exactly<QVariantMap>(properties.value(key));
}
