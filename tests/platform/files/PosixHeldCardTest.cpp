// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/PosixHeldCard.h"
#include "platform/files/PosixCardMark.h"
#include "platform/files/PosixFileManager.h"

#include <QTemporaryDir>
#include <QTest>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <fstream>
#include <set>

namespace fs = std::filesystem;

class PosixHeldCardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_parent = fs::canonical(m_folder->path().toStdString());
        m_root = m_parent / "CARD";
        fs::create_directory(m_root);
        m_card = hold(m_root);
        QVERIFY(m_card);
    }

    void aMissingCardIsNotHeld()
    {
        std::error_code error;
        std::ofstream(m_parent / "file") << "x";

        QVERIFY(!PosixFileManager().hold(m_parent / "missing", error));
        QCOMPARE(error, std::errc::no_such_file_or_directory);
        QVERIFY(!PosixFileManager().hold(m_parent / "file", error));
        QCOMPARE(error, std::errc::not_a_directory);
    }

    void aCardIsHeldThroughALinkToIt()
    {
        fs::create_directory_symlink(m_root, m_parent / "link");

        QVERIFY(hold(m_parent / "link")->isAt(m_root));
    }

    void aCardIsKnownAgainByMoreThanItsPath()
    {
        QVERIFY(m_card->isAt(m_root));
        QVERIFY(m_card->isAt(m_root / ""));
        QVERIFY(!m_card->isAt(m_parent));
        QVERIFY(!m_card->isAt(m_parent / "missing"));

        replaceCard();

        QVERIFY(!m_card->isAt(m_root));
        QVERIFY(m_card->isAt(m_parent / "PULLED"));
    }

    void aCardIsKnownAgainByItsMark()
    {
        const auto mark = m_card->mark();
        m_card.reset();
        add("DCIM/1.JPG");

        QVERIFY(hold(m_root)->bears(*mark));
        QVERIFY(hold(m_root)->bears(*mark));
        QVERIFY(!hold(m_parent)->bears(*mark));

        replaceCard();

        QVERIFY(!hold(m_root)->bears(*mark));
        QVERIFY(hold(m_parent / "PULLED")->bears(*mark));
    }

    void aMarkOfAnotherKindIsNoMarkOfACard()
    {
        struct OtherMark final : CardMark {};

        QVERIFY(!m_card->bears(OtherMark()));
    }

    /// Older kernels give the numbers of the first card to the second.
    void aCardMountedInThePlaceOfAnotherDoesNotBearItsMark()
    {
        if (!mayMount()) {
            QSKIP("mounting needs root");
        }
        m_card.reset();
        // Whoever else mounts something at this moment may get the numbers.
        constexpr int exchanges = 50;
        for (int exchange = 0; exchange < exchanges; ++exchange) {
            QVERIFY(mountCard());
            const auto mark = hold(m_root)->mark();
            QVERIFY(hold(m_root)->bears(*mark));

            QCOMPARE(::umount(m_root.c_str()), 0); // which the mark does not prevent
            QVERIFY(mountCard());

            QVERIFY(!hold(m_root)->bears(*mark));
            QVERIFY(!hold(m_root)->bears(*mark));
            QCOMPARE(::umount(m_root.c_str()), 0);
        }
    }

    void aWatchSeesTheCardUnmountedAndDoesNotPreventIt()
    {
        if (!mayMount()) {
            QSKIP("mounting needs root");
        }
        m_card.reset();
        QVERIFY(mountCard());
        std::error_code error;
        auto root = PosixHeldCard::openRoot(m_root, error);
        const PosixCardMark mark(root.number(), PosixCardMark::Watch::Always);
        const auto identity = FolderIdentity::of(root.number());
        root = FileDescriptor();
        add("1.JPG");
        fs::remove(m_root / "1.JPG");
        fs::permissions(m_root, fs::perms::owner_all);
        QVERIFY(!mark.wasUnmounted());
        QVERIFY(mark.isOf(*identity));

        QCOMPARE(::umount(m_root.c_str()), 0);

        QVERIFY(mark.wasUnmounted());
        QVERIFY(mark.wasUnmounted());
        QVERIFY(!mark.isOf(*identity));
    }

    void looksUpFilesAndFoldersButNoLinks()
    {
        add("DCIM/1.JPG");
        fs::create_symlink("1.JPG", m_root / "DCIM/link.JPG");
        fs::create_directory_symlink("DCIM", m_root / "LINK");

        QCOMPARE(m_card->lookUp("DCIM/1.JPG").kind, HeldCard::EntryKind::Other);
        QCOMPARE(m_card->lookUp("DCIM").kind, HeldCard::EntryKind::Directory);
        QCOMPARE(m_card->lookUp("DCIM/gone.JPG").error, std::errc::no_such_file_or_directory);
        QCOMPARE(m_card->lookUp("DCIM/link.JPG").error, std::errc::no_such_file_or_directory);
        QCOMPARE(m_card->lookUp("LINK/1.JPG").error, std::errc::too_many_symbolic_link_levels);
        QCOMPARE(m_card->lookUp("../CARD/DCIM/1.JPG").error, std::errc::cross_device_link);
    }

    void removesFilesAndLinksThemselvesButNeverDirectories()
    {
        add("DCIM/1.JPG");
        add("DCIM/target.JPG");
        fs::create_symlink("target.JPG", m_root / "DCIM/link.JPG");
        fs::create_directory(m_root / "DCIM/empty");
        QVERIFY(!m_card->openFolder("DCIM"));

        QVERIFY(!m_card->remove("DCIM", "1.JPG"));
        QVERIFY(!m_card->remove("DCIM", "link.JPG"));
        QCOMPARE(m_card->remove("DCIM", "empty"), std::errc::is_a_directory);
        QCOMPARE(m_card->remove("DCIM", "gone.JPG"), std::errc::no_such_file_or_directory);

        QVERIFY(!fs::exists(m_root / "DCIM/1.JPG"));
        QVERIFY(!fs::is_symlink(m_root / "DCIM/link.JPG"));
        QVERIFY(fs::exists(m_root / "DCIM/target.JPG"));
        QVERIFY(fs::is_directory(m_root / "DCIM/empty"));
    }

    void theCardOfBeforeIsMeantAlsoWhenAnotherTookItsPlace()
    {
        add("DCIM/1.JPG");
        QVERIFY(!m_card->openFolder("DCIM"));
        replaceCard();
        add("DCIM/1.JPG");

        QVERIFY(!m_card->remove("DCIM", "1.JPG"));

        QVERIFY(fs::exists(m_root / "DCIM/1.JPG"));
        QVERIFY(!fs::exists(m_parent / "PULLED/DCIM/1.JPG"));
    }

    void nothingIsRemovedThroughAFolderThatBecameALink()
    {
        add("DCIM/1.JPG");
        fs::create_directory(m_parent / "outside");
        std::ofstream(m_parent / "outside/1.JPG") << "x";
        QVERIFY(!m_card->openFolder("DCIM"));
        fs::rename(m_root / "DCIM", m_root / "WAS");
        fs::create_directory_symlink(m_parent / "outside", m_root / "DCIM");

        QCOMPARE(m_card->remove("DCIM", "1.JPG"), std::errc::too_many_symbolic_link_levels);

        QVERIFY(fs::exists(m_parent / "outside/1.JPG"));
        QVERIFY(fs::exists(m_root / "WAS/1.JPG"));
    }

    void nothingIsRemovedFromAFolderThatTookTheNameOfAnother()
    {
        add("DCIM/1.JPG");
        QVERIFY(!m_card->openFolder("DCIM"));
        fs::rename(m_root / "DCIM", m_root / "WAS");
        add("DCIM/1.JPG");

        QVERIFY(m_card->remove("DCIM", "1.JPG"));

        QVERIFY(fs::exists(m_root / "DCIM/1.JPG"));
        QVERIFY(fs::exists(m_root / "WAS/1.JPG"));
    }

    void foldersOpenBeneathTheRootOnly()
    {
        fs::create_directory(m_parent / "outside");
        fs::create_directory_symlink(m_parent / "outside", m_root / "link");

        QVERIFY(!m_card->openFolder(""));
        QVERIFY(m_card->openFolder("link"));
        QVERIFY(m_card->openFolder("../outside"));
        QVERIFY(m_card->openFolder("missing"));
    }

    void foldersAndCardAreSynced()
    {
        add("DCIM/1.JPG");
        QVERIFY(!m_card->openFolder("DCIM"));

        QVERIFY(!m_card->syncFolder("DCIM"));
        QVERIFY(!m_card->syncAll());
    }

    void aCardThatIsThereIsAliveWithAndWithoutAFileToRead()
    {
        QVERIFY(!m_card->proveAlive());
        add("DCIM/1.JPG");
        add("DCIM/empty.JPG", "");

        m_card->chooseWitness({"DCIM/1.JPG"});
        QVERIFY(!m_card->proveAlive());
        m_card->chooseWitness({});
        QVERIFY(!m_card->proveAlive());
    }

    void theFileToReadIsNoneOfThoseToBeRemoved()
    {
        add("DCIM/1.JPG", std::string(100'000, 'x'));
        add("DCIM/2.JPG", std::string(10'000, 'x'));

        m_card->chooseWitness({"DCIM/1.JPG"});

        const auto held = openPaths();
        QVERIFY(held.contains(m_root / "DCIM/2.JPG"));
        QVERIFY(!held.contains(m_root / "DCIM/1.JPG"));
    }

    void everythingIsClosedInTheEnd()
    {
        add("DCIM/1.JPG");
        QVERIFY(!m_card->openFolder("DCIM"));
        m_card->chooseWitness({});

        m_card.reset();

        for (const auto &path : openPaths()) {
            QVERIFY(!path.native().starts_with(m_root.native()));
        }
    }

private:
    static std::unique_ptr<HeldCard> hold(const fs::path &root)
    {
        std::error_code error;
        return PosixFileManager().hold(root, error);
    }

    /// In a world of this thread's own.
    static bool mayMount()
    {
        return ::geteuid() == 0 && ::unshare(CLONE_NEWNS) == 0 &&
               ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    }

    bool mountCard() const { return ::mount("card", m_root.c_str(), "tmpfs", 0, nullptr) == 0; }

    void add(const std::string &name, const std::string &content = "x") const
    {
        fs::create_directories((m_root / name).parent_path());
        std::ofstream(m_root / name, std::ios::binary) << content;
    }

    void replaceCard() const
    {
        fs::rename(m_root, m_parent / "PULLED");
        fs::create_directory(m_root);
    }

    /// What this process holds open.
    static std::set<fs::path> openPaths()
    {
        std::set<fs::path> paths;
        for (const auto &entry : fs::directory_iterator("/proc/self/fd")) {
            std::error_code error;
            paths.insert(fs::read_symlink(entry.path(), error));
        }
        return paths;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    fs::path m_parent;
    fs::path m_root;
    std::unique_ptr<HeldCard> m_card;
};

QTEST_GUILESS_MAIN(PosixHeldCardTest)
#include "PosixHeldCardTest.moc"
