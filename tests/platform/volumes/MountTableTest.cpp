// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/volumes/MountTable.h"

#include <QTest>

#include <sys/stat.h>
#include <sys/sysmacros.h>

using namespace Qt::StringLiterals;

class MountTableTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsTheKernelsOrder()
    {
        const auto mounts =
            MountTable::parse("22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
                              "90 22 8:17 / /media/u/B rw - vfat /dev/sdb1 rw\n"
                              "91 22 8:33 / /media/u/A rw - exfat /dev/sdc1 rw\n");

        const QList<Mount> expected = {
            {"/", makedev(8, 1)}, {"/media/u/B", makedev(8, 17)}, {"/media/u/A", makedev(8, 33)}};
        QCOMPARE(mounts, expected);
    }

    void readsEscapesInMountPoints_data()
    {
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QByteArray>("meant");

        QTest::newRow("space") << "/media/MY\\040CARD"_ba
                               << "/media/MY CARD"_ba;
        QTest::newRow("tab, newline, backslash") << "/a\\011b\\012c\\134d"_ba
                                                 << "/a\tb\nc\\d"_ba;
        QTest::newRow("an escaped backslash starts no escape") << "/a\\134040"_ba
                                                               << "/a\\040"_ba;
        QTest::newRow("bytes that are not UTF-8") << "/caf\xE9\\351"_ba
                                                  << "/caf\xE9\xE9"_ba;
        QTest::newRow("escape cut short at the end") << "/a\\04"_ba
                                                     << "/a\\04"_ba;
        QTest::newRow("backslash at the end") << "/a\\"_ba
                                              << "/a\\"_ba;
        QTest::newRow("no octal digits") << "/a\\089"_ba
                                         << "/a\\089"_ba;
    }

    void readsEscapesInMountPoints()
    {
        QFETCH(QByteArray, written);
        QFETCH(QByteArray, meant);

        const auto mounts =
            MountTable::parse("90 22 8:17 / " + written + " rw - vfat /dev/sdb1 rw\n");

        QCOMPARE(mounts.size(), 1);
        QCOMPARE(mounts[0].mountPoint.native(), meant.toStdString());
    }

    void tellsWhetherTheMountCanBeWritten_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("readOnly");

        QTest::newRow("writable")
            << "9 2 8:1 / /m rw,nosuid - vfat /dev/sdb1 rw,errors=remount-ro"_ba << false;
        QTest::newRow("mounted read-only")
            << "9 2 8:1 / /m ro,nosuid - vfat /dev/sdb1 rw"_ba << true;
        QTest::newRow("file system turned read-only")
            << "9 2 8:1 / /m rw - vfat /dev/sdb1 ro,errors=remount-ro"_ba << true;
        QTest::newRow("optional fields between")
            << "9 2 8:1 / /m rw shared:1 master:2 - vfat /dev/sdb1 ro"_ba << true;
    }

    void tellsWhetherTheMountCanBeWritten()
    {
        QFETCH(QByteArray, line);
        QFETCH(bool, readOnly);

        const auto mounts = MountTable::parse(line);

        QCOMPARE(mounts.size(), 1);
        QCOMPARE(mounts[0].isReadOnly, readOnly);
    }

    void leavesOutLinesThatAreNotMounts_data()
    {
        QTest::addColumn<QByteArray>("line");

        QTest::newRow("empty") << ""_ba;
        QTest::newRow("cut after the mount point") << "9 2 8:1 / /m"_ba;
        QTest::newRow("cut after the separator") << "9 2 8:1 / /m rw - vfat"_ba;
        QTest::newRow("no separator") << "9 2 8:1 / /m rw vfat /dev/sdb1 rw rw"_ba;
        QTest::newRow("no device number") << "9 2 8 / /m rw - vfat /dev/sdb1 rw"_ba;
        QTest::newRow("device number in letters") << "9 2 a:b / /m rw - vfat /dev/sdb1 rw"_ba;
        QTest::newRow("relative mount point") << "9 2 8:1 / m rw - vfat /dev/sdb1 rw"_ba;
        QTest::newRow("NUL in the mount point") << "9 2 8:1 / /m\\000 rw - vfat /dev/sdb1 rw"_ba;
    }

    void leavesOutLinesThatAreNotMounts()
    {
        QFETCH(QByteArray, line);
        const auto good = "9 2 8:1 / /good rw - vfat /dev/sdb1 rw"_ba;

        const auto mounts = MountTable::parse(line + '\n' + good);

        QCOMPARE(mounts.size(), 1);
        QCOMPARE(mounts[0].mountPoint, std::filesystem::path("/good"));
    }

    void noDamagedTextMakesItFail()
    {
        const auto whole = "90 22 8:17 / /media/MY\\040CARD rw shared:1 - vfat /dev/sdb1 rw\n"_ba;

        for (qsizetype place = 0; place < whole.size(); ++place) {
            QVERIFY(MountTable::parse(whole.first(place)).size() <= 1);
            for (const char odd : {'\0', ' ', '\n', '\\', '-', ':', '\xFF'}) {
                auto damaged = whole;
                damaged[place] = odd;
                for (const auto &mount : MountTable::parse(damaged)) {
                    QVERIFY(mount.mountPoint.is_absolute());
                }
            }
        }
    }

    void knowsTheMountsOfThisSystem()
    {
        struct stat root = {};
        QCOMPARE(::stat("/proc", &root), 0);

        const auto mounts = MountTable::current();

        QVERIFY(std::ranges::any_of(mounts, [&root](const Mount &mount) {
            return mount.mountPoint == "/proc" && mount.device == root.st_dev;
        }));
    }
};

QTEST_GUILESS_MAIN(MountTableTest)
#include "MountTableTest.moc"
