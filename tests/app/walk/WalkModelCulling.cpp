// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/WalkModel.h"

#include <algorithm>

using Kind = ModelPhase::Kind;

// What is done with the session of a card, and what is kept of it.

void WalkModel::startCulling()
{
    if (!m_state.card || !is(Kind::CardReady)) {
        return;
    }
    dropWishes();
    m_state.phase = {.kind = Kind::Scanning};
    endScan();
    const auto &path = m_state.card->path;
    m_scans.push_back({.path = path, .life = world.mountAt(path)->life});
}

void WalkModel::endScan()
{
    for (auto &scan : m_scans) {
        scan.isNewest = false;
    }
}

bool WalkModel::hasScanOfCard() const
{
    return m_state.card &&
           std::ranges::find(m_scans, m_state.card->path, &Scan::path) != m_scans.end();
}

bool WalkModel::endScans()
{
    const auto ending = std::ranges::find_if(
        m_scans, [this](const Scan &scan) { return !world.isClosed(WalkGate::scan(scan.path)); });
    if (ending == m_scans.end()) {
        return false;
    }
    const auto scan = *ending;
    m_scans.erase(ending);
    if (!scan.isNewest || !is(Kind::Scanning)) {
        return true;
    }
    std::vector<ModelSession::Item> items;
    if (world.isAlive(scan.life)) {
        const auto &card = world.cards[world.mountAt(scan.path)->card];
        if (card.hasDcim && (!card.isClosed || m_hasGrant)) {
            items = ModelSession::itemsOf(card, scan.path);
        }
    }
    m_scannedLife = scan.life;
    cullItems(items);
    return true;
}

void WalkModel::cullItems(const std::vector<ModelSession::Item> &items)
{
    m_state.session.reset();
    if (items.empty()) {
        m_state.phase = {.kind = Kind::NoMedia};
        return;
    }
    auto snapshot = store.load(m_state.card->uuid);
    if (m_lastSnapshot && (!snapshot || store.unsaved.contains(m_state.card->uuid))) {
        snapshot = m_lastSnapshot;
    }
    ModelSession session{.items = items};
    if (snapshot) {
        for (const auto &item : items) {
            if (snapshot->rejected.contains(item.id)) {
                session.rejected.insert(item.id);
            }
        }
        session.index = std::clamp<qint64>(snapshot->index, 0, session.count() - 1);
    }
    m_state.session = session;
    m_state.phase = {.kind = Kind::Culling};
}

ModelStore::Snapshot WalkModel::snapshot(const std::set<QString> &rejected, qint64 index) const
{
    return {.uuid = m_state.card->uuid,
            .inventoryHash = m_state.session->inventoryHash(),
            .rejected = rejected,
            .index = index,
            .savedAt = now};
}

void WalkModel::recordChange()
{
    ++m_state.changeCount;
    if (m_state.card && m_state.session && !is(Kind::Deleting) && !is(Kind::Summary)) {
        m_lastSnapshot = snapshot(m_state.session->rejected, m_state.session->index);
        store.saveSoon(*m_lastSnapshot);
    }
}

void WalkModel::afterMove()
{
    m_state.player.reset();
    m_state.zoomed = false;
    recordChange();
}

void WalkModel::stepForward()
{
    if (m_state.session->index < m_state.session->count() - 1) {
        ++m_state.session->index;
        afterMove();
    } else {
        finishCulling();
    }
}

void WalkModel::selectItem(qint64 index)
{
    if (m_state.session && is(Kind::Culling)) {
        if (index >= 0 && index < m_state.session->count()) {
            m_state.session->index = index;
        }
        afterMove();
    }
}

void WalkModel::finishCulling()
{
    m_state.player.reset();
    m_state.zoomed = false;
    m_state.reviewSelection = 0;
    m_state.reviewEnlarged = false;
    recordChange();
    m_state.phase = {.kind = Kind::Review};
}

