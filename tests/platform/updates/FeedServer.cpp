// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/platform/updates/FeedServer.h"

#include <QSslConfiguration>
#include <QSslSocket>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

FeedServer::FeedServer(const TestCertificate &certificate)
{
    auto configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(certificate.certificate);
    configuration.setPrivateKey(certificate.key);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    m_server.setSslConfiguration(configuration);
    m_server.listen(QHostAddress::LocalHost);
    connect(&m_server, &QTcpServer::pendingConnectionAvailable, this, [this] {
        auto *const socket = m_server.nextPendingConnection();
        const auto read = [this, socket, head = QByteArray()]() mutable {
            head += socket->readAll();
            if (head.contains("\r\n\r\n")) {
                answer(socket, std::exchange(head, {}));
            }
        };
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, read);
        QMetaObject::invokeMethod(socket, &QIODevice::readyRead, Qt::QueuedConnection);
    });
}

QUrl FeedServer::url(const QString &path) const
{
    return QUrl(u"https://127.0.0.1:%1%2"_s.arg(m_server.serverPort()).arg(path));
}

void FeedServer::answer(QTcpSocket *socket, const QByteArray &head)
{
    m_lastHead = head;
    const auto path = QString::fromUtf8(head.split(' ').value(1));
    m_asked.append(path);
    const auto answer = answers.value(path, {.status = 404});
    const auto length = answer.statedLength >= 0 ? answer.statedLength : answer.body.size();
    auto text =
        "HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\nConnection: close\r\n";
    if (!answer.location.isEmpty()) {
        text += "Location: " + answer.location + "\r\n";
    }
    if (!answer.isEndless) {
        text += "Content-Length: " + QByteArray::number(length) + "\r\n";
    }
    socket->write(text + "\r\n");
    if (answer.isHeldBack || answer.isEndless) {
        keepSending(socket, answer);
        return;
    }
    sent += answer.body.size();
    socket->write(answer.body);
    socket->disconnectFromHost();
}

void FeedServer::keepSending(QTcpSocket *socket, const Answer &answer)
{
    auto *const timer = new QTimer(socket);
    const auto piece = answer.isEndless ? answer.body : "."_ba;
    connect(timer, &QTimer::timeout, this, [this, socket, piece] {
        if (socket->bytesToWrite() < 1024 * 1024) {
            sent += socket->write(piece);
        }
    });
    timer->start(answer.isEndless ? 1ms : 50ms);
}
