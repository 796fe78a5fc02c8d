// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/PagedReader.h"
#include "platform/imageio/ImageSource.h"
#include "tests/support/PictureBytes.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace PictureBytes;

namespace {

constexpr qint64 kibibyte = 1024;

/// Bytes that this thread has read so far, by its own account; this question is among them, with
/// the same number each time.
std::optional<qint64> bytesRead()
{
    QFile file(u"/proc/thread-self/io"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const auto line = file.readLine(); // "rchar: NUMBER"
    return line.sliced(line.indexOf(' ') + 1).trimmed().toLongLong();
}

QByteArray noise(qint64 length)
{
    QRandomGenerator random(7);
    QByteArray bytes(length, '\0');
    for (auto &byte : bytes) {
        byte = static_cast<char>(random.bounded(256));
    }
    return bytes;
}

} // namespace

class PagedReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyStretchIsWhatTheFileHas()
    {
        const auto content = noise(70 * kibibyte + 5);
        const auto file = made(content);
        PagedReader reader(file);
        QRandomGenerator random(1);

        for (int turn = 0; turn < 20'000; ++turn) {
            const auto offset = random.bounded(content.size());
            const auto length = 1 + random.bounded(turn % 2 == 0 ? 20 : 40 * kibibyte);
            const auto expected =
                offset + length <= content.size() ? content.sliced(offset, length) : QByteArray();
            QCOMPARE(reader.view(offset, length).toByteArray(), expected);
            QCOMPARE(reader.bytes(offset, length), expected);
        }
    }

    void stretchesAcrossTheEndOfTheHeadAreWhole()
    {
        const auto content = noise(20 * kibibyte);
        const auto file = made(content);

        for (qint64 offset = 16 * kibibyte - 40; offset < 16 * kibibyte + 40; ++offset) {
            PagedReader reader(file);
            QCOMPARE(reader.view(offset, 30).toByteArray(), content.sliced(offset, 30));
        }
    }

    void whatIsOutsideTheFileIsEmpty()
    {
        const auto file = made(noise(100));
        PagedReader reader(file);

        QVERIFY(reader.view(100, 1).isEmpty());
        QVERIFY(reader.view(90, 11).isEmpty());
        QVERIFY(reader.view(-1, 2).isEmpty());
        QVERIFY(reader.view(0, -1).isEmpty());
        QVERIFY(reader.view(0, 0).isEmpty());
        QVERIFY(reader.view(std::numeric_limits<qint64>::max(), 1).isEmpty());
        QCOMPARE(reader.view(0, 100).size(), 100);
    }

    void aFileThatShrankSinceIsNotReadPastItsEnd()
    {
        const auto file = made(noise(30 * kibibyte));
        QVERIFY(QFile::resize(path(), 10 * kibibyte));
        PagedReader reader(file);

        QCOMPARE(reader.view(10 * kibibyte - 4, 4).size(), 4);
        QVERIFY(reader.view(10 * kibibyte - 4, 5).isEmpty());
        QVERIFY(reader.view(12 * kibibyte, 5).isEmpty());
        QVERIFY(reader.view(20 * kibibyte, 5).isEmpty());
    }

    void aFileThatLeadsRoundInCirclesEnds()
    {
        const auto file = made(QByteArray(2048 * kibibyte, 'x'));
        PagedReader reader(file);
        qint64 read = 0;

        for (qint64 offset = 0; offset < file.size(); offset += 4 * kibibyte) {
            read += reader.view(offset, 4 * kibibyte).size();
        }

        QVERIFY(read >= 1024 * kibibyte);
        QVERIFY(read <= 1024 * kibibyte + 16 * kibibyte);
    }

    void theSettingsOfAShotCostFewBytes_data()
    {
        QTest::addColumn<QByteArray>("file");

        const auto block =
            exifBlock({shorts(0x0112, {6})}, {text(0x9003, "2024:03:15 14:22:07")}, noise(12'000));
        const auto shot = withExif(jpeg(corners({1600, 1200})), block);
        const auto settings = withExif(jpeg(corners({30, 20})), block);
        // A profile behind the settings, as phones have it, puts the frame header far away.
        const auto profiled =
            withExif(withSegment(jpeg(corners({16, 16})), 0xe2, noise(30'000)), block);
        QTest::newRow("JPEG") << shot;
        QTest::newRow("JPEG with a profile") << profiled;
        QTest::newRow("RAF") << raf(shot + noise(300 * kibibyte), {6240, 4160});
        QTest::newRow("small RAF") << raf(settings, {6240, 4160});
    }

    void theSettingsOfAShotCostFewBytes()
    {
        QFETCH(const QByteArray, file);
        write(place(), file);
        const auto source = ImageSource::open(place());
        QVERIFY(source);
        const auto none = bytesRead();
        const auto before = bytesRead();
        if (!none || !before) {
            QSKIP("the system does not say how much a thread reads");
        }

        const auto properties = source->properties();

        const auto cost = *bytesRead() - *before - (*before - *none);
        QVERIFY(properties);
        QCOMPARE(properties->value(u"{Exif}"_s).toMap().value(u"DateTimeOriginal"_s).toString(),
                 u"2024:03:15 14:22:07"_s);
        QVERIFY(properties->contains(u"PixelWidth"_s));
        QVERIFY2(cost <= 20 * kibibyte, qPrintable(QString::number(cost)));
    }

private:
    [[nodiscard]] QString path() const { return m_folder.filePath(u"file"_s); }

    [[nodiscard]] std::filesystem::path place() const
    {
        return QFile::encodeName(path()).toStdString();
    }

    [[nodiscard]] InputFile made(const QByteArray &content) const
    {
        write(place(), content);
        return std::move(*InputFile::open(place()));
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(PagedReaderTest)
#include "PagedReaderTest.moc"
