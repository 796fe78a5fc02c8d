// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/SessionKeeper.h"
#include "core/model/MediaItem.h"
#include "platform/files/CardMark.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QThreadPool>

#include <memory>
#include <stop_token>

class FileManager;
class MetadataReading;
class RememberedMetadata;

/// Reads a card off the main thread: what is on it, and what is kept of its culling. Only the
/// newest run is told. Main thread only.
class ScanRun : public QObject {
    Q_OBJECT

public:
    struct Result {
        QList<MediaItem> items = {}; ///< in shooting order; none when the card went meanwhile
        std::shared_ptr<const CardMark> mark = {}; ///< of the card
        QString inventoryHash = {};                ///< of the items, if there are any
        SessionKeeper::Kept kept = {};
        /// What was read for the dates.
        std::shared_ptr<const RememberedMetadata> metadata = {};
    };

    ScanRun(std::shared_ptr<const FileManager> fileManager,
            std::shared_ptr<const MetadataReading> reader, SessionKeeper &sessions,
            QObject *parent = nullptr);
    /// Stops the run, and waits for the read in hand.
    ~ScanRun() override;

    /// Reads what is below @p volumeURL. Stops a run that is going on.
    void start(const std::filesystem::path &volumeURL, const QString &volumeUUID);
    void stop();

Q_SIGNALS:
    void finished(const ScanRun::Result &result);

private:
    QCoro::Task<> run(std::filesystem::path volumeURL, QString volumeUUID, std::stop_token stop);

    std::shared_ptr<const FileManager> m_fileManager;
    std::shared_ptr<const MetadataReading> m_reader;
    SessionKeeper &m_sessions;
    std::stop_source m_stop;
    qint64 m_run = 0; ///< counts runs and their ends
    QThreadPool m_pool{this};
};
