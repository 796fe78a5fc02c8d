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

/// What goes wrong at some operation of a run.
enum class Fault {
    OneError,         ///< this operation fails, and no other
    ReadOnlyFromHere, ///< nothing can be removed any more
    WornFromHere,     ///< nothing reaches the medium any more
    PulledSilently,   ///< the card is gone; removing seems to work, everything else is remembered
    PulledEmptily,    ///< the card is gone; nothing seems to be there
    FolderIsLink,     ///< a folder gives way to a link that leads out of the card
    CardIsAnother,    ///< another card is mounted at the path
};

/// The card of a run whose n-th operation goes wrong. As on a real card, what is removed leaves the
/// medium (the real folder) only when its folder is synced.
struct FaultPlan {
    Fault fault = Fault::OneError;
    int at = 0; ///< operation, counted from 1; 0 is never
    std::function<void()> act;
    int operations = 0;
    bool hasStruck = false;

    /// Counts an operation of a run, from the first after the card is held; true when it is the
    /// one.
    bool strikes()
    {
        if (++operations != at) {
            return false;
        }
        hasStruck = true;
        if (act) {
            act();
        }
        return true;
    }

    [[nodiscard]] bool isPulled() const
    {
        return hasStruck && (fault == Fault::PulledSilently || fault == Fault::PulledEmptily);
    }

    [[nodiscard]] bool takesNothing() const
    {
        return isPulled() || (hasStruck && fault == Fault::WornFromHere);
    }
};

class FaultyCard final : public ForwardingHeldCard {
public:
    FaultyCard(std::unique_ptr<HeldCard> real, FaultPlan &plan)
        : ForwardingHeldCard(std::move(real))
        , m_plan(plan)
    {
    }

    bool isAt(const Path &path) const override
    {
        (void)m_plan.strikes();
        return ForwardingHeldCard::isAt(path);
    }

    void chooseWitness(const PathBytes &doomed) override
    {
        (void)m_plan.strikes();
        ForwardingHeldCard::chooseWitness(doomed);
    }

    Lookup lookUp(const Path &path) const override
    {
        if (const auto error = fails()) {
            return {.kind = {}, .error = error};
        }
        if (m_removed.contains(path) || (m_plan.isPulled() && !isRemembered())) {
            return {.kind = {}, .error = nothingThere()};
        }
        return ForwardingHeldCard::lookUp(path);
    }

    std::error_code proveAlive() override
    {
        if (const auto error = fails()) {
            return error;
        }
        return m_plan.isPulled() ? ioError() : ForwardingHeldCard::proveAlive();
    }

    std::error_code openFolder(const Path &folder) override
    {
        if (const auto error = fails()) {
            return error;
        }
        return m_plan.isPulled() && !isRemembered() ? nothingThere()
                                                    : ForwardingHeldCard::openFolder(folder);
    }

    std::error_code remove(const Path &folder, const Path &name) override
    {
        if (const auto error = fails()) {
            return error;
        }
        if (m_plan.hasStruck && m_plan.fault == Fault::ReadOnlyFromHere) {
            return std::make_error_code(std::errc::read_only_file_system);
        }
        if (m_plan.isPulled() && !isRemembered()) {
            return nothingThere();
        }
        if (m_plan.fault == Fault::FolderIsLink || m_plan.fault == Fault::CardIsAnother) {
            return ForwardingHeldCard::remove(folder, name);
        }
        m_removed.insert(folder / name);
        m_pending[folder].push_back(name);
        return {};
    }

    std::error_code syncFolder(const Path &folder) override
    {
        const auto error = fails();
        if (!error && !m_plan.takesNothing()) {
            for (const auto &name : m_pending[folder]) {
                if (ForwardingHeldCard::remove(folder, name)) {
                    qFatal("the model of the medium is wrong");
                }
            }
        }
        m_pending.erase(folder);
        const auto synced = ForwardingHeldCard::syncFolder(folder);
        return error ? error : m_plan.takesNothing() ? ioError() : synced;
    }

    std::error_code syncAll() override
    {
        if (const auto error = fails()) {
            return error;
        }
        return m_plan.takesNothing() ? ioError() : ForwardingHeldCard::syncAll();
    }

private:
    std::error_code fails() const
    {
        return m_plan.strikes() && m_plan.fault == Fault::OneError ? ioError() : std::error_code();
    }

