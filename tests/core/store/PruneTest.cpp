// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/SyncedFolder.h"
#include "tests/core/store/TemporaryStore.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

/// What SessionStore::prune removes, and what it leaves.
class PruneTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<TemporaryStore>(); }

    void pruneRemovesWhatIsOlder_data()
    {
        QTest::addColumn<int>("days");
        QTest::addColumn<QDateTime>("savedAt");
        QTest::addColumn<bool>("stays");
        QTest::newRow("29 days") << 30 << noon.addDays(-29) << true;
        QTest::newRow("30 days exactly") << 30 << noon.addDays(-30) << true;
        QTest::newRow("30 days and a second") << 30 << noon.addDays(-30).addSecs(-1) << false;
        QTest::newRow("31 days") << 30 << noon.addDays(-31) << false;
        QTest::newRow("now, no days") << 0 << noon << true;
        QTest::newRow("a second ago, no days") << 0 << noon.addSecs(-1) << false;
        QTest::newRow("in the future") << 30 << noon.addDays(400) << true;
        QTest::newRow("in the future, days below zero") << -1 << noon.addSecs(3600) << false;
        QTest::newRow("first year")
            << 30 << QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC) << false;
        QTest::newRow("more days than there are")
            << std::numeric_limits<int>::max() << noon.addYears(-1000) << true;
    }

    void pruneRemovesWhatIsOlder()
    {
        QFETCH(const int, days);
        QFETCH(const QDateTime, savedAt);
        QFETCH(const bool, stays);
        auto snapshot = sample();
        snapshot.savedAt = savedAt;
        store().save(snapshot);

        store().prune(days, noon);

        QCOMPARE(store().load(u"ABC"_s).has_value(), stays);
    }

    void pruneComparesWithinTheSecond()
    {
        store().save(sample());

        store().prune(30, noon.addDays(30).addMSecs(1));

        QVERIFY(!store().load(u"ABC"_s));
    }

    void pruneDoesNotDependOnTheTimeZoneOfNow()
    {
        store().save(sample());

        store().prune(30, noon.addDays(30).toOffsetFromUtc(14 * 3600));

        QVERIFY(store().load(u"ABC"_s));
    }

    void pruneRemovesWhatIsNotASnapshot_data() { TemporaryStore::addDamageRows(); }

    void pruneRemovesWhatIsNotASnapshot()
    {
        QFETCH(const TemporaryStore::Make, make);
        store().save(sample(u"kept"_s));
        const auto file = store().fileURL(u"ABC"_s);
        make(file);
        const bool isFolder = fs::is_directory(fs::symlink_status(file));
        const auto before = m_folder->names();

        store().prune(30, noon);

        QCOMPARE(fs::exists(fs::symlink_status(file)), isFolder);
        QVERIFY(store().load(u"kept"_s));
        QCOMPARE(m_folder->names().size(), before.size() - (isFolder ? 0 : 1));
    }

    void pruneRemovesAnyNameThatEndsInJson()
    {
        for (const char *name : {"foreign.json", ".hidden.json", "a b.json", "\xFF.json"}) {
            m_folder->add(name, "{}");
        }

        store().prune(30, noon);

        QVERIFY(m_folder->names().isEmpty());
    }

    void pruneLeavesOtherNamesAlone()
    {
        const QStringList others = {u".json"_s,  u"json"_s,       u"notes.txt"_s, u"x.JSON"_s,
                                    u"x.Json"_s, u"x.json.bak"_s, u"x.json "_s,   u"x.json."_s,
                                    u"xjson"_s,  u"x.jsonl"_s,    u"x.json~"_s};
        for (const auto &name : others) {
            m_folder->add(name.toStdString(), "{}");
        }

        store().prune(30, noon);

        auto expected = others;
        expected.sort();
        QCOMPARE(m_folder->names(), expected);
    }

    void pruneStaysInItsFolder()
    {
        fs::create_directory(m_folder->directory() / "below");
        fs::create_directories(m_folder->directory() / "below.json");
        m_folder->add("below/x.json", "{}");
        m_folder->add("below.json/x.json", "{}");

        store().prune(30, noon);

        QVERIFY(m_folder->has("below/x.json"));
        QVERIFY(m_folder->has("below.json/x.json"));
    }

    void pruneRemovesALinkButNotWhatItLeadsTo()
    {
        auto old = sample();
        old.savedAt = noon.addDays(-31);
        const auto damaged = m_folder->add("damaged", "{}");
        const auto stale = m_folder->add("stale", old.toJson());
        fs::create_symlink(damaged, m_folder->directory() / "damaged.json");
        fs::create_symlink(stale, m_folder->directory() / "stale.json");
        fs::create_symlink("nowhere", m_folder->directory() / "nowhere.json");
        fs::create_symlink("/dev/zero", m_folder->directory() / "device.json");

        store().prune(30, noon);

        QCOMPARE(m_folder->names(), (QStringList{u"damaged"_s, u"stale"_s}));
    }

    void pruneKeepsALinkToAFreshSnapshot()
    {
        const auto fresh = m_folder->add("fresh", sample().toJson());
        fs::create_symlink(fresh, store().fileURL(u"ABC"_s));

        store().prune(30, noon);

        QVERIFY(store().load(u"ABC"_s) == sample());
    }

    void pruneGoesOnAfterARemovalThatFails()
    {
        for (int number = 0; number < 20; ++number) {
            const auto name = std::to_string(number) + ".json";
            if (number % 2 == 0) {
                fs::create_directory(m_folder->directory() / name); // unlink refuses it
            } else {
                m_folder->add(name, "{}");
            }
        }

        store().prune(30, noon);

        QCOMPARE(m_folder->names().size(), 10);
    }

    void pruneSweepsWhatKilledSavesLeft()
    {
        const auto stem = store().fileURL(u"ABC"_s).stem().native();
        auto old = sample();
        old.savedAt = noon.addDays(-31);
        m_folder->add(stem + ".aaaaaa.json", "");
        m_folder->add(stem + ".bbbbbb.json", sample().toJson().chopped(1));
        m_folder->add(stem + ".cccccc.json", old.toJson());

        store().prune(30, noon);

        QVERIFY(m_folder->names().isEmpty());
    }

    void pruneWaitsForTheNextStartWhileSomebodySaves()
    {
        m_folder->add("half.json", "{");
        {
            const SyncedFolder folder(m_folder->directory());
            folder.holdWithOthers(); // as a save does, in whatever process

            store().prune(30, noon);
            QVERIFY(m_folder->has("half.json"));
        }
        store().prune(30, noon);

        QVERIFY(!m_folder->has("half.json"));
    }

    void pruneWithoutAFolderIsSilent()
    {
        fs::remove(m_folder->directory());

        store().prune(30, noon);

        QVERIFY(!fs::exists(m_folder->directory()));
    }

private:
    [[nodiscard]] const SessionStore &store() const { return m_folder->store(); }

    std::unique_ptr<TemporaryStore> m_folder;
};

QTEST_GUILESS_MAIN(PruneTest)
#include "PruneTest.moc"
