// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/LibRawStream.h"
#include "tests/support/PictureBytes.h"

#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

class LibRawStreamTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bytesAreReadAcrossBlocks()
    {
        QByteArray content;
        for (int index = 0; index < 20'000; ++index) {
            content += PictureBytes::number(static_cast<quint64>(index), 4);
        }
        const auto file = fileOf(content);
        LibRawStream stream(*file);
        QByteArray read(60'000, '\0');

        QCOMPARE(stream.seek(10'001, SEEK_SET), 0);
        QCOMPARE(stream.read(read.data(), 4, 15'000), 15'000);

        QCOMPARE(read, content.mid(10'001, 60'000));
        QCOMPARE(stream.tell(), 70'001);
        QCOMPARE(stream.size(), 80'000);
    }

    void whatIsCutCountsAsFarAsItIsWhole()
    {
        const auto file = fileOf("0123456789");
        LibRawStream stream(*file);
        QByteArray read(20, '\0');

        QCOMPARE(stream.read(read.data(), 4, 5), 2);
        QCOMPARE(read.first(8), "01234567");
        QCOMPARE(stream.read(read.data(), 1, 1), 0);
        QCOMPARE(stream.read(read.data(), 0, 7), 0);
        QCOMPARE(stream.get_char(), EOF);
        QVERIFY(stream.eof());
    }

    void seekingEndsAtTheFilesEnds()
    {
        const auto file = fileOf("0123456789");
        LibRawStream stream(*file);

        stream.seek(-3, SEEK_END);
        QCOMPARE(stream.get_char(), '7');
        stream.seek(-2, SEEK_CUR);
        QCOMPARE(stream.get_char(), '6');
        stream.seek(std::numeric_limits<INT64>::min(), SEEK_CUR);
        QCOMPARE(stream.tell(), 0);
        stream.seek(std::numeric_limits<INT64>::max(), SEEK_END);
        QCOMPARE(stream.tell(), 10);
        QVERIFY(stream.eof());
        stream.seek(2, SEEK_SET);
        QVERIFY(!stream.eof());
        QCOMPARE(stream.get_char(), '2');
    }

    void linesAreReadWithTheirEnds()
    {
        const auto file = fileOf("one\ntwo is long\nend");
        LibRawStream stream(*file);
        char line[6];

        QCOMPARE(QByteArray(stream.gets(line, sizeof line)), "one\n");
        QCOMPARE(QByteArray(stream.gets(line, sizeof line)), "two i");
        QCOMPARE(QByteArray(stream.gets(line, sizeof line)), "s lon");
        QCOMPARE(QByteArray(stream.gets(line, sizeof line)), "g\n");
        QCOMPARE(QByteArray(stream.gets(line, sizeof line)), "end");
        QVERIFY(!stream.gets(line, sizeof line));
        QCOMPARE(line[0], '\0');
    }

    void numbersAreScannedOneByOne()
    {
        const auto file = fileOf(" 17\n-2.5 x");
        LibRawStream stream(*file);
        int whole = 0;
        float fraction = 0;

        QCOMPARE(stream.scanf_one("%d", &whole), 1);
        QCOMPARE(stream.get_char(), '\n');
        QCOMPARE(stream.scanf_one("%f", &fraction), 1);
        QCOMPARE(stream.scanf_one("%d", &whole), 0);

        QCOMPARE(whole, 17);
        QCOMPARE(fraction, -2.5F);
    }

    void readingForEverEnds()
    {
        const auto file = fileOf(QByteArray(1'000'000, 'x'));
        LibRawStream stream(*file);
        QByteArray read(1'000'000, '\0');
        int rounds = 0;
        while (stream.read(read.data(), 1'000'000, 1) == 1 && rounds < 1000) {
            stream.seek(0, SEEK_SET);
            ++rounds;
        }

        QVERIFY(rounds > 60);
        QVERIFY(rounds < 70);
        QVERIFY(stream.eof());
        QCOMPARE(stream.get_char(), EOF);
    }

    void leapingForEverEnds()
    {
        const auto file = fileOf("0123456789");
        LibRawStream stream(*file);
        for (int leap = 0; leap < LibRawStream::mostLeaps; ++leap) {
            stream.seek(leap % 10, SEEK_SET);
        }

        QVERIFY_THROWS_EXCEPTION(std::exception, stream.seek(0, SEEK_SET));
    }

private:
    std::optional<InputFile> fileOf(const QByteArray &bytes) const
    {
        const auto path = std::filesystem::path(m_directory.path().toStdString()) / "file";
        PictureBytes::write(path, bytes);
        return InputFile::open(path);
    }

    QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(LibRawStreamTest)
#include "LibRawStreamTest.moc"