void WalkModel::goToReview()
{
    if (m_state.session && !is(Kind::Deleting)) {
        dropWishes();
        endScan();
        m_request.reset();
        m_state.confirmingDelete = false;
        finishCulling();
    }
}

void WalkModel::backToCulling()
{
    if (m_state.session && !is(Kind::Deleting)) {
        dropWishes();
        endScan();
        m_request.reset();
        m_state.player.reset();
        m_state.confirmingDelete = false;
        m_state.reviewEnlarged = false;
        m_state.phase = {.kind = Kind::Culling};
    }
}

void WalkModel::backToCardScreen()
{
    if (is(Kind::Deleting)) {
        return;
    }
    endScan();
    m_request.reset();
    m_state.player.reset();
    m_state.confirmingDelete = false;
    recordChange();
    m_state.phase = {};
    if (m_state.card) {
        m_state.phase = {.kind = Kind::CardReady, .resumable = m_state.session.has_value()};
    }
}

void WalkModel::leaveCulling()
{
    endScan();
    m_request.reset();
    m_state.player.reset();
    recordChange();
    m_state.phase = {.kind = Kind::CardReady, .resumable = true};
}

void WalkModel::rescueSelected()
{
    if (!m_state.session) {
        return;
    }
    const auto rejects = m_state.session->rejects();
    const auto selection = m_state.reviewSelection;
    if (selection >= 0 && selection < static_cast<qint64>(rejects.size())) {
        m_state.session->toggle(rejects[static_cast<size_t>(selection)].id);
        recordChange();
        clampReviewSelection();
    }
}

void WalkModel::clampReviewSelection()
{
    const auto last = std::max<qint64>(m_state.session->rejectCount() - 1, 0);
    m_state.reviewSelection = std::min(last, m_state.reviewSelection);
}

/// Of the item that is shown large.
QString WalkModel::idLookedAt() const
{
    if (!is(Kind::Review)) {
        return m_state.session->current().id;
    }
    const auto rejects = m_state.session->rejects();
    const auto selection = static_cast<size_t>(m_state.reviewSelection);
    return selection < rejects.size() ? rejects[selection].id : QString();
}

void WalkModel::closeEnlarged()
{
    m_state.reviewEnlarged = false;
    m_state.player.reset();
}

void WalkModel::playVideo(const ModelSession::Item &item)
{
    if (item.isVideo) {
        m_state.player = {.url = item.shown, .rate = 1, .time = 0};
    }
}

void WalkModel::clipEnds()
{
    if (m_state.player) {
        m_state.player->rate = 0;
        m_state.player->time = clipLength.value_or(m_state.player->time);
    }
}

// The menus

bool WalkModel::canUndo() const
{
    return (is(Kind::Culling) || is(Kind::Review)) && !m_state.confirmingDelete;
}

bool WalkModel::canFinish() const
{
    return is(Kind::Culling);
}

bool WalkModel::canGoBack() const
{
    return m_state.session && !is(Kind::Deleting) && !is(Kind::Summary);
}

void WalkModel::menuUndo()
{
    if (!canUndo()) {
        return;
    }
    const auto previous = m_state.session->index;
    const auto lookedAt = idLookedAt();
    if (!m_state.session->undo()) {
        return;
    }
    if (is(Kind::Review)) {
        clampReviewSelection();
        m_state.reviewEnlarged = m_state.reviewEnlarged && m_state.session->rejectCount() != 0;
    }
    const bool hasMoved = !is(Kind::Review) && m_state.session->index != previous;
    if (hasMoved || idLookedAt() != lookedAt) {
        m_state.player.reset();
    }
    recordChange();
}

void WalkModel::menuFinish()
{
    if (canFinish()) {
        finishCulling();
    }
}

void WalkModel::menuBack()
{
    if (canGoBack()) {
        m_state.confirmingDelete = false;
        leaveCulling();
    }
}
