// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/Walker.h"

#include "core/store/SessionStore.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using Kind = ModelPhase::Kind;

static constexpr int lengthOfTrail = 30;
static constexpr int eventsBetweenLooksIntoStore = 4;
static constexpr qint64 beginOfTime = 1'700'000'000; // seconds since the epoch

static QString folderPattern()
{
    const bool hasMemory = QFileInfo(u"/dev/shm"_s).isWritable();
    return (hasMemory ? u"/dev/shm"_s : QDir::tempPath()) + u"/kestle-walk-XXXXXX"_s;
}

Walker::Walker(quint64 seed)
    : m_dice(seed)
    , m_folder(folderPattern())
    , m_controller(m_world, m_folder.path().toStdString())
{
    makeCards();
    m_model.now = beginOfTime;
    m_controller.setSecondsSinceEpoch(m_model.now);
    m_controller.begin();
    m_model.begin();
    note(u"it begins"_s);
    m_offences.append(wrong());
}

void Walker::makeCards()
{
    // Two with one UUID, two without any, and each kind that cannot be culled.
    std::vector<WalkCard> cards = {
        {.uuid = u"A"_s, .label = u"CARD"_s},
        {.uuid = u"B"_s, .label = u"CARD"_s},
        {.uuid = u"A"_s, .label = u"TWIN"_s},
        {.uuid = u"C"_s, .label = u"CLOSED"_s, .isClosed = true},
        {.uuid = u"D"_s, .label = u"EMPTY AND CLOSED"_s, .hasDcim = false, .isClosed = true},
        {.label = u"UNKNOWN"_s},
        {.uuid = {}, .label = {}},
        {.uuid = u"E"_s, .label = u"EMPTY"_s, .hasDcim = false},
        {.uuid = u"F"_s, .label = u"DISK"_s, .isFixed = true},
    };
    for (auto &card : cards) {
        card.isReadOnly = m_dice.oneIn(8);
        const int shots = m_dice.oneIn(6) ? 0 : m_dice.between(2, 7);
        for (int number = 1; number <= shots; ++number) {
            addShot(card, number);
        }
    }
    changeWorld([&](WalkWorld &facts) { facts.cards = cards; });
}

/// One of the kinds of shots, in one of two folders.
void Walker::addShot(WalkCard &card, int number)
{
    const auto stem =
        (m_dice.oneIn(4) ? "101_FUJI/DSCF000" : "100_FUJI/DSCF000") + std::to_string(number);
    const std::vector<std::vector<std::string>> kinds = {
        {".JPG"}, {".JPG"}, {".RAF", ".JPG"}, {".RAF", ".JPG"},
        {".RAF"}, {".MOV"}, {".MOV", ".JPG"}};
    for (const auto &extension : m_dice.oneOf(kinds)) {
        card.files[stem + extension] = ++m_lastNumber;
    }
}

QString Walker::walk(int events)
{
    QString error;
    int event = 0;
    for (; event < events && error.isEmpty(); ++event) {
        m_model.now += 1;
        m_controller.setSecondsSinceEpoch(m_model.now);
        doEvent();
        error = wrong();
        if (error.isEmpty() && event % eventsBetweenLooksIntoStore == 0) {
            error = wrongStore();
        }
        countWhatIsSeen();
    }
    if (error.isEmpty()) {
        note(u"all gates open"_s);
        m_world.openAll();
        m_model.world.closedGates.clear();
        error = wrong() + wrongStore();
    }
    if (error.isEmpty() && (m_model.is(Kind::Scanning) || m_model.is(Kind::Deleting))) {
        error = u"it is stuck"_s;
    }
    if (error.isEmpty()) {
        return {};
    }
    return u"%1\nafter event %2:\n  %3"_s.arg(error).arg(event).arg(m_trail.join(u"\n  "));
}

