// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/app/walk/Dice.h"
#include "tests/app/walk/WalkModel.h"
#include "tests/app/walk/WalkedController.h"

#include <QMap>
#include <QTemporaryDir>

/// Walks through the controller at random, and looks after every event whether it is as it should
/// be.
class Walker {
public:
    explicit Walker(quint64 seed);

    /// Does as many events, and lets all come to rest. What went wrong; empty when nothing did.
    [[nodiscard]] QString walk(int events);

    /// How often what was seen after an event.
    [[nodiscard]] const QMap<QString, int> &seen() const { return m_seen; }

private:
    using Event = void (Walker::*)();

    struct Choice {
        int weight;
        Event event;
    };

    void makeCards();
    void addShot(WalkCard &card, int number);

    void doEvent();
    [[nodiscard]] std::vector<Choice> choices() const;
    [[nodiscard]] QString wrong();
    [[nodiscard]] QString wrongFiles() const;
    [[nodiscard]] QString wrongStore() const;
    [[nodiscard]] QString wrongPictures();
    void countWhatIsSeen();
    void note(const QString &event);

    template<typename Change>
    void changeWorld(Change change)
    {
        m_world.change(change);
        change(m_model.world);
    }

    // What happens around the controller.
    void mountCard();
    void unmountCard();
    void exchangeCard();
    void reinsertCard();
    void blinkCard();
    void changeUuid();
    void renameCard();
    void changeContents();
    void changeFaults();
    void moveGate();
    void closeRemovalGate();
    void closeScanGate();
    void closeDialogGate();
    void closeProbeGates();
    void closeGate(const std::string &gate);
    void openGate();
    void openGate(const std::string &gate);
    void letOneRemovalThrough();
    void changeRefusal();
    void moveStore();
    void changeSettings();
    void passSaveDelay();
    void passDays();
    void endClip();
    void startAgain();
    void saveAndStartAgain();

    [[nodiscard]] size_t chosenCard();
    void reportVolumes();
    [[nodiscard]] std::vector<std::string> mountedPaths() const;
    [[nodiscard]] std::vector<size_t> cardsOutside() const;

    // What the user does.
    void pressKey();
    void pressKeys();
    void pressOneKey();
    void chooseFromMenu();
    void switchToCard();
    void cycleCard();
    void grantAccess();
    void startCulling();
    void selectItem();
    void goToReview();
    void backToCulling();
    void backToCardScreen();
    void rescueSelected();
    void performDelete();
    void closeSummary();
    void playVideo();
    void selectReject();
    void askOrCancel();
    void dragZoomed();

    [[nodiscard]] AppState &app() { return m_controller.app(); }

    Dice m_dice;
    QTemporaryDir m_folder;
    SharedWorld m_world;
    WalkModel m_model;
    WalkedController m_controller;
    int m_lastNumber = 0; ///< of a file
    QStringList m_offences;
    QStringList m_trail; ///< the last events
    QMap<QString, int> m_seen;
};
