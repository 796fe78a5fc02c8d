// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/VolumeWatcher.h"

#include "FakeVolumes.h"
#include "app/CardInfo.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Report = std::vector<std::filesystem::path>;
using Reports = std::vector<Report>;

static MountedVolume cardAt(const char *mountPoint)
{
    return {.mountPoint = mountPoint, .uuid = u"1"_s, .isRemovable = true};
}

class VolumeWatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_reports.clear(); }

    void reportsOnceBeforeItIsMade()
    {
        const FakeVolumes volumes({cardAt("/media/u/CARD")});

        const VolumeWatcher watcher(volumes, record());

        QCOMPARE(m_reports, (Reports{Report{"/media/u/CARD"}}));
    }

    void withNoCandidateTheReportIsEmpty()
    {
        const FakeVolumes volumes({{.mountPoint = "/"}});

        const VolumeWatcher watcher(volumes, record());

        QCOMPARE(m_reports, (Reports{Report{}}));
    }

    void keepsLocalVolumesThatAreRemovableOrEjectable_data()
    {
        QTest::addColumn<bool>("isLocal");
        QTest::addColumn<bool>("isRemovable");
        QTest::addColumn<bool>("isEjectable");
        QTest::addColumn<bool>("isKept");

        QTest::newRow("start-up disk") << true << false << false << false;
        QTest::newRow("built-in card slot") << true << true << false << true;
        QTest::newRow("disk image") << true << false << true << true;
        QTest::newRow("USB reader") << true << true << true << true;
        QTest::newRow("network volume") << false << false << false << false;
        QTest::newRow("removable network volume") << false << true << false << false;
        QTest::newRow("ejectable network volume") << false << false << true << false;
        QTest::newRow("removable and ejectable network volume") << false << true << true << false;
    }

    void keepsLocalVolumesThatAreRemovableOrEjectable()
    {
        QFETCH(bool, isLocal);
        QFETCH(bool, isRemovable);
        QFETCH(bool, isEjectable);
        QFETCH(bool, isKept);
        const FakeVolumes volumes({{.mountPoint = "/m",
                                    .isLocal = isLocal,
                                    .isRemovable = isRemovable,
                                    .isEjectable = isEjectable}});

        const VolumeWatcher watcher(volumes, record());

        QCOMPARE(m_reports, (Reports{isKept ? Report{"/m"} : Report{}}));
    }

    void aReadOnlyCardIsACandidateToo()
    {
        auto card = cardAt("/m");
        card.isReadOnly = true;
        const FakeVolumes volumes({card});

        const VolumeWatcher watcher(volumes, record());

        QCOMPARE(m_reports, (Reports{Report{"/m"}}));
    }

    void keepsTheOrderOfTheSource()
    {
        const FakeVolumes volumes(
            {cardAt("/m/z"), {.mountPoint = "/"}, cardAt("/m/a"), cardAt("/m/q")});

        const VolumeWatcher watcher(volumes, record());

        QCOMPARE(m_reports, (Reports{Report{"/m/z", "/m/a", "/m/q"}}));
    }

    void reportsAgainAfterEveryMountUnmountAndRename()
    {
        FakeVolumes volumes;
        const VolumeWatcher watcher(volumes, record());

        volumes.setVolumes({cardAt("/m/A")});
        volumes.setVolumes({cardAt("/m/A"), cardAt("/m/B")});
        volumes.setVolumes({cardAt("/m/B")});

        QCOMPARE(m_reports,
                 (Reports{Report{}, Report{"/m/A"}, Report{"/m/A", "/m/B"}, Report{"/m/B"}}));
    }

    void aRenamedCardIsReportedAtItsNewPlace()
    {
        FakeVolumes volumes({cardAt("/m/OLD")});
        const VolumeWatcher watcher(volumes, record());

        volumes.setVolumes({cardAt("/m/NEW")});

        QCOMPARE(m_reports, (Reports{Report{"/m/OLD"}, Report{"/m/NEW"}}));
    }

    void aCardMountedTwiceIsTwoCandidatesOfOneUUID()
    {
        const FakeVolumes volumes({cardAt("/m/A"), cardAt("/m/B")});

        const VolumeWatcher watcher(volumes, record());

        QCOMPARE(m_reports, (Reports{Report{"/m/A", "/m/B"}}));
        QCOMPARE(CardInfo::of(volumes, "/m/A").volumeUUID,
                 CardInfo::of(volumes, "/m/B").volumeUUID);
    }

    void refreshReportsWithoutAChange()
    {
        const FakeVolumes volumes({cardAt("/m/A")});
        VolumeWatcher watcher(volumes, record());

        watcher.refresh();

        QCOMPARE(m_reports, (Reports{Report{"/m/A"}, Report{"/m/A"}}));
    }

    void isSilentAfterItsEnd()
    {
        FakeVolumes volumes;
        {
            const VolumeWatcher watcher(volumes, record());
        }

        volumes.setVolumes({cardAt("/m/A")});

        QCOMPARE(m_reports.size(), 1u);
    }

private:
    VolumeWatcher::OnChange record()
    {
        return [this](const Report &report) { m_reports.push_back(report); };
    }

    Reports m_reports;
};

QTEST_GUILESS_MAIN(VolumeWatcherTest)
#include "VolumeWatcherTest.moc"
