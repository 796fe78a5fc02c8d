// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/ScreenImageLoader.h"

#include "tests/ui/ScreenBench.h"
#include "ui/loaders/ThumbnailLoader.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

class ScreenImageLoaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theThumbnailStandsInUntilThePictureIsDecoded()
    {
        ScreenBench bench;
        bench.pictures.screensAreHeld = true;
        bench.cull(ScreenBench::shots(1));
        ScreenImageLoader loader;
        loader.setAppState(&bench.appState);

        QTRY_VERIFY(loader.hasImage());
        QVERIFY(loader.isStale());
        QCOMPARE(loader.image().width(), 256);

        bench.pictures.screensAreHeld = false;

        QTRY_VERIFY(!loader.isStale());
        QCOMPARE(loader.image().width(), 1200);
    }

    void theSubstituteComesBeforeTheThumbnailsOfOthers_data()
    {
        QTest::addColumn<bool>("isClip");
        QTest::newRow("a photo") << false;
        QTest::newRow("the poster of a clip") << true;
    }

    void theSubstituteComesBeforeTheThumbnailsOfOthers()
    {
        QFETCH(bool, isClip);
        ScreenBench bench;
        bench.pictures.screensAreHeld = true;
        bench.pictures.thumbnailsAreHeld = true;
        auto names = ScreenBench::shots(40);
        names.front() = isClip ? "DSCF0001.MOV" : "DSCF0001.JPG";
        bench.cull(names);
        std::vector<std::unique_ptr<ThumbnailLoader>> others;
        for (int index = 1; index < 40; ++index) {
            others.push_back(std::make_unique<ThumbnailLoader>());
            others.back()->setAppState(&bench.appState);
            others.back()->setItem(bench.item(index));
        }
        const auto busy = size_t(QThread::idealThreadCount());
        QTRY_COMPARE(bench.pictures.begun().size(), busy);
        ScreenImageLoader loader;
        ThumbnailLoader poster;
        if (isClip) {
            poster.setLookedAt(true);
            poster.setAppState(&bench.appState);
            poster.setItem(bench.item(0));
        } else {
            loader.setAppState(&bench.appState);
        }

        bench.letGo();

        // The threads that were let go take one each, in an order of their own.
        QTRY_VERIFY(bench.pictures.begun().size() >= 2 * busy);
        auto next = bench.pictures.begun();
        next.erase(next.begin(), next.begin() + qsizetype(busy));
        next.resize(busy);
        QVERIFY(std::ranges::find(next, names.front() + " small") != next.end());
    }

    void aCachedPictureIsThereAtOnce()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(3));
        ScreenImageLoader loader;
        loader.setAppState(&bench.appState);
        QTRY_VERIFY(!bench.pipeline.cachedScreenImage(bench.item(1)).isNull());
        QTRY_VERIFY(loader.hasImage() && !loader.isStale());
        const QSignalSpy stale(&loader, &ScreenImageLoader::isStaleChanged);

        bench.press(KeyPress::Right);

        QCOMPARE(loader.image().cacheKey(),
                 bench.pipeline.cachedScreenImage(bench.item(1)).cacheKey());
        QCOMPARE(stale.size(), 0);
    }

    void thePictureBeforeStaysWhileNothingIsThere()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(40));
        ScreenImageLoader loader;
        loader.setAppState(&bench.appState);
        QTRY_VERIFY(loader.hasImage() && !loader.isStale());
        const auto before = loader.image().cacheKey();
        bench.pictures.screensAreHeld = true;
        bench.pictures.thumbnailsAreHeld = true;

        bench.appState.selectItem(39);

        QCOMPARE(loader.image().cacheKey(), before);
        bench.letGo();
        QTRY_VERIFY(loader.image().cacheKey() != before && !loader.isStale());
    }

    void aLateResultOfAnEarlierItemIsDropped()
    {
        ScreenBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002.JPG", "DSCF0003.MOV"});
        bench.pictures.screensAreHeld = true;
        ScreenImageLoader loader;
        bench.appState.selectItem(1);
        loader.setAppState(&bench.appState);
        bench.appState.selectItem(2);
        QVERIFY(!loader.hasImage());
        const QSignalSpy images(&loader, &ScreenImageLoader::imageChanged);

        bench.letGo();

        QTRY_VERIFY(!bench.pipeline.cachedScreenImage(bench.item(1)).isNull());
        QCoreApplication::processEvents();
        QCOMPARE(images.size(), 0);
        QVERIFY(!loader.hasImage());
    }

    void resultsThatComeInAnyOrderShowTheCurrentItemOnly()
    {
        ScreenBench bench;
        const auto names = ScreenBench::shots(60);
        bench.cull(names);
        ScreenImageLoader loader;
        loader.setAppState(&bench.appState);
        const std::vector<qint64> far = {20, 35, 50}; // from each other and from what is fetched
        QHash<qint64, qint64> thumbnails;
        for (const auto index : far) {
            thumbnails[index] =
                QCoro::waitFor(bench.pipeline.thumbnail(bench.item(index))).cacheKey();
            bench.pictures.hold(names[size_t(index)]);
        }
        for (const auto index : far) {
            bench.appState.selectItem(index);
            QTRY_COMPARE(loader.image().cacheKey(), thumbnails[index]);
        }
        QList<qint64> shown;
        connect(&loader, &ScreenImageLoader::imageChanged, &loader,
                [&] { shown.append(loader.image().cacheKey()); });

        for (const auto index : {35, 20, 50}) {
            bench.pictures.hold(names[size_t(index)], false);
            QTest::qWait(30);
        }

        QTRY_VERIFY(!loader.isStale());
        QCOMPARE(shown, {loader.image().cacheKey()});
        QCOMPARE(loader.image(), bench.pipeline.cachedScreenImage(bench.item(50)));
    }

    void aClipHasNoPicture()
    {
        ScreenBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002.MOV"});
        ScreenImageLoader loader;
        loader.setAppState(&bench.appState);
        QTRY_VERIFY(loader.hasImage());

        bench.press(KeyPress::Right);

        QVERIFY(!loader.hasImage());
        QVERIFY(!loader.isStale());
    }

    void aPictureThatCannotBeDecodedLeavesTheOneBefore()
    {
        ScreenBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002-BROKEN.JPG"});
        ScreenImageLoader loader;
        loader.setAppState(&bench.appState);
        QTRY_VERIFY(loader.hasImage() && !loader.isStale());
        const auto before = loader.image().cacheKey();

        QVERIFY(!loader.failed());
        bench.press(KeyPress::Right);

        QTRY_VERIFY(loader.failed());
        QCOMPARE(loader.image().cacheKey(), before);
        bench.press(KeyPress::Left);
        QVERIFY(!loader.failed());
    }

    void theRemovalOfTheCardTakesThePictureAway()
    {
        ScreenBench bench;
        bench.cull(ScreenBench::shots(1));
        ScreenImageLoader loader;
        loader.setAppState(&bench.appState);
        QTRY_VERIFY(loader.hasImage());

        bench.volumes.unmount(bench.cardRoot);

        QTRY_VERIFY(!loader.hasImage());
    }

    void aLoaderThatGoesAwayWhileLoadingIsNotMissed()
    {
        ScreenBench bench;
        bench.pictures.screensAreHeld = true;
        bench.cull(ScreenBench::shots(1));
        {
            ScreenImageLoader loader;
            loader.setAppState(&bench.appState);
        }

        bench.letGo();

        QTRY_VERIFY(!bench.pipeline.cachedScreenImage(bench.item(0)).isNull());
    }
};

QTEST_MAIN(ScreenImageLoaderTest)
#include "ScreenImageLoaderTest.moc"
