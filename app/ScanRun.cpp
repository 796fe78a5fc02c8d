// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/ScanRun.h"

#include "core/card/CardScanner.h"
#include "core/metadata/RememberedMetadata.h"
#include "core/store/SessionStore.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrent/qtconcurrentrun.h>

/// A scan whose card hangs keeps its thread, and must hold up no other.
static constexpr int scansAtOnce = 32;

ScanRun::ScanRun(std::shared_ptr<const FileManager> fileManager,
                 std::shared_ptr<const MetadataReading> reader, SessionKeeper &sessions,
                 QObject *parent)
    : QObject(parent)
    , m_fileManager(std::move(fileManager))
    , m_reader(std::move(reader))
    , m_sessions(sessions)
{
    m_pool.setMaxThreadCount(scansAtOnce);
}

ScanRun::~ScanRun()
{
    stop();
    m_pool.waitForDone();
}

void ScanRun::start(const std::filesystem::path &volumeURL, const QString &volumeUUID)
{
    stop();
    m_stop = std::stop_source();
    run(volumeURL, volumeUUID, m_stop.get_token());
}

void ScanRun::stop()
{
    ++m_run;
    m_stop.request_stop();
}

QCoro::Task<> ScanRun::run(std::filesystem::path volumeURL, QString volumeUUID,
                           std::stop_token stop)
{
    const QPointer self(this);
    const auto number = m_run;
    Result result;
    // Of this run alone: one that still hangs on another card must not add to what is shown of it.
    const auto metadata = std::make_shared<const RememberedMetadata>(m_reader);
    result.metadata = metadata;
    const CardScan scan =
        co_await CardScanner::scanDetached(&m_pool, volumeURL, m_fileManager, metadata, stop);
    result.items = scan.items;
    result.mark = scan.mark;
    if (!self || number != m_run) {
        co_return;
    }
    if (!result.items.isEmpty()) {
        const auto hash = [items = result.items] { return SessionStore::inventoryHash(items); };
        result.inventoryHash = co_await QtConcurrent::run(&m_pool, hash);
        if (!self || number != m_run) {
            co_return;
        }
        result.kept = co_await m_sessions.load(volumeUUID);
        if (!self || number != m_run) {
            co_return;
        }
    }
    Q_EMIT finished(result);
}