    [[nodiscard]] bool isRemembered() const { return m_plan.fault == Fault::PulledSilently; }

    static std::error_code ioError() { return std::make_error_code(std::errc::io_error); }

    static std::error_code nothingThere()
    {
        return std::make_error_code(std::errc::no_such_file_or_directory);
    }

    FaultPlan &m_plan;
    std::set<Path> m_removed;
    std::map<Path, Paths> m_pending;
};

class FaultyFiles final : public ForwardingFiles {
public:
    Path resolvingSymlinks(const Path &path) const override
    {
        (void)plan.strikes();
        return ForwardingFiles::resolvingSymlinks(path);
    }

    bool isLink(const Path &path) const override
    {
        (void)plan.strikes();
        return ForwardingFiles::isLink(path);
    }

    mutable FaultPlan plan;

protected:
    std::unique_ptr<HeldCard> wrap(std::unique_ptr<HeldCard> card) const override
    {
        return std::make_unique<FaultyCard>(std::move(card), plan);
    }
};

} // namespace

/// A run over 200 files with one fault, at every operation in turn.
class RemovalFaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsToldThatIsNotSo_data()
    {
        QTest::addColumn<int>("fault");

        const auto row = [](const char *name, Fault fault) {
            QTest::newRow(name) << static_cast<int>(fault);
        };
        row("one error", Fault::OneError);
        row("read-only from here", Fault::ReadOnlyFromHere);
        row("worn from here", Fault::WornFromHere);
        row("pulled, and it seems to go on", Fault::PulledSilently);
        row("pulled, and nothing seems to be there", Fault::PulledEmptily);
        row("a folder becomes a link", Fault::FolderIsLink);
        row("the card becomes another", Fault::CardIsAnother);
    }

    void nothingIsToldThatIsNotSo()
    {
        QFETCH(int, fault);
        const auto operations = operationsOfARun();
        QVERIFY(operations > 600);

        for (int at = 1; at <= operations; ++at) {
            checkRun(static_cast<Fault>(fault), at);
            if (QTest::currentTestFailed()) {
                qWarning("at operation %d of %d", at, operations);
                return;
            }
        }
        if (static_cast<Fault>(fault) == Fault::OneError) {
            // Asked for and removed: an error at either costs that file and no other.
            QVERIFY(m_singleFailures >= 2 * fileCount);
        }
    }

