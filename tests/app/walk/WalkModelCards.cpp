// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/WalkModel.h"

#include <algorithm>

using Kind = ModelPhase::Kind;

// How cards come and go: they are asked first, and the decision is made with the answers.

static QString lastComponent(const std::string &path)
{
    return QString::fromStdString(path.substr(path.rfind('/') + 1));
}

bool WalkModel::canSwitchCards() const
{
    const bool isBeforeCulling = is(Kind::CardReady) || is(Kind::WaitingForCard) ||
                                 is(Kind::NeedsAccess) || is(Kind::NoMedia);
    return isBeforeCulling && m_state.availableCards.size() >= 2;
}

std::optional<ModelCard> WalkModel::mounted(const ModelCard &card) const
{
    for (const auto &other : m_state.availableCards) {
        if (other.isSame(card)) {
            return other;
        }
    }
    return std::nullopt;
}

qint64 WalkModel::indexOfCard() const
{
    const auto isCard = [this](const ModelCard &other) {
        return m_state.card && other.isSame(*m_state.card);
    };
    const auto found = std::ranges::find_if(m_state.availableCards, isCard);
    return found != m_state.availableCards.end() ? found - m_state.availableCards.begin() : -1;
}

void WalkModel::report()
{
    m_state.availableCards.clear();
    for (const auto &mount : world.mounts) {
        const auto &card = world.cards[mount.card];
        if (!card.isFixed) {
            const auto fallback = lastComponent(mount.path);
            m_state.availableCards.push_back(
                {.path = mount.path,
                 .uuid = card.uuid.isEmpty() ? fallback : card.uuid,
                 .name = card.label.isEmpty() ? fallback : card.label});
        }
    }
    for (auto &question : m_questions) {
        question.isForgotten = question.isForgotten || !mounted(question.card);
    }
    if (m_state.card && indexOfCard() < 0) {
        dropCard();
    }
    if (m_state.card) {
        m_state.card = mounted(*m_state.card);
        return;
    }
    dropWishes();
    m_search = Search{.cards = m_state.availableCards};
    for (const auto &card : m_state.availableCards) {
        ask(card);
    }
}

void WalkModel::dropCard()
{
    dropWishes();
    m_request.reset();
    endScan();
    for (auto &run : m_runs) {
        run.isStopped = true;
    }
    m_state.player.reset();
    m_state.card.reset();
    m_state.cardIsReadOnly = false;
    m_state.session.reset();
    m_state.zoomed = false;
    m_state.reviewEnlarged = false;
    m_state.confirmingDelete = false;
    m_state.phase = {};
    m_hasGrant = false;
    m_lastSnapshot.reset();
}

void WalkModel::dropWishes()
{
    m_search.reset();
    m_wanted.reset();
}

void WalkModel::ask(const ModelCard &card)
{
    const auto isAsked = [&](const Question &question) {
        return !question.isForgotten && question.card.isSame(card);
    };
    if (std::ranges::none_of(m_questions, isAsked)) {
        m_questions.push_back({card});
    }
}

void WalkModel::switchTo(const ModelCard &card)
{
    if (canSwitchCards() && !(m_state.card && m_state.card->isSame(card))) {
        dropWishes();
        m_wanted = card;
        ask(card);
    }
}

void WalkModel::switchToCardAt(qint64 index)
{
    if (index >= 0 && index < static_cast<qint64>(m_state.availableCards.size())) {
        switchTo(ModelCard(m_state.availableCards[static_cast<size_t>(index)]));
    }
}

void WalkModel::cycleCard()
{
    if (!m_state.availableCards.empty()) {
        switchToCardAt((indexOfCard() + 1) % static_cast<qint64>(m_state.availableCards.size()));
    }
}

