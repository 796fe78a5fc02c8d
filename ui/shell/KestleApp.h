// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "app/CardReads.h"
#include "app/KeyHandler.h"
#include "app/MenuCommands.h"
#include "app/Preferences.h"
#include "app/UpdateController.h"
#include "platform/access/PortalFolderDialog.h"
#include "platform/files/FileManager.h"
#include "platform/media/VideoPlayers.h"
#include "platform/settings/UserDefaults.h"
#include "ui/shell/JoinedVolumes.h"
#include "ui/shell/KeyMonitor.h"
#include "ui/shell/LateLibraries.h"
#include "ui/shell/SideWindow.h"
#include "ui/shell/WindowFolderDialog.h"
#include "ui/shell/WindowMemory.h"
#include "ui/translations/Translations.h"

#include <QPointer>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <optional>

/// The application: everything there is one of, built from the bottom up. Lives in main(), after
/// the QGuiApplication.
class KestleApp {
public:
    /// What may be other than usual.
    struct Extras {
        /// Offered as cards besides the desktop's own.
        std::vector<std::unique_ptr<MountedVolumes>> moreVolumes;
        /// In place of the system's.
        std::shared_ptr<FileManager> fileManager;
        /// In place of those that read the card's files.
        std::optional<DecodePipeline::Decoders> decoders;
        /// Makes what looks for newer versions, in place of what asks the build's feed.
        std::function<std::unique_ptr<UpdateSearch>()> makeSearch;
    };

    explicit KestleApp(Extras extras = {});
    ~KestleApp();
    KestleApp(const KestleApp &) = delete;
    KestleApp &operator=(const KestleApp &) = delete;

    /// Shows the main window and, the first time, begins to work. False when it cannot be made.
    [[nodiscard]] bool show();

    /// Brings the main window to the front, with the desktop's leave in @p token, if it gave one.
    void raise(const QString &token = {});

    /// Gives the application its names and its version; before the first KestleApp.
    static void introduce();

    /// By which desktops know the program: its desktop file, and its name on the session bus.
    static constexpr QStringView applicationId = u"org.kestle.Kestle";

    /// Waits for what must be finished before the program ends.
    void finish() { m_appState.finish(); }

    /// How long that may take: a file and its folder need not so long, unless their card hangs.
    static constexpr std::chrono::milliseconds patienceWithWork = std::chrono::seconds(30);

    /// How long a card may then hold up the end.
    static constexpr std::chrono::milliseconds patienceAtTheEnd = std::chrono::seconds(2);

    [[nodiscard]] AppState &appState() { return m_appState; }

    [[nodiscard]] QQuickWindow *window() const { return m_window; }

    /// Made when the main window is first shown, or asked for.
    [[nodiscard]] UpdateController &updateController();

private:
    [[nodiscard]] AppState::Services services();
    [[nodiscard]] KeyMonitor::Answers keyAnswers();
    [[nodiscard]] int screenMaxPixelOfWindow() const;
    [[nodiscard]] QString portalNameOfWindow() const;
    [[nodiscard]] FolderDialog *dialogWithoutPortal();
    [[nodiscard]] UpdateController::Services updateServices() const;
    [[nodiscard]] bool makeWindow();
    void makeSideWindows();
    void showUpdates();

    QPointer<QQuickWindow> m_window;
    Translations m_translations;
    JoinedVolumes m_volumes;
    UserDefaults m_defaults;
    DecodePipeline m_pipeline;
    std::shared_ptr<FileManager> m_fileManager;
    std::shared_ptr<const MetadataReading> m_reader;
    CardReads m_cardReads;
    WindowFolderDialog m_windowFolderDialog;
    std::unique_ptr<PortalFolderDialog> m_folderDialog;
    VideoPlayers m_videoPlayers;
    AppState m_appState;
    KeyHandler m_keyHandler;
    MenuCommands m_menuCommands;
    KeyMonitor m_keyMonitor;
    Preferences m_preferences;
    std::function<std::unique_ptr<UpdateSearch>()> m_makeSearch;
    std::unique_ptr<UpdateController> m_updates;
    WindowMemory m_windowMemory;
    LateLibraries m_lateLibraries;
    QQmlApplicationEngine m_engine;
    std::optional<SideWindow> m_settings;
    std::optional<SideWindow> m_about;
    std::optional<SideWindow> m_updateWindow;
};
