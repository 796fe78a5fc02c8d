// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/Sandbox.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class SandboxTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutEitherMarkThereIsNoSandbox()
    {
        const QTemporaryDir folder;

        QVERIFY(!isSandboxed({}, folder.filePath(u"missing"_s).toStdString()));
        QVERIFY(!isSandboxed(""_ba, folder.filePath(u"missing/deeper"_s).toStdString()));
    }

    void theFileOfFlatpakMeansASandbox()
    {
        const QTemporaryDir folder;
        QFile info(folder.filePath(u"flatpak-info"_s));
        QVERIFY(info.open(QIODevice::WriteOnly));

        QVERIFY(isSandboxed({}, info.fileName().toStdString()));
    }

    void theVariableOfSnapMeansASandbox()
    {
        const QTemporaryDir folder;

        QVERIFY(isSandboxed("/snap/kestle/1"_ba, folder.filePath(u"missing"_s).toStdString()));
    }

    void theFileIsLookedForWhereFlatpakPutsIt()
    {
        QCOMPARE(isSandboxed({}), QFile::exists(u"/.flatpak-info"_s));
    }
};

QTEST_GUILESS_MAIN(SandboxTest)
#include "SandboxTest.moc"
