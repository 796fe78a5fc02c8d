// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/RejectTotals.h"

#include "app/CardReads.h"

#include "ui/loaders/ByteCountText.h"

#include <QCoroFuture>

using namespace Qt::StringLiterals;

RejectTotals::RejectTotals(QObject *parent)
    : QObject(parent)
{
}

RejectTotals::~RejectTotals()
{
    m_stop.request_stop();
}

void RejectTotals::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    if (m_appState) {
        m_appState->disconnect(this);
    }
    m_appState = appState;
    if (appState) {
        connect(appState, &AppState::sessionChanged, this, &RejectTotals::forgetSession);
        connect(appState, &AppState::changeCountChanged, this, &RejectTotals::update);
    }
    forgetSession();
    Q_EMIT appStateChanged();
}

void RejectTotals::forgetSession()
{
    ++m_generation;
    m_stop.request_stop();
    m_stop = std::stop_source();
    m_sizes.clear();
    m_asked.clear();
    update();
}

QList<MediaItem> RejectTotals::rejects() const
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    return session ? session->rejectedItems() : QList<MediaItem>();
}

QString RejectTotals::sizeTextOf(const QList<MediaItem> &rejects) const
{
    qint64 bytes = 0;
    for (const auto &item : rejects) {
        const auto size = m_sizes.constFind(item.id);
        if (size == m_sizes.cend()) {
            return u"…"_s;
        }
        bytes += *size;
    }
    return byteCountText(bytes);
}

void RejectTotals::update()
{
    const auto items = rejects();
    QList<MediaItem> unasked;
    Totals now{.itemCount = items.size(), .fileCount = 0, .sizeText = sizeTextOf(items)};
    for (const auto &item : items) {
        now.fileCount += static_cast<qint64>(item.allURLs().size());
        if (!m_asked.contains(item.id)) {
            m_asked.insert(item.id);
            unasked.append(item);
        }
    }
    const Totals before = std::exchange(m_now, now);
    if (before.itemCount != now.itemCount) {
        Q_EMIT itemCountChanged();
    }
    if (before.fileCount != now.fileCount) {
        Q_EMIT fileCountChanged();
    }
    if (before.sizeText != now.sizeText) {
        Q_EMIT sizeTextChanged();
    }
    if (!unasked.isEmpty()) {
        ask(unasked, m_stop.get_token());
    }
}

QCoro::Task<> RejectTotals::ask(QList<MediaItem> items, std::stop_token stop)
{
    const auto generation = m_generation;
    const QPointer self(this);

    const auto sizes = co_await m_appState->cardReads()->sizes(items, std::move(stop));

    if (!self || generation != m_generation) {
        co_return;
    }
    m_sizes.insert(sizes);
    update();
}
