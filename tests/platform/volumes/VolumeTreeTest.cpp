// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "HandMadeTree.h"

#include <QTest>

#include <sys/sysmacros.h>

using namespace Qt::StringLiterals;

static QList<Mount> mountsAt(std::initializer_list<const char *> mountPoints)
{
    QList<Mount> mounts;
    for (const auto *mountPoint : mountPoints) {
        mounts.append({.mountPoint = mountPoint});
    }
    return mounts;
}

static std::vector<std::string> pathsOf(const QList<MountedVolume> &volumes)
{
    std::vector<std::string> paths;
    for (const auto &volume : volumes) {
        paths.push_back(volume.mountPoint.native());
    }
    return paths;
}

using Paths = std::vector<std::string>;

class VolumeTreeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsMountedOnAnEmptyTree() { QVERIFY(VolumeTree().mountedVolumes({}).isEmpty()); }

    void theDriveSaysWhetherAVolumeIsRemovableOrEjectable_data()
    {
        QTest::addColumn<bool>("removable");
        QTest::addColumn<bool>("mediaRemovable");
        QTest::addColumn<bool>("ejectable");
        QTest::addColumn<bool>("isRemovable");
        QTest::addColumn<bool>("isEjectable");

        QTest::newRow("internal disk") << false << false << false << false << false;
        QTest::newRow("USB reader") << true << true << true << true << true;
        QTest::newRow("built-in SD slot") << false << true << false << true << false;
        QTest::newRow("USB stick") << true << false << false << true << false;
        QTest::newRow("drive that only ejects") << false << false << true << false << true;
    }

    void theDriveSaysWhetherAVolumeIsRemovableOrEjectable()
    {
        QFETCH(bool, removable);
        QFETCH(bool, mediaRemovable);
        QFETCH(bool, ejectable);
        QFETCH(bool, isRemovable);
        QFETCH(bool, isEjectable);
        HandMadeTree made;
        made.addDrive(u"D"_s, {removable, mediaRemovable, ejectable});
        made.addBlock(u"sdb"_s, u"D"_s);
        made.setFilesystem(u"sdb"_s, u"ABCD-0001"_s, u"CARD"_s, {"/media/u/CARD"});

        const QList<MountedVolume> expected = {{.mountPoint = "/media/u/CARD",
                                                .uuid = u"ABCD-0001"_s,
                                                .label = u"CARD"_s,
                                                .device = u"/dev/sdb"_s,
                                                .isRemovable = isRemovable,
                                                .isEjectable = isEjectable}};
        QCOMPARE(made.tree.mountedVolumes({}), expected);
    }

    void aPartitionsDriveIsItsOwnOrElseThatOfItsTable_data()
    {
        QTest::addColumn<QString>("ownDrive");
        QTest::addColumn<bool>("hasTable");
        QTest::addColumn<bool>("isRemovable");

        QTest::newRow("own drive, with table") << u"Reader"_s << true << true;
        QTest::newRow("own drive, table missing") << u"Reader"_s << false << true;
        QTest::newRow("drive known by the table only") << u""_s << true << true;
        QTest::newRow("drive unknown, table missing") << u""_s << false << false;
        QTest::newRow("own drive gone, with table") << u"Gone"_s << true << true;
    }

    void aPartitionsDriveIsItsOwnOrElseThatOfItsTable()
    {
        QFETCH(QString, ownDrive);
        QFETCH(bool, hasTable);
        QFETCH(bool, isRemovable);
        HandMadeTree made;
        made.addDrive(u"Reader"_s, {.removable = true});
        if (hasTable) {
            made.addBlock(u"sdb"_s, u"Reader"_s);
        }
        made.addBlock(u"sdb1"_s, ownDrive);
        made.setPartitionOf(u"sdb1"_s, u"sdb"_s);
        made.setFilesystem(u"sdb1"_s, u"ABCD-0001"_s, u"CARD"_s, {"/media/u/CARD"});

        const auto volumes = made.tree.mountedVolumes({});

        QCOMPARE(volumes.size(), 1);
        QCOMPARE(volumes[0].isRemovable, isRemovable);
    }

    void aMountedDiskImageIsEjectable()
    {
        HandMadeTree made;
        made.addBlock(u"loop0"_s, {});
        made.setLoop(u"loop0"_s);
        made.setFilesystem(u"loop0"_s, u"ABCD-0001"_s, u"IMAGE"_s, {"/media/u/IMAGE"});
        made.addBlock(u"loop1"_s, {});
        made.setLoop(u"loop1"_s);
        made.addBlock(u"loop1p1"_s, {});
        made.setPartitionOf(u"loop1p1"_s, u"loop1"_s);
        made.setFilesystem(u"loop1p1"_s, u"ABCD-0002"_s, u"PARTS"_s, {"/media/u/PARTS"});

        const auto volumes = made.tree.mountedVolumes({});

        QCOMPARE(pathsOf(volumes), (Paths{"/media/u/IMAGE", "/media/u/PARTS"}));
        QVERIFY(volumes[0].isEjectable && !volumes[0].isRemovable);
        QVERIFY(volumes[1].isEjectable && !volumes[1].isRemovable);
    }

    void snapImagesAndWhatIsToBeIgnoredAreHidden()
    {
        HandMadeTree made;
        made.addBlock(u"loop3"_s, {});
        made.setLoop(u"loop3"_s);
        made.setFilesystem(u"loop3"_s, {}, {}, {"/snap/core/1"});
        made.setBlockProperty(u"loop3"_s, "IdType", u"squashfs"_s);
        made.addCard(u"sdb"_s, u"ABCD-0001"_s, u"EFI"_s, {"/boot/efi"});
        made.setBlockProperty(u"sdb1"_s, "HintIgnore", true);

        QVERIFY(made.tree.mountedVolumes({}).isEmpty());
    }

    void aPhoneOrANetworkShareWithoutABlockDeviceIsNoVolume()
    {
        HandMadeTree made;
        made.addDrive(u"Phone"_s, {.removable = true, .ejectable = true});

        QVERIFY(made.tree.mountedVolumes(mountsAt({"/", "/mnt/share", "/run/user/1000/gvfs"}))
                    .isEmpty());
    }

    void anUnmountedCardIsNoVolume()
    {
        HandMadeTree made;
        made.addCard(u"sdb"_s, u"ABCD-0001"_s, u"CARD"_s, {});

        QVERIFY(made.tree.mountedVolumes({}).isEmpty());
    }

    void volumesComeInTheKernelsMountOrderAndUnknownOnesLast()
    {
        HandMadeTree made;
        made.addCard(u"sda"_s, u"1"_s, u"ONE"_s, {"/media/u/ONE"});
        made.addCard(u"sdb"_s, u"2"_s, u"TWO"_s, {"/media/u/TWO"});
        made.addCard(u"sdc"_s, u"3"_s, u"THREE"_s, {"/media/u/THREE"});

        const auto volumes =
            made.tree.mountedVolumes(mountsAt({"/", "/media/u/THREE", "/media/u/ONE"}));

        QCOMPARE(pathsOf(volumes), (Paths{"/media/u/THREE", "/media/u/ONE", "/media/u/TWO"}));
    }

    void aCardMountedTwiceIsTwoVolumesOfOneUUID()
    {
        HandMadeTree made;
        made.addCard(u"sdb"_s, u"ABCD-0001"_s, u"CARD"_s, {"/media/u/CARD", "/mnt/again"});

        const auto volumes =
            made.tree.mountedVolumes(mountsAt({"/", "/mnt/again", "/media/u/CARD"}));

        QCOMPARE(pathsOf(volumes), (Paths{"/mnt/again", "/media/u/CARD"}));
        QCOMPARE(volumes[0].uuid, u"ABCD-0001"_s);
        QCOMPARE(volumes[1].uuid, u"ABCD-0001"_s);
    }

    void twoCardsOfOneUUIDAreTwoVolumes()
    {
        HandMadeTree made;
        made.addCard(u"sdb"_s, u"ABCD-0001"_s, u"CARD"_s, {"/media/u/CARD"});
        made.addCard(u"sdc"_s, u"ABCD-0001"_s, u"CARD"_s, {"/media/u/CARD1"});

        const auto volumes = made.tree.mountedVolumes({});

        QCOMPARE(pathsOf(volumes), (Paths{"/media/u/CARD", "/media/u/CARD1"}));
        QCOMPARE(volumes[0].device, u"/dev/sdb1"_s);
        QCOMPARE(volumes[1].device, u"/dev/sdc1"_s);
    }

    void ofTwoVolumesAtOneMountPointTheOneOnTopCounts_data()
    {
        QTest::addColumn<uint>("top");
        QTest::addColumn<QString>("uuid");

        QTest::newRow("the first") << 17u << u"FIRST"_s;
        QTest::newRow("the second") << 33u << u"SECOND"_s;
    }

    void ofTwoVolumesAtOneMountPointTheOneOnTopCounts()
    {
        QFETCH(uint, top);
        QFETCH(QString, uuid);
        HandMadeTree made;
        made.addBlock(u"sdb1"_s, {}, 17);
        made.setFilesystem(u"sdb1"_s, u"FIRST"_s, {}, {"/mnt"});
        made.addBlock(u"sdc1"_s, {}, 33);
        made.setFilesystem(u"sdc1"_s, u"SECOND"_s, {}, {"/mnt"});
        const QList<Mount> mounts = {{.mountPoint = "/mnt", .device = makedev(8, 50 - top)},
                                     {.mountPoint = "/mnt", .device = makedev(8, top)}};

        const auto volumes = made.tree.mountedVolumes(mounts);

        QCOMPARE(volumes.size(), 1);
        QCOMPARE(volumes[0].uuid, uuid);
    }

    void aVolumeIsReadOnlyByItsDeviceOrByItsMount_data()
    {
        QTest::addColumn<bool>("device");
        QTest::addColumn<bool>("mount");
        QTest::addColumn<bool>("isReadOnly");

        QTest::newRow("writable") << false << false << false;
        QTest::newRow("lock switch") << true << false << true;
        QTest::newRow("mounted read-only") << false << true << true;
    }

    void aVolumeIsReadOnlyByItsDeviceOrByItsMount()
    {
        QFETCH(bool, device);
        QFETCH(bool, mount);
        QFETCH(bool, isReadOnly);
        HandMadeTree made;
        made.addCard(u"sdb"_s, u"ABCD-0001"_s, u"CARD"_s, {"/media/u/CARD"});
        made.setBlockProperty(u"sdb1"_s, "ReadOnly", device);

        const auto volumes =
            made.tree.mountedVolumes({{.mountPoint = "/media/u/CARD", .isReadOnly = mount}});

        QCOMPARE(volumes.size(), 1);
        QCOMPARE(volumes[0].isReadOnly, isReadOnly);
    }

    void mountPointsAreBytesUpToTheirNul()
    {
        HandMadeTree made;
        made.addBlock(u"sdb"_s, {});
        made.tree.objects[HandMadeTree::blockPath(u"sdb"_s)][HandMadeTree::interface("Filesystem")]
                         [u"MountPoints"_s] = QVariant::fromValue(QByteArrayList{
            "/caf\xE9"_ba + '\0', "/without"_ba, "/two\0parts"_ba, "relative"_ba, ""_ba});

        QCOMPARE(pathsOf(made.tree.mountedVolumes({})), (Paths{"/caf\xE9", "/two", "/without"}));
    }

    void theDeviceFallsBackToThePreferredName()
    {
        HandMadeTree made;
        made.addBlock(u"sdb"_s, {});
        made.setFilesystem(u"sdb"_s, {}, {}, {"/mnt"});
        made.setBlockProperty(u"sdb"_s, "Device", {});
        made.setBlockProperty(u"sdb"_s, "PreferredDevice", "/dev/mapper/card\0"_ba);

        QCOMPARE(made.tree.mountedVolumes({})[0].device, u"/dev/mapper/card"_s);
    }

    void missingPropertiesCountAsNotSet()
    {
        VolumeTree tree;
        const auto path = HandMadeTree::blockPath(u"sdb"_s);
        tree.objects[path][HandMadeTree::interface("Filesystem")][u"MountPoints"_s] =
            QVariant::fromValue(QByteArrayList{"/mnt"_ba});
        tree.objects[path][HandMadeTree::interface("Partition")] = {};

        const QList<MountedVolume> expected = {{.mountPoint = "/mnt"}};
        QCOMPARE(tree.mountedVolumes({}), expected);
    }

    void propertiesOfAnotherTypeCountAsNotSet_data()
    {
        QTest::addColumn<QVariant>("odd");

        QTest::newRow("nothing") << QVariant();
        QTest::newRow("number") << QVariant(7);
        QTest::newRow("text") << QVariant(u"true"_s);
        QTest::newRow("bytes") << QVariant("/mnt\0"_ba);
        QTest::newRow("list of texts") << QVariant(QStringList{u"/mnt"_s});
        QTest::newRow("map") << QVariant(QVariantMap{{u"a"_s, 1}});
    }

    void propertiesOfAnotherTypeCountAsNotSet()
    {
        QFETCH(QVariant, odd);
        HandMadeTree made;
        made.addCard(u"sdb"_s, u"ABCD-0001"_s, u"CARD"_s, {"/media/u/CARD"});
        const auto healthy = made.tree.mountedVolumes({});
        QCOMPARE(healthy.size(), 1);

        for (const auto &path : made.tree.objects.keys()) {
            for (const auto &interface : made.tree.objects[path].keys()) {
                for (const auto &name : made.tree.objects[path][interface].keys()) {
                    auto broken = made.tree;
                    broken.objects[path][interface][name] = odd;

                    const auto volumes = broken.mountedVolumes({});

                    QCOMPARE(volumes.size(), name == u"MountPoints"_s ? 0 : 1);
                    if (name != u"Device"_s && name != u"IdUUID"_s && name != u"IdLabel"_s &&
                        !volumes.isEmpty()) {
                        QVERIFY(!volumes[0].isReadOnly);
                        QCOMPARE(volumes[0].uuid, u"ABCD-0001"_s);
                    }
                }
            }
        }
    }

    void aPartitionThatIsItsOwnTableEndsTheSearch()
    {
        HandMadeTree made;
        made.addBlock(u"sdb1"_s, {});
        made.setPartitionOf(u"sdb1"_s, u"sdb1"_s);
        made.setFilesystem(u"sdb1"_s, {}, {}, {"/mnt"});

        QCOMPARE(pathsOf(made.tree.mountedVolumes({})), Paths{"/mnt"});
    }
};

QTEST_GUILESS_MAIN(VolumeTreeTest)
#include "VolumeTreeTest.moc"
