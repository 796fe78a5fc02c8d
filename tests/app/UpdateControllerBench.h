// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/UpdateController.h"
#include "platform/settings/UserDefaults.h"
#include "tests/app/FakeSearch.h"

#include <QTemporaryDir>

#include <fstream>

/// An UpdateController whose clock, phase, desktop and searches are the test's.
class UpdateControllerBench {
protected:
    void begin()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_root = m_folder->path().toStdString();
        m_defaults = std::make_unique<UserDefaults>(m_root / "defaults.ini");
        m_phase = {};
        m_hasFeed = true;
        m_now = QDateTime({2026, 5, 1}, {12, 0}, Qt::UTC);
        m_searchesMade = 0;
        m_search = nullptr;
        m_opened.clear();
        m_desktopOpens = true;
        restart();
    }

    void enter(const Phase &phase)
    {
        m_phase = phase;
        m_controller->followPhase();
    }

    static qint64 hours(qint64 count) { return count * 60 * 60; }

    void letADayPass()
    {
        m_controller->searchIfDue();
        m_now = m_now.addDays(1);
    }

    void restart()
    {
        UpdateController::Services services{
            .makeSearch =
                [this] {
                    ++m_searchesMade;
                    auto search = std::make_unique<FakeSearch>();
                    m_search = search.get();
                    return search;
                },
            .phase = [this] { return m_phase; },
            .now = [this] { return m_now; },
            .openAddress =
                [this](const QUrl &address) {
                    m_opened.append(address);
                    return m_desktopOpens;
                },
            .downloadFolder = [this] { return QString::fromStdString(m_root / "Downloads"); },
            .version = QStringLiteral("1.0"),
            .applicationId = QStringLiteral("org.example.Kestle")};
        if (!m_hasFeed) {
            services.makeSearch = {};
        }
        m_controller = std::make_unique<UpdateController>(*m_defaults, services);
    }

    UpdateResult newVersion()
    {
        const auto file = m_root / "download-1";
        std::ofstream(file) << "the new version";
        return {.kind = UpdateResult::Kind::NewVersion,
                .version = QStringLiteral("2.0"),
                .shownVersion = QStringLiteral("Two"),
                .isFeedSigned = true,
                .notes = QStringLiteral("Faster"),
                .fileName = QStringLiteral("Kestle-2.0.tar.xz"),
                .download = std::make_shared<const std::filesystem::path>(file)};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::filesystem::path m_root;
    std::unique_ptr<UserDefaults> m_defaults;
    Phase m_phase;
    QDateTime m_now;
    bool m_hasFeed = true;
    bool m_desktopOpens = true;
    int m_searchesMade = 0;
    FakeSearch *m_search = nullptr;
    QList<QUrl> m_opened;
    std::unique_ptr<UpdateController> m_controller;
};
