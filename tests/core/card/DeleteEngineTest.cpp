// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/DeleteEngine.h"
#include "tests/core/card/TemporaryCard.h"
#include "tests/support/ForwardingFiles.h"

#include <QTest>

#include <map>
#include <set>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

namespace {

/// The real file manager, but chosen files and folders of the card fail.
class FaultyFiles final : public ForwardingFiles {
public:
    bool readOnly = false;
    std::map<fs::path, std::errc> removeErrors;
    std::map<fs::path, std::errc> syncErrors;
    std::optional<std::errc> syncAllError;
    std::optional<std::errc> death;
    mutable Paths removed;
    mutable Paths synced;
    mutable int syncedAll = 0;
    mutable std::set<fs::path> open;
    mutable size_t mostOpen = 0;

protected:
    std::unique_ptr<HeldCard> wrap(std::unique_ptr<HeldCard> card) const override
    {
        return std::make_unique<FaultyCard>(std::move(card), *this);
    }

private:
    class FaultyCard final : public ForwardingHeldCard {
    public:
        FaultyCard(std::unique_ptr<HeldCard> real, const FaultyFiles &faults)
            : ForwardingHeldCard(std::move(real))
            , m_faults(faults)
        {
        }

        std::error_code openFolder(const Path &folder) override
        {
            m_faults.open.insert(folder);
            m_faults.mostOpen = std::max(m_faults.mostOpen, m_faults.open.size());
            return ForwardingHeldCard::openFolder(folder);
        }

        void closeFolders() override
        {
            m_faults.open.clear();
            ForwardingHeldCard::closeFolders();
        }

        std::error_code proveAlive() override
        {
            return m_faults.death ? std::make_error_code(*m_faults.death)
                                  : ForwardingHeldCard::proveAlive();
        }

        std::error_code remove(const Path &folder, const Path &name) override
        {
            const auto path = folder / name;
            m_faults.removed.push_back(path);
            return m_faults.readOnly ? std::make_error_code(std::errc::read_only_file_system)
                   : m_faults.removeErrors.contains(path)
                       ? std::make_error_code(m_faults.removeErrors.at(path))
                       : ForwardingHeldCard::remove(folder, name);
        }

        std::error_code syncFolder(const Path &folder) override
        {
            m_faults.synced.push_back(folder);
            const auto error = ForwardingHeldCard::syncFolder(folder);
            return m_faults.syncErrors.contains(folder)
                       ? std::make_error_code(m_faults.syncErrors.at(folder))
                       : error;
        }

        std::error_code syncAll() override
        {
            ++m_faults.syncedAll;
            return m_faults.syncAllError ? std::make_error_code(*m_faults.syncAllError)
                                         : ForwardingHeldCard::syncAll();
        }

    private:
        const FaultyFiles &m_faults;
    };
};

QString textOf(std::errc error)
{
    return QString::fromStdString(std::make_error_code(error).message());
}

} // namespace

class DeleteEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<TemporaryCard>();
        m_files = std::make_unique<FaultyFiles>();
    }

    void anEmptyListGivesAnEmptyResultAndNoProgress()
    {
        int calls = 0;

        const auto result = DeleteEngine::deleteFiles({}, m_card->root(), *m_files,
                                                      [&calls](qint64, qint64) { ++calls; });

        QCOMPARE(result, DeleteResult());
        QCOMPARE(calls, 0);
    }

    void filesAreRemovedInOrderAndOnlyThose()
    {
        const Paths rejected = {m_card->add("DCIM/A/2.JPG"), m_card->add("DCIM/A/1.JPG")};
        m_card->add("DCIM/A/3.JPG");

        const auto result = run(rejected);

        QCOMPARE(result.deleted, rejected);
        QVERIFY(result.failures.empty());
        QVERIFY(!m_card->has("DCIM/A/1.JPG"));
        QVERIFY(!m_card->has("DCIM/A/2.JPG"));
        QVERIFY(m_card->has("DCIM/A/3.JPG"));
    }

    void progressComesAfterEachLocationWhateverItsOutcome()
    {
        const Paths urls = {m_card->add("DCIM/1.JPG"), m_card->path("DCIM/gone.JPG"),
                            "/elsewhere.JPG"};
        std::vector<std::pair<qint64, qint64>> calls;

        (void)DeleteEngine::deleteFiles(
            urls, m_card->root(), *m_files,
            [&calls](qint64 done, qint64 total) { calls.emplace_back(done, total); });

        const std::vector<std::pair<qint64, qint64>> expected = {{1, 3}, {2, 3}, {3, 3}};
        QCOMPARE(calls, expected);
    }

    void aSiblingVolumeOfALongerNameIsOutside()
    {
        const auto sibling = m_card->root().parent_path() / "CARD2/DCIM/1.JPG";
        fs::create_directories(sibling.parent_path());
        std::ofstream(sibling) << "x";

        expectFailure(sibling, u"outside card volume"_s);

        QVERIFY(fs::exists(sibling));
        QVERIFY(m_files->removed.empty());
    }

    void thePathOfTheCardItselfIsOutside()
    {
        expectFailure(m_card->root(), u"outside card volume"_s);
    }

    void aWayOutThroughDotsIsOutside()
    {
        const auto neighbour = m_card->root().parent_path() / "neighbour.JPG";
        std::ofstream(neighbour) << "x";

        expectFailure(m_card->root() / "DCIM/../../neighbour.JPG", u"outside card volume"_s);

        QVERIFY(fs::exists(neighbour));
    }

    void aLinkThatPointsOutIsOutside()
    {
        const auto target = m_card->root().parent_path() / "target.JPG";
        std::ofstream(target) << "x";
        m_card->add("DCIM/1.JPG");
        fs::create_symlink(target, m_card->path("DCIM/link.JPG"));

        expectFailure(m_card->path("DCIM/link.JPG"), u"outside card volume"_s);

        QVERIFY(fs::exists(target));
        QVERIFY(m_card->has("DCIM/link.JPG"));
    }

    void aLinkToAnotherFileOfTheCardIsRemovedItself()
    {
        const auto target = m_card->add("DCIM/target.JPG");
        const auto link = m_card->path("DCIM/link.JPG");
        fs::create_symlink("target.JPG", link);

        const auto result = run({link});

        QCOMPARE(result.deleted, Paths{link});
        QVERIFY(!m_card->has("DCIM/link.JPG"));
        QVERIFY(fs::exists(target));
    }

    void aTrailingSeparatorOfTheVolumeMakesNoDifference()
    {
        const auto first = m_card->add("DCIM/1.JPG");
        const auto second = m_card->add("DCIM/2.JPG");

        QCOMPARE(DeleteEngine::deleteFiles({first}, m_card->root(), *m_files).deleted,
                 Paths{first});
        QCOMPARE(DeleteEngine::deleteFiles({second}, m_card->root() / "", *m_files).deleted,
                 Paths{second});
    }

    void aVolumeGivenThroughALinkIsTheSameVolume()
    {
        const auto file = m_card->add("DCIM/1.JPG");
        const auto link = m_card->root().parent_path() / "link";
        fs::create_directory_symlink(m_card->root(), link);

        QCOMPARE(DeleteEngine::deleteFiles({file}, link, *m_files).deleted, Paths{file});
    }

    void aDirectoryIsNoRegularFileAndStays()
    {
        fs::create_directories(m_card->path("DCIM/FOLDER.JPG"));

        expectFailure(m_card->path("DCIM/FOLDER.JPG"), u"not a regular file"_s);

        QVERIFY(m_card->has("DCIM/FOLDER.JPG"));
        QVERIFY(m_files->removed.empty());
    }

    void aFileThatIsGoneIsNotFoundAndItsItemCountsAsDeleted()
    {
        const auto url = m_card->path("DCIM/gone.JPG");

        const auto result = expectFailure(url, u"file not found"_s);

        QVERIFY(DeleteEngine::failedItemIDs({item(u"A"_s, {}, url)}, result).isEmpty());
    }

    void aReadOnlyCardFailsEveryFileWithTheSystemsText()
    {
        const Paths urls = {m_card->add("DCIM/1.JPG"), m_card->add("DCIM/2.JPG")};
        m_files->readOnly = true;
        qint64 lastDone = 0;

        const auto result = DeleteEngine::deleteFiles(
            urls, m_card->root(), *m_files, [&lastDone](qint64 done, qint64) { lastDone = done; });

        const auto reason = textOf(std::errc::read_only_file_system);
        QCOMPARE(result.failures,
                 (std::vector<DeleteResult::Failure>{{urls[0], reason}, {urls[1], reason}}));
        QCOMPARE(m_files->removed, (Paths{"DCIM/1.JPG", "DCIM/2.JPG"}));
        QCOMPARE(lastDone, 2);
        QVERIFY(result.deleted.empty());
    }

    void eachFolderIsSyncedOnceAfterItsFilesAreRemoved()
    {
        const Paths urls = {m_card->add("DCIM/A/1.JPG"), m_card->add("DCIM/B/1.JPG"),
                            m_card->add("DCIM/A/2.JPG")};

        (void)run(urls);

        QCOMPARE(m_files->synced, (Paths{"DCIM/A", "DCIM/B"}));
        QCOMPARE(m_files->syncedAll, 1);
    }

    void whereNothingWasDoneNothingIsSynced()
    {
        m_card->add("DCIM/A/1.JPG");
        m_files->removeErrors["DCIM/A/1.JPG"] = std::errc::permission_denied;

        (void)run({m_card->path("DCIM/A/1.JPG"), "/elsewhere.JPG"});

        QVERIFY(m_files->synced.empty());
        QCOMPARE(m_files->syncedAll, 0);
    }

    void theFilesOfAFolderThatDoesNotSyncAreFailuresInTheOrderGiven()
    {
        const Paths urls = {m_card->add("DCIM/A/1.JPG"), m_card->add("DCIM/B/1.JPG"),
                            m_card->path("DCIM/B/gone.JPG"), m_card->add("DCIM/A/2.JPG"),
                            m_card->add("DCIM/B/2.JPG")};
        m_files->syncErrors["DCIM/B"] = std::errc::io_error;

        const auto result = run(urls);

        const auto reason = textOf(std::errc::io_error);
        QCOMPARE(result.deleted, (Paths{urls[0], urls[3]}));
        QCOMPARE(result.failures, (std::vector<DeleteResult::Failure>{
                                      {urls[1], reason}, {urls[2], reason}, {urls[4], reason}}));
    }

    void afterAFolderThatDoesNotSyncNoOtherIsBelieved()
    {
        const Paths urls = {m_card->add("DCIM/A/1.JPG"), m_card->add("DCIM/B/1.JPG")};
        m_files->syncErrors["DCIM/A"] = std::errc::io_error;

        const auto result = run(urls);

        const auto reason = textOf(std::errc::io_error);
        QCOMPARE(result.failures,
                 (std::vector<DeleteResult::Failure>{{urls[0], reason}, {urls[1], reason}}));
        QCOMPARE(m_files->synced, (Paths{"DCIM/A", "DCIM/B"}));
    }

    void aCardThatCannotTakeTheRunDeletesNothing()
    {
        const Paths urls = {m_card->add("DCIM/A/1.JPG"), m_card->path("DCIM/A/gone.JPG")};
        m_files->syncAllError = std::errc::io_error;

        const auto result = run(urls);

        QCOMPARE(result.failures,
                 (std::vector<DeleteResult::Failure>{{urls[0], textOf(std::errc::io_error)},
                                                     {urls[1], u"file not found"_s}}));
    }

    void nothingIsMissingFromACardThatIsDead()
    {
        const auto gone = m_card->path("DCIM/A/gone.JPG");
        m_card->add("DCIM/A/1.JPG");
        m_files->death = std::errc::io_error;

        expectFailure(gone, textOf(std::errc::io_error));
    }

    void aCardOnceFoundDeadStaysDeadForTheRun()
    {
        const Paths urls = {m_card->path("DCIM/A/gone.JPG"), m_card->add("DCIM/A/1.JPG"),
                            "/elsewhere.JPG"};
        m_files->death = std::errc::io_error;

        const auto result = run(urls);

        const auto reason = textOf(std::errc::io_error);
        QCOMPARE(result.failures,
                 (std::vector<DeleteResult::Failure>{
                     {urls[0], reason}, {urls[1], reason}, {urls[2], u"outside card volume"_s}}));
        QVERIFY(m_files->removed.empty());
        QVERIFY(m_card->has("DCIM/A/1.JPG"));
    }

    void nothingIsDeletedFromACardThatIsDeadAtTheEnd()
    {
        const auto url = m_card->add("DCIM/A/1.JPG");
        m_files->death = std::errc::no_such_device;

        expectFailure(url, textOf(std::errc::no_such_device));
    }

    void aMissingFolderIsMissingFiles()
    {
        expectFailure(m_card->path("DCIM/A/1.JPG"), u"file not found"_s);
    }

    void aMissingCardIsNoMissingFile()
    {
        const auto root = m_card->path("not/there");

        const auto result = DeleteEngine::deleteFiles({root / "1.JPG"}, root, *m_files);

        QCOMPARE(result.failures.front().reason, textOf(std::errc::no_such_file_or_directory));
    }

    void aLinkFromElsewhereIntoTheCardIsOutside()
    {
        m_card->add("DCIM/1.JPG");
        const auto link = m_card->root().parent_path() / "link.JPG";
        fs::create_symlink(m_card->path("DCIM/1.JPG"), link);

        expectFailure(link, u"outside card volume"_s);

        QVERIFY(fs::is_symlink(link));
        QVERIFY(m_card->has("DCIM/1.JPG"));
    }

    void aLinkThatLeadsNowhereIsNotFoundAndStays()
    {
        m_card->add("DCIM/1.JPG");
        fs::create_symlink("gone.JPG", m_card->path("DCIM/dangling.JPG"));
        fs::create_symlink("circle.JPG", m_card->path("DCIM/circle.JPG"));

        expectFailure(m_card->path("DCIM/dangling.JPG"), u"file not found"_s);
        expectFailure(m_card->path("DCIM/circle.JPG"), u"file not found"_s);

        QVERIFY(m_card->has("DCIM/dangling.JPG"));
        QVERIFY(m_card->has("DCIM/circle.JPG"));
    }

    void foldersBeyondTheLimitOfDescriptorsAreWorkedOffInGroups()
    {
        Paths urls;
        for (int number = 0; number < 450; ++number) {
            urls.push_back(m_card->add("DCIM/" + std::to_string(number) + "/1.JPG"));
        }
        urls.push_back(m_card->add("DCIM/0/2.JPG"));

        const auto result = run(urls);

        QCOMPARE(result.deleted, urls);
        QVERIFY(m_files->mostOpen <= 201);
    }

    void aRunThatIsStoppedLeavesTheRest()
    {
        const Paths urls = {m_card->add("DCIM/1.JPG"), m_card->add("DCIM/2.JPG"),
                            m_card->add("DCIM/3.JPG")};
        std::stop_source stop;
        qint64 lastDone = 0;

        const auto result = DeleteEngine::deleteFiles(
            urls, m_card->root(), *m_files,
            [&](qint64 done, qint64) {
                lastDone = done;
                stop.request_stop();
            },
            stop.get_token());

        const auto reason = textOf(std::errc::operation_canceled);
        QCOMPARE(result.deleted, Paths{urls[0]});
        QCOMPARE(result.failures,
                 (std::vector<DeleteResult::Failure>{{urls[1], reason}, {urls[2], reason}}));
        QCOMPARE(lastDone, 1);
        QCOMPARE(m_files->synced, Paths{"DCIM"});
        QVERIFY(m_card->has("DCIM/2.JPG"));
    }

    void onAnotherCardThanTheOneScannedNothingIsRemoved()
    {
        const auto file = m_card->add("DCIM/1.JPG");
        const TemporaryCard other;
        const auto namesake = other.add("DCIM/1.JPG");
        std::error_code error;
        const auto scanned = m_files->hold(m_card->root(), error)->mark();

        const auto there =
            DeleteEngine::deleteFiles({namesake}, other.root(), *m_files, {}, {}, scanned.get());
        const auto here =
            DeleteEngine::deleteFiles({file}, m_card->root(), *m_files, {}, {}, scanned.get());

        QCOMPARE(there.failures, (std::vector<DeleteResult::Failure>{
                                     {namesake, textOf(std::errc::no_such_device)}}));
        QVERIFY(other.has("DCIM/1.JPG"));
        QCOMPARE(here.deleted, Paths{file});
    }

    void aRunLeavesNoDescriptorOpen()
    {
        const auto count = [] {
            return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
        };
        m_card->add("DCIM/A/kept.JPG");
        const auto before = count();

        (void)run({m_card->add("DCIM/A/1.JPG"), m_card->path("DCIM/B/gone.JPG")});

        QCOMPARE(count(), before);
    }

    void aPairWhosePreviewFailedIsListed()
    {
        const auto raw = m_card->add("DCIM/1.RAF");
        const auto preview = m_card->add("DCIM/1.JPG");
        m_files->removeErrors["DCIM/1.JPG"] = std::errc::permission_denied;

        const auto result = run({raw, preview});

        QCOMPARE(result.deleted, Paths{raw});
        QCOMPARE(result.failures.front().reason, textOf(std::errc::permission_denied));
        QCOMPARE(DeleteEngine::failedItemIDs(
                     {item(u"B"_s, {}, "/other.JPG"), item(u"A"_s, raw, preview)}, result),
                 QStringList{u"A"_s});
    }

    void urlsAreThoseOfEachItemRawFirst()
    {
        auto all = item(u"A"_s, "/1.RAF", "/1.JPG");
        all.videoURL = "/1.MOV";

        QCOMPARE(DeleteEngine::urls({all, item(u"B"_s, {}, "/2.JPG")}),
                 (Paths{"/1.RAF", "/1.JPG", "/1.MOV", "/2.JPG"}));
    }

    void totalBytesCountsAMissingFileAsNothing()
    {
        const Paths urls = {m_card->add("DCIM/1.JPG", "12345"), m_card->path("DCIM/gone.JPG"),
                            m_card->add("DCIM/2.JPG", "123")};

        QCOMPARE(DeleteEngine::totalBytes(urls, *m_files), 8);
    }

    void everyLocationIsInExactlyOneList()
    {
        Paths urls;
        for (int number = 0; number < 60; ++number) {
            const auto name = std::to_string(number) + ".JPG";
            const auto folder = fs::path("DCIM") / std::to_string(number % 3);
            urls.push_back(number % 4 ? m_card->add(folder / name) : m_card->path(folder / name));
            if (number % 7 == 0) {
                m_files->removeErrors[folder / name] = std::errc::io_error;
            }
        }
        urls.push_back("/elsewhere.JPG");

        const auto result = run(urls);

        Paths merged = result.deleted;
        for (const auto &failure : result.failures) {
            merged.push_back(failure.url);
        }
        std::ranges::sort(merged);
        std::ranges::sort(urls);
        QCOMPARE(merged, urls);
    }

private:
    DeleteResult run(const Paths &urls)
    {
        return DeleteEngine::deleteFiles(urls, m_card->root(), *m_files);
    }

    DeleteResult expectFailure(const fs::path &url, const QString &reason)
    {
        const auto result = run({url});
        [&] {
            QVERIFY(result.deleted.empty());
            QCOMPARE(result.failures, (std::vector<DeleteResult::Failure>{{url, reason}}));
        }();
        return result;
    }

    static MediaItem item(const QString &id, std::optional<fs::path> raw,
                          std::optional<fs::path> preview)
    {
        return {.id = id, .rawURL = std::move(raw), .previewURL = std::move(preview)};
    }

    std::unique_ptr<TemporaryCard> m_card;
    std::unique_ptr<FaultyFiles> m_files;
};

QTEST_GUILESS_MAIN(DeleteEngineTest)
#include "DeleteEngineTest.moc"
