// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/threads/RenewablePool.h"

#include <QDir>
#include <QSemaphore>
#include <QTest>

#include <mutex>
#include <vector>

class RenewablePoolTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void workBringsItsResultFromAnotherThread()
    {
        RenewablePool pool(2);

        const auto thread = pool.run([] { return QThread::currentThread(); });

        QVERIFY(thread.result() != QThread::currentThread());
    }

    void workOfHigherPriorityComesFirst()
    {
        QSemaphore gate;
        std::mutex mutex;
        std::vector<int> order;
        RenewablePool pool(1);
        const auto first = hang(pool, gate);
        const auto note = [&](int number) {
            return [&, number] {
                const std::lock_guard lock(mutex);
                order.push_back(number);
                return number;
            };
        };
        auto low = pool.run(note(0), 0);
        auto high = pool.run(note(2), 2);
        auto middle = pool.run(note(1), 1);

        gate.release();

        QTRY_VERIFY(low.isFinished() && middle.isFinished() && high.isFinished());
        const std::lock_guard lock(mutex);
        QCOMPARE(order, (std::vector{2, 1, 0}));
    }

    void workThatHangsHoldsUpNothingAfterARenewal()
    {
        QSemaphore gate;
        RenewablePool pool(1);
        const auto hanging = hang(pool, gate);
        pool.renew();

        const auto next = pool.run([] { return 2; });

        QTRY_VERIFY(next.isFinished());
        QCOMPARE(next.result(), 2);
        QVERIFY(!hanging.isFinished());
        gate.release();
        QTRY_VERIFY(hanging.isFinished());
        QCOMPARE(hanging.result(), 1);
    }

    void workThatWaitedAtARenewalBringsNothing()
    {
        QSemaphore gate;
        std::atomic_bool hasRun = false;
        RenewablePool pool(1);
        const auto hanging = hang(pool, gate);
        const auto waiting = pool.run([&] {
            hasRun = true;
            return 3;
        });

        pool.renew();
        gate.release();

        QTRY_VERIFY(waiting.isFinished());
        QCOMPARE(waiting.result(), 0);
        QVERIFY(!hasRun);
    }

    void theEndWaitsForAllThatHasBegun()
    {
        std::atomic_int ended = 0;
        {
            RenewablePool pool(1);
            for (int number = 0; number < 3; ++number) {
                const auto begun = std::make_shared<QSemaphore>();
                (void)pool.run([&ended, begun] {
                    begun->release();
                    QThread::msleep(30);
                    return ++ended;
                });
                begun->acquire();
                pool.renew();
            }
        }
        QCOMPARE(ended, 3);
    }

    /// Idle threads of before end.
    void manyRenewalsLeaveNoThreads()
    {
        RenewablePool pool(2);
        const auto threads = [] {
            const QDir tasks(QStringLiteral("/proc/self/task"));
            return tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
        };
        const auto before = threads();

        for (int number = 0; number < 200; ++number) {
            const auto ended = std::make_shared<QSemaphore>();
            (void)pool.run([ended, number] {
                ended->release();
                return number;
            });
            ended->acquire();
            pool.renew();
        }

        QTRY_VERIFY(threads() <= before + 2);
    }

private:
    /// Keeps a thread of @p pool until @p gate is released.
    static QFuture<int> hang(RenewablePool &pool, QSemaphore &gate)
    {
        const auto begun = std::make_shared<QSemaphore>();
        auto work = pool.run([begun, &gate] {
            begun->release();
            gate.acquire();
            return 1;
        });
        begun->acquire();
        return work;
    }
};

QTEST_GUILESS_MAIN(RenewablePoolTest)
#include "RenewablePoolTest.moc"
