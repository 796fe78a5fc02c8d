// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>

class QIODevice;
class QNetworkAccessManager;
class QNetworkReply;
class QUrl;

/// Fetches one address over HTTPS, also through redirects, and writes what comes: never more than
/// was asked for, and never for longer. Sends nothing but the request: no cookies, no name but
/// Kestle's. Main thread only.
class BoundedDownload : public QObject {
    Q_OBJECT

public:
    struct Limits {
        qint64 size = 0; ///< in bytes
        std::chrono::milliseconds silence = std::chrono::seconds(30);
        std::chrono::milliseconds duration = std::chrono::minutes(1);
    };

    enum class Outcome {
        Complete,
        Failed,   ///< the connection, its certificate, a redirect away from HTTPS, or the server
        TooLarge, ///< than the limit
        NotKept,  ///< what came could not be written
    };

    explicit BoundedDownload(QObject *parent = nullptr);
    /// Breaks off what goes on.
    ~BoundedDownload() override;

    /// Fetches @p address into @p target, which outlives the download. Breaks off the one before.
    void start(const QUrl &address, const Limits &limits, QIODevice *target);

    /// Without a word.
    void stop();

Q_SIGNALS:
    /// So many bytes were written until now.
    void progressed(qint64 bytes);
    void finished(BoundedDownload::Outcome outcome);

private:
    void take();
    void finish(Outcome outcome);

    std::unique_ptr<QNetworkAccessManager> m_network; ///< made when it is first needed
    QNetworkReply *m_reply = nullptr;
    QIODevice *m_target = nullptr;
    qint64 m_size = 0; ///< bytes that may come
    qint64 m_left = 0; ///< of them, still
    QTimer m_deadline;
};