/// What leads further is chosen more often, and so is what may get in its way.
std::vector<Walker::Choice> Walker::choices() const
{
    const bool isCulling = m_model.is(Kind::Culling);
    const bool isReview = m_model.is(Kind::Review);
    const bool isDeleting = m_model.is(Kind::Deleting);
    const bool isSummary = m_model.is(Kind::Summary);
    const bool needsAccess = m_model.is(Kind::NeedsAccess);
    const bool isReady = m_model.is(Kind::CardReady);
    const bool isScanning = m_model.is(Kind::Scanning);
    const bool scanWaits = m_model.hasScanOfCard();
    const bool canGoOn = isReady && m_model.state().session;
    const bool isAsked = m_model.waitingAt(WalkGate::dialog()) > 0;
    const int waiting = m_model.waitingCount();
    const auto &store = m_model.store;
    return {
        {isCulling || isReview ? 260 : 120, &Walker::pressKey},
        {30, &Walker::pressKeys},
        {40, &Walker::chooseFromMenu},
        {canGoOn ? 30 : 12, &Walker::switchToCard},
        {6, &Walker::cycleCard},
        {needsAccess ? 30 : 2, &Walker::grantAccess},
        {isReady ? 60 : 2, &Walker::startCulling},
        {isCulling ? 20 : 2, &Walker::selectItem},
        {canGoOn ? 30 : 8, &Walker::goToReview},
        {canGoOn ? 15 : 6, &Walker::backToCulling},
        {isAsked || isScanning || isSummary ? 40 : 8, &Walker::backToCardScreen},
        {6, &Walker::rescueSelected},
        {isReview ? 60 : 3, &Walker::performDelete},
        {isSummary ? 80 : 2, &Walker::closeSummary},
        {15, &Walker::playVideo},
        {isReview ? 15 : 2, &Walker::selectReject},
        {6, &Walker::askOrCancel},
        {3, &Walker::dragZoomed},
        {m_model.state().availableCards.empty() ? 120 : 14, &Walker::mountCard},
        {14, &Walker::unmountCard},
        {6, &Walker::exchangeCard},
        {5, &Walker::reinsertCard},
        {scanWaits ? 40 : 2, &Walker::blinkCard},
        {isDeleting ? 25 : 1, &Walker::changeUuid},
        {isAsked ? 20 : 3, &Walker::renameCard},
        {6, &Walker::changeContents},
        {isReview ? 30 : 8, &Walker::changeFaults},
        {12, &Walker::moveGate},
        {isReview ? 12 : 0, &Walker::closeRemovalGate},
        {canGoOn   ? 40
         : isReady ? 12
                   : 0,
         &Walker::closeScanGate},
        {needsAccess ? 12 : 0, &Walker::closeDialogGate},
        {canGoOn ? 40 : 0, &Walker::closeProbeGates},
        {4 + 2 * waiting, &Walker::openGate},
        {isDeleting && waiting > 0 ? 160 : 0, &Walker::letOneRemovalThrough},
        {2, &Walker::changeRefusal},
        {(store.isAway && isSummary) || isDeleting ? 30 : 2, &Walker::moveStore},
        {store.isAway || !store.isOpen ? 10 : 0, &Walker::moveStore},
        {3, &Walker::changeSettings},
        {20, &Walker::passSaveDelay},
        {1, &Walker::passDays},
        {4, &Walker::endClip},
        {store.isOpen ? 2 : 10, &Walker::startAgain},
        {1, &Walker::saveAndStartAgain},
    };
}

void Walker::doEvent()
{
    const auto all = choices();
    std::vector<int> weights;
    for (const auto &choice : all) {
        weights.push_back(choice.weight);
    }
    (this->*all[m_dice.weighted(weights)].event)();
}

void Walker::note(const QString &event)
{
    m_trail.append(event);
    if (m_trail.size() > lengthOfTrail) {
        m_trail.removeFirst();
    }
}

QString Walker::wrong()
{
    if (!m_controller.settle()) {
        return u"it does not come to rest"_s;
    }
    m_model.settle();
    m_trail.last() += u" -> "_s + m_model.state().phase.text();
    QStringList offences;
    m_offences.swap(offences);
    offences += m_controller.watch().takeOffences();
    offences += m_world.takeOffences();
    return offences.join(u'\n') +
           Portrait::difference(m_controller.portrait(), m_model.portrait()) + wrongFiles() +
           wrongPictures();
}

