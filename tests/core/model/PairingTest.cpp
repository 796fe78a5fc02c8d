// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/Pairing.h"

#include <QTest>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;
using Paths = std::vector<std::filesystem::path>;

class PairingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noFilesGiveNoItems() { QVERIFY(Pairing::pair({}).isEmpty()); }

    void extensions_data()
    {
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QString>("place");

        for (const char *raw :
             {"RAF", "CR2", "CR3", "CRW", "NEF", "NRW", "ARW", "SR2", "SRF", "ORF", "RW2", "PEF",
              "RWL", "IIQ", "3FR", "FFF", "X3F", "DNG", "RAW"}) {
            QTest::newRow(raw) << QString::fromLatin1(raw) << u"raw"_s;
        }
        for (const char *preview : {"JPG", "JPEG", "HIF", "HEIF", "HEIC", "TIF", "TIFF"}) {
            QTest::newRow(preview) << QString::fromLatin1(preview) << u"preview"_s;
        }
        for (const char *video : {"MOV", "MP4", "M4V", "AVI", "MTS", "M2TS", "3GP"}) {
            QTest::newRow(video) << QString::fromLatin1(video) << u"video"_s;
        }
        for (const char *other : {"XMP", "WAV", "THM", "TXT", "PNG", "JPGX", ""}) {
            QTest::newRow(*other ? other : "no extension") << QString::fromLatin1(other) << u""_s;
        }
    }

    void extensions()
    {
        QFETCH(const QString, extension);
        QFETCH(const QString, place);

        for (const auto &spelling : {extension, extension.toLower()}) {
            const auto file = path((u"100_FUJI/DSCF0001."_s + spelling).toStdString());
            const auto items = Pairing::pair({file});

            QCOMPARE(items.size(), place.isEmpty() ? 0 : 1);
            if (!items.isEmpty()) {
                const auto &item = items.first();
                QCOMPARE(item.rawURL.has_value(), place == u"raw");
                QCOMPARE(item.previewURL.has_value(), place == u"preview");
                QCOMPARE(item.videoURL.has_value(), place == u"video");
                QCOMPARE(item.kind, place == u"video" ? MediaKind::video : MediaKind::photo);
            }
        }
    }

    void theSetsHoldNothingElse()
    {
        QCOMPARE(Pairing::rawExtensions().size(), 19);
        QCOMPARE(Pairing::previewExtensions().size(), 7);
        QCOMPARE(Pairing::videoExtensions().size(), 7);
    }

    void rawAndPreviewOfOneStemAreOneItemAndTheClipItsOwn()
    {
        const auto items = Pairing::pair(
            paths({"100CANON/IMG_0001.CR3", "100CANON/IMG_0001.JPG", "100CANON/IMG_0001.MP4"}));

        QCOMPARE(items.size(), 2);
        QCOMPARE(items.at(0).id, u"100CANON/IMG_0001"_s);
        QCOMPARE(items.at(0).kind, MediaKind::photo);
        QCOMPARE(items.at(0).rawURL, path("100CANON/IMG_0001.CR3"));
        QCOMPARE(items.at(0).previewURL, path("100CANON/IMG_0001.JPG"));
        QVERIFY(!items.at(0).videoURL);
        QCOMPARE(items.at(1).id, u"100CANON/IMG_0001.MP4#video"_s);
        QCOMPARE(items.at(1).kind, MediaKind::video);
    }

    void lettersOfAnyCasePairAndKeepTheirSpelling()
    {
        const auto items = Pairing::pair(paths({"100_fuji/dscf0001.raf", "100_fuji/DSCF0001.JPG"}));

        QCOMPARE(items.size(), 1);
        QCOMPARE(items.first().id, u"100_FUJI/DSCF0001"_s);
        QCOMPARE(items.first().rawURL, path("100_fuji/dscf0001.raf"));
        QCOMPARE(items.first().previewURL, path("100_fuji/DSCF0001.JPG"));
    }

    void aSecondPreviewIsItsOwnItemWhicheverComesSecond()
    {
        QCOMPARE(ids({"F/a.JPG", "F/a.HEIC"}), (QStringList{u"F/A"_s, u"F/A.HEIC#dup1"_s}));
        QCOMPARE(ids({"F/a.HEIC", "F/a.JPG"}), (QStringList{u"F/A"_s, u"F/A.JPG#dup1"_s}));
    }

    void duplicatesAreNumberedFromOne()
    {
        QCOMPARE(
            ids({"F/DSCF0001.RAF", "F/dscf0001.raf", "F/Dscf0001.RAF"}),
            (QStringList{u"F/DSCF0001"_s, u"F/DSCF0001.RAF#dup1"_s, u"F/DSCF0001.RAF#dup2"_s}));
    }

    void aDuplicateDoesNotTakeTheOtherHalfOfThePair()
    {
        const auto items = Pairing::pair(paths({"F/a.RAF", "F/A.raf", "F/a.JPG"}));

        QCOMPARE(items.size(), 2);
        QCOMPARE(items.at(0).rawURL, path("F/a.RAF"));
        QCOMPARE(items.at(0).previewURL, path("F/a.JPG"));
        QCOMPARE(items.at(1).rawURL, path("F/A.raf"));
        QVERIFY(!items.at(1).previewURL);
    }

    void aLaterClipOfOneNameReplacesTheEarlier()
    {
        const auto items = Pairing::pair(paths({"F/a.MOV", "F/A.mov"}));

        QCOMPARE(items.size(), 1);
        QCOMPARE(items.first().videoURL, path("F/A.mov"));
    }

    void clipsOfOneStemAndDifferentExtensionsAreTwo()
    {
        QCOMPARE(ids({"F/a.MOV", "F/a.MP4"}),
                 (QStringList{u"F/A.MOV#video"_s, u"F/A.MP4#video"_s}));
    }

    void companionsAndSidecarsGiveNoItem()
    {
        QVERIFY(ids({"F/README.TXT", "F/noextension", "F/DSCF0001.XMP"}).isEmpty());
    }

    void equalStemsInTwoFoldersAreTwoItems()
    {
        QCOMPARE(ids({"100_FUJI/DSCF0001.JPG", "101_FUJI/DSCF0001.RAF"}),
                 (QStringList{u"100_FUJI/DSCF0001"_s, u"101_FUJI/DSCF0001"_s}));
    }

    void foldersOfOneNameInTwoPlacesNeverPair()
    {
        const auto items = Pairing::pair(paths({"a/SUB/1.JPG", "b/SUB/1.RAF", "b/SUB/1.JPG"}));

        QCOMPARE(items.size(), 3);
        for (const auto &item : items) {
            QCOMPARE(item.allURLs().size(), size_t(1));
        }
    }

    void clipsOfFoldersOfOneNameBothStay()
    {
        const auto items = Pairing::pair(paths({"a/SUB/1.MOV", "b/SUB/1.MOV"}));

        QCOMPARE(items.size(), 2);
        QVERIFY(items.at(0).videoURL != items.at(1).videoURL);
    }

    void aFileDirectlyInDcimIsKeyedByDcim()
    {
        QCOMPARE(Pairing::pair({"/card/DCIM/x.JPG"}).first().id, u"DCIM/X"_s);
    }

    void aStemKeepsItsInnerDots() { QCOMPARE(ids({"F/a.b.c.JPG"}), QStringList{u"F/A.B.C"_s}); }

    void upperCasingIsFull()
    {
        QCOMPARE(ids({"F/stra\xC3\x9F"
                      "e.jpg",
                      "F/STRASSE.RAF"}),
                 QStringList{u"F/STRASSE"_s});
    }

    void composedAndDecomposedNamesPairAndTheIdIsComposed()
    {
        QCOMPARE(ids({"F/caf\xC3\xA9.JPG", "F/cafe\xCC\x81.RAF"}), QStringList{u"F/CAF\u00C9"_s});
    }

    void namesThatAreNotUtf8StayApart()
    {
        QCOMPARE(ids({"F/\xE9.JPG", "F/\xE8.RAF", "F/\xEF\xBF\xBD.JPG"}).size(), 3);
    }

    void itemsComeInUnicodeOrderOfTheirIdsWithoutDates()
    {
        const auto items =
            Pairing::pair(paths({"F/b.JPG", "F/a.JPG", "E/z.JPG", "F/\xC3\xA4.JPG"}));

        QStringList found;
        for (const auto &item : items) {
            found.append(item.id);
            QVERIFY(!item.captureDate);
        }
        QCOMPARE(found, (QStringList{u"E/Z"_s, u"F/A"_s, u"F/B"_s, u"F/\u00C4"_s}));
    }

    /// Whatever the files: every known one is in exactly one item, and the ids are unique.
    void everyFileLandsInExactlyOneItem()
    {
        std::mt19937 random(7);
        const Paths extensionsToTry = {".RAF", ".raf", ".JPG", ".HIF", ".MOV", ".MP4", ".TXT"};
        for (int round = 0; round < 300; ++round) {
            Paths files;
            for (const char *folder : {"A", "B/A", "a"}) {
                for (const char *stem : {"1", "x", "X", "x#dup1"}) {
                    for (const auto &extension : extensionsToTry) {
                        if (random() % 3 == 0) {
                            files.push_back(path(folder) / (stem + extension.string()));
                        }
                    }
                }
            }
            std::ranges::shuffle(files, random);

            const auto items = Pairing::pair(files);

            QSet<QString> idsSeen;
            Paths placed;
            for (const auto &item : items) {
                QVERIFY(!idsSeen.contains(item.id));
                idsSeen.insert(item.id);
                for (const auto &file : item.allURLs()) {
                    placed.push_back(file);
                    QCOMPARE(file.parent_path(), item.allURLs().front().parent_path());
                }
            }
            std::erase_if(files, [](const auto &file) { return file.extension() == ".TXT"; });
            // a clip of the same folder and name, upper case, is the one that a later one replaces
            std::ranges::sort(placed);
            QVERIFY(std::ranges::adjacent_find(placed) == placed.end());
            for (const auto &file : files) {
                const bool clip = file.extension() == ".MOV" || file.extension() == ".MP4";
                QVERIFY(clip || std::ranges::binary_search(placed, file));
            }
        }
    }

private:
    static std::filesystem::path path(const std::filesystem::path &relative)
    {
        return std::filesystem::path("/card/DCIM") / relative;
    }

    static Paths paths(std::initializer_list<const char *> relative)
    {
        Paths all;
        for (const char *name : relative) {
            all.push_back(path(name));
        }
        return all;
    }

    static QStringList ids(std::initializer_list<const char *> relative)
    {
        QStringList all;
        for (const auto &item : Pairing::pair(paths(relative))) {
            all.append(item.id);
        }
        return all;
    }
};

QTEST_GUILESS_MAIN(PairingTest)
#include "PairingTest.moc"
