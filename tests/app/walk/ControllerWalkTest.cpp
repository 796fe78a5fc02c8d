// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/Walker.h"

#include <QTest>

using namespace Qt::StringLiterals;

static constexpr quint64 walksPerPart = 40;

/// Random walks through the controller beside a model of its rules. The same seed walks the same
/// way; KESTLE_WALK_SEED in the environment walks one way alone.
class ControllerWalkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theControllerDoesWhatTheModelDoes_data()
    {
        QTest::addColumn<quint64>("first");

        const auto seed = qEnvironmentVariable("KESTLE_WALK_SEED");
        if (!seed.isEmpty()) {
            QTest::newRow("one walk") << seed.toULongLong();
            return;
        }
        QTest::newRow("first part") << 1 + 0 * walksPerPart;
        QTest::newRow("second part") << 1 + 1 * walksPerPart;
        QTest::newRow("third part") << 1 + 2 * walksPerPart;
        QTest::newRow("fourth part") << 1 + 3 * walksPerPart;
    }

    void theControllerDoesWhatTheModelDoes()
    {
        QFETCH(quint64, first);
        const bool isAlone = qEnvironmentVariableIsSet("KESTLE_WALK_SEED");
        const auto end = first + (isAlone ? 1 : walksPerPart);

        int total = 0;
        QMap<QString, int> seen;
        for (auto seed = first; seed < end; ++seed) {
            const int events = 300 + static_cast<int>(seed % 5) * 200;
            Walker walker(seed);
            const auto error = walker.walk(events);
            if (!error.isEmpty()) {
                qWarning().noquote() << error; // too long for the message of a check
                QFAIL(qPrintable(u"repeat it with KESTLE_WALK_SEED=%1"_s.arg(seed)));
            }
            total += events;
            for (auto entry = walker.seen().begin(); entry != walker.seen().end(); ++entry) {
                seen[entry.key()] += entry.value();
            }
        }

        if (!isAlone) {
            QVERIFY(total >= 28'000); // of which there are four
            checkThatAllIsSeen(seen);
        }
    }

private:
    /// Walks that never come to a place prove nothing about it.
    static void checkThatAllIsSeen(const QMap<QString, int> &seen)
    {
        static const QMap<QString, int> leastTimes = {
            {u"waitingForCard"_s, 1000},
            {u"needsAccess"_s, 1000},
            {u"scanning"_s, 300},
            {u"noMedia"_s, 1000},
            {u"cardReady"_s, 1000},
            {u"culling"_s, 3000},
            {u"review"_s, 2000},
            {u"deleting"_s, 100},
            {u"summary"_s, 500},
            {u"summary with failures"_s, 100},
            {u"summary without failures"_s, 100},
            {u"deletion under way"_s, 30},
            {u"a run behind another"_s, 1},
            {u"resumable"_s, 500},
            {u"player"_s, 200},
            {u"zoomed"_s, 200},
            {u"enlarged"_s, 200},
            {u"confirming"_s, 500},
            {u"write-protected"_s, 500},
            {u"access"_s, 200},
            {u"store away"_s, 500},
            {u"no store"_s, 200},
            {u"unsaved"_s, 200},
            {u"several threads wait"_s, 500},
        };
        for (auto place = leastTimes.begin(); place != leastTimes.end(); ++place) {
            const auto times = seen.value(place.key());
            QVERIFY2(times >= place.value(),
                     qPrintable(u"%1: %2 times"_s.arg(place.key()).arg(times)));
        }
    }
};

QTEST_GUILESS_MAIN(ControllerWalkTest)
#include "ControllerWalkTest.moc"
