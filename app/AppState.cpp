// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/AppState.h"

#include "app/CardAccess.h"
#include "app/CardReads.h"
#include "core/card/DeleteEngine.h"
#include "core/model/SharedNames.h"
#include "platform/checks/Precondition.h"
#include "platform/settings/UserDefaults.h"
#include "platform/volumes/MountedVolumes.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using Kind = Phase::Kind;

static constexpr int daysSessionsAreKept = 30;

AppState::AppState(Services services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
    , m_sessions(m_services.sessionFolder, m_services.saveDelay, this)
    , m_opener(m_services.access, m_services.fileManager, m_sessions, m_services.patience, this)
    , m_request(m_services.folderDialog, m_services.parentWindow, this)
    , m_scan(m_services.fileManager, m_services.reader, m_sessions, this)
    , m_deletion(m_services.fileManager, this)
{
    connect(&m_opener, &CardOpener::found, this, &AppState::openFound);
    connect(&m_opener, &CardOpener::answered, this, &AppState::openAnswered);
    connect(&m_opener, &CardOpener::granted, this, &AppState::openGranted);
    connect(&m_request, &AccessRequest::answered, this, &AppState::takeGrant);
    connect(&m_scan, &ScanRun::finished, this, &AppState::cullItems);
    connect(&m_deletion, &DeletionRun::progressed, this, &AppState::showProgress);
    connect(&m_deletion, &DeletionRun::finished, this, &AppState::finishDelete);
}

AppState::~AppState()
{
    finish();
}

void AppState::finish()
{
    m_volumeWatcher.reset();
    dropVideoPlayer(); // no sound goes on while others are waited for, and its card is let go
    m_scan.stop();
    m_deletion.finish();
    m_sessions.finish();
}

// What is observed

void AppState::beginOperation()
{
    if (m_operationDepth++ == 0) {
        m_before = m_now;
    }
}

void AppState::endOperation()
{
    if (--m_operationDepth == 0) {
        if (m_now.phase.kind != Kind::NeedsAccess) {
            m_request.cancel();
        }
        m_now.requestingAccess = m_request.isOpen();
        if (m_now.phase.kind != Kind::Summary) {
            m_now.failures.clear();
        }
        // The old session lives in it until everybody has been told.
        tellChangesSince(std::exchange(m_before, {}));
    }
}

void AppState::tellChangesSince(const Observed &before)
{
    const auto tell = [this](bool changed, void (AppState::*signal)()) {
        if (changed) {
            Q_EMIT(this->*signal)();
        }
    };
    tell(before.availableCards != m_now.availableCards, &AppState::availableCardsChanged);
    tell(before.card != m_now.card, &AppState::cardChanged);
    tell(before.cardIsReadOnly != m_now.cardIsReadOnly, &AppState::cardIsReadOnlyChanged);
    tell(before.requestingAccess != m_now.requestingAccess, &AppState::requestingAccessChanged);
    tell(before.currentCardIndex() != m_now.currentCardIndex(), &AppState::currentCardIndexChanged);
    tell(before.session != m_now.session, &AppState::sessionChanged);
    tell(before.changeCount != m_now.changeCount, &AppState::changeCountChanged);
    tell(before.zoomed != m_now.zoomed, &AppState::zoomedChanged);
    tell(before.zoomPan != m_now.zoomPan, &AppState::zoomPanChanged);
    tell(before.showExifBar != m_now.showExifBar, &AppState::showExifBarChanged);
    tell(before.reviewSelection != m_now.reviewSelection, &AppState::reviewSelectionChanged);
    tell(before.reviewEnlarged != m_now.reviewEnlarged, &AppState::reviewEnlargedChanged);
    tell(before.videoPlayer != m_now.videoPlayer, &AppState::videoPlayerChanged);
    tell(before.confirmingDelete != m_now.confirmingDelete, &AppState::confirmingDeleteChanged);
    tell(before.failures != m_now.failures, &AppState::failuresChanged);
    tell(before.phase != m_now.phase, &AppState::phaseChanged);
    tell(before.canSwitchCards() != m_now.canSwitchCards(), &AppState::canSwitchCardsChanged);
}

bool AppState::isCurrent(const CardInfo &card) const
{
    return m_now.card && isSameVolume(*m_now.card, card);
}

// Cards

void AppState::start()
{
    m_sessions.prune(daysSessionsAreKept, m_services.now());
    m_services.defaults->registerDefaults({{u"autoAdvanceOnReject"_s, true}});
    const auto report = [this](const std::vector<std::filesystem::path> &urls) {
        QMetaObject::invokeMethod(
            this, [this, urls] { volumesChanged(urls); }, Qt::QueuedConnection);
    };
    m_volumeWatcher = std::make_unique<VolumeWatcher>(*m_services.volumes, report);
}

void AppState::volumesChanged(const std::vector<std::filesystem::path> &urls)
{
    const Operation operation(*this);
    m_now.availableCards.clear();
    for (const auto &url : urls) {
        m_now.availableCards.append(CardInfo::of(*m_services.volumes, url));
    }
    if (const auto index = currentCardIndex(); index >= 0) {
        m_now.card = m_now.availableCards.at(index); // it may have been renamed
    } else if (m_now.card) {
        dropCard();
    }
    m_opener.forgetAllBut(m_now.availableCards);
    if (!m_now.card) {
        m_opener.findUsable(m_now.availableCards);
    }
}

void AppState::dropCard()
{
    m_opener.cancel();
    m_scan.stop();
    m_deletion.stop();
    dropVideoPlayer();
    m_access.reset();
    m_lastSnapshot = {};
    m_now.card.reset();
    m_request.cancel();
    m_now.cardIsReadOnly = false;
    dropSession();
    m_now.zoomed = false;
    m_now.reviewEnlarged = false;
    m_now.confirmingDelete = false;
    m_now.phase = Phase::waitingForCard();
    ++m_selection; // what still runs for the card finds that it is gone
}

void AppState::dropSession()
{
    m_now.session.reset();
    m_scannedCard.reset();
    if (m_services.cardReads) {
        m_services.cardReads->setRemembered(nullptr);
    }
}

void AppState::openFound(const CardProbe &probe)
{
    if (!m_now.card && m_now.indexOf(probe.card) >= 0) {
        const Operation operation(*this);
        openCard(probe);
    }
}

void AppState::openCard(const CardProbe &probe)
{
    m_now.card = m_now.availableCards.at(m_now.indexOf(probe.card));
    m_now.cardIsReadOnly = probe.readOnly;
    if (!probe.isAccessible()) {
        m_now.phase = Phase::needsAccess();
    } else if (!probe.hasDCIM) {
        m_now.phase = Phase::noMedia();
    } else {
        selectCard(probe);
    }
}

void AppState::selectCard(const CardProbe &probe)
{
    ++m_selection;
    m_lastSnapshot = {};
    m_access = probe.access;
    m_now.phase = Phase::cardReady(probe.hasSession);
}

void AppState::switchToCard(const CardInfo &card)
{
    if (canSwitchCards() && !isCurrent(card)) {
        m_opener.ask(card);
    }
}

void AppState::switchToCardAt(qint64 index)
{
    if (index >= 0 && index < m_now.availableCards.size()) {
        switchToCard(CardInfo(m_now.availableCards.at(index)));
    }
}

void AppState::cycleCard()
{
    if (!m_now.availableCards.isEmpty()) {
        switchToCardAt((currentCardIndex() + 1) % m_now.availableCards.size());
    }
}

void AppState::openAnswered(const CardProbe &probe)
{
    if (!canSwitchCards() || isCurrent(probe.card) || m_now.indexOf(probe.card) < 0) {
        return;
    }
    const Operation operation(*this);
    m_request.cancel();
    dropVideoPlayer();
    recordChange();
    m_access.reset();
    m_lastSnapshot = {};
    ++m_selection;
    dropSession();
    openCard(probe);
}

void AppState::grantAccess()
{
    if (m_now.card && m_now.phase.kind == Kind::NeedsAccess && !m_opener.isJudging(*m_now.card)) {
        const Operation operation(*this);
        m_opener.cancel(); // a wish for another card is older than this one
        m_request.ask(*m_now.card);
    }
}

void AppState::takeGrant(const CardInfo &card, const std::optional<std::filesystem::path> &folder)
{
    const Operation operation(*this);
    if (folder && isCurrent(card) && m_now.phase.kind == Kind::NeedsAccess) {
        m_opener.judgeGrant(*m_now.card, *folder);
    }
}

std::filesystem::path AppState::cardRoot() const
{
    return m_access ? m_access->root() : m_now.card->volumeURL;
}

void AppState::openGranted(const CardProbe &probe)
{
    if (!isCurrent(probe.card) || m_now.phase.kind != Kind::NeedsAccess) {
        return;
    }
    const Operation operation(*this);
    m_now.cardIsReadOnly = probe.readOnly;
    if (!probe.hasDCIM) {
        m_now.phase = Phase::noMedia();
        return;
    }
    m_services.access->saveBookmark(probe.access->url(), m_now.card->volumeUUID);
    selectCard(probe);
}

// Culling

void AppState::startCulling()
{
    if (!m_now.card || m_now.phase.kind != Kind::CardReady) {
        return;
    }
    const Operation operation(*this);
    m_opener.cancel(); // whoever begins with this card wishes for no other
    m_now.phase = Phase::scanning();
    m_scan.start(cardRoot(), m_now.card->volumeUUID);
}

void AppState::cullItems(const ScanRun::Result &scanned)
{
    if (m_now.phase.kind != Kind::Scanning) {
        return;
    }
    const Operation operation(*this);
    if (scanned.items.isEmpty()) {
        dropSession();
        m_now.phase = Phase::noMedia();
        return;
    }
    // Ids name the same files only while the files are the same: once A.HEIC is deleted, A.JPG may
    // come under its id, and must not be shown with its picture.
    if (!m_now.session || m_now.session->items() != scanned.items) {
        ++m_selection;
    }
    const auto &kept = scanned.kept;
    const bool storeIsBehind = !kept.snapshot || kept.lastSaveFailed;
    const auto decisions = storeIsBehind && m_lastSnapshot
                               ? m_lastSnapshot()
                               : kept.snapshot.value_or(SessionSnapshot());
    m_now.session =
        std::make_shared<CullSession>(scanned.items, decisions.rejectedIDs, decisions.currentIndex);
    m_inventoryHash = scanned.inventoryHash;
    m_scannedCard = scanned.mark;
    m_services.pipeline->beginSelection(m_selection);
    m_services.cardReads->beginSelection(m_selection);
    m_services.cardReads->setRemembered(scanned.metadata);
    m_now.phase = Phase::culling();
    prefetchCurrent();
}

SessionSnapshot AppState::snapshotOf(const QSet<QString> &rejectedIDs, qint64 currentIndex) const
{
    return {.volumeUUID = m_now.card->volumeUUID,
            .inventoryHash = m_inventoryHash,
            .rejectedIDs = rejectedIDs,
            .currentIndex = currentIndex,
            .savedAt = m_services.now()};
}

/// What it costs does not grow with the rejects, only with what is made of it later.
SessionKeeper::LateSnapshot AppState::snapshotOfSession() const
{
    auto snapshot = snapshotOf({}, m_now.session->currentIndex());
    return [snapshot = std::move(snapshot), items = m_now.session->items(),
            rejected = m_now.session->rejectedRows()] {
        auto whole = snapshot;
        whole.rejectedIDs = CullSession::idsOf(items, rejected);
        return whole;
    };
}

void AppState::recordChange()
{
    const Operation operation(*this);
    precondition(m_now.changeCount < std::numeric_limits<qint64>::max(), "changes can be counted");
    ++m_now.changeCount;
    const bool isSettled = isDeleting() || m_now.phase.kind == Kind::Summary;
    if (m_now.card && m_now.session && !isSettled) {
        m_lastSnapshot = snapshotOfSession();
        m_sessions.saveSoon(m_now.card->volumeUUID, m_lastSnapshot);
    }
}

void AppState::prefetchCurrent()
{
    if (m_now.session) {
        m_services.pipeline->prefetch(m_now.session->items(), m_now.session->currentIndex(),
                                      screenMaxPixel());
    }
}

void AppState::afterMove()
{
    const Operation operation(*this);
    dropVideoPlayer();
    m_now.zoomed = false;
    recordChange();
    prefetchCurrent();
}

void AppState::selectItem(qint64 index)
{
    if (m_now.session && m_now.phase.kind == Kind::Culling) {
        const Operation operation(*this);
        m_now.session->jump(index);
        afterMove();
    }
}

void AppState::undoDecision()
{
    const Operation operation(*this);
    if (!m_now.session) {
        return;
    }
    const auto previousIndex = m_now.session->currentIndex();
    const auto lookedAt = idLookedAt();
    if (!m_now.session->undo()) {
        return;
    }
    if (m_now.phase.kind == Kind::Review) {
        clampReviewSelection();
        m_now.reviewEnlarged = m_now.reviewEnlarged && m_now.session->hasRejects();
    }
    // In the review the current item is not what is looked at: an enlarged clip may play on.
    const bool hasMoved =
        m_now.phase.kind != Kind::Review && m_now.session->currentIndex() != previousIndex;
    if (hasMoved || idLookedAt() != lookedAt) {
        dropVideoPlayer();
    }
    recordChange();
    prefetchCurrent();
}

/// Of the item that is shown large: in the review the selected reject, else the current one.
QString AppState::idLookedAt() const
{
    if (m_now.phase.kind == Kind::Review) {
        const auto *reject = m_now.session->rejectedItem(m_now.reviewSelection);
        return reject ? reject->id : QString();
    }
    const auto *item = m_now.session->currentItem();
    return item ? item->id : QString();
}

void AppState::finishCulling()
{
    const Operation operation(*this);
    dropVideoPlayer();
    m_now.zoomed = false;
    m_now.reviewSelection = 0;
    m_now.reviewEnlarged = false;
    recordChange();
    m_now.phase = Phase::review();
}

void AppState::goToReview()
{
    if (m_now.session && !isDeleting()) {
        const Operation operation(*this);
        stayWithSession();
        m_now.confirmingDelete = false;
        finishCulling();
    }
}

/// Whoever works on this card wishes for no other, and for no other look at it.
void AppState::stayWithSession()
{
    m_opener.cancel();
    m_scan.stop();
}

void AppState::backToCulling()
{
    if (m_now.session && !isDeleting()) {
        const Operation operation(*this);
        stayWithSession();
        dropVideoPlayer();
        m_now.confirmingDelete = false;
        m_now.reviewEnlarged = false;
        m_now.phase = Phase::culling();
        prefetchCurrent();
    }
}

void AppState::backToCardScreen()
{
    if (!isDeleting()) {
        const Operation operation(*this);
        m_scan.stop();
        dropVideoPlayer();
        m_now.confirmingDelete = false;
        recordChange();
        m_now.phase = m_now.card ? Phase::cardReady(hasSession()) : Phase::waitingForCard();
    }
}

void AppState::leaveCulling()
{
    const Operation operation(*this);
    m_scan.stop();
    dropVideoPlayer();
    recordChange();
    m_now.phase = Phase::cardReady(true);
}

void AppState::rescueSelected()
{
    if (!m_now.session) {
        return;
    }
    const Operation operation(*this);
    if (const auto *reject = m_now.session->rejectedItem(m_now.reviewSelection)) {
        m_now.session->toggle(reject->id);
        recordChange();
        clampReviewSelection();
    }
}

void AppState::clampReviewSelection()
{
    const auto lastReject = std::max<qint64>(m_now.session->rejectedCount() - 1, 0);
    m_now.reviewSelection = std::min(m_now.reviewSelection, lastReject);
}

void AppState::closeEnlarged()
{
    const Operation operation(*this);
    dropVideoPlayer();
    m_now.reviewEnlarged = false;
}

// Clips

void AppState::playVideo(const MediaItem &item)
{
    if (!item.videoURL) {
        return;
    }
    const Operation operation(*this);
    dropVideoPlayer();
    if (m_services.videoPlayer) {
        m_now.videoPlayer = m_services.videoPlayer(*item.videoURL);
    }
    if (m_now.videoPlayer) {
        m_now.videoPlayer->play();
    }
}

void AppState::dropVideoPlayer()
{
    const Operation operation(*this);
    if (m_now.videoPlayer) {
        m_now.videoPlayer->pause();
        m_now.videoPlayer.reset();
    }
}

// Deletion

bool AppState::isDeleting() const
{
    return m_now.phase.kind == Kind::Deleting;
}

void AppState::performDelete()
{
    if (!m_now.session || !m_now.card || m_now.phase.kind != Kind::Review) {
        return;
    }
    const Operation operation(*this);
    const auto rejects = m_now.session->rejectedItems();
    const auto endangered =
        rejectsWithKeptHeirs(m_now.session->items(), m_now.session->rejectedIDs());
    const DeletionRun::Job job = {.volumeURL = cardRoot(),
                                  .scanned = m_scannedCard,
                                  .selection = m_selection,
                                  .rejects = rejects,
                                  .endangeredIDs = endangered,
                                  .keptCount = m_now.session->items().size() - rejects.size()};
    // If nobody hears of the result, what is kept must not make rejects of other files.
    if (!endangered.isEmpty()) {
        m_sessions.saveNow(
            snapshotOf(m_now.session->rejectedIDs() - endangered, m_now.session->currentIndex()));
    }
    dropVideoPlayer();
    m_now.confirmingDelete = false;
    m_now.phase = Phase::deleting(0, job.fileCount());
    m_deletion.start(job);
}

void AppState::showProgress(qint64 done, qint64 total)
{
    if (isDeleting()) {
        const Operation operation(*this);
        m_now.phase = Phase::deleting(done, total);
    }
}

void AppState::finishDelete(const DeletionRun::Job &job, const DeleteResult &result)
{
    if (job.selection != m_selection) {
        return; // the store belongs to another card by now
    }
    const Operation operation(*this);
    const auto failed = DeleteEngine::failedItemIDs(job.rejects, result);
    const auto failedIDs = QSet<QString>(failed.begin(), failed.end()) - job.endangeredIDs;
    if (!failedIDs.isEmpty()) {
        const auto left = snapshotOf(failedIDs, 0);
        m_lastSnapshot = [left] { return left; };
        m_sessions.saveNow(left);
    } else {
        m_lastSnapshot = {};
        m_sessions.forget(m_now.card->volumeUUID);
    }
    m_now.failures = failedFiles(result, job.volumeURL);
    m_now.phase = Phase::summary(static_cast<qint64>(result.deleted.size()),
                                 static_cast<qint64>(result.failures.size()), job.keptCount);
}

void AppState::closeSummary()
{
    if (m_now.phase.kind == Kind::Summary) {
        const Operation operation(*this);
        const bool hasFailures = m_now.phase.failedCount != 0;
        dropSession();
        m_now.phase = Phase::cardReady(hasFailures);
    }
}
