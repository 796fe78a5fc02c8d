// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/CardScanner.h"
#include "tests/core/card/TemporaryCard.h"
#include "tests/support/ForwardingFiles.h"

#include <QCoroTask>
#include <QMutex>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <array>
#include <atomic>
#include <chrono>
#include <map>
#include <random>
#include <thread>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// Gives the dates that it was told, by file name.
class MadeUpDates final : public MetadataReading {
public:
    void set(const std::string &name, qint64 seconds) { m_seconds[name] = seconds; }

    std::optional<ImageMetadata> read(const fs::path &url) const override
    {
        if (delay.count() > 0) {
            std::this_thread::sleep_for(delay * (url.native().size() % 3));
        }
        const auto found = m_seconds.find(url.filename().native());
        if (found == m_seconds.end()) {
            return std::nullopt;
        }
        return ImageMetadata{.captureDate = QDateTime::fromSecsSinceEpoch(found->second, Qt::UTC)};
    }

    std::chrono::microseconds delay{0};

private:
    std::map<std::string, qint64> m_seconds;
};

/// Counts how many reads are going on, and which files were read.
class CountedReads final : public MetadataReading {
public:
    std::optional<ImageMetadata> read(const fs::path &url) const override
    {
        const int now = ++m_running;
        int most = mostAtOnce.load();
        while (now > most && !mostAtOnce.compare_exchange_weak(most, now)) {
        }
        QThread::msleep(10); // time for one too many to show
        for (int wait = 0; wait < 2000 && mostAtOnce < awaited; ++wait) {
            QThread::msleep(1);
        }
        {
            const QMutexLocker lock(&m_mutex);
            files.push_back(url.filename().native());
        }
        --m_running;
        return std::nullopt;
    }

    int awaited = 1; ///< reads wait for so many to be going on at once
    mutable std::atomic<int> mostAtOnce = 0;
    mutable std::vector<std::string> files;

private:
    mutable std::atomic<int> m_running = 0;
    mutable QMutex m_mutex;
};

/// Nothing at all can be read on this card.
class DeadFiles final : public FileManager {
public:
    std::vector<fs::path> regularFilesBelow(const fs::path &) const override { return {}; }
    std::optional<EntryKind> kindOf(const fs::path &) const override { return std::nullopt; }
    bool isListable(const fs::path &) const override { return false; }
    fs::path resolvingSymlinks(const fs::path &path) const override { return path; }
    bool isLink(const fs::path &) const override { return false; }
    std::optional<qint64> fileSize(const fs::path &) const override { return std::nullopt; }
    bool isReadOnly(const fs::path &) const override { return false; }
    std::unique_ptr<HeldCard> hold(const fs::path &, std::error_code &error) const override
    {
        error = std::make_error_code(std::errc::io_error);
        return nullptr;
    }
};

} // namespace

class CardScannerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<TemporaryCard>();
        m_dates = std::make_shared<MadeUpDates>();
        m_files = std::make_shared<PosixFileManager>();
    }

    void aFolderDcimMakesACard()
    {
        QVERIFY(!CardScanner::dcimExists(m_card->root(), *m_files));
        fs::create_directory(m_card->path("DCIM"));
        QVERIFY(CardScanner::dcimExists(m_card->root(), *m_files));
    }

    void aPlainFileDcimDoesNot()
    {
        m_card->add("DCIM");

        QVERIFY(!CardScanner::dcimExists(m_card->root(), *m_files));
        QVERIFY(CardScanner::listFiles(m_card->root(), *m_files).empty());
    }

    void filesAtEveryDepthAreListedAndPackagesDropped()
    {
        m_card->add("DCIM/100_FUJI/DSCF0001.RAF");
        m_card->add("DCIM/100_FUJI/sub/deeper/DSCF0002.JPG");
        m_card->add("DCIM/DSCF0003.JPG");
        m_card->add("DCIM/Thing.app/DSCF0004.JPG");
        m_card->add("OUTSIDE.JPG");

        const std::vector expected = {m_card->path("DCIM/100_FUJI/DSCF0001.RAF"),
                                      m_card->path("DCIM/100_FUJI/sub/deeper/DSCF0002.JPG"),
                                      m_card->path("DCIM/DSCF0003.JPG")};
        QCOMPARE(CardScanner::listFiles(m_card->root(), *m_files), expected);
    }

    void companionFilesAreNeverListed()
    {
        m_card->add("DCIM/100_FUJI/DSCF0001.RAF");
        m_card->add("DCIM/100_FUJI/._DSCF0001.RAF");

        QCOMPARE(ids(), QStringList{u"100_FUJI/DSCF0001"_s});
    }

    void anEmptyDcimGivesNoItems()
    {
        fs::create_directory(m_card->path("DCIM"));

        QVERIFY(bothScans().isEmpty());
    }

    void aMissingDcimGivesNoItems() { QVERIFY(bothScans().isEmpty()); }

    void aDeadCardGivesNoItems()
    {
        const DeadFiles files;

        QVERIFY(!CardScanner::dcimExists(m_card->root(), files));
        QVERIFY(CardScanner::scan(m_card->root(), files, *m_dates).isEmpty());
    }

    void unknownExtensionsAreLeftOut()
    {
        m_card->add("DCIM/A/1.JPG");
        m_card->add("DCIM/A/1.XMP");
        m_card->add("DCIM/A/README");

        QCOMPARE(ids(), QStringList{u"A/1"_s});
    }

    void olderShotsComeFirst()
    {
        add("A/1.JPG", 300);
        add("A/2.JPG", 100);
        add("A/3.JPG", 200);

        QCOMPARE(ids(), (QStringList{u"A/2"_s, u"A/3"_s, u"A/1"_s}));
        QCOMPARE(bothScans().first().captureDate, QDateTime::fromSecsSinceEpoch(100, Qt::UTC));
    }

    void equalDatesOrderByDisplayNameThenById()
    {
        add("B/1.JPG", 100);
        add("A/1.JPG", 100);
        add("A/0.JPG", 100);

        QCOMPARE(ids(), (QStringList{u"A/0"_s, u"A/1"_s, u"B/1"_s}));
    }

    void undatedItemsComeFirstInTheOrderOfTheirNames()
    {
        add("A/DATED.JPG", -5'000'000'000); // long before 1970
        m_card->add("B/ignored.txt");
        m_card->add("DCIM/B/2.MOV");
        m_card->add("DCIM/C/1.MOV");
        m_card->add("DCIM/A/BROKEN.JPG");

        QCOMPARE(ids(), (QStringList{u"C/1.MOV#video"_s, u"B/2.MOV#video"_s, u"A/BROKEN"_s,
                                     u"A/DATED"_s}));
    }

    void theDateIsThatOfThePreviewOfAPair()
    {
        m_card->add("DCIM/A/1.RAF");
        m_card->add("DCIM/A/1.JPG");
        m_dates->set("1.RAF", 111);
        m_dates->set("1.JPG", 222);

        QCOMPARE(bothScans().first().captureDate, QDateTime::fromSecsSinceEpoch(222, Qt::UTC));
    }

    void metadataIsReadOncePerItem()
    {
        m_card->add("DCIM/A/1.RAF");
        m_card->add("DCIM/A/1.JPG");
        m_card->add("DCIM/A/2.RAF");
        const CountedReads reads;

        (void)CardScanner::scan(m_card->root(), *m_files, reads);

        QCOMPARE(reads.files, (std::vector<std::string>{"1.JPG", "2.RAF"}));
    }

    void neverMoreThanEightReadsAreInProgress()
    {
        for (int number = 0; number < 20; ++number) {
            m_card->add("DCIM/A/" + std::to_string(number) + ".JPG");
        }
        const auto reads = std::make_shared<CountedReads>();
        reads->awaited = 8;

        const auto items =
            QCoro::waitFor(CardScanner::scanDetached(&m_pool, m_card->root(), m_files, reads))
                .items;

        QCOMPARE(items.size(), 20);
        QCOMPARE(reads->files.size(), size_t(20));
        QCOMPARE(reads->mostAtOnce.load(), 8);
    }

    void bothScansAgreeOnAnyCard()
    {
        std::minstd_rand random(4711);
        for (int number = 0; number < 500; ++number) {
            const auto folder = "DCIM/" + std::to_string(random() % 3);
            const auto stem = "IMG_" + std::to_string(random() % 250);
            const auto extension = std::array{".JPG", ".jpg", ".RAF", ".MOV", ".HIF"}[random() % 5];
            m_card->add(fs::path(folder) / (stem + extension));
            if (random() % 4 != 0) {
                m_dates->set(stem + extension, static_cast<qint64>(random() % 20));
            }
        }
        m_dates->delay = std::chrono::microseconds(200);

        QVERIFY(bothScans().size() > 300);
    }

    void aCardThatIsGoneWhenItsScanEndsCountsAsEmpty()
    {
        class PulledCard final : public ForwardingHeldCard {
        public:
            using ForwardingHeldCard::ForwardingHeldCard;
            std::error_code proveAlive() override
            {
                return std::make_error_code(std::errc::io_error);
            }
        };
        class PulledFiles final : public ForwardingFiles {
            std::unique_ptr<HeldCard> wrap(std::unique_ptr<HeldCard> card) const override
            {
                return std::make_unique<PulledCard>(std::move(card));
            }
        };
        add("A/1.JPG", 100);
        m_files = std::make_shared<PulledFiles>();

        QVERIFY(bothScans().isEmpty());
    }

    void aScanTellsWhatTheCardIsKnownAgainBy()
    {
        add("A/1.JPG", 100);
        const TemporaryCard other;
        std::error_code error;

        const auto scan =
            QCoro::waitFor(CardScanner::scanDetached(&m_pool, m_card->root(), m_files, m_dates));

        QVERIFY(scan.mark);
        QVERIFY(m_files->hold(m_card->root(), error)->bears(*scan.mark));
        QVERIFY(!m_files->hold(other.root(), error)->bears(*scan.mark));
    }

    void aScanLeavesNoDescriptorOpen()
    {
        const auto count = [] {
            QThreadPool::globalInstance()->waitForDone(); // where marks are let go
            return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
        };
        add("A/1.JPG", 100);
        (void)bothScans(); // threads and their wake-ups are there now
        const auto before = count();

        (void)bothScans();

        QCOMPARE(count(), before);
    }

    void theAsynchronousScanNeverReadsOnTheCallersThread()
    {
        class ThreadOfReads final : public MetadataReading {
        public:
            std::optional<ImageMetadata> read(const fs::path &) const override
            {
                onMainThread = onMainThread || QThread::currentThread() == main;
                return std::nullopt;
            }
            QThread *main = QThread::currentThread();
            mutable std::atomic_bool onMainThread = false;
        };
        m_card->add("DCIM/A/1.JPG");
        const auto reads = std::make_shared<ThreadOfReads>();

        (void)QCoro::waitFor(CardScanner::scanDetached(&m_pool, m_card->root(), m_files, reads));

        QVERIFY(!reads->onMainThread);
    }

    void aStoppedScanReadsNoFurtherDates()
    {
        m_card->add("DCIM/A/1.JPG");
        const auto reads = std::make_shared<CountedReads>();
        std::stop_source stop;
        stop.request_stop();

        (void)QCoro::waitFor(
            CardScanner::scanDetached(&m_pool, m_card->root(), m_files, reads, stop.get_token()));

        QVERIFY(reads->files.empty());
    }

    void captureOrderIsAStrictTotalOrder()
    {
        QList<MediaItem> items;
        for (const char *folder : {"A", "B"}) {
            for (const char *name : {"1.JPG", "2.JPG", "\xC3\xA4.JPG"}) {
                for (const qint64 seconds : {0, 1}) {
                    MediaItem item{.id = QString::fromUtf8(folder) + QString::fromUtf8(name) +
                                         QString::number(seconds),
                                   .previewURL = fs::path(folder) / name};
                    items.append(item);
                    item.id += u"dated"_s;
                    item.captureDate = QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
                    items.append(item);
                }
            }
        }

        for (const auto &a : items) {
            QVERIFY(!CardScanner::captureOrder(a, a));
            for (const auto &b : items) {
                QVERIFY(a.id == b.id ||
                        CardScanner::captureOrder(a, b) != CardScanner::captureOrder(b, a));
            }
        }
    }

private:
    void add(const std::string &file, qint64 seconds)
    {
        m_card->add(fs::path("DCIM") / file);
        m_dates->set(fs::path(file).filename(), seconds);
    }

    /// The items by both forms of the scan, which must be equal.
    QList<MediaItem> bothScans()
    {
        const auto items = CardScanner::scan(m_card->root(), *m_files, *m_dates);
        const auto detached =
            QCoro::waitFor(CardScanner::scanDetached(&m_pool, m_card->root(), m_files, m_dates))
                .items;
        [&] { QCOMPARE(detached, items); }();
        return items;
    }

    QStringList ids()
    {
        QStringList all;
        for (const auto &item : bothScans()) {
            all.append(item.id);
        }
        return all;
    }

    std::shared_ptr<FileManager> m_files;
    std::unique_ptr<TemporaryCard> m_card;
    std::shared_ptr<MadeUpDates> m_dates;
    QThreadPool m_pool;
};

QTEST_GUILESS_MAIN(CardScannerTest)
#include "CardScannerTest.moc"
