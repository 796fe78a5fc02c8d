// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/Walker.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using Kind = ModelPhase::Kind;

// What happens around the controller.

static constexpr int mostWaiting = 20; // of the threads that the controller has for questions

static QString text(const std::string &name)
{
    return QString::fromStdString(name);
}

std::vector<std::string> Walker::mountedPaths() const
{
    std::vector<std::string> paths;
    for (const auto &mount : m_model.world.mounts) {
        paths.push_back(mount.path);
    }
    return paths;
}

std::vector<size_t> Walker::cardsOutside() const
{
    std::vector<size_t> outside;
    for (size_t card = 0; card < m_model.world.cards.size(); ++card) {
        if (!m_model.world.mountOf(card)) {
            outside.push_back(card);
        }
    }
    return outside;
}

/// The one that is worked on, as a rule.
size_t Walker::chosenCard()
{
    const auto &current = m_model.state().card;
    return current && !m_dice.oneIn(4)
               ? m_model.world.mountAt(current->path)->card
               : static_cast<size_t>(m_dice.below(int(m_model.world.cards.size())));
}

void Walker::reportVolumes()
{
    m_controller.volumes.setVolumes(m_model.world.volumes());
    m_model.report();
}

void Walker::mountCard()
{
    static const std::vector<std::string> all = {"/media/a", "/media/b", "/run/media/c"};
    std::vector<std::string> paths;
    std::ranges::copy_if(all, std::back_inserter(paths),
                         [this](const auto &path) { return !m_model.world.mountAt(path); });
    if (paths.empty() || m_model.waitingCount() > mostWaiting) {
        unmountCard();
        return;
    }
    const auto path = m_dice.oneOf(paths);
    const auto card = m_dice.oneOf(cardsOutside());
    note(u"card %1 is mounted at %2"_s.arg(card).arg(text(path)));
    changeWorld([&](WalkWorld &facts) { facts.mount(path, card); });
    reportVolumes();
}

void Walker::unmountCard()
{
    const auto paths = mountedPaths();
    if (paths.empty()) {
        note(u"nothing is unmounted"_s);
        return;
    }
    const auto path = m_dice.oneOf(paths);
    note(u"%1 is unmounted"_s.arg(text(path)));
    changeWorld([&](WalkWorld &facts) { facts.unmount(path); });
    reportVolumes();
}

void Walker::exchangeCard()
{
    const auto paths = mountedPaths();
    if (paths.empty() || m_model.waitingCount() > mostWaiting) {
        note(u"nothing is exchanged"_s);
        return;
    }
    const auto path = m_dice.oneOf(paths);
    const auto card = m_dice.oneOf(cardsOutside());
    note(u"at %1 there is card %2 now"_s.arg(text(path)).arg(card));
    m_world.hold();
    changeWorld([&](WalkWorld &facts) { facts.unmount(path); });
    reportVolumes();
    changeWorld([&](WalkWorld &facts) { facts.mount(path, card); });
    reportVolumes();
}

void Walker::reinsertCard()
{
    const auto paths = mountedPaths();
    if (paths.empty() || m_model.waitingCount() > mostWaiting) {
        note(u"nothing is put in again"_s);
        return;
    }
    const auto path = m_dice.oneOf(paths);
    const auto card = m_model.world.mountAt(path)->card;
    note(u"%1 is unmounted and mounted again"_s.arg(text(path)));
    m_world.hold();
    changeWorld([&](WalkWorld &facts) { facts.unmount(path); });
    reportVolumes();
    changeWorld([&](WalkWorld &facts) { facts.mount(path, card); });
    reportVolumes();
}

void Walker::blinkCard()
{
    const auto paths = mountedPaths();
    if (paths.empty()) {
        note(u"nothing is pulled"_s);
        return;
    }
    const auto &current = m_model.state().card;
    const auto path = current && !m_dice.oneIn(4) ? current->path : m_dice.oneOf(paths);
    note(u"%1 is pulled and put in again unnoticed"_s.arg(text(path)));
    const auto life = m_model.world.mountAt(path)->life;
    changeWorld([&](WalkWorld &facts) { facts.blink(path); });
    m_world.renewPermits(life, m_model.world.lives); // it is the same card to those who wait
    reportVolumes();
}

