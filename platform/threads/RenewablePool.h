// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFuture>
#include <QThreadPool>
#include <QtConcurrent/qtconcurrenttask.h>

#include <atomic>
#include <list>
#include <memory>
#include <type_traits>

/// A thread pool whose threads can be exchanged for new ones: work that never ends, as on a card
/// that hangs, keeps its threads, and must not hold up what comes after it. Belongs to one thread;
/// the work runs on others.
class RenewablePool {
public:
    /// @p threads run at once.
    explicit RenewablePool(int threads);
    RenewablePool(const RenewablePool &) = delete;
    RenewablePool &operator=(const RenewablePool &) = delete;
    /// Waits for all that has begun; what has not brings an empty result.
    ~RenewablePool();

    /// From now on work runs on threads of its own. What has been begun goes on beside it and
    /// brings its result; what has not, brings an empty one as soon as one of the old threads is
    /// free.
    void renew();

    /// The result of @p work, of higher @p priority before lower. The future never is cancelled.
    template<typename Work>
    [[nodiscard]] QFuture<std::invoke_result_t<Work>> run(Work work, int priority = 0)
    {
        using Result = std::invoke_result_t<Work>;
        auto guarded = [closed = m_lanes.back().closed, work = std::move(work)]() mutable {
            return *closed ? Result() : work();
        };
        return QtConcurrent::task(std::move(guarded))
            .onThreadPool(*m_lanes.back().pool)
            .withPriority(priority)
            .spawn();
    }

private:
    struct Lane {
        std::shared_ptr<std::atomic_bool> closed;
        std::unique_ptr<QThreadPool> pool;
    };

    void addLane();

    int m_threads;
    std::list<Lane> m_lanes; ///< the last takes work; those before have some that has not ended
};
