// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/BoundedDownload.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

#include <utility>

using namespace Qt::StringLiterals;

/// How much may wait to be taken; the connection waits beyond.
constexpr qint64 bytesWaiting = 256 * 1024;

constexpr int mostRedirects = 5;

BoundedDownload::BoundedDownload(QObject *parent)
    : QObject(parent)
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { finish(Outcome::Failed); });
}

BoundedDownload::~BoundedDownload()
{
    stop();
}

static QNetworkRequest requestFor(const QUrl &address, const BoundedDownload::Limits &limits)
{
    QNetworkRequest request(address);
    // From HTTPS only to HTTPS.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::UserAgentHeader, u"Kestle"_s);
    // What is signed is the file as it lies there; and said by us, Qt unpacks nothing.
    request.setRawHeader("Accept-Encoding"_ba, "identity"_ba);
    request.setRawHeader("Accept-Language"_ba, "en"_ba);
    request.setTransferTimeout(int(limits.silence.count()));
    return request;
}

void BoundedDownload::start(const QUrl &address, const Limits &limits, QIODevice *target)
{
    stop();
    if (!m_network) {
        m_network = std::make_unique<QNetworkAccessManager>();
    }
    m_target = target;
    m_size = limits.size;
    m_left = limits.size;
    m_reply = m_network->get(requestFor(address, limits));
    m_reply->setReadBufferSize(bytesWaiting);
    connect(m_reply, &QNetworkReply::readyRead, this, &BoundedDownload::take);
    connect(m_reply, &QNetworkReply::finished, this, [this] {
        take();
        if (m_reply) {
            const bool isThere =
                m_reply->error() == QNetworkReply::NoError && m_reply->url().scheme() == "https"_L1;
            finish(isThere ? Outcome::Complete : Outcome::Failed);
        }
    });
    m_deadline.start(limits.duration);
}

void BoundedDownload::stop()
{
    m_deadline.stop();
    m_target = nullptr;
    if (auto *const reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater(); // it may be what is calling
    }
}

void BoundedDownload::take()
{
    while (m_reply && m_reply->bytesAvailable() > 0) {
        const auto bytes = m_reply->read(bytesWaiting);
        if (bytes.size() > m_left) {
            finish(Outcome::TooLarge);
        } else if (m_target->write(bytes) != bytes.size()) {
            finish(Outcome::NotKept);
        } else {
            m_left -= bytes.size();
            Q_EMIT progressed(m_size - m_left);
        }
    }
}

void BoundedDownload::finish(Outcome outcome)
{
    stop();
    Q_EMIT finished(outcome);
}
