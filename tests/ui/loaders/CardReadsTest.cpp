// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/ScreenBench.h"
#include "ui/loaders/FullImageLoader.h"
#include "ui/loaders/MetadataLoader.h"
#include "ui/loaders/RejectTotals.h"
#include "ui/loaders/ThumbnailLoader.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

/// The loaders that read from the card: settings, sizes, full pictures, thumbnails.
class CardReadsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSettingsBeforeStayUntilTheNewOnesAreRead()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(2));
        // Only now, or they would be remembered from the scan.
        bench.metadata->byName["DSCF0001.JPG"] = ImageMetadata{.iso = 100};
        bench.metadata->byName["DSCF0002.JPG"] = ImageMetadata{.iso = 200};
        MetadataLoader loader;
        loader.setAppState(&bench.appState);
        loader.setItem(bench.item(0));
        QTRY_COMPARE(loader.captureTexts(), QStringList(u"ISO 100"_s));
        bench.metadata->isHeld = true;

        loader.setItem(bench.item(1));

        QCOMPARE(loader.captureTexts(), QStringList(u"ISO 100"_s));
        bench.letGo();
        QTRY_COMPARE(loader.captureTexts(), QStringList(u"ISO 200"_s));
    }

    void settingsThatCannotBeReadLeaveOnlyTheName()
    {
        ScreenBench bench;
        bench.metadata->byName["DSCF0001.JPG"] = ImageMetadata{.iso = 100};
        bench.cull(ScreenBench::shots(2));
        MetadataLoader loader;
        loader.setAppState(&bench.appState);
        loader.setItem(bench.item(0));
        QTRY_VERIFY(!loader.captureTexts().isEmpty());

        loader.setItem(bench.item(1));

        QTRY_VERIFY(loader.captureTexts().isEmpty());
    }

    void aLoaderMayGoAwayWhileTheCardIsSlow()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(1));
        bench.metadata->isHeld = true;
        const int before = bench.metadata->reads;
        {
            MetadataLoader loader;
            loader.setAppState(&bench.appState);
            loader.setItem(bench.item(0));
            QTRY_COMPARE(bench.metadata->reads.load(), before + 1);
        }

        bench.letGo();
    }

    void theSubjectIsTheAnchorOnlyOfAnUprightFile_data()
    {
        QTest::addColumn<qint64>("orientation");
        QTest::addColumn<bool>("hasSubject");
        QTest::addColumn<bool>("counts");

        QTest::newRow("no orientation") << qint64(0) << true << true;
        QTest::newRow("upright") << qint64(1) << true << true;
        QTest::newRow("turned") << qint64(6) << true << false;
        QTest::newRow("mirrored") << qint64(2) << true << false;
        QTest::newRow("no subject") << qint64(1) << false << false;
    }

    void theSubjectIsTheAnchorOnlyOfAnUprightFile()
    {
        QFETCH(qint64, orientation);
        QFETCH(bool, hasSubject);
        QFETCH(bool, counts);
        ImageMetadata metadata;
        if (orientation != 0) {
            metadata.orientation = orientation;
        }
        if (hasSubject) {
            metadata.subjectArea = QPointF(700, 300);
        }

        QCOMPARE(FullImageLoader::anchorOf(metadata),
                 counts ? std::optional(QPointF(700, 300)) : std::nullopt);
        QCOMPARE(FullImageLoader::anchorOf(std::nullopt), std::nullopt);
    }

    void theFullPictureAppearsTogetherWithItsAnchor()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(2));
        // Only now, or it would be remembered from the scan.
        bench.metadata->byName["DSCF0001.JPG"] =
            ImageMetadata{.subjectArea = QPointF(700, 300), .orientation = 1};
        bench.metadata->isHeld = true;
        const int before = bench.metadata->reads;
        FullImageLoader loader;
        loader.setAppState(&bench.appState);
        loader.setItem(bench.item(0));
        QTRY_VERIFY(bench.metadata->reads > before);
        QTest::qWait(100);
        QVERIFY(!loader.hasImage());

        bench.letGo();

        QTRY_VERIFY(loader.hasImage());
        QCOMPARE(loader.image().size(), MadeUpPictures::fullSize);
        QCOMPARE(loader.anchor(), QPointF(700, 300));

        loader.setItem(bench.item(1));
        QVERIFY(!loader.hasImage());
        QTRY_VERIFY(loader.hasImage());
        QCOMPARE(loader.anchor(), QPointF(1500, 1000));
    }

    void sizesAreAskedOnceAsLongAsTheCardStaysSelected()
    {
        ScreenBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002.JPG", "DSCF0003.JPG"});
        bench.press(u"x"_s);
        {
            RejectTotals totals;
            totals.setAppState(&bench.appState);
            QTRY_COMPARE(totals.sizeText(), u"100 bytes"_s);
        }
        std::ofstream(bench.cardRoot / "DCIM/100_FUJI/DSCF0001.JPG") << std::string(500, 'x');

        RejectTotals again;
        again.setAppState(&bench.appState);

        QCOMPARE(again.sizeText(), u"100 bytes"_s); // without a look at the card
        bench.press(u"x"_s);
        QTRY_COMPARE(again.sizeText(), u"200 bytes"_s); // of another one, it asks
    }

    void anotherCardsSizesAreItsOwn()
    {
        ScreenBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002.JPG"});
        bench.press(u"x"_s);
        {
            RejectTotals totals;
            totals.setAppState(&bench.appState);
            QTRY_COMPARE(totals.sizeText(), u"100 bytes"_s);
        }
        bench.volumes.unmount(bench.cardRoot);
        QTRY_COMPARE(bench.appState.phase(), Phase::waitingForCard());
        const auto other = bench.mountLater("OTHER", {"DSCF0001.JPG", "DSCF0002.JPG"});
        std::ofstream(other / "DCIM/100_FUJI/DSCF0001.JPG") << std::string(500, 'x');
        bench.mountCard("OTHER", {});
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
        bench.appState.startCulling();
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
        bench.press(u"x"_s);

        RejectTotals totals;
        totals.setAppState(&bench.appState);

        QTRY_COMPARE(totals.sizeText(), u"500 bytes"_s);
    }

    void sizesAreUnknownUntilTheCardHasAnswered()
    {
        ScreenBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0001.RAF", "DSCF0002.JPG", "DSCF0003.JPG"});
        bench.press(u"x"_s);
        bench.press(u"x"_s);
        RejectTotals totals;
        totals.setAppState(&bench.appState);

        QCOMPARE(totals.itemCount(), 2);
        QCOMPARE(totals.fileCount(), 3);
        QCOMPARE(totals.sizeText(), u"…"_s);
        QTRY_COMPARE(totals.sizeText(), u"300 bytes"_s);
    }

    void aRescueSubtractsAndAsksNothing()
    {
        ScreenBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0001.RAF", "DSCF0002.JPG", "DSCF0003.JPG"});
        bench.press(u"x"_s);
        bench.press(u"x"_s);
        bench.appState.finishCulling();
        RejectTotals totals;
        totals.setAppState(&bench.appState);
        QTRY_COMPARE(totals.sizeText(), u"300 bytes"_s);

        bench.press(u"u"_s);

        QCOMPARE(totals.itemCount(), 1);
        QCOMPARE(totals.fileCount(), 1);
        QCOMPARE(totals.sizeText(), u"100 bytes"_s);
        bench.press(u"u"_s);
        QCOMPARE(totals.sizeText(), u"Zero KB"_s);
    }

    void aThumbnailThatCannotBeMadeIsToldAsFailed()
    {
        ScreenBench bench;
        bench.cull({"DSCF0001-BROKEN.JPG", "DSCF0002.JPG"});
        ThumbnailLoader loader;
        loader.setAppState(&bench.appState);
        loader.setItem(bench.item(0));
        QTRY_VERIFY(loader.failed());
        QVERIFY(!loader.hasImage());

        loader.setItem(bench.item(1));

        QVERIFY(!loader.failed());
        QTRY_VERIFY(loader.hasImage());
        QCOMPARE(loader.image().width(), 256);
    }
};

QTEST_MAIN(CardReadsTest)
#include "CardReadsTest.moc"
