// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/card/DeleteResult.h"
#include "core/model/MediaItem.h"
#include "platform/files/CardMark.h"

#include <QCoroTask>
#include <QFuture>
#include <QList>
#include <QObject>
#include <QSet>
#include <QThreadPool>

#include <memory>
#include <stop_token>

class FileManager;

/// Deletes rejects from a card on a thread of its own. Main thread only.
///
/// A run that is stopped still finishes the file in hand and brings its folder onto the card, but
/// tells nothing any more; nobody waits for it but the destructor.
class DeletionRun : public QObject {
    Q_OBJECT

public:
    /// What a run is about; it comes back with the result, whatever the session is by then.
    struct Job {
        std::filesystem::path volumeURL = {};         ///< where the files of the card are
        std::shared_ptr<const CardMark> scanned = {}; ///< what the card must be known again by
        qint64 selection = 0;                         ///< of the card, as its owner counts them
        QList<MediaItem> rejects = {};
        QSet<QString> endangeredIDs = {}; ///< of rejects that no decision may be remembered by
        qint64 keptCount = 0;             ///< items that are not rejected

        [[nodiscard]] qint64 fileCount() const;
    };

    explicit DeletionRun(std::shared_ptr<const FileManager> fileManager, QObject *parent = nullptr);
    ~DeletionRun() override;

    /// Stops the run and waits for its end; not for those that were stopped before, whose cards may
    /// hang.
    void finish();

    /// Stops a run that is going on.
    void start(const Job &job);
    void stop();

Q_SIGNALS:
    /// Counts files; grows from one time to the next.
    void progressed(qint64 done, qint64 total);
    /// After the last progress.
    void finished(const DeletionRun::Job &job, const DeleteResult &result);

private:
    QCoro::Task<> run(Job job, std::stop_token stop);
    void tellProgress(qint64 run, qint64 done, qint64 total);

    std::shared_ptr<const FileManager> m_fileManager;
    std::stop_source m_stop;
    qint64 m_run = 0;             ///< counts runs and their ends; only the newest is told
    qint64 m_done = 0;            ///< files, as told last
    QFuture<DeleteResult> m_work; ///< of a run that is going on
    QThreadPool m_pool{this};
};
