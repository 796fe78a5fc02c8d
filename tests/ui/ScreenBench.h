// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "app/CardReads.h"
#include "app/KeyHandler.h"
#include "app/MenuCommands.h"
#include "platform/settings/UserDefaults.h"
#include "tests/app/FakeAccess.h"
#include "tests/app/FakeDialog.h"
#include "tests/app/FakeVolumes.h"
#include "tests/app/GatedFiles.h"
#include "tests/ui/MadeUpMetadata.h"
#include "tests/ui/MadeUpPictures.h"

#include <QTemporaryDir>
#include <QTest>

#include <fstream>

/// The controller with real files in a temporary folder, and made-up pictures and settings.
class ScreenBench {
public:
    /// A summary can be closed at once, where @p summaryStays does not say otherwise.
    explicit ScreenBench(std::chrono::milliseconds summaryStays = {})
        : m_root(std::filesystem::canonical(m_folder.path().toStdString()))
        , defaults(m_root / "defaults.ini")
        , pipeline(
              {.picture =
                   [this](const std::filesystem::path &url, std::optional<int> maxPixel) {
                       return pictures.picture(url, maxPixel);
                   },
               .videoFrame =
                   [this](const std::filesystem::path &url) { return pictures.picture(url, 256); }})
        , cardReads(metadata, files)
        , appState({.volumes = &volumes,
                    .access = access,
                    .folderDialog = &dialog,
                    .fileManager = files,
                    .reader = metadata,
                    .defaults = &defaults,
                    .pipeline = &pipeline,
                    .cardReads = &cardReads,
                    .videoPlayer =
                        [this](const std::filesystem::path &url) {
                            return makePlayer ? makePlayer(url) : nullptr;
                        },
                    .screenMaxPixel = [] { return 1200; }})
        , keys(appState, summaryStays)
        , menuCommands(appState, keys)
    {
    }

    ~ScreenBench() { letGo(); }

    void letGo()
    {
        files->scanIsHeld = false;
        files->removalIsHeld = false;
        files->sizesAreHeld = false;
        metadata->isHeld = false;
        pictures.letAllGo();
    }

    /// A folder that looks like a card with the files named, 100 bytes each; not mounted.
    std::filesystem::path mountLater(const std::string &name,
                                     const std::vector<std::string> &shots) const
    {
        const auto root = m_root / name;
        std::filesystem::create_directories(root);
        for (const auto &shot : shots) {
            const auto file = root / "DCIM/100_FUJI" / shot;
            std::filesystem::create_directories(file.parent_path());
            std::ofstream(file) << std::string(100, 'x');
        }
        return root;
    }

    std::filesystem::path mountCard(const std::string &name, const std::vector<std::string> &shots)
    {
        const auto root = mountLater(name, shots);
        volumes.mount(root, QString::fromStdString("UUID-" + name), QString::fromStdString(name));
        return root;
    }

    [[nodiscard]] static std::vector<std::string> shots(int count)
    {
        std::vector<std::string> names;
        for (int number = 1; number <= count; ++number) {
            names.push_back(QString::asprintf("DSCF%04d.JPG", number).toStdString());
        }
        return names;
    }

    void cull(const std::vector<std::string> &shots)
    {
        appState.start();
        cardRoot = mountCard("CARD", shots);
        QTRY_COMPARE(appState.phase(), Phase::cardReady(false));
        appState.startCulling();
        QTRY_COMPARE(appState.phase(), Phase::culling());
    }

    bool press(quint16 keyCode) { return keys.handleKey({.keyCode = keyCode}); }

    bool press(const QString &chars) { return keys.handleKey({.chars = chars}); }

    [[nodiscard]] MediaItem item(qint64 index) const
    {
        return appState.session()->items().at(index);
    }

    [[nodiscard]] bool has(const std::string &shot) const
    {
        return std::filesystem::exists(cardRoot / "DCIM/100_FUJI" / shot);
    }

    /// Changes the file of the card in culling called @p shot, as far as the file system tells.
    void touch(const std::string &shot) const
    {
        const auto file = cardRoot / "DCIM/100_FUJI" / shot;
        std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) -
                                                   std::chrono::hours(1));
    }

private:
    QTemporaryDir m_folder;
    std::filesystem::path m_root;

public:
    std::shared_ptr<FakeAccess> access = std::make_shared<FakeAccess>();
    std::shared_ptr<GatedFiles> files = std::make_shared<GatedFiles>();
    std::shared_ptr<MadeUpMetadata> metadata = std::make_shared<MadeUpMetadata>();
    FakeDialog dialog;
    MadeUpPictures pictures;
    FakeVolumes volumes;
    UserDefaults defaults;
    DecodePipeline pipeline;
    CardReads cardReads;
    std::function<std::unique_ptr<VideoPlayer>(const std::filesystem::path &)> makePlayer;
    AppState appState;
    KeyHandler keys;
    MenuCommands menuCommands;
    std::filesystem::path cardRoot;
};
