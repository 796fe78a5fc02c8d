// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/PortalMessages.h"

#include "platform/access/FileUri.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

// XDG Desktop Portal documentation, "File Chooser" and "Request"; D-Bus Specification.
static const auto desktopPath = u"/org/freedesktop/portal/desktop"_s;
static const auto fileChooser = u"org.freedesktop.portal.FileChooser"_s;
static const auto propertiesInterface = u"org.freedesktop.DBus.Properties"_s;

/// The response of a user who agreed; 1 is one who refused, 2 anything else.
constexpr quint32 agreed = 0;

QDBusMessage PortalMessages::versionCall()
{
    auto call = QDBusMessage::createMethodCall(service, desktopPath, propertiesInterface, u"Get"_s);
    call << fileChooser << u"version"_s;
    return call;
}

quint32 PortalMessages::version(const QDBusMessage &answer)
{
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != "v"_L1) {
        return 0;
    }
    const auto value = answer.arguments().constFirst().value<QDBusVariant>().variant();
    return value.metaType() == QMetaType::fromType<quint32>() ? value.value<quint32>() : 0;
}

QDBusMessage PortalMessages::openFileCall(const QString &owner,
                                          const FolderDialog::Question &question,
                                          const QString &token)
{
    QVariantMap options = {{u"handle_token"_s, token},
                           {u"modal"_s, true},
                           {u"multiple"_s, false},
                           {u"directory"_s, true}};
    if (!question.acceptLabel.isEmpty()) {
        options[u"accept_label"_s] = question.acceptLabel;
    }
    if (!question.directory.empty()) {
        const auto bytes = QByteArray::fromStdString(question.directory.native());
        options[u"current_folder"_s] = bytes + '\0';
    }
    auto call = QDBusMessage::createMethodCall(owner, desktopPath, fileChooser, u"OpenFile"_s);
    call << question.parentWindow << question.title << options;
    return call;
}

QString PortalMessages::requestPath(const QString &caller, const QString &token)
{
    auto name = caller.sliced(caller.startsWith(u':') ? 1 : 0);
    return desktopPath + u"/request/"_s + name.replace(u'.', u'_') + u'/' + token;
}

std::optional<QString> PortalMessages::request(const QDBusMessage &answer)
{
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != "o"_L1) {
        return std::nullopt;
    }
    return answer.arguments().constFirst().value<QDBusObjectPath>().path();
}

QDBusMessage PortalMessages::closeCall(const QString &owner, const QString &request)
{
    return QDBusMessage::createMethodCall(owner, request, requestInterface, u"Close"_s);
}

std::optional<std::filesystem::path> PortalMessages::chosenFolder(const QDBusMessage &response)
{
    if (response.signature() != "ua{sv}"_L1 ||
        response.arguments().constFirst().toUInt() != agreed) {
        return std::nullopt;
    }
    const auto results = qdbus_cast<QVariantMap>(response.arguments().at(1));
    const auto uris = results.value(u"uris"_s);
    if (uris.metaType() == QMetaType::fromType<QStringList>()) {
        for (const auto &uri : uris.toStringList()) {
            if (auto path = FileUri::localPath(uri)) {
                return path;
            }
        }
    }
    return std::nullopt;
}
