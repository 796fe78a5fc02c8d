// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/app/walk/ModelCard.h"
#include "tests/app/walk/ModelPhase.h"
#include "tests/app/walk/ModelRun.h"
#include "tests/app/walk/ModelSession.h"
#include "tests/app/walk/ModelStore.h"
#include "tests/app/walk/Portrait.h"
#include "tests/app/walk/WalkWorld.h"

#include <QSizeF>

#include <optional>
#include <vector>

/// What the controller should do: the rules of its phases, keys and cards once more, written for
/// nothing but to be compared. An operation changes it at once; what takes place off the main
/// thread has come to rest after settle().
class WalkModel {
public:
    struct Player {
        std::string url = {};
        double rate = 0;
        double time = 0; ///< seconds
    };

    struct State {
        ModelPhase phase = {};
        std::optional<ModelCard> card = {};
        bool cardIsReadOnly = false;
        std::vector<ModelCard> availableCards = {};
        std::optional<ModelSession> session = {};
        bool zoomed = false;
        QSizeF zoomPan = {0, 0};
        bool showExifBar = true;
        qint64 reviewSelection = 0;
        bool reviewEnlarged = false;
        bool confirmingDelete = false;
        std::optional<Player> player = {};
        qint64 changeCount = 0;
    };

    [[nodiscard]] const State &state() const { return m_state; }

    [[nodiscard]] bool is(ModelPhase::Kind kind) const { return m_state.phase.kind == kind; }

    [[nodiscard]] bool canSwitchCards() const;
    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canFinish() const;
    [[nodiscard]] bool canGoBack() const;
    [[nodiscard]] int waitingAt(const std::string &gate) const;
    [[nodiscard]] int waitingCount() const;
    [[nodiscard]] std::optional<ModelRun> unstoppedRun() const;
    [[nodiscard]] bool hasRunBehindAnother() const { return m_runs.size() > 1; }

    /// One that waits, wanted or not.
    [[nodiscard]] bool hasScanOfCard() const;
    [[nodiscard]] qint64 openAccesses() const;
    [[nodiscard]] Portrait portrait() const;

    WalkWorld world;
    ModelStore store;
    qint64 now = 0; ///< seconds since the epoch
    bool autoAdvance = true;
    std::optional<double> clipLength = {}; ///< in seconds, once it is known

    /// A new controller begins; nothing is left of another one but what is stored. All gates are
    /// open.
    void begin();
    /// Until nothing goes on but what waits at a gate.
    void settle();

    void report();
    void switchToCardAt(qint64 index);
    void cycleCard();
    void grantAccess();
    void startCulling();
    void selectItem(qint64 index);
    void goToReview();
    void backToCulling();
    void backToCardScreen();
    void rescueSelected();
    void performDelete();
    void closeSummary();
    void playVideo(const ModelSession::Item &item);
    void setReviewSelection(qint64 selection) { m_state.reviewSelection = selection; }

    void setConfirmingDelete(bool confirming) { m_state.confirmingDelete = confirming; }

    void setZoomPan(QSizeF pan) { m_state.zoomPan = pan; }

    void menuUndo();
    void menuFinish();
    void menuBack();
    /// True when the key is consumed.
    bool press(const QString &chars, int keyCode, bool command);

    void letOneRemovalThrough();
    void clipEnds();

private:
    /// A card is being asked what can be done with it.
    struct Question {
        ModelCard card;
        bool isForgotten = false;
    };

    struct Answer {
        ModelCard card;
        bool isReadable = false;
        bool hasGrant = false;
        bool hasDcim = false;
        bool isReadOnly = false;
        bool hasSession = false;

        [[nodiscard]] bool isAccessible() const { return isReadable || hasGrant; }

        [[nodiscard]] bool isUsable() const { return isAccessible() && hasDcim; }
    };

    struct Search {
        std::vector<ModelCard> cards;
        std::vector<Answer> answers = {};
    };

    struct Scan {
        std::string path;
        int life = 0;
        bool isNewest = true;
    };

    void dropWishes();
    void ask(const ModelCard &card);
    void switchTo(const ModelCard &card);
    [[nodiscard]] bool answerQuestions();
    void hear(const Answer &answer);
    void decideSearch();
    [[nodiscard]] bool answerRequest();
    void openAnswered(const Answer &answer);
    void openGranted(const Answer &answer);
    void open(const Answer &answer);
    void select(const Answer &answer);
    void dropCard();
    [[nodiscard]] std::optional<ModelCard> mounted(const ModelCard &card) const;
    [[nodiscard]] qint64 indexOfCard() const;

    [[nodiscard]] bool endScans();
    void cullItems(const std::vector<ModelSession::Item> &items);
    void recordChange();
    void afterMove();
    void finishCulling();
    void leaveCulling();
    void stepForward();
    void clampReviewSelection();
    [[nodiscard]] QString idLookedAt() const;
    void endScan();
    void closeEnlarged();
    [[nodiscard]] ModelStore::Snapshot snapshot(const std::set<QString> &rejected,
                                                qint64 index) const;

    [[nodiscard]] bool goOnDeleting(int passes = 0);
    void finishDelete(const ModelRun &run);

    [[nodiscard]] bool pressWhileCulling(const QString &chars, int keyCode);
    [[nodiscard]] bool pressInReview(const QString &chars, int keyCode);
    [[nodiscard]] bool pressOnEnlarged(const QString &chars, int keyCode);
    [[nodiscard]] bool pressForPlayer(const QString &chars, int keyCode);

    State m_state;
    std::vector<Question> m_questions;
    std::optional<Search> m_search;
    std::optional<ModelCard> m_wanted;
    std::optional<ModelCard> m_request; ///< that the user is asked for
    std::vector<Scan> m_scans;
    int m_scannedLife = 0;                              ///< of the card of the session
    std::vector<ModelRun> m_runs;                       ///< at most one is not stopped
    bool m_hasGrant = false;                            ///< the card was opened by one
    std::optional<ModelStore::Snapshot> m_lastSnapshot; ///< of this selection of the card
};
