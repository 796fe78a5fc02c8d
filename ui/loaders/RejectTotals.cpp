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
        connect(appState, &AppState::sessionChanged, this, &RejectTotals::replaceSession);
        connect(appState, &AppState::changeCountChanged, this, &RejectTotals::followChanges);
    }
    replaceSession();
    Q_EMIT appStateChanged();
}

static qint64 filesOf(const MediaItem &item)
{
    return (item.rawURL ? 1 : 0) + (item.previewURL ? 1 : 0) + (item.videoURL ? 1 : 0);
}

void RejectTotals::replaceSession()
{
    ++m_generation;
    m_stop.request_stop();
    m_stop = std::stop_source();
    m_unasked.clear();
    const auto *session = m_appState ? m_appState->session() : nullptr;
    m_items = session ? session->items() : QList<MediaItem>();
    m_sizes = session ? m_appState->cardReads()->rememberedSizes(m_items) : QList<qint64>();
    m_asked = QBitArray(m_items.size());
    m_rejected = session ? session->rejectedRows() : RejectedRows();
    m_reversals = session ? session->reversals().size() : 0;
    countAll();
    tell();
}

void RejectTotals::followChanges()
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    if (!session || !session->items().isSharedWith(m_items)) {
        return; // another session is about to be told
    }
    const auto wanted = session->rejectedRows();
    const auto reversals = session->reversals();
    for (auto known = std::exchange(m_reversals, reversals.size()); known < m_reversals; ++known) {
        const auto row = reversals.at(known);
        if (m_rejected.contains(row) != wanted.contains(row)) {
            m_rejected.flip(row);
            count(row, wanted.contains(row));
        }
    }
    tell();
}

void RejectTotals::countAll()
{
    m_files = 0;
    m_bytes = 0;
    m_sizesOnTheirWay = 0;
    for (const auto row : m_rejected.rows()) {
        count(row, true);
    }
}

void RejectTotals::count(qint64 row, bool rejected)
{
    const auto &item = m_items.at(row);
    const qint64 sign = rejected ? 1 : -1;
    m_files += sign * filesOf(item);
    if (const auto size = m_sizes.at(row); size >= 0) {
        m_bytes += sign * size;
        return;
    }
    m_sizesOnTheirWay += sign;
    if (!m_asked.testBit(row)) {
        m_asked.setBit(row);
        m_unasked.append(row);
    }
}

void RejectTotals::tell()
{
    const Totals now{.itemCount = m_rejected.count(),
                     .fileCount = m_files,
                     .sizeText = m_sizesOnTheirWay > 0 ? u"…"_s : byteCountText(m_bytes)};
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
    if (!m_unasked.isEmpty()) {
        ask(std::exchange(m_unasked, {}), m_stop.get_token());
    }
}

QCoro::Task<> RejectTotals::ask(QList<qint64> rows, std::stop_token stop)
{
    const auto generation = m_generation;
    const QPointer self(this);

    const auto sizes = co_await m_appState->cardReads()->sizes(m_items, rows, std::move(stop));

    if (!self || generation != m_generation) {
        co_return;
    }
    for (qsizetype place = 0; place < sizes.size(); ++place) {
        m_sizes[rows.at(place)] = sizes.at(place);
    }
    m_appState->cardReads()->rememberSizes(m_items, m_sizes);
    countAll();
    tell();
}
