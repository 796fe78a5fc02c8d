// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "app/CardReads.h"
#include "app/KeyHandler.h"
#include "core/metadata/MetadataReading.h"
#include "core/store/SessionStore.h"
#include "platform/settings/UserDefaults.h"
#include "tests/app/FakeAccess.h"
#include "tests/app/FakeDialog.h"
#include "tests/app/FakePlayer.h"
#include "tests/app/FakeVolumes.h"
#include "tests/app/GatedFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <fstream>

/// The controller with real files in a temporary folder and fakes for the rest of the desktop.
class Workbench {
public:
    explicit Workbench(std::chrono::milliseconds patience = std::chrono::seconds(5))
        : m_root(std::filesystem::canonical(m_folder.path().toStdString()))
        , defaults(m_root / "defaults.ini")
        , pipeline({.picture =
                        [](const std::filesystem::path &url, auto) {
                            return QImage(widthOfPictures(url), 8, QImage::Format_RGB32);
                        },
                    .videoFrame = [](const auto &) { return QImage(); }})
        , cardReads(std::make_shared<NoMetadata>(), files)
    {
        services = {.volumes = &volumes,
                    .access = access,
                    .folderDialog = &dialog,
                    .fileManager = files,
                    .reader = std::make_shared<NoMetadata>(),
                    .defaults = &defaults,
                    .pipeline = &pipeline,
                    .cardReads = &cardReads,
                    .videoPlayer = [this](const auto &url) { return playerOf(url); },
                    .screenMaxPixel = [] { return 700; },
                    .sessionFolder = m_root / "sessions",
                    .now = [this] { return now; },
                    .saveDelay = std::chrono::milliseconds(20),
                    .patience = patience};
        begin();
    }

    ~Workbench()
    {
        files->scanIsHeld = false;
        files->letScansGo();
        files->removalIsHeld = false;
        access->letAllGo();
    }

    /// A controller that knows nothing but what is stored.
    void begin()
    {
        keys.reset();
        appState.reset(); // finishes its work first
        appState = std::make_unique<AppState>(services);
        keys = std::make_unique<KeyHandler>(*appState);
    }

    /// What is kept for a card that was mounted by mountCard().
    [[nodiscard]] std::optional<SessionSnapshot> stored(const std::string &name) const
    {
        return store().load(QString::fromStdString("UUID-" + name));
    }

    [[nodiscard]] SessionStore store() const { return SessionStore(m_root / "sessions"); }

    /// The made-up picture of a file tells by its width which file it is of.
    [[nodiscard]] static int widthOfPictures(const std::filesystem::path &url)
    {
        return url.extension() == ".JPG" ? 8 : 9;
    }

    /// Makes a folder that looks like a card, with the shots named; does not mount it.
    std::filesystem::path makeCard(const std::string &name,
                                   const std::vector<std::string> &shots) const
    {
        const auto root = m_root / name;
        for (const auto &shot : shots) {
            const auto file = root / "DCIM/100_FUJI" / shot;
            std::filesystem::create_directories(file.parent_path());
            std::ofstream(file) << "x";
        }
        std::filesystem::create_directories(root);
        return root;
    }

    std::filesystem::path mountCard(const std::string &name, const std::vector<std::string> &shots)
    {
        const auto root = makeCard(name, shots);
        volumes.mount(root, QString::fromStdString("UUID-" + name), QString::fromStdString(name));
        return root;
    }

    [[nodiscard]] static std::vector<std::string> shots(int count)
    {
        std::vector<std::string> names;
        for (int number = 1; number <= count; ++number) {
            names.push_back("DSCF000" + std::to_string(number) + ".JPG");
        }
        return names;
    }

    /// From nothing to culling @p count shots.
    void cull(int count)
    {
        appState->start();
        cullCard(count);
    }

    /// From a controller that has been started.
    void cullCard(int count)
    {
        cardRoot = mountCard("CARD", shots(count));
        QTRY_COMPARE(appState->phase(), Phase::cardReady(false));
        appState->startCulling();
        QTRY_COMPARE(appState->phase(), Phase::culling());
    }

    /// From nothing to a phase; from culling on, all of three shots are rejected. A scan or a
    /// deletion is held there.
    void reach(Phase::Kind kind)
    {
        using Kind = Phase::Kind;
        files->scanIsHeld = kind == Kind::Scanning;
        files->removalIsHeld = kind == Kind::Deleting;
        appState->start();
        if (kind == Kind::WaitingForCard) {
            return;
        }
        cardRoot = makeCard("CARD", kind == Kind::NoMedia ? std::vector<std::string>{"notes.txt"}
                                                          : shots(3));
        if (kind == Kind::NeedsAccess) {
            access->closed.insert(cardRoot);
        }
        mountCard("CARD", {});
        QTRY_COMPARE(appState->phase().kind,
                     kind == Kind::NeedsAccess ? Kind::NeedsAccess : Kind::CardReady);
        if (kind == Kind::NeedsAccess || kind == Kind::CardReady) {
            return;
        }
        appState->startCulling();
        if (kind == Kind::Scanning || kind == Kind::NoMedia) {
            QTRY_COMPARE(appState->phase().kind, kind);
            return;
        }
        QTRY_COMPARE(appState->phase(), Phase::culling());
        rejectAll();
        if (kind >= Kind::Review) {
            appState->finishCulling();
        }
        if (kind >= Kind::Deleting) {
            appState->performDelete();
        }
        QTRY_COMPARE(appState->phase().kind, kind);
    }

    void rejectAll() const
    {
        for (const auto &item : appState->session()->items()) {
            appState->session()->toggle(item.id);
        }
        appState->recordChange();
    }

    bool press(quint16 keyCode) const { return keys->handleKey({.keyCode = keyCode}); }

    bool press(const QString &chars) const { return keys->handleKey({.chars = chars}); }

    [[nodiscard]] bool has(const std::string &shot) const
    {
        return std::filesystem::exists(cardRoot / "DCIM/100_FUJI" / shot);
    }

private:
    class NoMetadata final : public MetadataReading {
    public:
        std::optional<ImageMetadata> read(const std::filesystem::path &) const override
        {
            return std::nullopt;
        }
    };

    [[nodiscard]] std::unique_ptr<VideoPlayer> playerOf(const std::filesystem::path &url)
    {
        return std::make_unique<FakePlayer>(player, url);
    }

    QTemporaryDir m_folder;
    std::filesystem::path m_root;

public:
    std::shared_ptr<FakeAccess> access = std::make_shared<FakeAccess>();
    std::shared_ptr<GatedFiles> files = std::make_shared<GatedFiles>();
    FakeDialog dialog;
    FakeVolumes volumes;
    UserDefaults defaults;
    DecodePipeline pipeline;
    CardReads cardReads;
    FakePlayer::Log player;
    QDateTime now = QDateTime::currentDateTimeUtc();
    AppState::Services services;
    std::unique_ptr<AppState> appState;
    std::unique_ptr<KeyHandler> keys;
    std::filesystem::path cardRoot;
};
