// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QVariantMap>

#include <optional>

/// The properties of an image: texts to integers (qint64), floating-point numbers (double), texts
/// (QString), lists (QVariantList) and nested dictionaries (QVariantMap).
using PropertyDictionary = QVariantMap;

/// Typed access. A value of another type counts as missing: nothing is converted, not even an
/// integer to a floating-point number. Pure; safe from any thread.
[[nodiscard]] std::optional<qint64> integerValue(const PropertyDictionary &properties,
                                                 const QString &key);
[[nodiscard]] std::optional<double> doubleValue(const PropertyDictionary &properties,
                                                const QString &key);
[[nodiscard]] std::optional<QString> textValue(const PropertyDictionary &properties,
                                               const QString &key);

/// A list in which every element is an integer; the empty list is one.
[[nodiscard]] std::optional<QList<qint64>> integerList(const PropertyDictionary &properties,
                                                       const QString &key);
[[nodiscard]] std::optional<PropertyDictionary> dictionary(const PropertyDictionary &properties,
                                                           const QString &key);
