// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/access/FolderDialog.h"

class QDBusMessage;

/// The D-Bus messages of XDG Desktop Portal's file chooser. Safe from any thread.
namespace PortalMessages {

/// The service, and the interface whose Response and Close belong to one question.
inline const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const auto requestInterface = QStringLiteral("org.freedesktop.portal.Request");

/// Asks for the version of the file chooser. The service is started if the bus can do that.
[[nodiscard]] QDBusMessage versionCall();

/// The version in the answer to that; 0 when there is no file chooser.
[[nodiscard]] quint32 version(const QDBusMessage &answer);

/// Asks the user for a folder. @p owner is the unique name of the service, so that no other can
/// take the question; @p token must be new and not to be guessed.
[[nodiscard]] QDBusMessage
openFileCall(const QString &owner, const FolderDialog::Question &question, const QString &token);

/// The object that will stand for the question of @p caller, a unique name, with this token.
/// Services of long ago choose another one and tell it in their answer only.
[[nodiscard]] QString requestPath(const QString &caller, const QString &token);

/// The object in the answer that stands for the question; absent when the dialog did not open.
[[nodiscard]] std::optional<QString> request(const QDBusMessage &answer);

/// Closes the dialog of the question that @p request stands for.
[[nodiscard]] QDBusMessage closeCall(const QString &owner, const QString &request);

/// The folder that the user chose according to a Response; absent when none.
[[nodiscard]] std::optional<std::filesystem::path> chosenFolder(const QDBusMessage &response);

} // namespace PortalMessages
