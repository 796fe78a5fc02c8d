// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/CardOpener.h"

#include "app/SessionKeeper.h"
#include "platform/files/FileManager.h"

#include <QCoroFuture>
#include <QPointer>
#include <QTimer>
#include <QtConcurrent/qtconcurrentrun.h>

#include <algorithm>

/// A card that hangs keeps its thread; nobody has so many card readers.
static constexpr int cardsAskedAtOnce = 32;

static auto isVolumeOf(const CardInfo &card)
{
    return [&card](const auto &other) { return isSameVolume(other.card, card); };
}

CardOpener::CardOpener(std::shared_ptr<CardAccess> access,
                       std::shared_ptr<const FileManager> fileManager, SessionKeeper &sessions,
                       std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent)
    , m_access(std::move(access))
    , m_fileManager(std::move(fileManager))
    , m_sessions(sessions)
    , m_patience(patience)
{
    m_pool.setMaxThreadCount(cardsAskedAtOnce);
}

CardOpener::~CardOpener()
{
    m_pool.waitForDone();
}

void CardOpener::cancel()
{
    ++m_wish;
    m_search.reset();
    m_wanted.reset();
    m_judged.reset();
}

void CardOpener::forgetAllBut(const QList<CardInfo> &mounted)
{
    m_questions.removeIf([&](const Question &question) {
        return std::ranges::none_of(
            mounted, [&](const CardInfo &card) { return isSameVolume(card, question.card); });
    });
}

void CardOpener::findUsable(const QList<CardInfo> &cards)
{
    cancel();
    m_search = Search{.cards = cards};
    question(cards);
}

void CardOpener::ask(const CardInfo &card)
{
    cancel();
    m_wanted = card;
    question({card});
}

void CardOpener::question(const QList<CardInfo> &cards)
{
    QList<Question> asked;
    for (const auto &card : cards) {
        if (std::ranges::none_of(m_questions, isVolumeOf(card))) {
            asked.append({.card = card, .number = ++m_questionNumber});
            m_questions.append(asked.last());
        }
    }
    // An answer may be there at once, and must find the others waited for.
    for (const auto &[card, number, isOverdue] : asked) {
        QTimer::singleShot(m_patience, this, [this, late = number] { passOver(late); });
        awaitAnswer(card, number);
    }
}

QCoro::Task<> CardOpener::awaitAnswer(CardInfo card, qint64 number)
{
    const QPointer self(this);
    const auto look = [card, access = m_access, files = m_fileManager] {
        return CardProbe::of(card, access, *files);
    };
    auto probe = co_await QtConcurrent::run(&m_pool, look);
    if (!self || !isAsked(number)) {
        co_return;
    }
    if (probe.isUsable()) {
        const auto kept = co_await m_sessions.load(card.volumeUUID);
        if (!self) {
            co_return;
        }
        probe.hasSession = kept.snapshot.has_value();
    }
    const auto isMine = [number](const Question &question) { return question.number == number; };
    if (m_questions.removeIf(isMine) > 0) {
        hear(probe);
    }
}

bool CardOpener::isAsked(qint64 number) const
{
    return std::ranges::find(m_questions, number, &Question::number) != m_questions.end();
}

void CardOpener::passOver(qint64 number)
{
    const auto late = std::ranges::find(m_questions, number, &Question::number);
    if (late == m_questions.end()) {
        return;
    }
    late->isOverdue = true;
    if (m_search) {
        decide();
    }
}

void CardOpener::hear(const CardProbe &probe)
{
    if (m_search) {
        m_search->answers.append(probe);
        decide();
    } else if (m_wanted && isSameVolume(*m_wanted, probe.card)) {
        m_wanted.reset();
        Q_EMIT answered(probe);
    }
}

void CardOpener::decide()
{
    std::optional<CardProbe> best;
    bool isOver = true;
    for (const auto &card : m_search->cards) {
        const auto answer = std::ranges::find_if(m_search->answers, isVolumeOf(card));
        if (answer == m_search->answers.end()) {
            const auto asked = std::ranges::find_if(m_questions, isVolumeOf(card));
            if (asked != m_questions.end() && !asked->isOverdue) {
                return;
            }
            isOver = isOver && asked == m_questions.end();
        } else if (answer->isUsable()) {
            best = *answer;
            break;
        } else if (!best && !answer->isAccessible()) {
            best = *answer;
        }
    }
    if (best || isOver) {
        m_search.reset(); // and the grants of those that answered in vain
    }
    if (best) {
        Q_EMIT found(*best);
    }
}

void CardOpener::judgeGrant(const CardInfo &card, const std::filesystem::path &url)
{
    cancel();
    m_judged = card;
    awaitGrant(card, url);
}

bool CardOpener::isJudging(const CardInfo &card) const
{
    return m_judged && isSameVolume(*m_judged, card);
}

QCoro::Task<> CardOpener::awaitGrant(CardInfo card, std::filesystem::path url)
{
    const QPointer self(this);
    const auto wish = m_wish;
    const auto look = [card, url, access = m_access, files = m_fileManager] {
        return CardProbe::granted(card, url, access, *files);
    };
    auto probe = co_await QtConcurrent::run(&m_pool, look);
    if (!self || wish != m_wish) {
        co_return;
    }
    if (probe.hasDCIM) {
        const auto kept = co_await m_sessions.load(card.volumeUUID);
        if (!self || wish != m_wish) {
            co_return;
        }
        probe.hasSession = kept.snapshot.has_value();
    }
    m_judged.reset();
    Q_EMIT granted(probe);
}
