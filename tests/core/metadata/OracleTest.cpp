// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/ExifReader.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

template<typename T>
QJsonValue json(const std::optional<T> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

/// The reader's settings as the reference lists them: every key, null where there is nothing.
QJsonValue json(const std::optional<FujiSettings> &settings)
{
    if (!settings) {
        return QJsonValue::Null;
    }
    return QJsonObject{
        {u"filmSimulation"_s, json(settings->filmSimulation)},
        {u"dynamicRange"_s, json(settings->dynamicRange)},
        {u"whiteBalanceShift"_s, json(settings->whiteBalanceShift)},
        {u"highlightTone"_s, json(settings->highlightTone)},
        {u"shadowTone"_s, json(settings->shadowTone)},
        {u"grain"_s, json(settings->grain)},
        {u"colorChrome"_s, json(settings->colorChrome)},
        {u"colorChromeBlue"_s, json(settings->colorChromeBlue)},
    };
}

/// The reference has ten digits.
bool agrees(const std::optional<double> &value, const QJsonValue &reference)
{
    if (!value || reference.isNull()) {
        return !value && reference.isNull();
    }
    return std::abs(*value - reference.toDouble()) <= 1e-9 * std::abs(reference.toDouble());
}

/// The code of a HEIF item's anticlockwise turn, then its mirroring (0 top and bottom, 1 left and
/// right), worked out by hand for the combinations that occur.
qint64 heifOrientation(const QJsonObject &heif)
{
    const int turn = heif.value(u"irot"_s).toInt(0);
    const auto mirror = heif.value(u"imir"_s);
    if (!mirror.isDouble()) {
        return turn == 90 ? 8 : turn == 180 ? 3 : turn == 270 ? 6 : 1;
    }
    if (mirror.toInt() == 1) {
        return turn == 90 ? 7 : turn == 180 ? 4 : turn == 270 ? 5 : 2;
    }
    return turn == 90 ? 5 : turn == 180 ? 2 : turn == 270 ? 7 : 4;
}

/// Files of which the reader and the reference make different things, each with its reason.
const QHash<QString, QString> &exceptions()
{
    static const QHash<QString, QString> files = {
        {u"tiff/exiv2_heap-oob-write.tiff"_s,
         u"the reference refuses a directory that is cut short; its first entries are good"_s},
        {u"photos/mei_beach.jpg"_s,
         u"its frame says a height of 0, and the reference keeps that as a size"_s},
        {u"photos/bep_FailedHash-NoDate-sep-remembory.jpg"_s,
         u"it ends within its tables; the EXIF block before them is good, the reference refuses it"_s},
    };
    return files;
}

/// Why nothing is asserted of an entry; empty for one that is compared.
QString reasonToLeaveOut(const QJsonObject &entry)
{
    if (entry.value(u"advisoryOnly"_s).toBool()) {
        return u"damaged: RealFilesTest asks that it is survived"_s;
    }
    if (!entry.value(u"readAsImage"_s).toBool()) {
        return u"a clip: of its content nothing is read"_s;
    }
    const auto disputed = entry.value(u"disputed"_s);
    if (!disputed.isNull()) {
        return u"disputed: "_s + disputed.toString();
    }
    return exceptions().value(entry.value(u"file"_s).toString());
}

} // namespace

/// Compares the reader with what an independent one finds in several hundred real files: in every
/// JPEG, RAW, HEIF and TIFF file, but for the pixel sizes of RAW files, of which every program has
/// an idea of its own. Entries that are not compared are skipped with their reason.
class OracleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const auto folder = qEnvironmentVariable("KESTLE_SHARED_MEDIA");
        QFile oracle(folder + u"/oracle.json"_s);
        if (folder.isEmpty() || !oracle.open(QIODevice::ReadOnly)) {
            QSKIP("the folder of real camera files is missing");
        }
        m_folder = folder;
        m_files = QJsonDocument::fromJson(oracle.readAll()).object().value(u"files"_s).toArray();
        QVERIFY(m_files.size() > 600);
        QVERIFY(std::ranges::count_if(m_files, [](const QJsonValue &entry) {
                    return reasonToLeaveOut(entry.toObject()).isEmpty();
                }) > 400);
    }

    void theReaderAgreesWithTheReference_data()
    {
        QTest::addColumn<QJsonObject>("entry");
        for (const auto &value : std::as_const(m_files)) {
            const auto entry = value.toObject();
            QTest::newRow(qPrintable(entry.value(u"file"_s).toString())) << entry;
        }
    }

    void theReaderAgreesWithTheReference()
    {
        QFETCH(QJsonObject, entry);
        const auto file = entry.value(u"file"_s).toString();
        if (const auto reason = reasonToLeaveOut(entry); !reason.isEmpty()) {
            QSKIP(qPrintable(reason));
        }
        const auto raw = entry.value(u"raw"_s).toObject();
        const auto expected = entry.value(u"expected"_s).toObject();
        const auto heif = entry.value(u"heif"_s);

        const auto read =
            ExifReader().read(QFile::encodeName(m_folder + u'/' + file).toStdString());

        // A file without any picture has none; the reference lists it without a value.
        const auto metadata = read.value_or(ImageMetadata());
        if (!file.startsWith(u"raw/"_s)) {
            QCOMPARE(json(metadata.pixelWidth), raw.value(u"pixelWidth"_s));
            QCOMPARE(json(metadata.pixelHeight), raw.value(u"pixelHeight"_s));
        }
        if (heif.isObject()) {
            QCOMPARE(metadata.orientation.value_or(1), heifOrientation(heif.toObject()));
        } else {
            QCOMPARE(json(metadata.orientation), raw.value(u"orientation"_s));
        }
        QVERIFY(agrees(metadata.aperture, raw.value(u"FNumber"_s)));
        QVERIFY(agrees(metadata.exposureTime, raw.value(u"ExposureTime"_s)));
        QCOMPARE(json(metadata.iso), raw.value(u"ISO"_s));
        QCOMPARE(json(metadata.lensModel), raw.value(u"LensModel"_s));
        QCOMPARE(json(metadata.exposureText()), expected.value(u"exposureText"_s));
        QCOMPARE(metadata.captureDate ? QJsonValue(metadata.captureDate->toSecsSinceEpoch())
                                      : QJsonValue(QJsonValue::Null),
                 expected.value(u"captureDate"_s));
        QCOMPARE(metadata.subjectArea
                     ? QJsonValue(QJsonArray{metadata.subjectArea->x(), metadata.subjectArea->y()})
                     : QJsonValue(QJsonValue::Null),
                 expected.value(u"subjectArea"_s));
        QCOMPARE(json(metadata.fuji), expected.value(u"fuji"_s));
    }

private:
    QString m_folder;
    QJsonArray m_files;
};

QTEST_GUILESS_MAIN(OracleTest)
#include "OracleTest.moc"
