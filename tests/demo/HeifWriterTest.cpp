// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/HeifWriter.h"

#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

/// Blue, with the upper left quarter red.
QImage marked(QSize size)
{
    QImage result(size, QImage::Format_RGB32);
    result.fill(Qt::blue);
    QPainter(&result).fillRect(0, 0, size.width() / 2, size.height() / 2, Qt::red);
    return result;
}

bool isRed(QRgb colour)
{
    return qRed(colour) > 200 && qGreen(colour) < 50 && qBlue(colour) < 50;
}

bool isBlue(QRgb colour)
{
    return qRed(colour) < 50 && qGreen(colour) < 50 && qBlue(colour) > 200;
}

} // namespace

class HeifWriterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anotherProgramShowsThePictureUpright_data()
    {
        QTest::addColumn<QSize>("stored");
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QSize>("shown");
        QTest::addColumn<QPointF>("mark"); // the middle of the red quarter

        QTest::newRow("as stored")
            << QSize(480, 320) << 1 << QSize(480, 320) << QPointF(0.25, 0.25);
        QTest::newRow("turned right")
            << QSize(480, 320) << 6 << QSize(320, 480) << QPointF(0.75, 0.25);
        QTest::newRow("turned left")
            << QSize(480, 320) << 8 << QSize(320, 480) << QPointF(0.25, 0.75);
        QTest::newRow("smaller than the thumbnail")
            << QSize(96, 64) << 8 << QSize(64, 96) << QPointF(0.25, 0.75);
    }

    void anotherProgramShowsThePictureUpright()
    {
        QFETCH(QSize, stored);
        QFETCH(int, orientation);
        QFETCH(QSize, shown);
        QFETCH(QPointF, mark);
        if (QStandardPaths::findExecutable(u"convert"_s).isEmpty()) {
            QSKIP("ImageMagick's convert is not installed");
        }

        const auto written = HeifWriter::write(marked(stored), {.orientation = orientation});

        QCOMPARE(written.problem, QString());
        const QImage picture = converted(written.bytes);
        QCOMPARE(picture.size(), shown);
        const auto at = [&](double x, double y) {
            return picture.pixel(static_cast<int>(x * shown.width()),
                                 static_cast<int>(y * shown.height()));
        };
        QVERIFY(isRed(at(mark.x(), mark.y())));
        QVERIFY(isBlue(at(1 - mark.x(), mark.y())));
        QVERIFY(isBlue(at(mark.x(), 1 - mark.y())));
        QVERIFY(isBlue(at(1 - mark.x(), 1 - mark.y())));
    }

    // Memory that was used before must not show in the file.
    void theSamePictureGivesTheSameBytes()
    {
        const QImage picture = marked({448, 288});
        const QByteArray first = HeifWriter::write(picture, {}).bytes;

        QVERIFY(!HeifWriter::write(marked({480, 320}), {.orientation = 6}).bytes.isEmpty());
        (void)mallopt(M_PERTURB, 0x5a);
        const QByteArray second = HeifWriter::write(picture, {}).bytes;
        (void)mallopt(M_PERTURB, 0);

        QVERIFY(!first.isEmpty());
        QVERIFY(first == second);
    }

    void aPictureOfNoWholeBlocksIsAProblem_data()
    {
        QTest::addColumn<QImage>("picture");

        QTest::newRow("no pixels") << QImage();
        QTest::newRow("too wide") << marked({488, 320});
        QTest::newRow("too high") << marked({480, 336});
    }

    void aPictureOfNoWholeBlocksIsAProblem()
    {
        QFETCH(QImage, picture);

        const auto written = HeifWriter::write(picture, {});

        QVERIFY(!written.problem.isEmpty());
        QVERIFY(written.bytes.isEmpty());
    }

private:
    [[nodiscard]] QImage converted(const QByteArray &heif) const
    {
        QFile file(m_folder.filePath(u"picture.HIF"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(heif) != heif.size()) {
            return {};
        }
        file.close();
        const QString result = m_folder.filePath(u"picture.png"_s);
        QProcess::execute(u"convert"_s, {file.fileName(), u"-depth"_s, u"8"_s, result});
        return QImage(result);
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(HeifWriterTest)
#include "HeifWriterTest.moc"
