// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/WalkModel.h"

#include "app/KeyPress.h"

#include <algorithm>
#include <limits>

using Kind = ModelPhase::Kind;

static constexpr qreal panStep = 80;  // points
static constexpr double seekStep = 2; // seconds

bool WalkModel::press(const QString &chars, int keyCode, bool command)
{
    if (command) {
        return false;
    }
    if (keyCode == KeyPress::Tab && canSwitchCards()) {
        cycleCard();
        return true;
    }
    if (is(Kind::Culling)) {
        return pressWhileCulling(chars, keyCode);
    }
    if (is(Kind::Review)) {
        return pressInReview(chars, keyCode);
    }
    if (keyCode == KeyPress::Return && is(Kind::NeedsAccess)) {
        grantAccess();
        return true;
    }
    if (keyCode == KeyPress::Return && is(Kind::CardReady)) {
        startCulling();
        return true;
    }
    return false;
}

bool WalkModel::pressWhileCulling(const QString &chars, int keyCode)
{
    auto &session = *m_state.session;
    const bool isVideo = session.current().isVideo;
    const bool zoomed = m_state.zoomed && !isVideo; // a clip has no zoom
    auto &pan = m_state.zoomPan;
    if (isVideo && pressForPlayer(chars, keyCode)) {
        return true;
    }
    if (chars == u"x") {
        const bool isRejected = session.toggle(session.current().id);
        recordChange();
        if (isRejected && autoAdvance) {
            stepForward();
        }
    } else if (keyCode == KeyPress::Left && zoomed) {
        pan.rwidth() += panStep;
    } else if (keyCode == KeyPress::Left) {
        session.index = std::max<qint64>(session.index - 1, 0);
        afterMove();
    } else if (keyCode == KeyPress::Right && zoomed) {
        pan.rwidth() -= panStep;
    } else if (keyCode == KeyPress::Right) {
        stepForward();
    } else if (keyCode == KeyPress::Down && zoomed) {
        pan.rheight() -= panStep;
    } else if (keyCode == KeyPress::Up && zoomed) {
        pan.rheight() += panStep;
    } else if (chars == u"z" && !isVideo) {
        m_state.zoomed = !m_state.zoomed;
    } else if (chars == u"i") {
        m_state.showExifBar = !m_state.showExifBar;
    } else if (keyCode == KeyPress::Escape) {
        leaveCulling();
    } else if (keyCode == KeyPress::Return) {
        finishCulling();
    } else {
        return false;
    }
    return true;
}

bool WalkModel::pressForPlayer(const QString &chars, int keyCode)
{
    if (!m_state.player) {
        return false;
    }
    auto &player = *m_state.player;
    const auto end = clipLength.value_or(std::numeric_limits<double>::max());
    if (keyCode == KeyPress::Space || chars == u"k") {
        player.rate = player.rate != 0 ? 0 : 1;
    } else if (chars == u"j") {
        player.time = std::min(std::max(player.time - seekStep, 0.0), end);
    } else if (chars == u"l") {
        player.time = std::min(player.time + seekStep, end);
    } else {
        return false;
    }
    return true;
}

bool WalkModel::pressInReview(const QString &chars, int keyCode)
{
    if (m_state.confirmingDelete) {
        return false;
    }
    if (m_state.reviewEnlarged) {
        return pressOnEnlarged(chars, keyCode);
    }
    const auto rejects = m_state.session->rejectCount();
    const auto last = std::max<qint64>(rejects - 1, 0);
    auto &selection = m_state.reviewSelection;
    if (keyCode == KeyPress::Space && rejects != 0) {
        m_state.zoomed = false;
        m_state.reviewEnlarged = true;
    } else if (keyCode == KeyPress::Left) {
        selection = std::max<qint64>(selection - 1, 0);
    } else if (keyCode == KeyPress::Up) {
        selection = std::max<qint64>(selection - 5, 0);
    } else if (keyCode == KeyPress::Right) {
        selection = std::min(selection + 1, last);
    } else if (keyCode == KeyPress::Down) {
        selection = std::min(selection + 5, last);
    } else if (chars == u"x" || chars == u"u") {
        rescueSelected();
    } else if (keyCode == KeyPress::Escape) {
        m_state.player.reset();
        m_state.phase = {.kind = Kind::Culling};
    } else if (keyCode == KeyPress::Return && rejects != 0) {
        m_state.confirmingDelete = true;
    } else {
        return false;
    }
    return true;
}

bool WalkModel::pressOnEnlarged(const QString &chars, int keyCode)
{
    const bool isForPlayer = chars == u"j" || chars == u"k" || chars == u"l";
    if (isForPlayer && pressForPlayer(chars, keyCode)) {
        return true;
    }
    if (keyCode == KeyPress::Space || keyCode == KeyPress::Escape) {
        closeEnlarged();
    } else if (chars == u"z") {
        m_state.zoomed = !m_state.zoomed;
    } else if (chars == u"x" || chars == u"u") {
        rescueSelected();
        closeEnlarged();
    } else {
        return false;
    }
    return true;
}
