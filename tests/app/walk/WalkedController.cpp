// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/WalkedController.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>
#include <QTimerEvent>

#include <fstream>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

static constexpr auto settlesWithin = 20s; // on a machine that is busy with other things, too

class WalkedController::NoMetadata final : public MetadataReading {
public:
    std::optional<ImageMetadata> read(const std::filesystem::path & /*url*/) const override
    {
        return std::nullopt;
    }
};

/// Counts the events that are delivered on the main thread.
class WalkedController::EventCount final : public QObject {
public:
    EventCount() { qApp->installEventFilter(this); }

    bool eventFilter(QObject * /*object*/, QEvent * /*event*/) override
    {
        ++count;
        return false;
    }

    qint64 count = 0;
};

WalkedController::WalkedController(SharedWorld &world, const std::filesystem::path &folder)
    : defaults(folder / "defaults.ini")
    , m_world(world)
    , m_folder(folder)
    , m_dialog(world)
    , m_files(std::make_shared<MemoryFiles>(world))
    , m_events(std::make_unique<EventCount>())
{
}

WalkedController::~WalkedController()
{
    end();
    QCoreApplication::processEvents(); // what was awaited goes on once more, and finds it gone
}

void WalkedController::end()
{
    // Its end waits for those at the gates: somebody else has to let them go.
    std::thread doorman([this] {
        std::this_thread::sleep_for(1ms);
        m_world.openAll();
    });
    m_watch.reset();
    m_menu.reset();
    m_keys.reset();
    m_pools.clear();
    m_appState.reset();
    doorman.join();
}

void WalkedController::begin()
{
    end();
    // Every picture tells by its only pixel which file it is of.
    const auto picture = [files = m_files](const std::filesystem::path &url, auto) {
        QImage image;
        if (const auto number = files->numberOf(url)) {
            image = QImage(1, 1, QImage::Format_RGB32);
            image.fill(QRgb(0xff000000U + static_cast<QRgb>(*number)));
        }
        return image;
    };
    const auto frame = [picture](const std::filesystem::path &url) { return picture(url, 0); };
    m_pipeline = std::make_unique<DecodePipeline>(
        DecodePipeline::Decoders{.picture = picture, .videoFrame = frame});
    m_cardReads = std::make_unique<CardReads>(std::make_shared<NoMetadata>(), m_files);
    m_appState = std::make_unique<AppState>(AppState::Services{
        .volumes = &volumes,
        .access = std::make_shared<MemoryAccess>(m_world),
        .folderDialog = &m_dialog,
        .fileManager = m_files,
        .reader = std::make_shared<NoMetadata>(),
        .defaults = &defaults,
        .pipeline = m_pipeline.get(),
        .cardReads = m_cardReads.get(),
        .videoPlayer =
            [this](const auto &url) { return std::make_unique<FakePlayer>(player, url); },
        .screenMaxPixel = [] { return 700; },
        .sessionFolder = m_folder / "sessions",
        .now = [this] { return m_now; },
        .saveDelay = 1h,
        .patience = 1h,
    });
    m_pools = m_appState->findChildren<QThreadPool *>();
    m_keys = std::make_unique<KeyHandler>(*m_appState);
    m_menu = std::make_unique<MenuCommands>(*m_appState, *m_keys);
    m_watch = std::make_unique<NotificationWatch>(*m_appState, *m_menu);
    m_appState->start();
}

bool WalkedController::isAtWork() const
{
    int active = 0;
    for (const auto *pool : m_pools) {
        active += pool->activeThreadCount();
    }
    return active != m_world.waitingCount();
}

bool WalkedController::settle()
{
    QElapsedTimer timer;
    timer.start();
    QCoreApplication::processEvents();
    m_world.release();
    // When nobody was at work before a round, and nothing was delivered in it, nothing was begun.
    for (bool isSettled = false; !isSettled;) {
        const auto count = m_events->count;
        const bool wasAtWork = isAtWork();
        QCoreApplication::processEvents();
        isSettled = !wasAtWork && m_events->count == count;
        if (isSettled && m_dialog.answer()) { // users are slower than cards
            isSettled = false;
        }
        if (wasAtWork) {
            QThread::usleep(10);
        }
        if (std::chrono::milliseconds(timer.elapsed()) > settlesWithin) {
            return false;
        }
    }
    return true;
}

void WalkedController::passSaveDelay()
{
    auto *timer = m_appState->findChild<QTimer *>();
    if (timer->isActive()) {
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
    }
}

