// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/WalkModel.h"

#include <algorithm>

using Kind = ModelPhase::Kind;

// Deletions, and the course of things.

void WalkModel::performDelete()
{
    if (!m_state.session || !m_state.card || !is(Kind::Review)) {
        return;
    }
    const auto rejects = m_state.session->rejects();
    m_runs.emplace_back(m_state.card->path, m_scannedLife, rejects,
                        m_state.session->count() - static_cast<qint64>(rejects.size()));
    m_state.player.reset();
    m_state.confirmingDelete = false;
    m_state.phase = {.kind = Kind::Deleting,
                     .total = static_cast<qint64>(m_runs.back().files.size())};
}

bool WalkModel::goOnDeleting(int passes)
{
    for (auto run = m_runs.begin(); run != m_runs.end(); ++run) {
        const bool hasEnded = run->goOn(world, run->isStopped ? 0 : passes);
        const auto going = *run;
        if (hasEnded) {
            m_runs.erase(run);
        }
        if (!going.isStopped) {
            m_state.phase.done = static_cast<qint64>(going.done);
            if (hasEnded) {
                finishDelete(going);
            }
        }
        if (hasEnded) {
            return true;
        }
    }
    return false;
}

void WalkModel::finishDelete(const ModelRun &run)
{
    const auto failedIDs = run.failedIDs();
    if (failedIDs.empty()) {
        m_lastSnapshot.reset();
        store.forget(m_state.card->uuid);
    } else {
        m_lastSnapshot = snapshot(failedIDs, 0);
        store.saveNow(*m_lastSnapshot);
    }
    m_state.phase = {.kind = Kind::Summary,
                     .done = run.removedCount(),
                     .failed = run.failedCount(),
                     .kept = run.keptCount};
}

void WalkModel::closeSummary()
{
    if (is(Kind::Summary)) {
        m_state.session.reset();
        m_state.phase = {.kind = Kind::CardReady, .resumable = m_state.phase.failed != 0};
    }
}

void WalkModel::letOneRemovalThrough()
{
    (void)goOnDeleting(1);
}

std::optional<ModelRun> WalkModel::unstoppedRun() const
{
    const auto found = std::ranges::find(m_runs, false, &ModelRun::isStopped);
    return found != m_runs.end() ? std::optional(*found) : std::nullopt;
}

void WalkModel::begin()
{
    for (auto &run : m_runs) {
        if (run.isStopped) {
            (void)run.goOn(world); // it finishes the file in hand
        }
    }
    m_state = {};
    m_questions.clear();
    m_search.reset();
    m_wanted.reset();
    m_request.reset();
    m_scans.clear();
    m_runs.clear();
    m_hasGrant = false;
    m_lastSnapshot.reset();
    store.begin(now);
    report();
}

void WalkModel::settle()
{
    while (answerQuestions() || endScans() || goOnDeleting() || answerRequest()) {
    }
}

int WalkModel::waitingAt(const std::string &gate) const
{
    const auto probes = std::ranges::count_if(m_questions, [&](const Question &question) {
        return WalkGate::probe(question.card.path) == gate;
    });
    const auto scans = std::ranges::count_if(
        m_scans, [&](const Scan &scan) { return WalkGate::scan(scan.path) == gate; });
    const auto removals = std::ranges::count_if(
        m_runs, [&](const ModelRun &run) { return WalkGate::removal(run.path) == gate; });
    const bool isAsked = m_request && gate == WalkGate::dialog();
    return static_cast<int>(probes + scans + removals) + (isAsked ? 1 : 0);
}

int WalkModel::waitingCount() const
{
    return static_cast<int>(m_questions.size() + m_scans.size() + m_runs.size());
}
