// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/NotificationWatch.h"

using namespace Qt::StringLiterals;

static QVariant valueOf(const CardInfo &card)
{
    return QStringList{QString::fromStdString(card.volumeURL.native()), card.volumeUUID, card.name};
}

static QVariant valueOf(const Phase &phase)
{
    return QVariantList{
        static_cast<int>(phase.kind), phase.resumableFlag, phase.doneCount, phase.totalCount,
        phase.deletedCount,           phase.failedCount,   phase.keptCount};
}

static int availabilityOf(const MenuCommands &menu)
{
    return (menu.canUndo() ? 1 : 0) + (menu.canFinish() ? 2 : 0) + (menu.canGoBack() ? 4 : 0);
}

NotificationWatch::NotificationWatch(AppState &appState, MenuCommands &menu)
    : m_appState(appState)
    , m_menu(menu)
    , m_phase(appState.phase())
    , m_toldAvailability(availabilityOf(menu))
{
    const auto &app = appState;
    watch("phase", &AppState::phaseChanged, [&app] { return valueOf(app.phase()); });
    watch("card", &AppState::cardChanged,
          [&app] { return app.card() ? valueOf(*app.card()) : QVariant(); });
    watch("cardIsReadOnly", &AppState::cardIsReadOnlyChanged,
          [&app] { return app.cardIsReadOnly(); });
    watch("requestingAccess", &AppState::requestingAccessChanged,
          [&app] { return app.requestingAccess(); });
    watch("availableCards", &AppState::availableCardsChanged, [&app] {
        QVariantList cards;
        for (const auto &card : app.availableCards()) {
            cards.append(valueOf(card));
        }
        return cards;
    });
    watch("currentCardIndex", &AppState::currentCardIndexChanged,
          [&app] { return app.currentCardIndex(); });
    watch("canSwitchCards", &AppState::canSwitchCardsChanged,
          [&app] { return app.canSwitchCards(); });
    watch("session", &AppState::sessionChanged,
          [&app] { return QVariant::fromValue<quintptr>(quintptr(app.session())); });
    watch("zoomed", &AppState::zoomedChanged, [&app] { return app.zoomed(); });
    watch("zoomPan", &AppState::zoomPanChanged, [&app] { return app.zoomPan(); });
    watch("showExifBar", &AppState::showExifBarChanged, [&app] { return app.showExifBar(); });
    watch("reviewSelection", &AppState::reviewSelectionChanged,
          [&app] { return app.reviewSelection(); });
    watch("reviewEnlarged", &AppState::reviewEnlargedChanged,
          [&app] { return app.reviewEnlarged(); });
    watch("confirmingDelete", &AppState::confirmingDeleteChanged,
          [&app] { return app.confirmingDelete(); });
    watch("videoPlayer", &AppState::videoPlayerChanged,
          [&app] { return QVariant::fromValue<quintptr>(quintptr(app.videoPlayer())); });
    watch("changeCount", &AppState::changeCountChanged, [&app] { return app.changeCount(); });
    connect(&appState, &AppState::phaseChanged, this, &NotificationWatch::checkPhase);
    connect(&menu, &MenuCommands::availabilityChanged, this,
            [this] { m_toldAvailability = availabilityOf(m_menu); });
}

void NotificationWatch::watch(const char *name, void (AppState::*signal)(),
                              const std::function<QVariant()> &read)
{
    const auto index = m_watched.size();
    m_watched.push_back({.name = name, .read = read, .told = read()});
    connect(&m_appState, signal, this, [this, index] { hear(index); });
}

void NotificationWatch::hear(size_t index)
{
    auto &watched = m_watched[index];
    const auto value = watched.read();
    if (value == watched.told) {
        m_offences.append(u"%1 is told and has not changed"_s.arg(QLatin1String(watched.name)));
    }
    watched.told = value;
    checkSense();
}

void NotificationWatch::checkPhase()
{
    const auto phase = m_appState.phase();
    const bool wasDeleting = m_phase.kind == Phase::Kind::Deleting;
    if (phase.kind == Phase::Kind::Deleting) {
        if (!wasDeleting && !std::exchange(m_mayBeginDeleting, false)) {
            m_offences.append(u"a deletion begins that nobody asked for"_s);
        }
        if (wasDeleting &&
            (phase.doneCount <= m_phase.doneCount || phase.totalCount != m_phase.totalCount)) {
            m_offences.append(u"the progress of a deletion goes back"_s);
        }
    }
    m_phase = phase;
}

/// Whoever listens sees operations as a whole.
void NotificationWatch::checkSense()
{
    using Kind = Phase::Kind;
    const auto kind = m_appState.phase().kind;
    const auto *session = m_appState.session();
    const bool needsSession = kind >= Kind::Culling;
    if ((kind == Kind::WaitingForCard) == m_appState.card().has_value() ||
        (session && !m_appState.card()) || (needsSession && !session)) {
        m_offences.append(u"phase, card and session contradict each other"_s);
    }
    if (m_appState.card().has_value() != (m_appState.currentCardIndex() >= 0)) {
        m_offences.append(u"the card is not among the cards"_s);
    }
    if (!session) {
        return;
    }
    if (session->currentIndex() < 0 || session->currentIndex() >= session->items().size()) {
        m_offences.append(u"the index is out of range"_s);
    }
    if (session->rejectedItems().size() != session->rejectedIDs().size()) {
        m_offences.append(u"something is rejected that is not there"_s);
    }
}

QStringList NotificationWatch::takeOffences()
{
    for (auto &watched : m_watched) {
        if (watched.read() != watched.told) {
            m_offences.append(u"%1 has changed and is not told"_s.arg(QLatin1String(watched.name)));
        }
    }
    if (m_toldAvailability != availabilityOf(m_menu)) {
        m_offences.append(u"what the menus offer has changed and is not told"_s);
    }
    m_mayBeginDeleting = false;
    checkSense();
    return std::exchange(m_offences, {});
}
