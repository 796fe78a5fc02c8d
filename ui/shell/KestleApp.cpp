// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/KestleApp.h"

#include "app/DirectAccess.h"
#include "app/PortalAccess.h"
#include "core/decode/JoinedDecodes.h"
#include "core/decode/ScreenMaxPixel.h"
#include "core/metadata/ExifReader.h"
#include "core/store/SessionStore.h"
#include "platform/access/Sandbox.h"
#include "platform/files/PosixFileManager.h"
#include "platform/imageio/ImageSource.h"
#include "platform/media/PosterFrame.h"
#include "platform/updates/Updater.h"
#include "platform/volumes/UDisksVolumes.h"

#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QQuickStyle>
#include <QScreen>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

static std::vector<std::unique_ptr<MountedVolumes>>
withDesktopVolumes(std::vector<std::unique_ptr<MountedVolumes>> moreVolumes)
{
    std::vector<std::unique_ptr<MountedVolumes>> sources;
    sources.push_back(UDisksVolumes::onSystemBus());
    std::ranges::move(moreVolumes, std::back_inserter(sources));
    return sources;
}

/// As Main.qml has it.
static constexpr QSize minimumWindowSize(1000, 700);

static QImage pictureOf(const std::filesystem::path &url, std::optional<int> maxPixel)
{
    const auto source = ImageSource::open(url);
    return source ? source->image(maxPixel) : QImage();
}

static DecodePipeline::Decoders decoders()
{
    const auto frameOf = [](const std::filesystem::path &url) {
        return posterFrame(url, DecodePipeline::thumbnailMaxPixel);
    };
    const auto joined = std::make_shared<JoinedDecodes>(pictureOf);
    return {
        .picture = [joined](const std::filesystem::path &url,
                            std::optional<int> maxPixel) { return joined->picture(url, maxPixel); },
        .videoFrame = frameOf,
        .forget = [joined] { joined->forget(); }};
}

static std::shared_ptr<CardAccess> access(const std::shared_ptr<FileManager> &fileManager,
                                          UserDefaults &defaults)
{
    if (isSandboxed(qgetenv("SNAP"))) {
        return std::make_shared<PortalAccess>(fileManager, defaults,
                                              PortalAccess::standardDocuments());
    }
    return std::make_shared<DirectAccess>(fileManager, defaults);
}

static std::function<std::unique_ptr<UpdateSearch>()> searchesOf(std::optional<UpdateFeed> feed)
{
    if (!feed) {
        return {};
    }
    return [feed] {
        const auto caches = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
        Updater::Options options;
        options.folder =
            std::filesystem::path(QFile::encodeName(caches).toStdString()) / "Kestle/updates";
        return std::make_unique<Updater>(
            *feed, Updater::thisHost(QGuiApplication::applicationVersion()), options);
    };
}

KestleApp::KestleApp(Extras extras)
    : m_volumes(withDesktopVolumes(std::move(extras.moreVolumes)))
    , m_defaults(UserDefaults::standardFile())
    , m_pipeline(extras.decoders ? std::move(*extras.decoders) : decoders())
    , m_fileManager(extras.fileManager ? std::move(extras.fileManager)
                                       : std::make_shared<PosixFileManager>())
    , m_reader(std::make_shared<ExifReader>())
    , m_cardReads(m_reader, m_fileManager)
    , m_folderDialog(PortalFolderDialog::onSessionBus(dialogWithoutPortal()))
    , m_videoPlayers({})
    , m_appState(services())
    , m_keyHandler(m_appState)
    , m_menuCommands(m_appState, m_keyHandler)
    , m_keyMonitor(keyAnswers())
    , m_preferences(m_defaults)
    , m_makeSearch(extras.makeSearch ? std::move(extras.makeSearch)
                                     : searchesOf(UpdateFeed::builtIn()))
    , m_windowMemory(m_defaults)
{
    m_translations.install(QLocale::system().uiLanguages());
}

/// Inside a sandbox only the portal can grant anything.
FolderDialog *KestleApp::dialogWithoutPortal()
{
    return isSandboxed(qgetenv("SNAP")) ? nullptr : &m_windowFolderDialog;
}

KestleApp::~KestleApp()
{
    m_windowFolderDialog.setHome(nullptr, nullptr); // its dialog goes before the engine
}

AppState::Services KestleApp::services()
{
    return {.volumes = &m_volumes,
            .access = access(m_fileManager, m_defaults),
            .folderDialog = m_folderDialog.get(),
            .parentWindow = [this] { return portalNameOfWindow(); },
            .fileManager = m_fileManager,
            .reader = m_reader,
            .defaults = &m_defaults,
            .pipeline = &m_pipeline,
            .cardReads = &m_cardReads,
            .videoPlayer =
                [this](const std::filesystem::path &url) { return m_videoPlayers.player(url); },
            .screenMaxPixel = [this] { return screenMaxPixelOfWindow(); },
            .sessionFolder = SessionStore::defaultDirectory()};
}

