// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FatProtection.h"

#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// What a real FAT says is tested on a real FAT, in tests/e2e.
class FatProtectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aMountTellsWhetherFilesMayHaveAWriteBit_data()
    {
        QTest::addColumn<QByteArray>("superOptions");
        QTest::addColumn<bool>("mayBeWritable");

        QTest::newRow("no mask at all") << QByteArray("rw,utf8") << true;
        QTest::newRow("the usual mask") << QByteArray("rw,fmask=0022,dmask=0022,utf8") << true;
        QTest::newRow("group may write") << QByteArray("rw,fmask=0202") << true;
        QTest::newRow("nobody may write") << QByteArray("rw,dmask=0022,fmask=0333") << false;
        QTest::newRow("a mask that is no number") << QByteArray("rw,fmask=abc") << true;
    }

    void aMountTellsWhetherFilesMayHaveAWriteBit()
    {
        QFETCH(QByteArray, superOptions);
        QFETCH(bool, mayBeWritable);
        const auto mountInfo = "21 1 8:1 / / rw,relatime - ext4 /dev/sda1 rw,fmask=0333\n"
                               "36 21 8:17 / /media/CARD rw,nosuid - vfat /dev/sdb1 " +
                               superOptions + "\n37 21 8:18 / /other rw - vfat /dev/sdc1 rw\n";

        QCOMPARE(FatProtection::letsFilesBeWritable(mountInfo, 36), mayBeWritable);
    }

    void anUnknownMountSaysNothing()
    {
        QVERIFY(FatProtection::letsFilesBeWritable("", 36));
        QVERIFY(FatProtection::letsFilesBeWritable("garbage\n\n36\n", 36));
    }

    void otherFileSystemsProtectNothing()
    {
        const QTemporaryDir folder;
        const auto path = folder.filePath(QStringLiteral("1.JPG")).toLocal8Bit();
        const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0400);
        QVERIFY(file >= 0);
        ::close(file);
        const int root = ::open(folder.path().toLocal8Bit().constData(), O_PATH | O_CLOEXEC);

        const bool isProtected = FatProtection(root).protects(root, "1.JPG");

        ::close(root);
        QVERIFY(!isProtected);
    }
};

QTEST_GUILESS_MAIN(FatProtectionTest)
#include "FatProtectionTest.moc"
