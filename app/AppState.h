// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AccessRequest.h"
#include "app/CardOpener.h"
#include "app/DeletionRun.h"
#include "app/Observed.h"
#include "app/ScanRun.h"
#include "app/VolumeWatcher.h"
#include "core/decode/DecodePipeline.h"
#include "core/model/CullSession.h"
#include "platform/media/VideoPlayer.h"

#include <QObject>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class CardAccess;
class CardReads;
class FileManager;
class FolderDialog;
class MetadataReading;
class MountedVolumes;
class UserDefaults;

/// The controller: which phase it is, which card is worked on, and every operation on it. Screens
/// read its state and call its operations; they decide nothing.
///
/// Main thread only. A property notifies only when its value really changed, and after the whole
/// operation is in place. Nothing that touches the card runs on the main thread.
class AppState : public QObject {
    Q_OBJECT
    Q_PROPERTY(Phase phase READ phase NOTIFY phaseChanged)
    Q_PROPERTY(QString cardName READ cardName NOTIFY cardChanged)
    Q_PROPERTY(bool cardIsReadOnly READ cardIsReadOnly NOTIFY cardIsReadOnlyChanged)
    Q_PROPERTY(bool requestingAccess READ requestingAccess NOTIFY requestingAccessChanged)
    Q_PROPERTY(QStringList availableCardNames READ availableCardNames NOTIFY availableCardsChanged)
    Q_PROPERTY(qint64 currentCardIndex READ currentCardIndex NOTIFY currentCardIndexChanged)
    Q_PROPERTY(bool canSwitchCards READ canSwitchCards NOTIFY canSwitchCardsChanged)
    Q_PROPERTY(bool hasSession READ hasSession NOTIFY sessionChanged)
    Q_PROPERTY(bool zoomed READ zoomed NOTIFY zoomedChanged)
    Q_PROPERTY(QSizeF zoomPan READ zoomPan WRITE setZoomPan NOTIFY zoomPanChanged)
    Q_PROPERTY(bool showExifBar READ showExifBar NOTIFY showExifBarChanged)
    Q_PROPERTY(qint64 reviewSelection READ reviewSelection WRITE setReviewSelection NOTIFY
                   reviewSelectionChanged)
    Q_PROPERTY(bool reviewEnlarged READ reviewEnlarged NOTIFY reviewEnlargedChanged)
    Q_PROPERTY(bool confirmingDelete READ confirmingDelete WRITE setConfirmingDelete NOTIFY
                   confirmingDeleteChanged)
    Q_PROPERTY(VideoPlayer *videoPlayer READ videoPlayer NOTIFY videoPlayerChanged)
    Q_PROPERTY(qint64 changeCount READ changeCount NOTIFY changeCountChanged)

public:
    /// What the controller works with; what it does not own outlives it.
    struct Services {
        MountedVolumes *volumes = nullptr;
        std::shared_ptr<CardAccess> access;
        FolderDialog *folderDialog = nullptr;
        std::function<QString()> parentWindow = {}; ///< as FolderDialog::Question has it
        std::shared_ptr<FileManager> fileManager;
        std::shared_ptr<const MetadataReading> reader;
        UserDefaults *defaults = nullptr;
        DecodePipeline *pipeline = nullptr;
        CardReads *cardReads = nullptr;
        /// Makes a player for a clip; without it, or when it makes none, clips do not play.
        std::function<std::unique_ptr<VideoPlayer>(const std::filesystem::path &)> videoPlayer = {};
        /// The longest edge of screen images, in pixels.
        std::function<int()> screenMaxPixel;
        /// Where sessions are kept; absent, decisions last as long as the card stays selected.
        std::optional<std::filesystem::path> sessionFolder = {};
        std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc;
        /// How long after the last of several changes they are saved.
        std::chrono::milliseconds saveDelay = std::chrono::milliseconds(300);
        /// How long a card may take to answer before others are opened in its place.
        std::chrono::milliseconds patience = std::chrono::seconds(5);
    };

    /// While one lives, changes are gathered; when the outermost ends, they are told.
    class Operation {
    public:
        explicit Operation(AppState &state)
            : m_state(state)
        {
            m_state.beginOperation();
        }

