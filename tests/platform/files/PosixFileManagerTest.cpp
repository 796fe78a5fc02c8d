// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/PosixFileManager.h"
#include "platform/files/CreationDate.h"
#include "tests/support/AccessTime.h"

#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

class PosixFileManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_root = fs::canonical(m_folder->path().toStdString());
    }

    void listsRegularFilesAtEveryDepthInByteOrder()
    {
        for (const char *name : {"b/2.JPG", "b/1.JPG", "a/deep/deeper/3.RAF", "Z.JPG", "a.JPG"}) {
            add(name);
        }

        const std::vector<std::string> expected = {"Z.JPG", "a/deep/deeper/3.RAF", "a.JPG",
                                                   "b/1.JPG", "b/2.JPG"};
        QCOMPARE(listed(), expected);
    }

    void namesAreOrderedByAllTheirBytes()
    {
        const std::vector<std::string> expected = {"A",
                                                   "AB",
                                                   "DSCF000",
                                                   "DSCF0001",
                                                   "DSCF0001.JPG",
                                                   "DSCF0001.RAF",
                                                   "DSCF00010.JPG",
                                                   "DSCF0002.JPG",
                                                   "dscf0001.jpg",
                                                   "\xc3\xa4.JPG",
                                                   "\xff.JPG"};
        for (const auto &name :
             {expected[6], expected[3], expected[10], expected[5], expected[0], expected[8],
              expected[9], expected[2], expected[4], expected[7], expected[1]}) {
            add(name.c_str());
        }

        QCOMPARE(listed(), expected);
    }

    void leavesOutHiddenEntriesPackagesLinksAndOddEntries()
    {
        for (const char *name :
             {".hidden.JPG", "._DSCF0001.RAF", ".Trashes/1.JPG", "Thing.app/1.JPG",
              "Mine.PhotosLibrary/1.JPG", "x.bundle/deep/1.JPG", "y.FRAMEWORK/1.JPG", "kept.JPG"}) {
            add(name);
        }
        fs::create_directory(m_root / "FOLDER.JPG");
        fs::create_symlink(m_root / "kept.JPG", m_root / "link.JPG");
        fs::create_directory_symlink(m_root / "FOLDER.JPG", m_root / "linkedfolder");
        QCOMPARE(::mkfifo((m_root / "pipe.JPG").c_str(), 0600), 0);

        QCOMPARE(listed(), std::vector<std::string>{"kept.JPG"});
    }

    void aFolderNamedOnlyByAPackageExtensionIsHiddenAnyway()
    {
        add(".app/1.JPG");
        add("app/2.JPG");

        QCOMPARE(listed(), std::vector<std::string>{"app/2.JPG"});
    }

    void aMissingFolderOrALinkToOneListsNothing()
    {
        add("real/1.JPG");
        fs::create_directory_symlink(m_root / "real", m_root / "link");

        QVERIFY(m_files.regularFilesBelow(m_root / "missing").empty());
        QVERIFY(m_files.regularFilesBelow(m_root / "link").empty());
        QVERIFY(m_files.regularFilesBelow(m_root / "real" / "1.JPG").empty());
    }

    void anUnreadableFolderIsLeftOutAndTheRestListed()
    {
        add("closed/1.JPG");
        add("open/2.JPG");
        fs::permissions(m_root / "closed", fs::perms::none);
        fs::permissions(m_root, fs::perms::all);
        const auto asItself = ::geteuid();
        if (asItself == 0) { // root reads everything
            QCOMPARE(::seteuid(nobody), 0);
        }

        const auto files = listed();

        QCOMPARE(::seteuid(asItself), 0);
        fs::permissions(m_root / "closed", fs::perms::owner_all);
        QCOMPARE(files, std::vector<std::string>{"open/2.JPG"});
    }

    void noDepthIsTooDeep()
    {
        std::string deep;
        for (int level = 0; level < 400; ++level) {
            deep += "d/";
        }
        add(deep + "1.JPG");

        QCOMPARE(listed(), std::vector<std::string>{deep + "1.JPG"});
    }

    void otherMountsAreNotEntered()
    {
        add("1.JPG");
        fs::create_directory(m_root / "mounted");
        if (!mountMemory(m_root / "mounted")) {
            QSKIP("mounting is not allowed here");
        }
        add("mounted/2.JPG");

        const auto files = listed();

        QCOMPARE(::umount((m_root / "mounted").c_str()), 0);
        QCOMPARE(files, std::vector<std::string>{"1.JPG"});
    }

    void aMountWithoutWritingIsReadOnly()
    {
        fs::create_directory(m_root / "mounted");
        if (!mountMemory(m_root / "mounted", MS_RDONLY)) {
            QSKIP("mounting is not allowed here");
        }

        const bool isReadOnly = m_files.isReadOnly(m_root / "mounted");

        QCOMPARE(::umount((m_root / "mounted").c_str()), 0);
        QVERIFY(isReadOnly);
        QVERIFY(!m_files.isReadOnly(m_root / "mounted"));
        QVERIFY(!m_files.isReadOnly(m_root / "missing"));
    }

    void namesThatAreNotUtf8Survive()
    {
        add("caf\xE9.JPG");

        QCOMPARE(listed(), std::vector<std::string>{"caf\xE9.JPG"});
        fs::remove(m_root / "caf\xE9.JPG"); // QTemporaryDir cannot name it
    }

    void listingLeavesNoDescriptorOpen()
    {
        add("a/b/c/1.JPG");
        const auto before = openDescriptors();

        (void)listed();

        QCOMPARE(openDescriptors(), before);
    }

    void kindFollowsLinksAndIsAbsentForNothing()
    {
        add("folder/file");
        fs::create_symlink("folder", m_root / "link");
        fs::create_symlink("nowhere", m_root / "dangling");

        QCOMPARE(m_files.kindOf(m_root / "folder"), FileManager::EntryKind::Directory);
        QCOMPARE(m_files.kindOf(m_root / "link"), FileManager::EntryKind::Directory);
        QCOMPARE(m_files.kindOf(m_root / "link/file"), FileManager::EntryKind::Other);
        QVERIFY(!m_files.kindOf(m_root / "dangling"));
        QVERIFY(!m_files.kindOf(m_root / "missing"));
    }

    void onlyFoldersAreListable()
    {
        add("folder/file");
        fs::create_directory(m_root / "empty");

        QVERIFY(m_files.isListable(m_root / "folder"));
        QVERIFY(m_files.isListable(m_root / "empty"));
        QVERIFY(!m_files.isListable(m_root / "folder/file"));
        QVERIFY(!m_files.isListable(m_root / "missing"));
        fs::create_directory_symlink(m_root / "folder", m_root / "link");
        QVERIFY(m_files.isListable(m_root / "link"));
    }

    void listingLeavesTheAccessTimeAsItIs()
    {
        add("folder/file");
        if (!AccessTime::changesOnReading(m_root / "folder")) {
            QSKIP("the file system keeps no access times");
        }
        AccessTime::makeOld(m_root / "folder");

        QVERIFY(m_files.isListable(m_root / "folder"));
        QVERIFY(AccessTime::isOld(m_root / "folder"));
        QCOMPARE(listed(), std::vector<std::string>{"folder/file"});
        QVERIFY(AccessTime::isOld(m_root / "folder"));
    }

    void resolvesLinksDotsAndTrailingSeparators()
    {
        add("folder/file");
        fs::create_symlink("folder", m_root / "link");

        QCOMPARE(m_files.resolvingSymlinks(m_root / "link/file"), m_root / "folder/file");
        QCOMPARE(m_files.resolvingSymlinks(m_root / "link/../folder/./file"),
                 m_root / "folder/file");
        QCOMPARE(m_files.resolvingSymlinks(m_root / "folder/"), m_root / "folder");
        QCOMPARE(m_files.resolvingSymlinks(m_root / "missing/file"), m_root / "missing/file");
        QCOMPARE(m_files.resolvingSymlinks("/"), fs::path("/"));
    }

    void aLoopOfLinksStaysAsWritten()
    {
        fs::create_symlink("two", m_root / "one");
        fs::create_symlink("one", m_root / "two");

        QCOMPARE(m_files.resolvingSymlinks(m_root / "one"), m_root / "one");
    }

    void onlyTheLastNameOfAPathMakesItALink()
    {
        add("folder/file");
        fs::create_directory_symlink(m_root / "folder", m_root / "link");
        fs::create_symlink("nowhere", m_root / "dangling");

        QVERIFY(m_files.isLink(m_root / "link"));
        QVERIFY(m_files.isLink(m_root / "dangling"));
        QVERIFY(!m_files.isLink(m_root / "link/file"));
        QVERIFY(!m_files.isLink(m_root / "folder"));
        QVERIFY(!m_files.isLink(m_root / "missing"));
    }

    void sizeIsTheFilesAndAbsentForNothing()
    {
        add("file", "12345");

        QCOMPARE(m_files.fileSize(m_root / "file"), std::optional<qint64>(5));
        QVERIFY(!m_files.fileSize(m_root / "missing"));
    }

    void creationDateIsNeverTheModificationTime()
    {
        add("file");
        const std::array<timespec, 2> longAgo = {timespec{1000, 0}, timespec{1000, 0}};
        QCOMPARE(::utimensat(AT_FDCWD, (m_root / "file").c_str(), longAgo.data(), 0), 0);

        const auto date = creationDate(m_root / "file");

        if (!date) {
            QSKIP("this file system knows no creation times");
        }
        QVERIFY(qAbs(date->secsTo(QDateTime::currentDateTimeUtc())) < 3600);
        QCOMPARE(date->timeSpec(), Qt::UTC);
    }

    void aMissingFileHasNoCreationDate() { QVERIFY(!creationDate(m_root / "missing")); }

private:
    static constexpr uid_t nobody = 65534;

    /// Mounts an empty file system where nobody else sees it.
    static bool mountMemory(const fs::path &folder, unsigned long flags = 0)
    {
        return ::unshare(CLONE_NEWNS) == 0 &&
               ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               ::mount("none", folder.c_str(), "tmpfs", flags, "size=64k") == 0;
    }

    void add(const std::string &name, const std::string &content = "x") const
    {
        fs::create_directories((m_root / name).parent_path());
        std::ofstream(m_root / name) << content;
    }

    [[nodiscard]] std::vector<std::string> listed() const
    {
        std::vector<std::string> names;
        for (const auto &file : m_files.regularFilesBelow(m_root)) {
            names.push_back(file.lexically_relative(m_root).native());
        }
        return names;
    }

    [[nodiscard]] static std::ptrdiff_t openDescriptors()
    {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    }

    PosixFileManager m_files;
    std::unique_ptr<QTemporaryDir> m_folder;
    fs::path m_root;
};

QTEST_GUILESS_MAIN(PosixFileManagerTest)
#include "PosixFileManagerTest.moc"