QString Walker::wrongFiles() const
{
    const auto facts = m_world.facts();
    if (facts == m_model.world) {
        return {};
    }
    QString text = u"the world is another one\n"_s;
    for (size_t card = 0; card < facts.cards.size(); ++card) {
        for (const auto &[file, number] : m_model.world.cards[card].files) {
            if (!facts.cards[card].files.contains(file)) {
                text += u"  without %1\n"_s.arg(QString::fromStdString(file));
            }
        }
        for (const auto &[file, number] : facts.cards[card].files) {
            if (!m_model.world.cards[card].files.contains(file)) {
                text += u"  with %1\n"_s.arg(QString::fromStdString(file));
            }
        }
    }
    return text;
}

QString Walker::wrongStore() const
{
    static const std::array uuids = {u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"G"_s,
                                     u"E"_s, u"a"_s, u"b"_s, u"c"_s};
    const SessionStore store(m_controller.sessionFolder());
    for (const auto &uuid : uuids) {
        const auto snapshot = store.load(uuid);
        std::optional<ModelStore::Snapshot> seen;
        if (snapshot) {
            seen = {.uuid = snapshot->volumeUUID,
                    .inventoryHash = snapshot->inventoryHash,
                    .rejected = {snapshot->rejectedIDs.begin(), snapshot->rejectedIDs.end()},
                    .index = snapshot->currentIndex,
                    .savedAt = snapshot->savedAt.toSecsSinceEpoch()};
        }
        const auto kept = m_model.store.kept.find(uuid);
        const auto expected =
            kept != m_model.store.kept.end() ? std::optional(kept->second) : std::nullopt;
        if (seen != expected) {
            return u"what is kept for %1 is of %2 and should be of %3\n"_s.arg(uuid)
                .arg(seen ? seen->savedAt : 0)
                .arg(expected ? expected->savedAt : 0);
        }
    }
    return {};
}

/// No picture of another card, or of a file that was there before, stands for an item.
QString Walker::wrongPictures()
{
    if (!m_model.state().session || !app().session()) {
        return {};
    }
    for (const auto &item : m_model.state().session->items) {
        const auto &items = app().session()->items();
        const auto found = std::ranges::find(items, item.id, &MediaItem::id);
        if (found == items.end()) {
            continue;
        }
        const auto picture = app().pipeline()->cachedScreenImage(*found);
        const auto number = item.isVideo ? 0U : static_cast<unsigned>(item.shownNumber);
        if (!picture.isNull() && (picture.pixel(0, 0) & 0xffffffU) != number) {
            return u"%1 shows picture %2 in place of %3\n"_s.arg(item.id)
                .arg(picture.pixel(0, 0) & 0xffffffU)
                .arg(number);
        }
    }
    return {};
}

void Walker::countWhatIsSeen()
{
    const auto &state = m_model.state();
    const auto count = [this](bool isSeen, const QString &name) {
        if (isSeen) {
            ++m_seen[name];
        }
    };
    ++m_seen[state.phase.text().section(u',', 0, 0)];
    count(m_model.is(Kind::Summary) && state.phase.failed > 0, u"summary with failures"_s);
    count(m_model.is(Kind::Summary) && state.phase.failed == 0, u"summary without failures"_s);
    count(m_model.is(Kind::Deleting) && state.phase.done > 0, u"deletion under way"_s);
    count(m_model.is(Kind::CardReady) && state.phase.resumable, u"resumable"_s);
    count(state.player.has_value(), u"player"_s);
    count(state.reviewEnlarged, u"enlarged"_s);
    count(state.confirmingDelete, u"confirming"_s);
    count(state.cardIsReadOnly, u"write-protected"_s);
    count(m_model.store.isAway, u"store away"_s);
    count(!m_model.store.isOpen, u"no store"_s);
    count(m_model.waitingCount() > 1, u"several threads wait"_s);
    count(m_model.hasRunBehindAnother(), u"a run behind another"_s);
    count(state.zoomed, u"zoomed"_s);
    count(state.session && !m_model.store.unsaved.empty(), u"unsaved"_s);
    count(m_model.openAccesses() > 0, u"access"_s);
}
