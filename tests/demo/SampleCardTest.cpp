// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/SampleCard.h"
#include "core/metadata/ExifReader.h"
#include "core/model/Pairing.h"
#include "demo/card/ClipMaker.h"
#include "demo/card/ExifWriter.h"
#include "demo/card/PlannedClip.h"
#include "demo/card/PlannedShot.h"
#include "platform/media/PosterFrame.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDirIterator>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;

// Small pictures: everything but their sharpness is as on the large card.
constexpr SampleCard::Options small{.longEdge = 240, .seed = 1, .clips = false};

class SampleCardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        const auto manifest = SampleCard::make(root(), small);
        QVERIFY(manifest);
        m_manifest = *manifest;
    }

    void theManifestNamesEveryFileOnTheCardAndNoOther()
    {
        QCOMPARE(filesBelow(m_folder.path()), promised(m_manifest));
    }

    void twoFoldersHoldAboutFortyShotsAndAThirdOfThemHaveRawFiles()
    {
        qsizetype pairs = 0;
        QSet<QString> folders;
        for (const auto &item : m_manifest.items) {
            pairs += item.files.size() == 2;
            folders.insert(item.id.section(u'/', 0, 0));
        }

        QVERIFY(m_manifest.items.size() >= 40);
        QVERIFY(pairs * 10 >= m_manifest.items.size() * 3);
        QVERIFY(pairs * 10 <= m_manifest.items.size() * 4);
        QCOMPARE(folders, QSet<QString>({u"100_FUJI"_s, u"101_FUJI"_s}));
    }

    void theFilesPairIntoTheItemsOfTheManifest()
    {
        std::vector<std::filesystem::path> files;
        QStringList promised;
        for (const auto &item : m_manifest.items) {
            promised.append(item.id);
            for (const auto &file : item.files) {
                files.push_back(root() / file.toStdString());
            }
        }
        promised.sort();

        QStringList found;
        for (const auto &item : Pairing::pair(files)) {
            found.append(item.id);
        }
        QCOMPARE(found, promised);
    }

    void itemsStandInTheOrderOfTheirCaptureTimes()
    {
        for (qsizetype i = 1; i < m_manifest.items.size(); ++i) {
            QVERIFY(m_manifest.items[i - 1].captured < m_manifest.items[i].captured);
        }
    }

    void everyPictureOpensInItsFullSize()
    {
        for (const auto &file : jpegs()) {
            QImageReader reader(file);
            const QImage picture = reader.read();

            QVERIFY2(!picture.isNull(), qPrintable(file));
            QCOMPARE(picture.size(), QSize(240, 160));
        }
    }

    void everyPictureBeginsWithAnExifSegmentAndAFujifilmNote()
    {
        for (const auto &path : jpegs()) {
            const QByteArray bytes = contents(path);

            QCOMPARE(bytes.left(4), QByteArray("\xFF\xD8\xFF\xE1", 4));
            QCOMPARE(bytes.mid(6, 6), QByteArray("Exif\0\0", 6));
            const auto length = qFromBigEndian<quint16>(bytes.constData() + 4);
            const QByteArray segment = bytes.mid(4, length);
            QVERIFY(segment.contains(QByteArray("FUJIFILM\x0c\0\0\0", 12)));
            QVERIFY(segment.contains("2025:10:1"));
            QVERIFY(segment.contains(QByteArray("\xFF\xD8\xFF", 3))); // the thumbnail
            QCOMPARE(bytes.mid(4 + length, 2), QByteArray("\xFF\xE0", 2));
        }
    }

    void aHeifPictureSaysWhatAJpegOfTheSameShotWouldSay()
    {
        const QSize stored(160, 96); // two thirds, in whole blocks
        QBuffer blank;
        QVERIFY(blank.open(QIODevice::WriteOnly));
        QVERIFY(QImage(stored, QImage::Format_RGB32).save(&blank, "JPG"));
        const ExifReader reader;
        size_t index = 0;
        int turned = 0;
        int focused = 0;
        for (const auto &shot : PlannedShot::all(small.seed)) {
            const QString file =
                m_manifest.items[static_cast<qsizetype>(index++)].files.constLast();
            QCOMPARE(file.endsWith(u".HIF"_s), shot.heif);
            if (!shot.heif) {
                continue;
            }
            auto settings = shot.settings;
            settings.orientation = shot.turned;
            if (shot.subjectX >= 0) {
                settings.subject = QPoint(static_cast<int>(shot.subjectX * 160.0),
                                          static_cast<int>(shot.subjectY * 96.0));
            }
            QTemporaryFile jpeg;
            QVERIFY(jpeg.open());
            jpeg.write(ExifWriter::withExif(blank.data(), {}, settings, stored));
            jpeg.close();

            const auto found = reader.read((root() / file.toStdString()));

            QVERIFY(found);
            QVERIFY(found->fuji && found->lensModel && found->exposureTime && found->aperture);
            QCOMPARE(found->captureDate, shot.settings.captured);
            QCOMPARE(found->orientation, shot.turned);
            QVERIFY(found == reader.read(jpeg.fileName().toStdString()));
            turned += shot.turned != 1;
            focused += found->subjectArea.has_value();
        }
        QVERIFY(turned > 0);
        QVERIFY(focused > 0);
    }

    void someHeifPicturesStandAloneAndSomeBesideARawFile()
    {
        QList<qsizetype> counts;
        for (const auto &item : m_manifest.items) {
            if (item.files.constLast().endsWith(u".HIF"_s)) {
                counts.append(item.files.size());
            }
        }

        QCOMPARE(counts, (QList<qsizetype>{2, 1, 1, 2}));
        QVERIFY(m_manifest.notes.isEmpty());
    }

    void withoutAnEncoderTheCardIsMadeWithoutTheHeifShots()
    {
        QTemporaryDir folder;
        auto options = small;
        options.writeHeif = [](const QImage &, const CaptureSettings &) {
            return HeifWriter::Written{{}, u"there is no encoder."_s};
        };

        const auto manifest = SampleCard::make(folder.path().toStdString(), options);

        QVERIFY(manifest);
        QCOMPARE(manifest->items.size(), m_manifest.items.size() - 4);
        QCOMPARE(manifest->notes,
                 QStringList{u"HEIF pictures are left out: there is no encoder."_s});
        QCOMPARE(filesBelow(folder.path()), promised(*manifest));
    }

    void uprightFramesAreStoredTurned()
    {
        int right = 0;
        int left = 0;
        for (const auto &file : jpegs()) {
            const QImageReader reader(file);
            QCOMPARE(reader.size(), QSize(240, 160));
            right += reader.transformation() == QImageIOHandler::TransformationRotate90;
            left += reader.transformation() == QImageIOHandler::TransformationRotate270;
        }

        QCOMPARE(right, 2);
        QCOMPARE(left, 4);
    }

    void rawFilesAreTiffStructuresOfThreeImages()
    {
        int count = 0;
        for (const auto &item : m_manifest.items) {
            if (!item.files.constFirst().endsWith(u".DNG"_s)) {
                continue;
            }
            ++count;
            const QByteArray bytes = contents(m_folder.filePath(item.files.constFirst()));
            QCOMPARE(bytes.left(4), QByteArray("II*\0", 4));
            QVERIFY(bytes.contains("Fujifilm X-T5"));
            QVERIFY(bytes.size() > 240 * 160); // one byte for every place of the sensor
        }
        QVERIFY(count > 0);
    }

    void fileTimesAreCaptureTimes()
    {
        for (const auto &item : m_manifest.items) {
            const QFileInfo info(m_folder.filePath(item.files.constLast()));

            QCOMPARE(info.lastModified().toUTC().toString(Qt::ISODate), item.captured);
        }
    }

    void theSameSeedGivesTheSameCardAndAnotherSeedAnother()
    {
        QTemporaryDir again;
        QTemporaryDir other;
        auto options = small;
        QVERIFY(SampleCard::make(again.path().toStdString(), options));
        options.seed = 2;
        QVERIFY(SampleCard::make(other.path().toStdString(), options));

        QCOMPARE(digest(again.path()), digest(m_folder.path()));
        QVERIFY(digest(other.path()) != digest(m_folder.path()));
    }

    void clipsOfManyKindsEndTheWalk()
    {
        if (QStandardPaths::findExecutable(u"ffprobe"_s).isEmpty()) {
            QSKIP("ffmpeg is not installed");
        }
        QTemporaryDir folder;
        auto options = small;
        options.clips = true;

        const auto manifest = SampleCard::make(folder.path().toStdString(), options);

        QVERIFY(manifest);
        QCOMPARE(manifest->notes, QStringList());
        QCOMPARE(filesBelow(folder.path()), promised(*manifest));
        const auto planned = PlannedClip::all(options.seed);
        QVERIFY(planned.size() > 1);
        const qsizetype clipCount = static_cast<qsizetype>(planned.size());
        QCOMPARE(manifest->items.size(), m_manifest.items.size() + clipCount);
        // Dated today, after all photographs; undated, before them.
        const bool isDated = !manifest->items.constLast().captured.isEmpty() &&
                             manifest->items.constLast().id.endsWith(u"#video"_s);
        const qsizetype first = isDated ? m_manifest.items.size() : 0;
        for (qsizetype i = 0; i < clipCount; ++i) {
            const auto &clip = planned[static_cast<size_t>(i)];
            const auto &item = manifest->items[first + i];
            const QString file = folder.filePath(item.files.constFirst());
            QVERIFY(item.id.endsWith(u"#video"_s));
            QVERIFY(file.endsWith(u'.' + QLatin1String(clip.extension)));
            QCOMPARE(QFileInfo(file).lastModified(), clip.captured);
            const auto date = ExifReader().read(file.toStdString())->captureDate;
            QCOMPARE(date ? date->toString(Qt::ISODate) : QString(), item.captured);
            const QSize poster(256, 144);
            QCOMPARE(posterFrame(file.toStdString()).size(),
                     clip.upright ? poster.transposed() : poster);

            const QJsonObject found = probe(file);
            const auto tags = found[u"format"_s][u"tags"_s];
            QCOMPARE(QDateTime::fromString(tags[u"creation_time"_s].toString(), Qt::ISODateWithMs),
                     clip.captured);
            const auto streams = found[u"streams"_s].toArray();
            QCOMPARE(streams.size(), clip.hasSound ? 2 : 1);
            QCOMPARE(streams[0][u"codec_name"_s].toString(),
                     clip.codec == PlannedClip::Codec::Hevc ? u"hevc"_s : u"h264"_s);
            QCOMPARE(streams[0][u"nb_frames"_s].toString(), QString::number(clip.frames));
            QCOMPARE(streams[0][u"side_data_list"_s][0][u"rotation"_s].toInt(),
                     clip.upright ? -90 : 0);
            if (clip.hasSound) {
                QCOMPARE(streams[1][u"codec_type"_s].toString(), u"audio"_s);
            }
        }
    }

    void withoutFfmpegTheCardIsMadeWithoutClips()
    {
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", "/nowhere");
        QTemporaryDir folder;
        auto options = small;
        options.clips = true;

        const auto manifest = SampleCard::make(folder.path().toStdString(), options);
        qputenv("PATH", path);

        QVERIFY(manifest);
        QCOMPARE(filesBelow(folder.path()), promised(m_manifest));
        QCOMPARE(manifest->notes, QStringList{u"Clips are left out: ffmpeg is not installed."_s});
    }

    void whereFfmpegFailsNoHalfClipStays()
    {
        QTemporaryDir folder;
        const auto file = std::filesystem::path(folder.path().toStdString()) / "clip.unknown";
        if (QStandardPaths::findExecutable(u"ffmpeg"_s).isEmpty()) {
            QSKIP("ffmpeg is not installed");
        }
        auto clip = PlannedClip::all(1).front();
        clip.frames = 1;
        QFile half(QString::fromStdString(file.string()));
        QVERIFY(half.open(QIODevice::WriteOnly) && half.write("moov") == 4);
        half.close();

        QVERIFY(ClipMaker::make(file, clip).startsWith(u"ffmpeg stopped."_s));

        QVERIFY(!std::filesystem::exists(file));
    }

    void aCardThatCannotBeWrittenIsReported()
    {
        QVERIFY(!SampleCard::make("/proc/nowhere", small));
    }

