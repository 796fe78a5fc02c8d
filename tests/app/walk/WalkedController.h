// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "app/CardReads.h"
#include "app/KeyHandler.h"
#include "app/MenuCommands.h"
#include "core/metadata/MetadataReading.h"
#include "platform/settings/UserDefaults.h"
#include "tests/app/FakePlayer.h"
#include "tests/app/FakeVolumes.h"
#include "tests/app/walk/MemoryAccess.h"
#include "tests/app/walk/MemoryDialog.h"
#include "tests/app/walk/MemoryFiles.h"
#include "tests/app/walk/NotificationWatch.h"
#include "tests/app/walk/Portrait.h"
#include "tests/app/walk/SharedWorld.h"

#include <memory>

/// The controller in the world of a walk, with its keys and menus, and what is needed to make time
/// pass for it.
class WalkedController {
public:
    /// Keeps sessions and settings in @p folder.
    WalkedController(SharedWorld &world, const std::filesystem::path &folder);
    ~WalkedController();

    /// A new controller begins. Whatever waits at a gate is let go meanwhile, for the one that was
    /// there ends what it has begun.
    void begin();

    /// Until nothing goes on but what waits at a gate; false when that does not come about.
    [[nodiscard]] bool settle();

    void setSecondsSinceEpoch(qint64 seconds) { m_now = QDateTime::fromSecsSinceEpoch(seconds); }

    /// The delay of the save that waits passes.
    void passSaveDelay();

    /// Nothing can be saved or loaded as long as the folder of the sessions is away.
    void setStoreAway(bool away);
    [[nodiscard]] std::filesystem::path sessionFolder() const;

    [[nodiscard]] Portrait portrait() const;

    [[nodiscard]] AppState &app() { return *m_appState; }

    [[nodiscard]] KeyHandler &keys() { return *m_keys; }

    [[nodiscard]] MenuCommands &menu() { return *m_menu; }

    [[nodiscard]] NotificationWatch &watch() { return *m_watch; }

    FakeVolumes volumes;
    FakePlayer::Log player;
    UserDefaults defaults;

private:
    class NoMetadata;
    class EventCount;

    void end();
    [[nodiscard]] bool isAtWork() const;

    SharedWorld &m_world;
    std::filesystem::path m_folder;
    bool m_isStoreAway = false;
    QDateTime m_now;
    MemoryDialog m_dialog;
    std::shared_ptr<MemoryFiles> m_files;
    std::unique_ptr<EventCount> m_events;
    std::unique_ptr<DecodePipeline> m_pipeline;
    std::unique_ptr<CardReads> m_cardReads;
    std::unique_ptr<AppState> m_appState;
    std::unique_ptr<KeyHandler> m_keys;
    std::unique_ptr<MenuCommands> m_menu;
    std::unique_ptr<NotificationWatch> m_watch;
    QList<QThreadPool *> m_pools;
};
