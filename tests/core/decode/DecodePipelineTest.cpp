// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/decode/DecodePipeline.h"

#include <QCoroTask>
#include <QMutex>
#include <QSemaphore>
#include <QTest>

#include <map>
#include <set>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// Decoders that draw made-up pictures, count, and wait at a gate when told to.
class MadeUpDecoders {
public:
    [[nodiscard]] DecodePipeline::Decoders decoders()
    {
        return {.picture = [this](const fs::path &url,
                                  std::optional<int> maxPixel) { return picture(url, maxPixel); },
                .videoFrame = [this](const fs::path &url) { return picture(url, 256); },
                .forget = [this] { ++forgotten; }};
    }

    [[nodiscard]] std::vector<std::string> decoded()
    {
        const QMutexLocker lock(&m_mutex);
        return m_decoded;
    }

    [[nodiscard]] qint64 countOf(const std::string &name)
    {
        const auto all = decoded();
        return std::ranges::count(all, name);
    }

    std::atomic_bool isGated = false;
    QSemaphore gate;
    std::atomic_int waiting = 0;
    int forgotten = 0;

private:
    QImage picture(const fs::path &url, std::optional<int> maxPixel)
    {
        {
            const QMutexLocker lock(&m_mutex);
            m_decoded.push_back(url.filename().native());
        }
        if (isGated) {
            ++waiting;
            gate.acquire();
            --waiting;
        }
        if (url.filename().native().starts_with("bad")) {
            return {};
        }
        const int size = maxPixel.value_or(6000);
        return QImage(size, size / 2, QImage::Format_RGB32);
    }

    QMutex m_mutex;
    std::vector<std::string> m_decoded;
};

MediaItem photo(const QString &id)
{
    return {.id = id, .previewURL = fs::path("/card") / (id.toStdString() + ".JPG")};
}

MediaItem clip(const QString &id)
{
    return {.id = id,
            .kind = MediaKind::video,
            .videoURL = fs::path("/card") / (id.toStdString() + ".MOV")};
}

QList<MediaItem> photos(int count)
{
    QList<MediaItem> items;
    for (int number = 0; number < count; ++number) {
        items.append(photo(QString::number(number)));
    }
    return items;
}

QCoro::Task<> collect(QCoro::Task<QImage> task, QList<QImage> *results)
{
    results->append(co_await task);
}

} // namespace

class DecodePipelineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_decoders = std::make_unique<MadeUpDecoders>();
        m_pipeline = std::make_unique<DecodePipeline>(m_decoders->decoders());
    }

    void cleanup()
    {
        m_decoders->isGated = false;
        m_decoders->gate.release(1000);
        m_pipeline.reset();
        QTest::qWait(0);
    }

    void aScreenImageIsDecodedOnceAtTheGivenSize()
    {
        QCOMPARE(QCoro::waitFor(m_pipeline->screenImage(photo(u"A"_s), 1200)).width(), 1200);
        QCOMPARE(QCoro::waitFor(m_pipeline->screenImage(photo(u"A"_s), 1200)).width(), 1200);

        QCOMPARE(m_decoders->countOf("A.JPG"), 1);
        QCOMPARE(m_pipeline->cachedScreenImage(photo(u"A"_s)).width(), 1200);
    }

    void theCachedImageNeverDecodes()
    {
        QVERIFY(m_pipeline->cachedScreenImage(photo(u"A"_s)).isNull());
        QVERIFY(m_decoders->decoded().empty());
    }

    void thumbnailsAre256PixelsAndCached()
    {
        QCOMPARE(QCoro::waitFor(m_pipeline->thumbnail(photo(u"A"_s))).width(), 256);
        QCOMPARE(QCoro::waitFor(m_pipeline->thumbnail(photo(u"A"_s))).width(), 256);

        QCOMPARE(m_decoders->countOf("A.JPG"), 1);
        QVERIFY(m_pipeline->cachedScreenImage(photo(u"A"_s)).isNull());
    }

    void theFullImageIsWholeAndThreeAreKept()
    {
        for (const auto &item : photos(4)) {
            QCOMPARE(QCoro::waitFor(m_pipeline->fullImage(item)).width(), 6000);
        }
        QCOMPARE(QCoro::waitFor(m_pipeline->fullImage(photo(u"3"_s))).width(), 6000);
        QCOMPARE(m_decoders->countOf("3.JPG"), 1);
        (void)QCoro::waitFor(m_pipeline->fullImage(photo(u"0"_s)));
        QCOMPARE(m_decoders->countOf("0.JPG"), 2);
    }

    void the31stScreenImageEvictsTheFirstEvenIfJustRequested()
    {
        const auto items = photos(31);
        for (int index = 0; index < 30; ++index) {
            (void)QCoro::waitFor(m_pipeline->screenImage(items.at(index), 100));
        }
        (void)QCoro::waitFor(m_pipeline->screenImage(items.at(0), 100));

        (void)QCoro::waitFor(m_pipeline->screenImage(items.at(30), 100));

        QVERIFY(m_pipeline->cachedScreenImage(items.at(0)).isNull());
        QVERIFY(!m_pipeline->cachedScreenImage(items.at(1)).isNull());
        QVERIFY(!m_pipeline->cachedScreenImage(items.at(30)).isNull());
    }

    void twoThousandThumbnailsAreKept()
    {
        std::atomic_int decodes = 0;
        DecodePipeline pipeline({.picture =
                                     [&](const fs::path &, std::optional<int>) {
                                         ++decodes;
                                         return QImage(1, 1, QImage::Format_RGB32);
                                     },
                                 .videoFrame = [](const fs::path &) { return QImage(); }});
        const auto items = photos(2001);
        for (const auto &item : items) {
            (void)QCoro::waitFor(pipeline.thumbnail(item));
        }
        QCOMPARE(decodes.load(), 2001);

        (void)QCoro::waitFor(pipeline.thumbnail(items.at(1)));
        QCOMPARE(decodes.load(), 2001);
        (void)QCoro::waitFor(pipeline.thumbnail(items.at(0)));
        QCOMPARE(decodes.load(), 2002);
    }

    void twoRequestsAtOnceDecodeTwiceAndLeaveOneEntry()
    {
        m_decoders->isGated = true;
        QList<QImage> results;
        collect(m_pipeline->screenImage(photo(u"A"_s), 100), &results);
        collect(m_pipeline->screenImage(photo(u"A"_s), 100), &results);
        m_decoders->gate.release(2);

        QTRY_COMPARE(results.size(), 2);
        QCOMPARE(m_decoders->countOf("A.JPG"), 2);
        // One entry: thirty others push it out, and no second one stays behind.
        for (const auto &item : photos(30)) {
            m_decoders->gate.release();
            (void)QCoro::waitFor(m_pipeline->screenImage(item, 100));
        }
        QVERIFY(m_pipeline->cachedScreenImage(photo(u"A"_s)).isNull());
        QVERIFY(!m_pipeline->cachedScreenImage(photo(u"0"_s)).isNull());
    }

    void aClipHasNoFullImageAndItsScreenImageIsThePosterFrame()
    {
        QVERIFY(QCoro::waitFor(m_pipeline->fullImage(clip(u"C"_s))).isNull());
        QVERIFY(m_decoders->decoded().empty());
        QCOMPARE(QCoro::waitFor(m_pipeline->screenImage(clip(u"C"_s), 2160)).width(), 256);
        QVERIFY(m_pipeline->cachedScreenImage(clip(u"C"_s)).isNull());
        QCOMPARE(QCoro::waitFor(m_pipeline->thumbnail(clip(u"C"_s))).width(), 256);
        QCOMPARE(m_decoders->countOf("C.MOV"), 1);
    }

    void aPhotoWithoutAPreviewDecodesItsRaw()
    {
        const MediaItem raw{.id = u"R"_s, .rawURL = "/card/R.RAF"};

        (void)QCoro::waitFor(m_pipeline->screenImage(raw, 100));

        QCOMPARE(m_decoders->countOf("R.RAF"), 1);
    }

    void aPairDecodesItsPreview()
    {
        const MediaItem pair{.id = u"P"_s, .rawURL = "/card/P.RAF", .previewURL = "/card/P.JPG"};

        (void)QCoro::waitFor(m_pipeline->screenImage(pair, 100));

        QCOMPARE(m_decoders->decoded(), std::vector<std::string>{"P.JPG"});
    }

    void anUnreadableFileIsNothingEveryTimeAndNeverCached()
    {
        for (int attempt = 1; attempt <= 3; ++attempt) {
            QVERIFY(QCoro::waitFor(m_pipeline->screenImage(photo(u"bad"_s), 100)).isNull());
            QVERIFY(QCoro::waitFor(m_pipeline->thumbnail(photo(u"bad"_s))).isNull());
            QVERIFY(QCoro::waitFor(m_pipeline->fullImage(photo(u"bad"_s))).isNull());
            QCOMPARE(m_decoders->countOf("bad.JPG"), 3 * attempt);
        }
    }

    void neighbours_data()
    {
        QTest::addColumn<qint64>("current");
        QTest::addColumn<qint64>("count");
        QTest::addColumn<QList<qint64>>("expected");
        using Indices = QList<qint64>;

        QTest::newRow("no items") << 0LL << 0LL << Indices{};
        QTest::newRow("one item") << 0LL << 1LL << Indices{0};
        QTest::newRow("in the middle")
            << 50LL << 100LL << Indices{50, 51, 49, 52, 48, 53, 47, 54, 46, 55, 56, 57, 58};
        QTest::newRow("at the start") << 0LL << 20LL << Indices{0, 1, 2, 3, 4, 5, 6, 7, 8};
        QTest::newRow("at the end") << 19LL << 20LL << Indices{19, 18, 17, 16, 15};
        QTest::newRow("near the end") << 18LL << 20LL << Indices{18, 19, 17, 16, 15, 14};
    }

    void neighbours()
    {
        QFETCH(const qint64, current);
        QFETCH(const qint64, count);
        QFETCH(const QList<qint64>, expected);

        QCOMPARE(DecodePipeline::neighbours(current, count), expected);
    }

    void prefetchTakesTheItemsInTheOrderOfTheirNearness()
    {
        m_decoders->isGated = true;
        const auto items = photos(100);
        m_pipeline->prefetch(items, 50, 100);
        QCOMPARE(m_pipeline->inFlight().size(), 13);
        m_decoders->isGated = false;
        m_decoders->gate.release(1);

        QTRY_VERIFY(m_pipeline->inFlight().isEmpty());
        const std::vector<std::string> expected = {"50.JPG", "51.JPG", "49.JPG", "52.JPG", "48.JPG",
                                                   "53.JPG", "47.JPG", "54.JPG", "46.JPG", "55.JPG",
                                                   "56.JPG", "57.JPG", "58.JPG"};
        QCOMPARE(m_decoders->decoded(), expected);
        QVERIFY(!m_pipeline->cachedScreenImage(items.at(58)).isNull());
    }

    void prefetchAroundTheFirstOfTwentySchedulesNine()
    {
        m_decoders->isGated = true;
        m_pipeline->prefetch(photos(20), 0, 100);

        QCOMPARE(m_pipeline->inFlight(), idsFrom(0, 8));
    }

    void prefetchAroundTheLastOfTwentySchedulesFive()
    {
        m_decoders->isGated = true;
        m_pipeline->prefetch(photos(20), 19, 100);

        QCOMPARE(m_pipeline->inFlight(), idsFrom(15, 19));
    }

    void prefetchOfClipsSchedulesNothing()
    {
        m_pipeline->prefetch({clip(u"A"_s), clip(u"B"_s)}, 0, 100);

        QVERIFY(m_pipeline->inFlight().isEmpty());
        QVERIFY(m_decoders->decoded().empty());
    }

    void prefetchOfNothingIsHarmless()
    {
        m_pipeline->prefetch({}, 0, 100);

        QVERIFY(m_pipeline->inFlight().isEmpty());
    }

    void prefetchSkipsWhatIsCached()
    {
        const auto items = photos(2);
        (void)QCoro::waitFor(m_pipeline->screenImage(items.at(0), 100));
        m_decoders->isGated = true;

        m_pipeline->prefetch(items, 0, 100);

        QCOMPARE(m_pipeline->inFlight(), QSet<QString>{u"1"_s});
    }

    void aNewPrefetchCancelsTheOldAndSkipsWhatIsStillInFlight()
    {
        m_decoders->isGated = true;
        const auto items = photos(40);
        m_pipeline->prefetch(items, 0, 100);
        QTRY_COMPARE(m_decoders->waiting, 1);

        m_pipeline->prefetch(items, 4, 100); // 0 to 8 are still marked by the first

        QCOMPARE(m_pipeline->inFlight(), idsFrom(0, 12));
        m_decoders->isGated = false;
        m_decoders->gate.release(40);
        QTRY_VERIFY(m_pipeline->inFlight().isEmpty());
        QCOMPARE(m_decoders->countOf("0.JPG"), 1); // running when cancelled, completed and kept
        QVERIFY(!m_pipeline->cachedScreenImage(items.at(0)).isNull());
    }

    void whatTheNewestPrefetchSkippedIsTakenUpAgain()
    {
        m_decoders->isGated = true;
        const auto items = photos(40);
        m_pipeline->prefetch(items, 0, 100);
        QTRY_COMPARE(m_decoders->waiting, 1);
        m_pipeline->prefetch(items, 4, 100);

        m_decoders->isGated = false;
        m_decoders->gate.release(40);

        for (int index = 0; index <= 12; ++index) {
            QTRY_VERIFY(!m_pipeline->cachedScreenImage(items.at(index)).isNull());
            QCOMPARE(m_decoders->countOf(std::to_string(index) + ".JPG"), 1);
        }
        QTRY_VERIFY(m_pipeline->inFlight().isEmpty());
    }

    void aDirectRequestDecodesWhatAPrefetchIsDecoding()
    {
        m_decoders->isGated = true;
        const auto items = photos(1);
        m_pipeline->prefetch(items, 0, 100);
        QTRY_COMPARE(m_decoders->waiting, 1);
        QList<QImage> results;
        collect(m_pipeline->screenImage(items.at(0), 100), &results);
        m_decoders->gate.release(2);

        QTRY_COMPARE(results.size(), 1);
        QTRY_VERIFY(m_pipeline->inFlight().isEmpty());
        QCOMPARE(m_decoders->countOf("0.JPG"), 2);
    }

    void theCurrentPictureComesBeforeThumbnailsBeforePrefetch()
    {
        m_decoders->isGated = true;
        QList<QImage> results;
        for (int number = 0; number < QThread::idealThreadCount(); ++number) {
            collect(m_pipeline->thumbnail(photo(u"busy%1"_s.arg(number))), &results);
        }
        QTRY_COMPARE(m_decoders->waiting, QThread::idealThreadCount());
        m_pipeline->prefetch({photo(u"prefetched"_s)}, 0, 100);
        collect(m_pipeline->thumbnail(photo(u"thumbnail"_s)), &results);
        collect(m_pipeline->screenImage(photo(u"current"_s), 100), &results);

        for (int step = 0; step < QThread::idealThreadCount() + 3; ++step) {
            m_decoders->gate.release();
            QTest::qWait(5);
        }

        QTRY_VERIFY(m_pipeline->inFlight().isEmpty());
        const auto all = m_decoders->decoded();
        const std::vector<std::string> last(all.end() - 3, all.end());
        QCOMPARE(last,
                 (std::vector<std::string>{"current.JPG", "thumbnail.JPG", "prefetched.JPG"}));
    }

    void theThumbnailOfTheCurrentItemComesBeforeTheOthers()
    {
        m_decoders->isGated = true;
        QList<QImage> results;
        const int busy = QThread::idealThreadCount();
        for (int number = 0; number < busy; ++number) {
            collect(m_pipeline->thumbnail(photo(u"busy%1"_s.arg(number))), &results);
        }
        QTRY_COMPARE(m_decoders->waiting, busy);
        collect(m_pipeline->thumbnail(photo(u"other"_s)), &results);
        collect(m_pipeline->thumbnail(photo(u"current"_s), DecodePipeline::Current), &results);
        collect(m_pipeline->screenImage(clip(u"clip"_s), 100), &results);

        for (int step = 0; step < busy + 3; ++step) {
            m_decoders->gate.release();
            QTest::qWait(5);
        }

        QTRY_COMPARE(results.size(), busy + 3);
        const auto all = m_decoders->decoded();
        const std::vector<std::string> last(all.end() - 3, all.end());
        QCOMPARE(last, (std::vector<std::string>{"current.JPG", "clip.MOV", "other.JPG"}));
    }

    void whatNobodyWantsAnyMoreIsNotDecoded()
    {
        m_decoders->isGated = true;
        std::vector<QCoro::Task<QImage>> running;
        for (int number = 0; number < QThread::idealThreadCount(); ++number) {
            running.push_back(m_pipeline->screenImage(photo(u"busy%1"_s.arg(number)), 2160));
        }
        QTRY_COMPARE(m_decoders->waiting, QThread::idealThreadCount());
        std::stop_source stop;
        const auto token = stop.get_token();
        const auto small = m_pipeline->thumbnail(photo(u"a"_s), DecodePipeline::Current, token);
        const auto large = m_pipeline->screenImage(photo(u"b"_s), 2160, token);
        const auto whole = m_pipeline->fullImage(photo(u"c"_s), token);
        const auto frame = m_pipeline->thumbnail(clip(u"d"_s), DecodePipeline::Visible, token);
        const auto wanted = m_pipeline->thumbnail(photo(u"e"_s), DecodePipeline::Visible);

        stop.request_stop();
        m_decoders->isGated = false;
        m_decoders->gate.release(QThread::idealThreadCount());

        QTRY_VERIFY(wanted.isReady() && small.isReady() && large.isReady() && whole.isReady() &&
                    frame.isReady());
        QCOMPARE(m_decoders->countOf("e.JPG"), 1);
        for (const auto *const name : {"a.JPG", "b.JPG", "c.JPG", "d.MOV"}) {
            QCOMPARE(m_decoders->countOf(name), 0);
        }
        // Nothing was kept of it: who asks again gets the picture.
        QVERIFY(!QCoro::waitFor(m_pipeline->screenImage(photo(u"b"_s), 2160)).isNull());
    }

    void whatHasBegunWhenItIsNotWantedAnyMoreIsKept()
    {
        m_decoders->isGated = true;
        std::stop_source stop;
        const auto begun = m_pipeline->screenImage(photo(u"a"_s), 2160, stop.get_token());
        QTRY_COMPARE(m_decoders->waiting.load(), 1);

        stop.request_stop();
        m_decoders->isGated = false;
        m_decoders->gate.release();

        QTRY_VERIFY(begun.isReady());
        QVERIFY(!m_pipeline->cachedScreenImage(photo(u"a"_s)).isNull());
    }

    void anotherSelectionEmptiesEverything()
    {
        m_pipeline->beginSelection(1);
        (void)QCoro::waitFor(m_pipeline->screenImage(photo(u"A"_s), 100));
        (void)QCoro::waitFor(m_pipeline->thumbnail(photo(u"A"_s)));
        (void)QCoro::waitFor(m_pipeline->fullImage(photo(u"A"_s)));

        m_pipeline->beginSelection(2);

        QCOMPARE(m_decoders->forgotten, 2);
        QVERIFY(m_pipeline->cachedScreenImage(photo(u"A"_s)).isNull());
        (void)QCoro::waitFor(m_pipeline->thumbnail(photo(u"A"_s)));
        (void)QCoro::waitFor(m_pipeline->fullImage(photo(u"A"_s)));
        QCOMPARE(m_decoders->countOf("A.JPG"), 5);
    }

    void theSameSelectionKeepsEverything()
    {
        m_pipeline->beginSelection(1);
        (void)QCoro::waitFor(m_pipeline->screenImage(photo(u"A"_s), 100));

        m_pipeline->beginSelection(1);

        QVERIFY(!m_pipeline->cachedScreenImage(photo(u"A"_s)).isNull());
        QCOMPARE(m_decoders->forgotten, 1);
    }

    void decodesOfAnotherSelectionBringNothingAndAreNotKept()
    {
        m_pipeline->beginSelection(1);
        m_decoders->isGated = true;
        QList<QImage> results;
        collect(m_pipeline->screenImage(photo(u"A"_s), 100), &results);
        collect(m_pipeline->thumbnail(photo(u"A"_s)), &results);
        m_pipeline->prefetch(photos(3), 0, 100);

        m_pipeline->beginSelection(2);
        QVERIFY(m_pipeline->inFlight().isEmpty());
        m_pipeline->prefetch(photos(1), 0, 100); // the same id on the other card
        QCOMPARE(m_pipeline->inFlight(), QSet<QString>{u"0"_s});
        m_decoders->isGated = false;
        m_decoders->gate.release(10);

        QTRY_COMPARE(results.size(), 2);
        QVERIFY(results.at(0).isNull());
        QVERIFY(results.at(1).isNull());
        QVERIFY(m_pipeline->cachedScreenImage(photo(u"A"_s)).isNull());
        QTRY_VERIFY(m_pipeline->inFlight().isEmpty());
        QVERIFY(!m_pipeline->cachedScreenImage(photo(u"0"_s)).isNull());
        QVERIFY(m_pipeline->cachedScreenImage(photo(u"1"_s)).isNull());
    }

    void aCardThatHangsHoldsUpNoOther()
    {
        m_pipeline->beginSelection(1);
        m_decoders->isGated = true;
        QList<QImage> ofTheFirst;
        for (const auto &item : photos(20)) {
            collect(m_pipeline->screenImage(item, 100), &ofTheFirst);
        }
        QTRY_COMPARE(m_decoders->waiting.load(), QThread::idealThreadCount());
        m_decoders->isGated = false; // but those that wait go on waiting

        m_pipeline->beginSelection(2);

        QCOMPARE(QCoro::waitFor(m_pipeline->screenImage(photo(u"A"_s), 100)).width(), 100);
        QCOMPARE(m_decoders->waiting.load(), QThread::idealThreadCount());
        m_decoders->gate.release(1000);
        QTRY_COMPARE(ofTheFirst.size(), 20);
        QCOMPARE(std::ranges::count_if(ofTheFirst, &QImage::isNull), 20);
        QCOMPARE(m_decoders->decoded().size(), size_t(QThread::idealThreadCount() + 1));
    }

    void aPipelineThatGoesAnswersItsCallersWithNothing()
    {
        m_decoders->isGated = true;
        QList<QImage> results;
        for (const auto &item : photos(10)) {
            collect(m_pipeline->screenImage(item, 100), &results);
        }
        m_pipeline->prefetch(photos(10), 0, 100);
        m_decoders->isGated = false;
        m_decoders->gate.release(10);

        m_pipeline.reset();

        QTRY_COMPARE(results.size(), 10);
        for (const auto &image : results) {
            QVERIFY(image.isNull());
        }
    }

private:
    static QSet<QString> idsFrom(int first, int last)
    {
        QSet<QString> ids;
        for (int number = first; number <= last; ++number) {
            ids.insert(QString::number(number));
        }
        return ids;
    }

    std::unique_ptr<MadeUpDecoders> m_decoders;
    std::unique_ptr<DecodePipeline> m_pipeline;
};

QTEST_GUILESS_MAIN(DecodePipelineTest)
#include "DecodePipelineTest.moc"
