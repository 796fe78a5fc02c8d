// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/access/FolderDialog.h"

#include <QStringList>

#include <memory>

class QDBusConnection;
class QDBusMessage;

/// The desktop's own folder dialog, asked for through XDG Desktop Portal; it grants a sandboxed
/// program access to what the user chooses. Where the desktop has no such dialog, or one that knows
/// no folders, the question goes to another one. An answer never comes before open() returns,
/// unless it is the other dialog's. Lives on the main thread and never waits for the bus.
class PortalFolderDialog final : public FolderDialog {
    Q_OBJECT

public:
    /// Opening the session bus waits for its greeting, once. The fallback may be null; it must
    /// outlive the dialog.
    [[nodiscard]] static std::unique_ptr<PortalFolderDialog> onSessionBus(FolderDialog *fallback);

    PortalFolderDialog(const QDBusConnection &sessionBus, FolderDialog *fallback);
    ~PortalFolderDialog() override;

    void open(const Question &question) override;
    void close() override;

private Q_SLOTS:
    void responded(const QDBusMessage &response);
    void ownerChanged(const QString &service, const QString &oldOwner, const QString &newOwner);
    void portalLost();

private:
    enum class Stage {
        Idle,
        Starting, ///< the portal was asked for its version
        Asking,   ///< the portal was asked for the dialog
        Open,     ///< the portal shows the dialog
        Fallback  ///< the other dialog has the question
    };

    void askPortal();
    void dialogOpened(const QDBusMessage &answer);
    void askFallback();
    void subscribe(const QString &request);
    void forget();
    void finish(const std::optional<std::filesystem::path> &folder);

    std::unique_ptr<QDBusConnection> m_bus; ///< behind a pointer to keep D-Bus out of this header
    FolderDialog *m_fallback;
    Question m_question;
    Stage m_stage = Stage::Idle;
    quint64 m_number = 0;   ///< of the question; the portal's answers to earlier ones do not count
    QString m_owner;        ///< the portal's unique name, since it has been asked for the dialog
    QStringList m_requests; ///< objects that stand for the question, the newest last
};
