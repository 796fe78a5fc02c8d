// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/SessionStore.h"
#include "tests/core/store/MadeUpSnapshots.h"
#include "tests/core/store/TemporaryStore.h"
#include "tests/support/Umask.h"

#include <QCryptographicHash>
#include <QTest>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <thread>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

int modeOf(const fs::path &path)
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 ? int(status.st_mode & 07777) : -1;
}

void setOrUnset(const char *variable, const QByteArray &value)
{
    value.isEmpty() ? qunsetenv(variable) : qputenv(variable, value);
}

/// While it lives, no file of this process grows beyond @p bytes, as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {.rlim_cur = bytes, .rlim_max = m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before = {};
    void (*m_handler)(int) = SIG_DFL;
};

} // namespace

class SessionStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<TemporaryStore>(); }

    // Where

    void belongsToTheUsersData_data()
    {
        QTest::addColumn<QByteArray>("home");
        QTest::addColumn<QByteArray>("dataHome");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("home") << "/h"_ba
                              << ""_ba
                              << "/h/.local/share/Kestle/sessions"_ba;
        QTest::newRow("data home") << "/h"_ba
                                   << "/d"_ba
                                   << "/d/Kestle/sessions"_ba;
        QTest::newRow("data home alone") << ""_ba
                                         << "/d"_ba
                                         << "/d/Kestle/sessions"_ba;
        QTest::newRow("not UTF-8") << "/h\xFF"_ba
                                   << ""_ba
                                   << "/h\xFF/.local/share/Kestle/sessions"_ba;
        QTest::newRow("relative data home does not count") << "/h"_ba
                                                           << "d"_ba
                                                           << "/h/.local/share/Kestle/sessions"_ba;
    }

    void belongsToTheUsersData()
    {
        QFETCH(const QByteArray, home);
        QFETCH(const QByteArray, dataHome);
        QFETCH(const QByteArray, expected);
        const auto homeBefore = qgetenv("HOME");
        const auto dataHomeBefore = qgetenv("XDG_DATA_HOME");
        setOrUnset("HOME", home);
        setOrUnset("XDG_DATA_HOME", dataHome);

        const auto directory = SessionStore::defaultDirectory();

        setOrUnset("HOME", homeBefore);
        setOrUnset("XDG_DATA_HOME", dataHomeBefore);
        QCOMPARE(QByteArray::fromStdString(directory.native()), expected);
    }

    void stopsTheProgramWithoutAHome()
    {
        const auto child = ::fork();
        if (child == 0) {
            std::signal(SIGABRT, SIG_DFL);
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
            setOrUnset("HOME", "");
            setOrUnset("XDG_DATA_HOME", "");
            static_cast<void>(SessionStore::defaultDirectory());
            ::_exit(0);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);

        QVERIFY(WIFSIGNALED(status));
        QCOMPARE(WTERMSIG(status), SIGABRT);
    }

    void makesItsFolderForThisUserAlone_data()
    {
        QTest::addColumn<int>("mask");
        QTest::newRow("open umask") << 0;
        QTest::newRow("usual umask") << 022;
        QTest::newRow("strict umask") << 0777;
    }

    void makesItsFolderForThisUserAlone()
    {
        QFETCH(const int, mask);
        const auto top = m_folder->directory() / "a";

        {
            const Umask umask(static_cast<mode_t>(mask));
            SessionStore(top / "b" / "c").save(sample());
        }

        for (const auto &folder : {top, top / "b", top / "b" / "c"}) {
            QCOMPARE(modeOf(folder), 0700);
        }
        const SessionStore made(top / "b" / "c");
        QCOMPARE(modeOf(made.fileURL(u"ABC"_s)), 0600);
        QVERIFY(made.load(u"ABC"_s) == sample());
    }

    void anExistingFolderStaysAsItIs()
    {
        fs::permissions(m_folder->directory(), fs::perms(0755));
        m_folder->add("notes.txt", "mine");

        const SessionStore again(m_folder->directory());

        QCOMPARE(again.directory(), m_folder->directory());
        QCOMPARE(modeOf(m_folder->directory()), 0755);
        QVERIFY(m_folder->has("notes.txt"));
    }

    void aFolderByLinkIsFine()
    {
        const auto link = m_folder->directory().parent_path() / "link";
        fs::create_directory_symlink(m_folder->directory(), link);

        SessionStore(link).save(sample());

        QVERIFY(store().load(u"ABC"_s));
    }

    void throwsWhereNoFolderCanBeMade_data()
    {
        QTest::addColumn<QString>("directory");
        QTest::newRow("a file is there") << u"file"_s;
        QTest::newRow("a file is above") << u"file/sessions"_s;
        QTest::newRow("a file is far above") << u"file/a/b"_s;
        QTest::newRow("a link to nowhere") << u"link"_s;
        QTest::newRow("a link to nowhere above") << u"link/sessions"_s;
        QTest::newRow("a name too long") << QString(300, u'x');
    }

    void throwsWhereNoFolderCanBeMade()
    {
        QFETCH(const QString, directory);
        m_folder->add("file", "");
        fs::create_symlink("nowhere", m_folder->directory() / "link");

        QVERIFY_THROWS_EXCEPTION(std::system_error,
                                 SessionStore(m_folder->directory() / directory.toStdString()));
        QVERIFY(!m_folder->has("nowhere"));
    }

    void throwsWithoutAPath()
    {
        QVERIFY_THROWS_EXCEPTION(std::system_error, SessionStore(fs::path()));
    }

    // Names

    void aFileIsNamedByTheHashOfTheUUID()
    {
        QCOMPARE(store().fileURL(u"ABC"_s),
                 m_folder->directory() /
                     "b5d4045c3f466fa91fe2cc6abe79232a1a57cdf104f7a26e716e0a1e2789df78.json");
    }

    void anyUUIDGivesAFileInTheFolder()
    {
        QVERIFY(rc::check("any UUID is a file in the folder", [this] {
            const auto uuid = *anyText();
            const auto file = store().fileURL(uuid);
            RC_ASSERT(file.parent_path() == m_folder->directory());
            const auto hash = QCryptographicHash::hash(uuid.toUtf8(), QCryptographicHash::Sha256);
            RC_ASSERT(file.stem() == hash.toHex().toStdString());
            RC_ASSERT(file.extension() == ".json");
        }));
        const auto nasty = u"../\0/\n\U0001F600"_s;
        store().save(sample(nasty));
        QVERIFY(store().load(nasty) == sample(nasty));
    }

    // Save and load

    void whatWasSavedIsLoadedAgain()
    {
        QVERIFY(rc::check("every snapshot comes back", [this] {
            const auto snapshot = *anySnapshot();
            store().save(snapshot);
            RC_ASSERT(store().load(snapshot.volumeUUID) == std::optional(inWholeSeconds(snapshot)));
        }));
    }

    void theFileHoldsTheSnapshotsJsonAlone()
    {
        store().save(sample());

        QCOMPARE(content(store().fileURL(u"ABC"_s)), sample().toJson());
        QCOMPARE(m_folder->names(), QStringList{m_folder->fileName(u"ABC"_s)});
    }

    void aLaterSaveReplacesTheEarlier()
    {
        auto large = sample(u"ABC"_s, 1);
        for (qint64 number = 0; number < 20'000; ++number) {
            large.rejectedIDs.insert(u"100_FUJI/DSCF%1"_s.arg(number));
        }
        store().save(large);
        QVERIFY(store().load(u"ABC"_s) == large);

        store().save(sample());

        QVERIFY(store().load(u"ABC"_s) == sample());
        QCOMPARE(m_folder->names().size(), 1);
    }

    void cardsHaveAFileEach()
    {
        store().save(sample(u"ABC"_s));
        store().save(sample(u"abc"_s));

        QVERIFY(store().load(u"ABC"_s) == sample(u"ABC"_s));
        QVERIFY(store().load(u"abc"_s) == sample(u"abc"_s));
        QVERIFY(!store().load(u"AB"_s));
    }

    void aLinkInTheFilesPlaceIsReplacedNotWrittenThrough()
    {
        const auto elsewhere = m_folder->add("elsewhere", "mine");
        fs::create_symlink(elsewhere, store().fileURL(u"ABC"_s));

        store().save(sample());

        QCOMPARE(content(elsewhere), "mine");
        QVERIFY(fs::is_regular_file(fs::symlink_status(store().fileURL(u"ABC"_s))));
    }

    void aSaveThatFailsThrowsAndKeepsTheOldSnapshot()
    {
        store().save(sample());
        {
            const FileSizeLimit limit(100);
            QVERIFY_THROWS_EXCEPTION(std::system_error, store().save(sample(u"ABC"_s, 8)));
        }

        QVERIFY(store().load(u"ABC"_s) == sample());
        QCOMPARE(m_folder->names(), QStringList{m_folder->fileName(u"ABC"_s)});
    }

    void aSaveWithoutAFolderThrows()
    {
        fs::remove(m_folder->directory());

        QVERIFY_THROWS_EXCEPTION(std::system_error, store().save(sample()));
        QVERIFY(!fs::exists(m_folder->directory()));
    }

    void aSaveOverAFolderThrowsAndLeavesNothing()
    {
        fs::create_directory(store().fileURL(u"ABC"_s));

        QVERIFY_THROWS_EXCEPTION(std::system_error, store().save(sample()));
        QCOMPARE(m_folder->names(), QStringList{m_folder->fileName(u"ABC"_s)});
    }

    void aSnapshotTooLongToBeLoadedIsNotSaved()
    {
        store().save(sample());
        auto snapshot = sample();
        snapshot.rejectedIDs.insert(QString(longest, u'x'));

        QVERIFY_THROWS_EXCEPTION(std::system_error, store().save(snapshot));
        QVERIFY(store().load(u"ABC"_s) == sample());
    }

    void theUUIDInTheFileIsNotCompared()
    {
        store().save(sample());
        fs::rename(store().fileURL(u"ABC"_s), store().fileURL(u"DEF"_s));

        QVERIFY(store().load(u"DEF"_s) == sample());
    }

    void nothingIsLoadedFromWhatIsNotASnapshot_data() { TemporaryStore::addDamageRows(); }

    void nothingIsLoadedFromWhatIsNotASnapshot()
    {
        QFETCH(const TemporaryStore::Make, make);
        const auto file = store().fileURL(u"ABC"_s);
        make(file);
        const auto before = m_folder->names();

        QVERIFY(!store().load(u"ABC"_s));
        QCOMPARE(m_folder->names(), before);
    }

    void nothingIsLoadedWithoutAFileOrFolder()
    {
        QVERIFY(!store().load(u"ABC"_s));
        fs::remove(m_folder->directory());
        QVERIFY(!store().load(u"ABC"_s));
    }

    void filesOfUpTo64MebibytesAreRead()
    {
        const auto file = store().fileURL(u"ABC"_s);
        auto json = sample().toJson();
        json += QByteArray(longest - json.size(), ' ');
        m_folder->add(file, json);
        QVERIFY(store().load(u"ABC"_s) == sample());

        m_folder->add(file, json + ' ');

        QVERIFY(!store().load(u"ABC"_s));
    }

    void aReaderMeanwhileSeesTheOldSnapshotOrTheNew()
    {
        constexpr qint64 saves = 200;
        store().save(sample(u"ABC"_s, 0));
        std::atomic_bool isDone = false;
        std::thread writer([&] {
            for (qint64 index = 1; index <= saves; ++index) {
                store().save(sample(u"ABC"_s, index));
            }
            isDone = true;
        });

        qint64 newest = 0;
        bool isOrdered = true;
        while (!isDone) {
            const auto snapshot = store().load(u"ABC"_s);
            isOrdered = isOrdered && snapshot && snapshot->currentIndex >= newest &&
                        *snapshot == sample(u"ABC"_s, snapshot->currentIndex);
            newest = snapshot ? snapshot->currentIndex : newest;
        }
        writer.join();

        QVERIFY(isOrdered);
        QCOMPARE(store().load(u"ABC"_s)->currentIndex, saves);
    }

    // Delete

    void deletingForgetsOneCard()
    {
        store().save(sample(u"ABC"_s));
        store().save(sample(u"DEF"_s));

        store().deleteSnapshot(u"ABC"_s);
        store().deleteSnapshot(u"ABC"_s); // silently nothing

        QCOMPARE(m_folder->names(), QStringList{m_folder->fileName(u"DEF"_s)});
    }

    void deletingLeavesAFolderAndALinksTarget()
    {
        const auto target = m_folder->add("target", "mine");
        fs::create_symlink(target, store().fileURL(u"link"_s));
        fs::create_directory(store().fileURL(u"folder"_s));

        store().deleteSnapshot(u"link"_s);
        store().deleteSnapshot(u"folder"_s);

        QCOMPARE(m_folder->names(), (QStringList{m_folder->fileName(u"folder"_s), u"target"_s}));
    }

private:
    static constexpr qsizetype longest = 64 * 1024 * 1024;

    static QByteArray content(const fs::path &file)
    {
        std::ifstream stream(file, std::ios::binary);
        return QByteArray::fromStdString(std::string(std::istreambuf_iterator(stream), {}));
    }

    [[nodiscard]] const SessionStore &store() const { return m_folder->store(); }

    std::unique_ptr<TemporaryStore> m_folder;
};

QTEST_GUILESS_MAIN(SessionStoreTest)
#include "SessionStoreTest.moc"