KeyMonitor::Answers KestleApp::keyAnswers()
{
    const auto handleKey = [this](const KeyPress &key) {
        return m_keyHandler.handleKey(key) || m_keyHandler.pressDefaultButton(key);
    };
    return {.handleKey = handleKey,
            .isPopupOpen = [this] { return m_window && m_window->property("popupOpen").toBool(); },
            .situation = [this] { return m_keyHandler.situation(); }};
}

int KestleApp::screenMaxPixelOfWindow() const
{
    return screenMaxPixel(m_window ? m_window->screen() : QGuiApplication::primaryScreen());
}

/// By the rules of XDG Desktop Portal; the window of a Wayland session cannot be named so easily.
QString KestleApp::portalNameOfWindow() const
{
    const bool isX11 = m_window && QGuiApplication::platformName() == u"xcb"_s;
    return isX11 ? u"x11:"_s + QString::number(m_window->winId(), 16) : QString();
}

void KestleApp::introduce()
{
    QGuiApplication::setApplicationName(u"Kestle"_s);
    QGuiApplication::setApplicationDisplayName(u"Kestle"_s);
    QGuiApplication::setApplicationVersion(QStringLiteral(KESTLE_VERSION));
    QGuiApplication::setDesktopFileName(applicationId.toString());
}

bool KestleApp::show()
{
    if (m_window) {
        m_window->show();
        return true;
    }
    if (!makeWindow()) {
        return false;
    }
    m_windowFolderDialog.setHome(&m_engine, m_window);
    m_windowMemory.follow(m_window);
    m_lateLibraries.loadAfterFirstFrameOf(m_window);
    makeSideWindows();
    m_appState.start();
    m_keyMonitor.install(m_window);
    updateController().start();
    return true;
}

bool KestleApp::makeWindow()
{
    QQuickStyle::setStyle(u"Basic"_s);
    m_engine.addImportPath(u"qrc:/"_s);
    const auto *const screen = QGuiApplication::primaryScreen();
    auto properties =
        m_windowMemory.properties(screen ? screen->availableSize() : QSize(), minimumWindowSize);
    properties.insert(u"appState"_s, QVariant::fromValue(&m_appState));
    properties.insert(u"menuCommands"_s, QVariant::fromValue(&m_menuCommands));
    m_engine.setInitialProperties(properties);
    m_engine.load(QUrl(u"qrc:/Kestle/shell/Main.qml"_s));
    m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(0));
    return m_window != nullptr;
}

void KestleApp::makeSideWindows()
{
    const auto source = [](QStringView name) {
        return QUrl(u"qrc:/Kestle/shell/%1.qml"_s.arg(name));
    };
    m_about.emplace(m_engine, m_window, source(u"AboutWindow"));
    m_settings.emplace(m_engine, m_window, source(u"SettingsWindow"),
                       QVariantMap{{u"preferences"_s, QVariant::fromValue(&m_preferences)}});
    m_updateWindow.emplace(m_engine, m_window, source(u"UpdateWindow"),
                           QVariantMap{{u"updates"_s, QVariant::fromValue(&updateController())}});
    QObject::connect(&m_menuCommands, &MenuCommands::aboutWanted, m_window,
                     [this] { m_about->open(); });
    QObject::connect(&m_menuCommands, &MenuCommands::settingsWanted, m_window,
                     [this] { m_settings->open(); });
    QObject::connect(&m_menuCommands, &MenuCommands::updatesWanted, m_window, [this] {
        updateController().checkForUpdates();
        m_updateWindow->open();
    });
    QObject::connect(&updateController(), &UpdateController::changed, m_window,
                     [this] { showUpdates(); });
    QObject::connect(&m_appState, &AppState::phaseChanged, &updateController(),
                     &UpdateController::followPhase);
}

void KestleApp::showUpdates()
{
    if (!updateController().isShown()) {
        m_updateWindow->hide();
    } else if (!m_updateWindow->window() || !m_updateWindow->window()->isVisible()) {
        m_updateWindow->open(SideWindow::Focus::Left);
    }
}

UpdateController &KestleApp::updateController()
{
    if (!m_updates) {
        m_updates = std::make_unique<UpdateController>(m_defaults, updateServices());
    }
    return *m_updates;
}

UpdateController::Services KestleApp::updateServices() const
{
    return {.makeSearch = m_makeSearch,
            .phase = [this] { return m_appState.phase(); },
            .now = [] { return QDateTime::currentDateTimeUtc(); },
            .openAddress = [](const QUrl &address) { return QDesktopServices::openUrl(address); },
            .downloadFolder =
                [] { return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation); },
            .version = QGuiApplication::applicationVersion(),
            .applicationId = applicationId.toString()};
}

void KestleApp::raise(const QString &token)
{
    if (!m_window) {
        return;
    }
    if (!token.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8()); // where Qt's Wayland platform looks for it
    }
    if (m_window->visibility() == QWindow::Minimized) {
        // A minimised window does not say what it was before.
        m_windowMemory.isMaximised() ? m_window->showMaximized() : m_window->showNormal();
    }
    m_window->raise();
    m_window->requestActivate();
}