/// To its readers that is another card, though nobody has touched it.
void Walker::changeUuid()
{
    const auto &current = m_model.state().card;
    if (!current || m_model.world.cards[m_model.world.mountAt(current->path)->card].isClosed) {
        note(u"no UUID changes"_s);
        return;
    }
    const auto mount = *m_model.world.mountAt(current->path);
    const auto uuid = m_dice.oneOf(std::vector{u"A"_s, u"B"_s, u"G"_s});
    note(u"the UUID at %1 becomes %2"_s.arg(text(mount.path), uuid));
    m_world.hold();
    m_world.dropAlive(mount.life);
    changeWorld([&](WalkWorld &facts) { facts.unmount(mount.path); });
    reportVolumes();
    changeWorld([&](WalkWorld &facts) {
        facts.cards[mount.card].uuid = uuid;
        facts.mounts.push_back(mount);
    });
    reportVolumes();
}

void Walker::renameCard()
{
    const auto card = chosenCard();
    const auto label = m_dice.oneOf(std::vector{u"CARD"_s, u"RENAMED"_s, u""_s});
    note(u"card %1 is called '%2'"_s.arg(card).arg(label));
    changeWorld([&](WalkWorld &facts) { facts.cards[card].label = label; });
    reportVolumes();
}

/// While it is outside, a card may come to hold other shots and be locked.
void Walker::changeContents()
{
    const auto index = m_dice.oneOf(cardsOutside());
    auto card = m_model.world.cards[index];
    switch (m_dice.weighted({3, 1, 1, 1, 3})) {
    case 0:
        addShot(card, m_dice.between(1, 7));
        break;
    case 1:
        card.isReadOnly = !card.isReadOnly;
        break;
    case 2:
        card.hasDcim = !card.hasDcim;
        break;
    case 3:
        card.files.clear();
        break;
    default:
        if (!card.files.empty()) {
            card.files.erase(std::next(card.files.begin(), m_dice.below(int(card.files.size()))));
        }
    }
    while (card.files.size() > 9) {
        card.files.erase(card.files.begin());
    }
    note(u"card %1 has %2 files now%3%4"_s.arg(index)
             .arg(card.files.size())
             .arg(card.hasDcim ? u""_s : u" but no DCIM"_s)
             .arg(card.isReadOnly ? u", locked"_s : u""_s));
    changeWorld([&](WalkWorld &facts) { facts.cards[index] = card; });
}

void Walker::changeFaults()
{
    const auto index = chosenCard();
    auto card = m_model.world.cards[index];
    card.syncFails = m_dice.oneIn(6);
    card.stuckFiles.clear();
    for (const auto &[file, number] : card.files) {
        if (m_dice.oneIn(5)) {
            card.stuckFiles.insert(file);
        }
    }
    note(u"card %1 has %2 stuck files%3"_s.arg(index)
             .arg(card.stuckFiles.size())
             .arg(card.syncFails ? u" and does not sync"_s : u""_s));
    changeWorld([&](WalkWorld &facts) { facts.cards[index] = card; });
}

void Walker::moveGate()
{
    const auto path =
        m_dice.oneOf(std::vector<std::string>{"/media/a", "/media/b", "/run/media/c"});
    const auto gate = m_dice.oneOf(std::vector<std::string>{
        WalkGate::probe(path), WalkGate::scan(path), WalkGate::scan(path), WalkGate::removal(path),
        WalkGate::removal(path), WalkGate::dialog()});
    if (m_model.world.isClosed(gate)) {
        openGate(gate);
        return;
    }
    closeGate(gate);
}

/// That of the card that is worked on.
void Walker::closeRemovalGate()
{
    closeGate(WalkGate::removal(m_model.state().card->path));
}

void Walker::closeScanGate()
{
    closeGate(WalkGate::scan(m_model.state().card->path));
}

void Walker::closeDialogGate()
{
    closeGate(WalkGate::dialog());
}

/// Those of all other cards.
void Walker::closeProbeGates()
{
    for (const auto &path : mountedPaths()) {
        if (path != m_model.state().card->path) {
            closeGate(WalkGate::probe(path));
        }
    }
    note(u"the others answer nobody"_s);
}