void WalkedController::setStoreAway(bool away)
{
    if (m_isStoreAway == away) {
        return;
    }
    const auto sessions = m_folder / "sessions";
    if (away) {
        std::filesystem::rename(sessions, m_folder / "away");
        std::ofstream(sessions) << "Not a folder.";
    } else {
        std::filesystem::remove(sessions);
        std::filesystem::rename(m_folder / "away", sessions);
    }
    m_isStoreAway = away;
}

std::filesystem::path WalkedController::sessionFolder() const
{
    return m_folder / (m_isStoreAway ? "away" : "sessions");
}

// What can be seen

static QString textOf(const Phase &phase)
{
    using Kind = Phase::Kind;
    switch (phase.kind) {
    case Kind::WaitingForCard:
        return u"waitingForCard"_s;
    case Kind::NeedsAccess:
        return u"needsAccess"_s;
    case Kind::Scanning:
        return u"scanning"_s;
    case Kind::NoMedia:
        return u"noMedia"_s;
    case Kind::CardReady:
        return phase.resumableFlag ? u"cardReady, resumable"_s : u"cardReady"_s;
    case Kind::Culling:
        return u"culling"_s;
    case Kind::Review:
        return u"review"_s;
    case Kind::Deleting:
        return u"deleting, %1 of %2"_s.arg(phase.doneCount).arg(phase.totalCount);
    case Kind::Summary:
        return u"summary, %1 deleted, %2 failed, %3 kept"_s.arg(phase.deletedCount)
            .arg(phase.failedCount)
            .arg(phase.keptCount);
    }
    return {};
}

static QString textOf(const CardInfo &card)
{
    const auto place = QString::fromStdString(card.volumeURL.native());
    return u"%1|%2|%3"_s.arg(place, card.volumeUUID, card.name);
}

static QString textOf(const QList<CardInfo> &cards)
{
    QStringList texts;
    for (const auto &card : cards) {
        texts.append(textOf(card));
    }
    return texts.join(u", ");
}

static QString textOf(const QList<MediaItem> &items)
{
    QStringList texts;
    for (const auto &item : items) {
        QStringList files;
        for (const auto &file : item.allURLs()) {
            files.append(QString::fromStdString(file.native()));
        }
        texts.append(item.id + u" = "_s + files.join(u'+'));
    }
    return texts.join(u", ");
}

Portrait WalkedController::portrait() const
{
    const auto &app = *m_appState;
    const auto *session = app.session();
    const bool plays = app.videoPlayer();
    const auto url = QString::fromStdString(player.url.native());
    Portrait portrait;
    portrait.add("phase", textOf(app.phase()));
    portrait.add("card", app.card() ? textOf(*app.card()) : QString());
    portrait.add("cardIsReadOnly", app.cardIsReadOnly());
    portrait.add("requestingAccess", app.requestingAccess());
    portrait.add("availableCards", textOf(app.availableCards()));
    portrait.add("currentCardIndex", app.currentCardIndex());
    portrait.add("canSwitchCards", app.canSwitchCards());
    portrait.add("hasSession", app.hasSession());
    portrait.add("items", session ? textOf(session->items()) : QString());
    portrait.add("currentIndex", session ? session->currentIndex() : 0);
    portrait.add("rejects", session ? textOf(session->rejectedItems()) : QString());
    portrait.add("zoomed", app.zoomed());
    portrait.add("zoomPan", u"%1, %2"_s.arg(app.zoomPan().width()).arg(app.zoomPan().height()));
    portrait.add("showExifBar", app.showExifBar());
    portrait.add("reviewSelection", app.reviewSelection());
    portrait.add("reviewEnlarged", app.reviewEnlarged());
    portrait.add("confirmingDelete", app.confirmingDelete());
    portrait.add("videoPlayer", plays ? url : u""_s);
    portrait.add("rate", plays ? QString::number(player.rate) : u""_s);
    portrait.add("time", plays ? QString::number(player.time.count()) : u""_s);
    portrait.add("changeCount", app.changeCount());
    portrait.add("canUndo", m_menu->canUndo());
    portrait.add("canFinish", m_menu->canFinish());
    portrait.add("canGoBack", m_menu->canGoBack());
    portrait.add("a save waits", m_appState->findChild<QTimer *>()->isActive());
    portrait.add("open accesses", m_world.openAccesses());
    portrait.add("threads at gates", m_world.waitingCount());
    return portrait;
}
