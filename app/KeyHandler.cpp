// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/KeyHandler.h"

#include "app/AppState.h"
#include "platform/settings/UserDefaults.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using Kind = Phase::Kind;

static constexpr qreal panStep = 80; // points
static constexpr qint64 reviewColumns = 5;
static constexpr VideoPlayer::Seconds seekStep(2);

KeyHandler::KeyHandler(AppState &appState, std::chrono::milliseconds summaryStays)
    : m_appState(appState)
    , m_summaryStays(summaryStays)
{
    QObject::connect(&appState, &AppState::phaseChanged, &m_context, [this] {
        if (m_appState.phase().kind == Kind::Summary) {
            m_summaryIsNew.setRemainingTime(m_summaryStays, Qt::PreciseTimer);
        }
    });
}

bool KeyHandler::handleKey(const KeyPress &key)
{
    if (key.command) {
        return false;
    }
    const AppState::Operation operation(m_appState);
    if (key.keyCode == KeyPress::Tab && m_appState.canSwitchCards()) {
        m_appState.cycleCard();
        return true;
    }
    const bool isReturn = key.keyCode == KeyPress::Return;
    switch (m_appState.phase().kind) {
    case Kind::NeedsAccess:
        if (isReturn) {
            m_appState.grantAccess();
        }
        return isReturn;
    case Kind::CardReady:
        if (isReturn) {
            m_appState.startCulling();
        }
        return isReturn;
    case Kind::Culling:
        return handleCullingKey(key.chars, key.keyCode);
    case Kind::Review:
        return handleReviewKey(key.chars, key.keyCode);
    case Kind::WaitingForCard:
    case Kind::Scanning:
    case Kind::NoMedia:
    case Kind::Deleting:
    case Kind::Summary:
        return false;
    }
    return false;
}

bool KeyHandler::pressDefaultButton(const KeyPress &key)
{
    if (key.keyCode != KeyPress::Return || key.command ||
        m_appState.phase().kind != Phase::Kind::Summary) {
        return false;
    }
    if (m_summaryIsNew.hasExpired()) {
        m_appState.closeSummary();
    }
    return true;
}

quint64 KeyHandler::situation() const
{
    const auto kind = static_cast<quint64>(m_appState.phase().kind);
    return kind * 4 + (m_appState.confirmingDelete() ? 2 : 0) +
           (m_appState.reviewEnlarged() ? 1 : 0);
}

bool KeyHandler::handleCullingKey(const QString &chars, quint16 keyCode)
{
    const auto *session = m_appState.session();
    if (!session) {
        return false;
    }
    const auto *item = session->currentItem();
    if (item && item->kind == MediaKind::video && handleVideoKey(chars, keyCode)) {
        return true;
    }
    if (chars == u"x") {
        rejectCurrent();
        return true;
    }
    if (panOrStep(keyCode)) {
        return true;
    }
    if (chars == u"z") {
        const bool isPhoto = item && item->kind == MediaKind::photo;
        if (isPhoto) {
            m_appState.setZoomed(!m_appState.zoomed());
        }
        return isPhoto;
    }
    if (chars == u"i") {
        m_appState.setShowExifBar(!m_appState.showExifBar());
        return true;
    }
    if (keyCode == KeyPress::Escape) {
        m_appState.leaveCulling();
        return true;
    }
    if (keyCode == KeyPress::Return) {
        m_appState.finishCulling();
        return true;
    }
    return false;
}

/// Stays within the clip, as far as its end is known.
static void seekBy(VideoPlayer &player, VideoPlayer::Seconds offset)
{
    auto time = std::max(player.currentTime() + offset, VideoPlayer::Seconds::zero());
    if (const auto duration = player.duration()) {
        time = std::min(time, *duration);
    }
    player.seek(time);
}

bool KeyHandler::handleVideoKey(const QString &chars, quint16 keyCode)
{
    auto *player = m_appState.videoPlayer();
    if (!player) {
        return false;
    }
    if (keyCode == KeyPress::Space || chars == u"k") {
        player->rate() != 0 ? player->pause() : player->play();
        return true;
    }
    if (chars == u"j" || chars == u"l") {
        seekBy(*player, chars == u"l" ? seekStep : -seekStep);
        return true;
    }
    return false;
}

