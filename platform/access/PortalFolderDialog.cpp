// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/PortalFolderDialog.h"

#include "platform/access/PortalMessages.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QPointer>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

// D-Bus Specification, "Message Bus Messages".
const auto busService = u"org.freedesktop.DBus"_s;
const auto busPath = u"/org/freedesktop/DBus"_s;
const auto localPath = u"/org/freedesktop/DBus/Local"_s;
const auto localInterface = u"org.freedesktop.DBus.Local"_s;

/// The first version of the file chooser that can ask for a folder.
constexpr quint32 versionWithFolders = 3;

} // namespace

std::unique_ptr<PortalFolderDialog> PortalFolderDialog::onSessionBus(FolderDialog *fallback)
{
    return std::make_unique<PortalFolderDialog>(QDBusConnection::sessionBus(), fallback);
}

PortalFolderDialog::PortalFolderDialog(const QDBusConnection &sessionBus, FolderDialog *fallback)
    : m_bus(std::make_unique<QDBusConnection>(sessionBus))
    , m_fallback(fallback)
{
    m_bus->connect(busService, busPath, busService, u"NameOwnerChanged"_s,
                   {PortalMessages::service}, {}, this,
                   SLOT(ownerChanged(QString, QString, QString)));
    m_bus->connect({}, localPath, localInterface, u"Disconnected"_s, this, SLOT(portalLost()));
    if (m_fallback) {
        connect(m_fallback, &FolderDialog::answered, this,
                [this](const std::optional<std::filesystem::path> &folder) {
                    if (m_stage == Stage::Fallback) {
                        finish(folder);
                    }
                });
    }
}

PortalFolderDialog::~PortalFolderDialog()
{
    close();
}

void PortalFolderDialog::open(const Question &question)
{
    close();
    m_question = question;
    m_stage = Stage::Starting;
    if (!m_bus->isConnected()) {
        const auto number = m_number;
        QMetaObject::invokeMethod(
            this,
            [this, number] {
                if (number == m_number) {
                    askFallback();
                }
            },
            Qt::QueuedConnection);
        return;
    }
    auto *watcher =
        new QDBusPendingCallWatcher(m_bus->asyncCall(PortalMessages::versionCall()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, number = m_number] {
        watcher->deleteLater();
        if (number != m_number) {
            return;
        }
        if (PortalMessages::version(watcher->reply()) < versionWithFolders) {
            askFallback();
            return;
        }
        m_owner = watcher->reply().service();
        askPortal();
    });
}

void PortalFolderDialog::close()
{
    const auto stage = m_stage;
    const auto call = stage == Stage::Open
                          ? PortalMessages::closeCall(m_owner, m_requests.constLast())
                          : QDBusMessage();
    ++m_number;
    forget();
    if (stage == Stage::Open) {
        m_bus->send(call);
    } else if (stage == Stage::Fallback) {
        m_fallback->close();
    }
}

void PortalFolderDialog::askPortal()
{
    m_stage = Stage::Asking;
    const auto token = u"kestle_"_s + QUuid::createUuid().toString(QUuid::Id128);
    subscribe(PortalMessages::requestPath(m_bus->baseService(), token));

    // Not a child: a dialog that opens for a question which has ended by then must be closed, also
    // when this object has ended too.
    auto *watcher = new QDBusPendingCallWatcher(
        m_bus->asyncCall(PortalMessages::openFileCall(m_owner, m_question, token)));
    connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
            [watcher, self = QPointer(this), bus = *m_bus, number = m_number] {
                watcher->deleteLater();
                const auto answer = watcher->reply();
                if (self && number == self->m_number) {
                    self->dialogOpened(answer);
                } else if (const auto request = PortalMessages::request(answer)) {
                    bus.send(PortalMessages::closeCall(answer.service(), *request));
                }
            });
}

void PortalFolderDialog::dialogOpened(const QDBusMessage &answer)
{
    if (m_stage != Stage::Asking) {
        return; // the user's answer has overtaken this one
    }
    const auto request = PortalMessages::request(answer);
    if (!request) {
        // A portal that is only too slow shall not show its dialog beside the other one.
        m_bus->send(PortalMessages::closeCall(m_owner, m_requests.constLast()));
        askFallback();
        return;
    }
    m_stage = Stage::Open;
    if (!m_requests.contains(*request)) {
        subscribe(*request);
    }
}

void PortalFolderDialog::responded(const QDBusMessage &response)
{
    const auto isAwaited = m_stage == Stage::Asking || m_stage == Stage::Open;
    if (isAwaited && response.service() == m_owner && m_requests.contains(response.path())) {
        finish(PortalMessages::chosenFolder(response));
    }
}

void PortalFolderDialog::ownerChanged(const QString &service, const QString &oldOwner,
                                      const QString &)
{
    if (service == PortalMessages::service && oldOwner == m_owner) {
        portalLost();
    }
}

void PortalFolderDialog::portalLost()
{
    if (m_stage == Stage::Asking) {
        askFallback();
    } else if (m_stage == Stage::Open) {
        finish(std::nullopt); // the dialog went with the portal
    }
}

void PortalFolderDialog::askFallback()
{
    ++m_number;
    forget();
    if (!m_fallback) {
        finish(std::nullopt);
        return;
    }
    m_stage = Stage::Fallback;
    const auto question = m_question; // the next one may come before the call returns
    m_fallback->open(question);
}

void PortalFolderDialog::subscribe(const QString &request)
{
    // No service name: with one, Qt would ask the bus for its owner and wait for the answer.
    m_bus->connect({}, request, PortalMessages::requestInterface, u"Response"_s, this,
                   SLOT(responded(QDBusMessage)));
    m_requests.append(request);
}

void PortalFolderDialog::forget()
{
    for (const auto &request : std::as_const(m_requests)) {
        m_bus->disconnect({}, request, PortalMessages::requestInterface, u"Response"_s, this,
                          SLOT(responded(QDBusMessage)));
    }
    m_requests.clear();
    m_owner.clear();
    m_stage = Stage::Idle;
}

void PortalFolderDialog::finish(const std::optional<std::filesystem::path> &folder)
{
    forget();
    Q_EMIT answered(folder);
}
