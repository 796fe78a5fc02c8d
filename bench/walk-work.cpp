// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// walk-work CARD KEYS-PER-SECOND STEPS: walks through the card in the real window with a key held,
// and prints how soon each item was shown sharply. bench/walk runs it.

#include "bench/KeyWalk.h"
#include "bench/OneVolume.h"

#include <QGuiApplication>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

static void print(const KeyWalk &walk)
{
    const auto frame = std::chrono::nanoseconds(std::chrono::seconds(1)) / 60;
    const auto steps = walk.steps();
    std::vector<double> late;
    int inTime = 0;
    int passed = 0;
    for (const auto &step : steps) {
        const auto took = step.shown - step.pressed;
        if (step.shown == KeyWalk::Clock::time_point()) {
            ++passed;
        } else if (took <= frame) {
            ++inTime;
        } else {
            late.push_back(std::chrono::duration<double, std::milli>(took).count());
        }
    }
    std::ranges::sort(late);
    const auto at = [&](double share) {
        return late.empty() ? 0 : late[static_cast<size_t>(share * double(late.size() - 1))];
    };
    const auto share = [&](int count) { return 100.0 * count / double(steps.size()); };
    std::printf("%zu steps: sharp within a frame %.1f %%, later %.1f %% (median %.0f ms, "
                "9 of 10 within %.0f ms), passed before %.1f %%; main thread's longest block "
                "%.1f ms\n",
                steps.size(), share(inTime), share(int(late.size())), at(0.5), at(0.9),
                share(passed), walk.longestBlock());
}

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fputs("usage: walk-work CARD KEYS-PER-SECOND STEPS\n", stderr);
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true);
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Kestle"));
    KestleApp::Extras extras;
    extras.moreVolumes.push_back(std::make_unique<OneVolume>(argv[1]));
    KestleApp kestle(std::move(extras));
    if (!kestle.show()) {
        return 1;
    }
    KeyWalk walk(kestle, std::atoi(argv[2]), 0, std::atoi(argv[3]), &QCoreApplication::quit);
    walk.start();
    QGuiApplication::exec();
    print(walk);
    std::fflush(stdout);
    kestle.finish();
    return 0;
}
