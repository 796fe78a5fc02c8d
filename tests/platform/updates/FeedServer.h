// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/platform/updates/TestCertificate.h"

#include <QHash>
#include <QSslServer>
#include <QStringList>
#include <QUrl>

/// A web server on this machine, over HTTPS, that answers what the test says.
class FeedServer : public QObject {
    Q_OBJECT

public:
    struct Answer {
        int status = 200;
        QByteArray body = {};
        QByteArray location = {}; ///< of a redirect
        qint64 statedLength = -1; ///< when it is not the body's
        bool isHeldBack = false;  ///< nothing comes but the head, and one byte now and then
        bool isEndless = false;   ///< the body comes again and again
    };

    explicit FeedServer(const TestCertificate &certificate);

    [[nodiscard]] QUrl url(const QString &path) const;
    [[nodiscard]] const QStringList &asked() const { return m_asked; }
    [[nodiscard]] const QByteArray &lastHead() const { return m_lastHead; }

    QHash<QString, Answer> answers; ///< by path; 404 for all others
    qint64 sent = 0;                ///< bytes of bodies

private:
    void answer(QTcpSocket *socket, const QByteArray &head);
    void keepSending(QTcpSocket *socket, const Answer &answer);

    QSslServer m_server;
    QStringList m_asked;
    QByteArray m_lastHead;
};
