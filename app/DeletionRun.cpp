// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/DeletionRun.h"

#include "core/card/DeleteEngine.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrent/qtconcurrentrun.h>

#include <atomic>

/// A run whose card hangs keeps its thread, and must hold up no other card.
static constexpr int runsAtOnce = 32;

qint64 DeletionRun::Job::fileCount() const
{
    return static_cast<qint64>(DeleteEngine::urls(rejects).size());
}

DeletionRun::DeletionRun(std::shared_ptr<const FileManager> fileManager, QObject *parent)
    : QObject(parent)
    , m_fileManager(std::move(fileManager))
{
    m_pool.setMaxThreadCount(runsAtOnce);
}

DeletionRun::~DeletionRun()
{
    stop();
    m_pool.waitForDone();
}

void DeletionRun::finish()
{
    auto work = m_work;
    stop();
    work.waitForFinished();
}

void DeletionRun::start(const Job &job)
{
    stop();
    m_stop = std::stop_source();
    m_done = 0;
    run(job, m_stop.get_token());
}

void DeletionRun::stop()
{
    ++m_run;
    m_stop.request_stop();
    m_work = {};
}

QCoro::Task<> DeletionRun::run(Job job, std::stop_token stop)
{
    const QPointer self(this);
    const auto number = m_run;
    // The work never outlives this object, which waits for it; what it posts may.
    // The small files of a quick card are gone faster than anybody can be told: what has not been
    // told yet is told as one.
    const auto untold = std::make_shared<std::atomic<qint64>>(0);
    const auto progress = [this, number, untold](qint64 done, qint64 total) {
        if (untold->exchange(done) == 0) {
            QMetaObject::invokeMethod(
                this, [=, this] { tellProgress(number, untold->exchange(0), total); },
                Qt::QueuedConnection);
        }
    };
    const auto work = [job, progress, stop, files = m_fileManager] {
        return DeleteEngine::deleteFiles(DeleteEngine::urls(job.rejects), job.volumeURL, *files,
                                         progress, stop, job.scanned.get());
    };
    m_work = QtConcurrent::run(&m_pool, work);
    const auto result = co_await QFuture(m_work);
    if (!self || number != m_run) {
        co_return;
    }
    m_work = {};
    ++m_run; // progress that is still on its way comes too late
    Q_EMIT finished(job, result);
}

void DeletionRun::tellProgress(qint64 run, qint64 done, qint64 total)
{
    if (run == m_run && done > m_done) {
        m_done = done;
        Q_EMIT progressed(done, total);
    }
}
