// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/DeleteEngine.h"
#include "platform/files/PosixFileManager.h"
#include "tests/core/card/TemporaryCard.h"

#include <QTest>

#include <map>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

namespace {

/// The real file manager, but chosen files and folders fail.
class FaultyFiles final : public FileManager {
public:
    std::vector<fs::path> regularFilesBelow(const fs::path &folder) const override
    {
        return m_real.regularFilesBelow(folder);
    }
    std::optional<EntryKind> kindOf(const fs::path &path) const override
    {
        return m_real.kindOf(path);
    }
    bool isListable(const fs::path &folder) const override { return m_real.isListable(folder); }
    fs::path resolvingSymlinks(const fs::path &path) const override
    {
        return m_real.resolvingSymlinks(path);
    }
    std::optional<qint64> fileSize(const fs::path &path) const override
    {
        return m_real.fileSize(path);
    }
    std::error_code remove(const fs::path &path) override
    {
        removed.push_back(path);
        return readOnly ? std::make_error_code(std::errc::read_only_file_system)
               : removeErrors.contains(path) ? std::make_error_code(removeErrors.at(path))
                                             : m_real.remove(path);
    }
    std::error_code syncFolder(const fs::path &folder) override
    {
        synced.push_back(folder);
        return syncErrors.contains(folder) ? std::make_error_code(syncErrors.at(folder))
                                           : m_real.syncFolder(folder);
    }

    bool readOnly = false;
    std::map<fs::path, std::errc> removeErrors;
    std::map<fs::path, std::errc> syncErrors;
    Paths removed;
    Paths synced;

private:
    PosixFileManager m_real;
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
        QCOMPARE(m_files->removed, urls);
        QCOMPARE(lastDone, 2);
        QVERIFY(result.deleted.empty());
    }

    void eachFolderIsSyncedOnceAfterItsFilesAreRemoved()
    {
        const Paths urls = {m_card->add("DCIM/A/1.JPG"), m_card->add("DCIM/B/1.JPG"),
                            m_card->add("DCIM/A/2.JPG")};

        (void)run(urls);

        QCOMPARE(m_files->synced, (Paths{m_card->path("DCIM/A"), m_card->path("DCIM/B")}));
    }

    void aFolderWithoutRemovalsIsNotSynced()
    {
        (void)run({m_card->path("DCIM/gone.JPG")});

        QVERIFY(m_files->synced.empty());
    }

    void theFilesOfAFolderThatDoesNotSyncAreFailuresInTheOrderGiven()
    {
        const Paths urls = {m_card->add("DCIM/A/1.JPG"), m_card->add("DCIM/B/1.JPG"),
                            m_card->path("DCIM/A/gone.JPG"), m_card->add("DCIM/A/2.JPG")};
        m_files->syncErrors[m_card->path("DCIM/A")] = std::errc::io_error;

        const auto result = run(urls);

        const auto reason = textOf(std::errc::io_error);
        QCOMPARE(result.deleted, Paths{urls[1]});
        QCOMPARE(result.failures,
                 (std::vector<DeleteResult::Failure>{
                     {urls[0], reason}, {urls[2], u"file not found"_s}, {urls[3], reason}}));
    }

    void aPairWhosePreviewFailedIsListed()
    {
        const auto raw = m_card->add("DCIM/1.RAF");
        const auto preview = m_card->add("DCIM/1.JPG");
        m_files->removeErrors[preview] = std::errc::permission_denied;

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
                m_files->removeErrors[urls.back()] = std::errc::io_error;
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