bool KeyHandler::panOrStep(quint16 keyCode)
{
    const auto *item = m_appState.session()->currentItem();
    const bool isPhoto = item && item->kind == MediaKind::photo;
    const bool zoomed = m_appState.zoomed() && isPhoto; // a clip has no zoom to be left by Z
    switch (keyCode) {
    case KeyPress::Left:
        zoomed ? panBy(panStep, 0) : stepBack();
        return true;
    case KeyPress::Right:
        zoomed ? panBy(-panStep, 0) : stepForward();
        return true;
    case KeyPress::Down:
        panBy(0, zoomed ? -panStep : 0);
        return zoomed;
    case KeyPress::Up:
        panBy(0, zoomed ? panStep : 0);
        return zoomed;
    default:
        return false;
    }
}

void KeyHandler::rejectCurrent()
{
    const bool isRejected = m_appState.session()->toggleCurrent();
    m_appState.recordChange();
    if (isRejected && m_appState.defaults()->boolean(u"autoAdvanceOnReject"_s)) {
        stepForward();
    }
}

void KeyHandler::stepForward()
{
    if (m_appState.session()->next()) {
        m_appState.afterMove();
    } else {
        m_appState.finishCulling();
    }
}

void KeyHandler::stepBack()
{
    m_appState.session()->previous();
    m_appState.afterMove(); // at the first item, too: it unzooms
}

void KeyHandler::panBy(qreal horizontally, qreal vertically)
{
    m_appState.setZoomPan(m_appState.zoomPan() + QSizeF(horizontally, vertically));
}

bool KeyHandler::handleReviewKey(const QString &chars, quint16 keyCode)
{
    const auto *session = m_appState.session();
    if (!session || m_appState.confirmingDelete()) {
        return false;
    }
    if (m_appState.reviewEnlarged()) {
        return handleEnlargedKey(chars, keyCode);
    }
    if (chars == u"x" || chars == u"u") {
        m_appState.rescueSelected();
        return true;
    }
    switch (keyCode) {
    case KeyPress::Space:
        if (session->hasRejects()) {
            m_appState.setZoomed(false);
            m_appState.setReviewEnlarged(true);
        }
        return session->hasRejects();
    case KeyPress::Left:
        moveSelection(-1);
        return true;
    case KeyPress::Right:
        moveSelection(1);
        return true;
    case KeyPress::Up:
        moveSelection(-reviewColumns);
        return true;
    case KeyPress::Down:
        moveSelection(reviewColumns);
        return true;
    case KeyPress::Escape:
        m_appState.backToCulling();
        return true;
    case KeyPress::Return:
        m_appState.setConfirmingDelete(session->hasRejects());
        return session->hasRejects();
    default:
        return false;
    }
}

bool KeyHandler::handleEnlargedKey(const QString &chars, quint16 keyCode)
{
    const bool isPlayerLetter = chars == u"j" || chars == u"k" || chars == u"l";
    if (isPlayerLetter && handleVideoKey(chars, keyCode)) {
        return true;
    }
    if (keyCode == KeyPress::Space || keyCode == KeyPress::Escape) {
        m_appState.closeEnlarged();
        return true;
    }
    if (chars == u"z") {
        m_appState.setZoomed(!m_appState.zoomed());
        return true;
    }
    if (chars == u"x" || chars == u"u") {
        m_appState.rescueSelected();
        m_appState.closeEnlarged();
        return true;
    }
    return false;
}

void KeyHandler::moveSelection(qint64 by)
{
    const auto last = std::max<qint64>(m_appState.session()->rejectedCount() - 1, 0);
    // Moves ahead stop at the last reject, moves back at the first.
    const auto moved = m_appState.reviewSelection() + by;
    m_appState.setReviewSelection(by < 0 ? std::max<qint64>(moved, 0) : std::min(moved, last));
}
