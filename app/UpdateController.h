// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/Phase.h"
#include "app/UpdateSchedule.h"
#include "platform/updates/UpdateResult.h"

#include <QCoroTask>
#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <QUrl>

#include <functional>
#include <memory>

class UpdateSearch;

/// Looks for newer versions of Kestle, when the user asks and about once a day, and says what came
/// of it. What it does by itself is silent unless there is a version that the user has not been
/// told of, and never comes between him and a card that is read, culled or deleted from. Main
/// thread only.
class UpdateController : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool shown READ isShown NOTIFY changed)
    Q_PROPERTY(bool searching READ isSearching NOTIFY changed)
    Q_PROPERTY(QString headline READ headline NOTIFY changed)
    Q_PROPERTY(QString detail READ detail NOTIFY changed)
    Q_PROPERTY(qint64 fetched READ fetched NOTIFY changed)
    Q_PROPERTY(qint64 toFetch READ toFetch NOTIFY changed)
    Q_PROPERTY(QString notes READ notes NOTIFY changed)
    Q_PROPERTY(bool hasDownload READ hasDownload NOTIFY changed)
    Q_PROPERTY(bool canSave READ canSave NOTIFY changed)
    Q_PROPERTY(bool hasPage READ hasPage NOTIFY changed)
    Q_PROPERTY(bool hasSoftwareCentre READ hasSoftwareCentre NOTIFY changed)

public:
    struct Services {
        /// Makes what searches; none in a build that the system's software centre updates.
        std::function<std::unique_ptr<UpdateSearch>()> makeSearch;
        std::function<Phase()> phase;
        std::function<QDateTime()> now;
        /// Hands an address to the desktop; false when nobody takes it.
        std::function<bool(const QUrl &)> openAddress;
        std::function<QString()> downloadFolder;
        QString version; ///< that runs
        QString applicationId;
    };

    UpdateController(UserDefaults &defaults, Services services, QObject *parent = nullptr);
    ~UpdateController() override;

    /// Searches from time to time from now on.
    void start();

    /// What the user asks for.
    Q_INVOKABLE void checkForUpdates();
    /// Nothing more is to be seen; a search that the user asked for is broken off.
    Q_INVOKABLE void dismiss();
    /// Once; nothing happens while that goes on, or when it was done.
    Q_INVOKABLE void saveDownload();
    Q_INVOKABLE void openPage();
    Q_INVOKABLE void openSoftwareCentre();

    /// Whether the user is to see the result, or that it is coming.
    [[nodiscard]] bool isShown() const { return m_view.isShown && !m_isSetAside; }

    [[nodiscard]] bool isSearching() const { return m_view.isSearching; }

    [[nodiscard]] QString headline() const { return m_view.headline; }

    [[nodiscard]] QString detail() const { return m_view.detail; }

    /// How much of what has to be checked is there, in bytes; 0 of 0 when nothing is fetched.
    [[nodiscard]] qint64 fetched() const { return m_view.fetched; }

    [[nodiscard]] qint64 toFetch() const { return m_view.toFetch; }

    /// Plain text.
    [[nodiscard]] QString notes() const { return m_result.notes; }

    [[nodiscard]] bool hasDownload() const { return m_result.download != nullptr; }

    /// Whether there is a download that is neither saved nor being saved.
    [[nodiscard]] bool canSave() const { return hasDownload() && !m_isSaving && !m_view.isSaved; }

    [[nodiscard]] bool hasPage() const { return !m_result.page.isEmpty(); }

    [[nodiscard]] bool hasSoftwareCentre() const { return m_view.hasSoftwareCentre; }

public Q_SLOTS:
    /// Searches when it is time and the user is not at work.
    void searchIfDue();
    /// To be called when the phase changed: a search of our own is broken off when the user begins
    /// to work, does not count, and begins again when an hour has passed. A result of our own is
    /// set aside meanwhile.
    void followPhase();

Q_SIGNALS:
    void changed();

private:
    enum class Asker { Nobody, Schedule, User };

    struct View {
        bool isShown = false;
        bool isSearching = false;
        QString headline = {};
        QString detail = {};
        qint64 fetched = 0;
        qint64 toFetch = 0;
        bool hasSoftwareCentre = false;
        bool isSaved = false;
    };

    [[nodiscard]] bool isUserAtWork() const;
    [[nodiscard]] UpdateSearch &search();
    void takeProgress(qint64 fetched, qint64 whole);
    void take(const UpdateResult &result);
    void show(const View &view);
    [[nodiscard]] View viewOf(const UpdateResult &result) const;
    QCoro::Task<> save(UpdateResult result, QString folder);

    Services m_services;
    UpdateSchedule m_schedule;
    std::unique_ptr<UpdateSearch> m_search; ///< made for the first search
    Asker m_asker = Asker::Nobody;          ///< of the search that goes on
    QDateTime m_brokenOff;                  ///< when a search of our own last was
    View m_view;
    bool m_cameByItself = false; ///< what is shown
    bool m_isSetAside = false;   ///< until the user has done his work
    UpdateResult m_result;
    bool m_isSaving = false;
    QTimer m_timer;
    QThreadPool m_pool{this};
};
