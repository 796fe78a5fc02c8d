// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/QuitGuard.h"

#include <QTest>

#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;

class QuitGuardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anEndThatIsHeldUpComesAllTheSame()
    {
        const auto child = ::fork();
        if (child == 0) {
            QuitGuard guard;
            guard.arm(50ms, 7);
            for (;;) {
                ::pause(); // as a thread does that waits for a card
            }
        }

        QCOMPARE(endOf(child), 7);
    }

    void aNewPatienceTakesThePlaceOfTheOld()
    {
        const auto child = ::fork();
        if (child == 0) {
            QuitGuard guard;
            guard.arm(1h, 1);
            guard.arm(50ms, 7);
            for (;;) {
                ::pause();
            }
        }

        QCOMPARE(endOf(child), 7);
    }

    void anEndThatComesByItselfIsLeftAlone()
    {
        const auto child = ::fork();
        if (child == 0) {
            {
                QuitGuard guard;
                guard.arm(1h, 7);
            }
            ::_exit(3);
        }

        QCOMPARE(endOf(child), 3);
    }

    void withoutBeingArmedItDoesNothing()
    {
        const auto child = ::fork();
        if (child == 0) {
            {
                const QuitGuard guard;
            }
            ::_exit(3);
        }

        QCOMPARE(endOf(child), 3);
    }

private:
    static int endOf(pid_t child)
    {
        int status = 0;
        if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) {
            return -1;
        }
        return WEXITSTATUS(status);
    }
};

QTEST_GUILESS_MAIN(QuitGuardTest)
#include "QuitGuardTest.moc"