private:
    static constexpr int fileCount = 200;

    static const std::vector<std::string> &folders()
    {
        static const std::vector<std::string> names = {"100_FUJI", "101_FUJI", "102_FUJI"};
        return names;
    }

    /// Every file of a card, rejected and kept.
    static void fill(const fs::path &card)
    {
        for (const auto &folder : folders()) {
            fs::create_directories(card / "DCIM" / folder);
            for (const auto *name : {"KEPT.JPG", "AWAY.JPG"}) {
                write(card / "DCIM" / folder / name);
            }
        }
        for (int number = 0; number < fileCount; ++number) {
            write(card / "DCIM" / nameOf(number));
        }
        for (const auto &folder : folders()) {
            fs::remove(card / "DCIM" / folder / "AWAY.JPG"); // somebody else was faster
        }
    }

    static const fs::path &nameOf(int number)
    {
        static const auto names = [] {
            Paths all;
            for (int next = 0; next < fileCount; ++next) {
                all.push_back(fs::path(folders()[static_cast<size_t>(next) % 3]) /
                              ("DSCF" + std::to_string(1000 + next) + ".JPG"));
            }
            return all;
        }();
        return names[static_cast<size_t>(number)];
    }

    static void write(const fs::path &path)
    {
        if (!fs::exists(path)) {
            std::ofstream(path) << path.filename();
        }
    }

    Paths rejects() const
    {
        Paths urls;
        for (int number = 0; number < fileCount; ++number) {
            urls.push_back(m_card.root() / "DCIM" / nameOf(number));
            if (number % 50 == 10) {
                urls.push_back(m_card.root() / "DCIM" / folders()[static_cast<size_t>(number) % 3] /
                               "AWAY.JPG");
            }
        }
        return urls;
    }

    int operationsOfARun()
    {
        fill(m_card.root());
        const FaultyFiles files;
        const auto result = DeleteEngine::deleteFiles(rejects(), m_card.root(), files);
        [&] {
            QCOMPARE(result.deleted.size(), size_t(fileCount));
            QCOMPARE(result.failures.size(), size_t(4));
        }();
        return files.plan.operations;
    }

    void checkRun(Fault fault, int at)
    {
        const auto parent = m_card.root().parent_path();
        const auto outside = parent / "outside";
        const auto away = parent / "pulled";
        const auto linked = m_card.root() / "DCIM" / folders()[1];
        fill(m_card.root());
        fs::create_directories(outside);
        for (int number = 1; number < fileCount; number += 3) {
            write(outside / nameOf(number).filename());
        }
        FaultyFiles files;
        files.plan.fault = fault;
        files.plan.at = at;
        if (fault == Fault::FolderIsLink) {
            files.plan.act = [&] {
                fs::rename(linked, m_card.root() / "DCIM/WAS");
                fs::create_directory_symlink(outside, linked);
            };
        } else if (fault == Fault::CardIsAnother) {
            files.plan.act = [&] {
                fs::rename(m_card.root(), away);
                fill(m_card.root());
            };
        }
        const auto urls = rejects();
        qint64 lastDone = 0;

        const auto result = DeleteEngine::deleteFiles(
            urls, m_card.root(), files, [&lastDone](qint64 done, qint64) { lastDone = done; });

        // The card of the run, wherever it is by now.
        const auto medium = fault == Fault::CardIsAnother ? away : m_card.root();
        if (fault == Fault::FolderIsLink) {
            fs::remove(linked);
            fs::rename(m_card.root() / "DCIM/WAS", linked);
        }
        checkLists(urls, result);
        checkReasons(result, medium, files.plan);
        QCOMPARE(lastDone, static_cast<qint64>(urls.size()));
        for (const auto &url : result.deleted) {
            QVERIFY2(!fs::exists(medium / fs::relative(url, m_card.root())), url.c_str());
        }
        for (const auto &folder : folders()) {
            QVERIFY(fs::exists(medium / "DCIM" / folder / "KEPT.JPG"));
        }
        for (int number = 1; number < fileCount; number += 3) {
            QVERIFY(fs::exists(outside / nameOf(number).filename()));
        }
        if (fault == Fault::CardIsAnother) {
            for (int number = 0; number < fileCount; ++number) {
                QVERIFY(fs::exists(m_card.root() / "DCIM" / nameOf(number)));
            }
            fs::remove_all(m_card.root());
            fs::rename(away, m_card.root());
        }
    }

    /// Every location is in exactly one list, in the order given.
    static void checkLists(const Paths &urls, const DeleteResult &result)
    {
        size_t deleted = 0;
        size_t failed = 0;
        for (const auto &url : urls) {
            if (deleted < result.deleted.size() && result.deleted[deleted] == url) {
                ++deleted;
            } else if (failed < result.failures.size() && result.failures[failed].url == url) {
                ++failed;
            } else {
                QFAIL(url.c_str());
            }
        }
        QCOMPARE(deleted, result.deleted.size());
        QCOMPARE(failed, result.failures.size());
    }

    /// "file not found" is said of nothing that is on the medium.
    void checkReasons(const DeleteResult &result, const fs::path &medium, const FaultPlan &plan)
    {
        qsizetype others = 0;
        for (const auto &failure : result.failures) {
            if (failure.reason == u"file not found"_s) {
                QVERIFY2(!fs::exists(medium / fs::relative(failure.url, m_card.root())),
                         failure.url.c_str());
            } else {
                QVERIFY(!failure.reason.isEmpty());
                ++others;
            }
        }
        if (plan.isPulled()) {
            QCOMPARE(result.deleted.size(), size_t(0));
        }
        m_singleFailures += others == 1 ? 1 : 0;
    }

    /// Thousands of runs, each with its syncs: in memory where there is such a place.
    TemporaryCard m_card{QDir(u"/dev/shm"_s).exists() ? u"/dev/shm"_s : QDir::tempPath()};
    int m_singleFailures = 0;
};

QTEST_GUILESS_MAIN(RemovalFaultsTest)
#include "RemovalFaultsTest.moc"
