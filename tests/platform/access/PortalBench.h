// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "FakeFolderDialog.h"
#include "FakePortal.h"

#include "platform/access/PortalFolderDialog.h"
#include "tests/support/PrivateBus.h"

#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

/// A portal that has not started yet, another dialog, and the dialog under test, whose answers are
/// kept; before each test anew, on a bus of their own.
class PortalBench : public QObject {
    Q_OBJECT

protected:
    using Answer = std::optional<std::filesystem::path>;
    using Answers = QList<Answer>;

private Q_SLOTS:
    void initTestCase() { qInstallMessageHandler(countMessage); }

    void init()
    {
        m_messages = 0;
        begin({});
    }

    void cleanup()
    {
        end();
        QCOMPARE(m_messages, 0); // nothing is written to the terminal
    }

protected:
    void begin(const QStringList &activatable)
    {
        m_bus = std::make_unique<PrivateBus>(activatable);
        QVERIFY(!m_bus->address().isEmpty());
        m_portal = std::make_unique<FakePortal>(connectAs(u"portal"_s));
        m_fallback = std::make_unique<FakeFolderDialog>();
        useDialog(m_fallback.get());
    }

    void end()
    {
        m_dialog.reset();
        m_fallback.reset();
        m_portal.reset();
        for (const auto &name : {u"portal"_s, u"client"_s, u"stranger"_s}) {
            QDBusConnection::disconnectFromBus(name);
        }
        m_bus.reset();
    }

    QDBusConnection connectAs(const QString &name) const
    {
        return QDBusConnection::connectToBus(m_bus->address(), name);
    }

    void useDialog(FolderDialog *fallback)
    {
        m_answers.clear();
        m_dialog = std::make_unique<PortalFolderDialog>(connectAs(u"client"_s), fallback);
        connect(m_dialog.get(), &FolderDialog::answered, this,
                [this](const Answer &folder) { m_answers.append(folder); });
    }

    void open()
    {
        m_dialog->open({.title = u"Kestle needs “CARD”"_s,
                        .acceptLabel = u"Grant Access"_s,
                        .directory = "/media/u/CARD",
                        .parentWindow = u"x11:1a"_s});
    }

    /// Until the portal shows the dialog, and the client knows it.
    void openAndShow()
    {
        QVERIFY(m_portal->start());
        const auto before = m_portal->opened.size();
        open();
        QTRY_COMPARE(m_portal->opened.size(), before + 1);
        settle();
    }

    /// Until whatever was on the way between client and portal has arrived, and what follows of it.
    void settle() const
    {
        for (int round = 0; round < 3; ++round) {
            ping(u"client"_s, u"portal"_s);
            ping(u"portal"_s, u"client"_s);
            QTest::qWait(1);
        }
    }

    /// Messages between two connections keep their order.
    void ping(const QString &from, const QString &to) const
    {
        const QDBusPendingCallWatcher pong(connectAs(from).asyncCall(QDBusMessage::createMethodCall(
            connectAs(to).baseService(), u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s)));
        QSignalSpy spy(&pong, &QDBusPendingCallWatcher::finished);
        QVERIFY(spy.wait());
    }

    /// As when it crashes: what it has not answered is answered by the bus.
    void endPortalProcess()
    {
        m_portal.reset();
        QDBusConnection::disconnectFromBus(u"portal"_s);
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FakePortal> m_portal;
    std::unique_ptr<FakeFolderDialog> m_fallback;
    std::unique_ptr<PortalFolderDialog> m_dialog;
    Answers m_answers;

private:
    static void countMessage(QtMsgType, const QMessageLogContext &, const QString &text)
    {
        ++m_messages;
        std::fprintf(stderr, "message: %s\n", qPrintable(text));
    }

    static inline int m_messages = 0;
};