bool WalkModel::answerQuestions()
{
    const auto answering = std::ranges::find_if(m_questions, [this](const Question &question) {
        return !world.isClosed(WalkGate::probe(question.card.path));
    });
    if (answering == m_questions.end()) {
        return false;
    }
    const auto question = *answering;
    m_questions.erase(answering);
    if (question.isForgotten) {
        return true;
    }
    const auto &card = world.cards[world.mountAt(question.card.path)->card];
    Answer answer{.card = question.card, .isReadable = !card.isClosed};
    answer.hasGrant = card.isClosed && world.resolved(question.card.uuid);
    answer.hasDcim = answer.isAccessible() && card.hasDcim;
    answer.isReadOnly = answer.isAccessible() && card.isReadOnly;
    answer.hasSession = answer.isUsable() && store.load(question.card.uuid);
    hear(answer);
    return true;
}

void WalkModel::hear(const Answer &answer)
{
    if (m_search) {
        m_search->answers.push_back(answer);
        decideSearch();
    } else if (m_wanted && m_wanted->isSame(answer.card)) {
        m_wanted.reset();
        openAnswered(answer);
    }
}

void WalkModel::decideSearch()
{
    const Answer *remembered = nullptr;
    for (const auto &card : m_search->cards) {
        const auto answer = std::ranges::find_if(
            m_search->answers, [&](const Answer &other) { return other.card.isSame(card); });
        if (answer == m_search->answers.end()) {
            return; // it may still be the one
        }
        if (answer->isUsable()) {
            remembered = &*answer;
            break;
        }
        if (!answer->isAccessible() && !remembered) {
            remembered = &*answer;
        }
    }
    const auto answer = remembered ? std::optional(*remembered) : std::nullopt;
    m_search.reset();
    if (answer) {
        open(*answer);
    }
}

void WalkModel::openAnswered(const Answer &answer)
{
    if (!canSwitchCards() || (m_state.card && m_state.card->isSame(answer.card))) {
        return;
    }
    m_request.reset();
    m_state.player.reset();
    recordChange();
    m_state.session.reset();
    m_hasGrant = false;
    m_lastSnapshot.reset();
    open(answer);
}

void WalkModel::open(const Answer &answer)
{
    m_state.card = mounted(answer.card);
    m_state.cardIsReadOnly = answer.isReadOnly;
    if (!answer.isAccessible()) {
        m_state.phase = {.kind = Kind::NeedsAccess};
    } else if (!answer.hasDcim) {
        m_state.phase = {.kind = Kind::NoMedia};
    } else {
        select(answer);
    }
}

void WalkModel::select(const Answer &answer)
{
    m_hasGrant = answer.hasGrant;
    m_lastSnapshot.reset();
    m_state.phase = {.kind = Kind::CardReady, .resumable = answer.hasSession};
}

void WalkModel::grantAccess()
{
    if (m_state.card && is(Kind::NeedsAccess)) {
        dropWishes();
        m_request = m_state.card;
    }
}

bool WalkModel::answerRequest()
{
    if (!m_request || world.isClosed(WalkGate::dialog())) {
        return false;
    }
    const auto asked = *m_request;
    m_request.reset();
    if (world.userRefuses) {
        return true;
    }
    dropWishes();
    const auto &card = world.cards[world.mountAt(asked.path)->card];
    Answer answer{.card = asked, .hasGrant = true};
    answer.hasDcim = card.hasDcim;
    answer.isReadOnly = card.isReadOnly;
    answer.hasSession = card.hasDcim && store.load(asked.uuid);
    openGranted(answer);
    return true;
}

void WalkModel::openGranted(const Answer &answer)
{
    if (!is(Kind::NeedsAccess)) {
        return;
    }
    m_state.cardIsReadOnly = answer.isReadOnly;
    if (answer.hasDcim) {
        world.bookmarks[answer.card.uuid] = answer.card.path;
        select(answer);
    } else {
        m_state.phase = {.kind = Kind::NoMedia};
    }
}

/// A grant is open for the card it opened, and for those that answered in a search that goes on.
qint64 WalkModel::openAccesses() const
{
    const auto answers = m_search ? m_search->answers : std::vector<Answer>();
    return std::ranges::count(answers, true, &Answer::hasGrant) + (m_hasGrant ? 1 : 0);
}