void Walker::closeGate(const std::string &gate)
{
    note(u"gate %1 closes"_s.arg(text(gate)));
    changeWorld([&](WalkWorld &facts) { facts.closedGates.insert(gate); });
}

/// One at which somebody waits, when there is one.
void Walker::openGate()
{
    std::vector<std::string> gates(m_model.world.closedGates.begin(),
                                   m_model.world.closedGates.end());
    if (gates.empty()) {
        moveGate();
        return;
    }
    const auto nobodyWaits = [this](const auto &gate) { return m_model.waitingAt(gate) == 0; };
    if (m_model.waitingCount() > 0) {
        std::erase_if(gates, nobodyWaits);
    }
    openGate(m_dice.oneOf(gates));
}

void Walker::openGate(const std::string &gate)
{
    note(u"gate %1 opens"_s.arg(text(gate)));
    m_world.open(gate);
    m_model.world.closedGates.erase(gate);
}

void Walker::letOneRemovalThrough()
{
    const auto run = m_model.unstoppedRun();
    // Which of several goes on is left to chance.
    if (!run || !run->isAtGate() || m_model.waitingAt(WalkGate::removal(run->path)) != 1) {
        openGate();
        return;
    }
    note(u"one file more is removed"_s);
    m_world.letOneThrough(WalkGate::removal(run->path));
    m_model.letOneRemovalThrough();
}

void Walker::changeRefusal()
{
    changeWorld([](WalkWorld &facts) { facts.userRefuses = !facts.userRefuses; });
    note(m_model.world.userRefuses ? u"the user refuses grants"_s : u"the user grants"_s);
}

void Walker::moveStore()
{
    m_model.store.isAway = !m_model.store.isAway;
    note(m_model.store.isAway ? u"the store is away"_s : u"the store is there"_s);
    m_controller.setStoreAway(m_model.store.isAway);
}

void Walker::changeSettings()
{
    m_model.autoAdvance = !m_dice.oneIn(3);
    m_controller.defaults.setBoolean(u"autoAdvanceOnReject"_s, m_model.autoAdvance);
    m_model.clipLength = m_dice.oneIn(2) ? std::optional(5.0) : std::nullopt;
    m_controller.player.duration.reset();
    if (m_model.clipLength) {
        m_controller.player.duration = VideoPlayer::Seconds(*m_model.clipLength);
    }
    note(u"auto-advance %1"_s.arg(m_model.autoAdvance));
}

void Walker::passSaveDelay()
{
    note(u"the delay of the save passes"_s);
    m_controller.passSaveDelay();
    m_model.store.saveWaiting();
}

void Walker::passDays()
{
    const int days = m_dice.between(1, 20);
    note(u"%1 days pass"_s.arg(days));
    m_model.now += 24LL * 3600 * days;
    m_controller.setSecondsSinceEpoch(m_model.now);
}

void Walker::endClip()
{
    note(u"the clip ends"_s);
    m_model.clipEnds();
    if (m_model.state().player) {
        m_controller.player.rate = 0;
        m_controller.player.time = VideoPlayer::Seconds(m_model.state().player->time);
    }
}

void Walker::saveAndStartAgain()
{
    m_controller.passSaveDelay();
    m_model.store.saveWaiting();
    startAgain();
}

/// How far a deletion comes before it ends with the program is left to chance; what it removed is
/// looked at.
void Walker::startAgain()
{
    note(u"the program is started again"_s);
    const auto run = m_model.unstoppedRun();
    m_controller.begin();
    m_model.world.closedGates.clear();
    m_model.begin();
    const auto facts = m_world.facts();
    for (size_t index = 0; run && index < facts.cards.size(); ++index) {
        auto &files = m_model.world.cards[index].files;
        const auto *mount = m_model.world.mountOf(index);
        std::erase_if(files, [&](const auto &entry) {
            const bool isGone = !facts.cards[index].files.contains(entry.first);
            const bool mayBeGone =
                mount && std::ranges::find(run->files, mount->path + "/DCIM/" + entry.first) !=
                             run->files.end();
            return isGone && mayBeGone;
        });
    }
}