        Operation(const Operation &) = delete;
        Operation &operator=(const Operation &) = delete;

        ~Operation() { m_state.endOperation(); }

    private:
        AppState &m_state;
    };

    explicit AppState(Services services, QObject *parent = nullptr);
    /// Ends a scan early, and a deletion after the file in hand and its folder. Waits for the cards
    /// that are being asked or read, also for one that hangs.
    ~AppState() override;

    /// Stops all work, and waits for what must not be cut short: a deletion until the file in hand
    /// and its folder are done, and saves that have been begun. Nothing may be called afterwards.
    void finish();

    [[nodiscard]] const Phase &phase() const { return m_now.phase; }

    [[nodiscard]] const std::optional<CardInfo> &card() const { return m_now.card; }

    /// Empty without a card.
    [[nodiscard]] QString cardName() const { return m_now.cardName(); }

    /// Whether nothing can be deleted from the card, as far as it is known: its lock is set, or it
    /// is damaged.
    [[nodiscard]] bool cardIsReadOnly() const { return m_now.cardIsReadOnly; }

    /// Whether the user is being asked for access to the card.
    [[nodiscard]] bool requestingAccess() const { return m_now.requestingAccess; }

    /// Every mounted volume that could be a card, in the watcher's order.
    [[nodiscard]] const QList<CardInfo> &availableCards() const { return m_now.availableCards; }

    [[nodiscard]] QStringList availableCardNames() const { return m_now.availableCardNames(); }

    /// Index of the card among the available ones, -1 when it is not there.
    [[nodiscard]] qint64 currentCardIndex() const { return m_now.currentCardIndex(); }

    /// Whether another card can be chosen now: at least two, and not while one is worked on.
    [[nodiscard]] bool canSwitchCards() const { return m_now.canSwitchCards(); }

    /// Null without one. Lives until sessionChanged() has been told.
    [[nodiscard]] CullSession *session() const { return m_now.session.get(); }

    [[nodiscard]] bool hasSession() const { return m_now.session != nullptr; }

    [[nodiscard]] DecodePipeline *pipeline() const { return m_services.pipeline; }

    [[nodiscard]] CardReads *cardReads() const { return m_services.cardReads; }

    [[nodiscard]] UserDefaults *defaults() const { return m_services.defaults; }

    [[nodiscard]] int screenMaxPixel() const { return m_services.screenMaxPixel(); }

    /// Whether the current photo is shown at 100 %.
    [[nodiscard]] bool zoomed() const { return m_now.zoomed; }

    void setZoomed(bool zoomed) { set(m_now.zoomed, zoomed); }

    /// Offset of the zoomed picture in points.
    [[nodiscard]] QSizeF zoomPan() const { return m_now.zoomPan; }

    void setZoomPan(QSizeF pan) { set(m_now.zoomPan, pan); }

    [[nodiscard]] bool showExifBar() const { return m_now.showExifBar; }

    void setShowExifBar(bool show) { set(m_now.showExifBar, show); }

    /// Index into the rejected items.
    [[nodiscard]] qint64 reviewSelection() const { return m_now.reviewSelection; }

    void setReviewSelection(qint64 selection) { set(m_now.reviewSelection, selection); }

    [[nodiscard]] bool reviewEnlarged() const { return m_now.reviewEnlarged; }

    void setReviewEnlarged(bool enlarged) { set(m_now.reviewEnlarged, enlarged); }

    [[nodiscard]] bool confirmingDelete() const { return m_now.confirmingDelete; }

    void setConfirmingDelete(bool confirming) { set(m_now.confirmingDelete, confirming); }

    /// What the deletion left on the card, in the order of its files; empty but in the summary.
    [[nodiscard]] const QList<FailedFile> &failures() const { return m_now.failures; }

    /// The only player there is; null while nothing plays. Lives until videoPlayerChanged() has
    /// been told.
    [[nodiscard]] VideoPlayer *videoPlayer() const { return m_now.videoPlayer.get(); }

    /// Counts recorded changes of the session; whoever shows its content follows this.
    [[nodiscard]] qint64 changeCount() const { return m_now.changeCount; }

    /// Registers the defaults, forgets old sessions and begins to watch the volumes. Once.
    void start();
    void volumesChanged(const std::vector<std::filesystem::path> &urls);

