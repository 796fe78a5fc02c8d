// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardProbe.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QThreadPool>

#include <chrono>
#include <optional>

class SessionKeeper;

/// Asks cards what can be done with them, each on a thread of its own, and tells what the newest
/// wish comes to; an older wish is forgotten. Main thread only; never blocks but at its end.
///
/// A card is asked once at a time: whoever wishes for it meanwhile waits for the same answer.
class CardOpener : public QObject {
    Q_OBJECT

public:
    /// Who has not answered after @p patience is passed over, and judged when it answers.
    CardOpener(std::shared_ptr<CardAccess> access, std::shared_ptr<const FileManager> fileManager,
               SessionKeeper &sessions, std::chrono::milliseconds patience,
               QObject *parent = nullptr);
    /// Waits for the cards that are being asked.
    ~CardOpener() override;

    /// Looks for the first of @p cards that is usable, or else the first that is not accessible,
    /// and tells it by found(), at most once. With neither among those that have answered in time,
    /// the late ones are judged as they come.
    void findUsable(const QList<CardInfo> &cards);

    /// Asks @p card, and tells its answer by answered().
    void ask(const CardInfo &card);

    /// Looks at @p card by a new grant of @p url, whose access is open, and tells it by granted().
    void judgeGrant(const CardInfo &card, const std::filesystem::path &url);

    /// Whether a grant for @p card is being looked at.
    [[nodiscard]] bool isJudging(const CardInfo &card) const;

    /// Forgets the newest wish.
    void cancel();

    /// Forgets cards that are not among @p mounted; one that comes back is asked anew.
    void forgetAllBut(const QList<CardInfo> &mounted);

Q_SIGNALS:
    void found(const CardProbe &probe);
    void answered(const CardProbe &probe);
    void granted(const CardProbe &probe);

private:
    struct Question {
        CardInfo card;
        qint64 number = 0;
        bool isOverdue = false;
    };

    struct Search {
        QList<CardInfo> cards;
        QList<CardProbe> answers = {};
    };

    void question(const QList<CardInfo> &cards);
    QCoro::Task<> awaitAnswer(CardInfo card, qint64 number);
    [[nodiscard]] bool isAsked(qint64 number) const;
    QCoro::Task<> awaitGrant(CardInfo card, std::filesystem::path url);
    void passOver(qint64 number);
    void hear(const CardProbe &probe);
    void decide();

    std::shared_ptr<CardAccess> m_access;
    std::shared_ptr<const FileManager> m_fileManager;
    SessionKeeper &m_sessions;
    std::chrono::milliseconds m_patience;

    QList<Question> m_questions; ///< that wait for an answer
    qint64 m_questionNumber = 0;

    // The newest wish is one of these, or for a grant.
    std::optional<Search> m_search;
    std::optional<CardInfo> m_wanted;
    std::optional<CardInfo> m_judged;
    qint64 m_wish = 0; ///< counts wishes

    QThreadPool m_pool{this};
};
