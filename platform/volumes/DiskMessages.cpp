// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/volumes/DiskMessages.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>

using namespace Qt::StringLiterals;

/// A property's value without D-Bus types; invalid when it is of a kind that nobody asks for.
static QVariant plain(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
        return value.value<QDBusObjectPath>().path();
    }
    if (value.metaType() != QMetaType::fromType<QDBusArgument>()) {
        return value;
    }
    // Compound values arrive unread, and reading one as the wrong type would print a warning.
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == "aay"_L1
               ? QVariant::fromValue(qdbus_cast<QByteArrayList>(argument))
               : QVariant();
}

static QVariantMap plain(QVariantMap properties)
{
    for (auto &value : properties) {
        value = plain(std::as_const(value));
    }
    return properties;
}

std::optional<VolumeTree> DiskMessages::tree(const QDBusMessage &answer)
{
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != "a{oa{sa{sv}}}"_L1) {
        return std::nullopt;
    }
    const auto objects =
        qdbus_cast<QMap<QDBusObjectPath, VolumeTree::Interfaces>>(answer.arguments().constFirst());
    VolumeTree tree;
    for (const auto &[path, interfaces] : objects.asKeyValueRange()) {
        for (const auto &[name, properties] : interfaces.asKeyValueRange()) {
            tree.objects[path.path()][name] = plain(properties);
        }
    }
    return tree;
}

std::optional<QString> DiskMessages::objectWithoutFilesystem(const QDBusMessage &notice)
{
    if (notice.signature() != "oas"_L1 ||
        !notice.arguments().at(1).toStringList().contains(VolumeTree::filesystemInterface)) {
        return std::nullopt;
    }
    return notice.arguments().constFirst().value<QDBusObjectPath>().path();
}

std::optional<QVariantMap> DiskMessages::changedProperties(const QDBusMessage &notice)
{
    if (notice.signature() != "sa{sv}as"_L1) {
        return std::nullopt;
    }
    return plain(qdbus_cast<QVariantMap>(notice.arguments().at(1)));
}
