// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/TiffDirectory.h"

#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;

class TiffDirectoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void entriesLieInTagOrderWhateverOrderTheyWereSetIn()
    {
        TiffDirectory directory;
        directory.setShorts(0x0112, {6});
        directory.setLongs(0x0100, {300});

        const QByteArray bytes = directory.bytes(8);

        QCOMPARE(number<quint16>(bytes, 0), quint16(2));
        QCOMPARE(number<quint16>(bytes, 2), quint16(0x0100));
        QCOMPARE(number<quint32>(bytes, 10), 300U);
        QCOMPARE(number<quint16>(bytes, 14), quint16(0x0112));
        QCOMPARE(number<quint16>(bytes, 22), quint16(6));
    }

    void aTagSetTwiceKeepsTheLaterValue()
    {
        TiffDirectory directory;
        directory.setShorts(0x0112, {6});
        directory.setShorts(0x0112, {8});

        const QByteArray bytes = directory.bytes(8);

        QCOMPARE(number<quint16>(bytes, 0), quint16(1));
        QCOMPARE(number<quint16>(bytes, 10), quint16(8));
    }

    void upToFourBytesStandInTheEntryAndLongerValuesBehindTheDirectory()
    {
        TiffDirectory directory;
        directory.setAscii(0x010F, "abc"_ba);
        directory.setAscii(0x0110, "abcd"_ba);

        const QByteArray bytes = directory.bytes(100);

        QCOMPARE(bytes.mid(10, 4), QByteArray("abc\0", 4));
        const quint32 place = number<quint32>(bytes, 22);
        QCOMPARE(place, 100U + 2 + 2 * 12 + 4);
        QCOMPARE(bytes.mid(static_cast<qsizetype>(place) - 100, 5), QByteArray("abcd\0", 5));
    }

    void everyDirectoryOfAChainLeadsToTheNext()
    {
        TiffDirectory first;
        first.setRationals(0x011A, {{72, 1}});
        TiffDirectory second;
        second.setShorts(0x0103, {6});

        const QByteArray file = TiffDirectory::file({first, second});

        QCOMPARE(file.left(8), QByteArray("II*\0\x08\0\0\0", 8));
        const quint32 next = number<quint32>(file, 8 + 2 + 12);
        QCOMPARE(number<quint16>(file, next + 2), quint16(0x0103));
        QCOMPARE(number<quint32>(file, next + 14), 0U);
    }

    void severalSubdirectoriesAreReachedThroughAList()
    {
        TiffDirectory one;
        one.setLongs(0x0100, {11});
        TiffDirectory two;
        two.setLongs(0x0100, {22});
        TiffDirectory main;
        main.setDirectories(0x014A, {one, two});

        const QByteArray file = TiffDirectory::file({main});

        QCOMPARE(number<quint32>(file, 8 + 6), 2U);
        const quint32 list = number<quint32>(file, 8 + 10);
        QCOMPARE(number<quint32>(file, number<quint32>(file, list) + 10), 11U);
        QCOMPARE(number<quint32>(file, number<quint32>(file, list + 4) + 10), 22U);
    }

    void dataIsReachedThroughItsPlace()
    {
        TiffDirectory main;
        main.setData(0x0201, "picture"_ba);

        const QByteArray file = TiffDirectory::file({main});

        QCOMPARE(file.mid(number<quint32>(file, 8 + 10), 7), "picture"_ba);
    }

private:
    template<typename T>
    static T number(const QByteArray &bytes, quint32 at)
    {
        return qFromLittleEndian<T>(bytes.constData() + at);
    }
};

QTEST_APPLESS_MAIN(TiffDirectoryTest)
#include "TiffDirectoryTest.moc"
