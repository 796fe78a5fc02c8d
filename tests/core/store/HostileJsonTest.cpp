// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/SessionSnapshot.h"

#include <QElapsedTimer>
#include <QTest>

#include <fstream>
#include <string>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool measuresMemory = false; // the sanitizer's own would be measured
#else
constexpr bool measuresMemory = true;
#endif

/// Long enough to show in the memory of the process, short enough for a debug build.
constexpr qsizetype length = 4 * 1024 * 1024;

/// Distinct rejects of a few letters take the most: each is a text of its own in the set. A
/// document in memory takes more than twice as much for small objects.
constexpr qint64 mostMemoryPerByte = 16;

constexpr auto fields = "\"volumeUUID\":\"a\",\"inventoryHash\":\"b\",\"currentIndex\":3,"
                        "\"savedAt\":\"2026-11-15T20:51:02Z\"";

/// What the process took at most, in bytes, since it was last asked.
static qint64 peakMemory()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    qint64 peak = 0;
    while (std::getline(status, line)) {
        if (line.starts_with("VmHWM:")) {
            peak = std::stoll(line.substr(6)) * 1024;
        }
    }
    std::ofstream("/proc/self/clear_refs") << 5;
    return peak;
}

/// @p begin and @p end with as much of @p filling between them as there is room for.
static QByteArray filled(const QByteArray &begin, const QByteArray &filling, const QByteArray &end)
{
    return begin + filling.repeated((length - begin.size() - end.size()) / filling.size()) + end;
}

static QByteArray distinctRejects()
{
    QByteArray json = "{\"rejectedIDs\":[";
    json.reserve(length);
    for (int id = 0; json.size() < length - 1000; ++id) {
        json += '"' + QByteArray::number(id, 36) + "\",";
    }
    return json + "\"\"]," + fields + '}';
}

/// Files that somebody else put where snapshots are kept, built to be as costly as can be.
class HostileJsonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesBoundedMemoryAndTime_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<bool>("isSnapshot");
        const auto rest = QByteArray("\"rejectedIDs\":[],") + fields + '}';
        const auto inList = "0]," + rest;
        QTest::newRow("nested lists") << filled("", "[", "") << false;
        QTest::newRow("nested objects") << filled("", "{\"\":", "") << false;
        QTest::newRow("nested in a snapshot")
            << filled("{" + rest.chopped(1) + ",\"x\":", "[", "") << false;
        QTest::newRow("empty lists") << filled("{\"x\":[", "[],", inList) << true;
        QTest::newRow("numbers") << filled("{\"x\":[", "0,", inList) << true;
        QTest::newRow("objects") << filled("{\"x\":[", "{\"\":0},", inList) << true;
        QTest::newRow("other keys") << filled("{", "\"\":0,", rest) << true;
        QTest::newRow("one key") << filled("{", "\"rejectedIDs\":[],", rest) << true;
        QTest::newRow("long key") << filled("{\"", "x", "\":0," + rest) << true;
        QTest::newRow("long text") << filled("{\"x\":\"", "x", "\"," + rest) << true;
        QTest::newRow("long UUID")
            << filled("{" + rest.chopped(1) + ",\"volumeUUID\":\"", "x", "\"}") << true;
        QTest::newRow("long date")
            << filled("{" + rest.chopped(1) + ",\"savedAt\":\"", "1", "\"}") << false;
        QTest::newRow("text without end") << filled("{\"x\":\"", "x", "") << false;
        QTest::newRow("long number")
            << filled("{" + rest.chopped(1) + ",\"x\":", "1", "}") << false;
        QTest::newRow("long index")
            << filled("{" + rest.chopped(1) + ",\"currentIndex\":1.", "0", "}") << true;
        QTest::newRow("nothing but spaces") << filled("", " ", "") << false;
        QTest::newRow("one reject many times")
            << filled("{\"rejectedIDs\":[", "\"\",", "\"\"]," + QByteArray(fields) + '}') << true;
        QTest::newRow("many rejects") << distinctRejects() << true;
    }

    void takesBoundedMemoryAndTime()
    {
        QFETCH(const QByteArray, json);
        QFETCH(const bool, isSnapshot);
        peakMemory();
        const auto before = peakMemory();
        QElapsedTimer timer;
        timer.start();

        const auto snapshot = SessionSnapshot::fromJson(json);

        QCOMPARE(snapshot.has_value(), isSnapshot);
        QVERIFY2(timer.elapsed() < 60'000, "not in proportion to the length");
        const auto taken = peakMemory() - before;
        if (measuresMemory) {
            QVERIFY2(taken <= mostMemoryPerByte * length, qPrintable(QString::number(taken)));
        }
    }
};

QTEST_GUILESS_MAIN(HostileJsonTest)
#include "HostileJsonTest.moc"