    /// Ignored unless canSwitchCards(), and for the current card. Until the card has answered,
    /// nothing changes; the newest wish wins.
    void switchToCard(const CardInfo &card);
    Q_INVOKABLE void switchToCardAt(qint64 index);
    void cycleCard();
    Q_INVOKABLE void grantAccess();

    Q_INVOKABLE void startCulling();
    /// To be called after every change of the session, and when its screen is left. Decisions are
    /// saved a moment later, but not those that a deletion has settled.
    void recordChange();
    void prefetchCurrent();
    /// To be called after the current index changed.
    void afterMove();
    /// Makes the item @p index the current one.
    Q_INVOKABLE void selectItem(qint64 index);
    /// Takes the last decision back and shows its item.
    void undoDecision();
    void finishCulling();
    Q_INVOKABLE void goToReview();
    Q_INVOKABLE void backToCulling();
    Q_INVOKABLE void backToCardScreen();
    /// To the card screen, from where the session can be resumed.
    void leaveCulling();
    Q_INVOKABLE void rescueSelected();
    /// Back from the enlarged reject to the grid.
    void closeEnlarged();

    /// Plays the clip of @p item from its beginning, in place of another one.
    void playVideo(const MediaItem &item);
    /// Stops the player and lets go of its file.
    void dropVideoPlayer();

    /// Deletes the files of the rejects; only from the review.
    Q_INVOKABLE void performDelete();
    Q_INVOKABLE void closeSummary();

Q_SIGNALS:
    void phaseChanged();
    void cardChanged();
    void cardIsReadOnlyChanged();
    void requestingAccessChanged();
    void availableCardsChanged();
    void currentCardIndexChanged();
    void canSwitchCardsChanged();
    /// The session was replaced or dropped.
    void sessionChanged();
    void zoomedChanged();
    void zoomPanChanged();
    void showExifBarChanged();
    void reviewSelectionChanged();
    void reviewEnlargedChanged();
    void confirmingDeleteChanged();
    void failuresChanged();
    void videoPlayerChanged();
    void changeCountChanged();

private:
    template<typename Value>
    void set(Value &value, Value wanted)
    {
        const Operation operation(*this);
        value = wanted;
    }

    void beginOperation();
    void endOperation();
    void tellChangesSince(const Observed &before);

    [[nodiscard]] bool isCurrent(const CardInfo &card) const;
    void openFound(const CardProbe &probe);
    void openAnswered(const CardProbe &probe);
    void takeGrant(const CardInfo &card, const std::optional<std::filesystem::path> &folder);
    void openGranted(const CardProbe &probe);
    [[nodiscard]] std::filesystem::path cardRoot() const;
    void openCard(const CardProbe &probe);
    void selectCard(const CardProbe &probe);
    void dropCard();
    void dropSession();
    void cullItems(const ScanRun::Result &scanned);
    [[nodiscard]] SessionSnapshot snapshotOf(const QSet<QString> &rejectedIDs,
                                             qint64 currentIndex) const;
    [[nodiscard]] SessionKeeper::LateSnapshot snapshotOfSession() const;
    [[nodiscard]] QString idLookedAt() const;
    void clampReviewSelection();
    void stayWithSession();
    void showProgress(qint64 done, qint64 total);
    void finishDelete(const DeletionRun::Job &job, const DeleteResult &result);
    [[nodiscard]] bool isDeleting() const;

    Services m_services;
    std::unique_ptr<VolumeWatcher> m_volumeWatcher;
    SessionKeeper m_sessions;
    CardOpener m_opener;
    AccessRequest m_request;
    ScanRun m_scan;
    DeletionRun m_deletion;

    Observed m_now;
    Observed m_before; ///< as it was when the outermost operation began
    int m_operationDepth = 0;

    std::shared_ptr<const OpenAccess> m_access;    ///< to the card, where it needs one
    SessionKeeper::LateSnapshot m_lastSnapshot;    ///< of the current selection, if there is one
    QString m_inventoryHash;                       ///< of the session's items
    std::shared_ptr<const CardMark> m_scannedCard; ///< that the session's items are on
    qint64 m_selection = 0; ///< counts selections of a card; ids repeat between them
};