private:
    [[nodiscard]] std::filesystem::path root() const { return m_folder.path().toStdString(); }

    [[nodiscard]] QStringList jpegs() const
    {
        QStringList result;
        for (const auto &item : m_manifest.items) {
            if (item.files.constLast().endsWith(u".JPG"_s)) {
                result.append(m_folder.filePath(item.files.constLast()));
            }
        }
        return result;
    }

    static QStringList promised(const CardManifest &manifest)
    {
        QStringList result = manifest.companions;
        for (const auto &item : manifest.items) {
            result += item.files;
        }
        result.sort();
        return result;
    }

    // What an independent reader says of a clip.
    static QJsonObject probe(const QString &file)
    {
        QProcess ffprobe;
        ffprobe.start(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-of"_s, u"json"_s, u"-show_format"_s,
                                     u"-show_streams"_s, file});
        ffprobe.waitForFinished();
        return QJsonDocument::fromJson(ffprobe.readAllStandardOutput()).object();
    }

    static QByteArray contents(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static QStringList filesBelow(const QString &folder)
    {
        QStringList result;
        QDirIterator walk(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            result.append(QDir(folder).relativeFilePath(walk.next()));
        }
        result.sort();
        return result;
    }

    static QByteArray digest(const QString &folder)
    {
        QCryptographicHash hash(QCryptographicHash::Sha256);
        for (const auto &file : filesBelow(folder)) {
            hash.addData(file.toUtf8());
            hash.addData(contents(folder + u'/' + file));
        }
        return hash.result();
    }

    QTemporaryDir m_folder;
    CardManifest m_manifest;
};

QTEST_GUILESS_MAIN(SampleCardTest)
#include "SampleCardTest.moc"
