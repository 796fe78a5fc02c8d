// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/SharedNames.h"
#include "core/model/Pairing.h"

#include <QTest>

#include <rapidcheck.h>

using namespace Qt::StringLiterals;

class SharedNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aKeptDuplicateIsAnHeir()
    {
        const auto items = itemsOf({"A.HEIC", "A.JPG", "B.JPG"});
        QCOMPARE(items.size(), 3);

        QCOMPARE(rejectsWithKeptHeirs(items, {u"C/A"_s, u"C/B"_s}), QSet<QString>{u"C/A"_s});
    }

    void aKeptFileIsTheHeirOfNoDuplicateButMaySwallowOthers()
    {
        const auto items = itemsOf({"A.HEIC", "A.JPG", "A.TIF"});
        const auto last = items.last().id;

        QCOMPARE(rejectsWithKeptHeirs(items, {last}), QSet<QString>{last});
    }

    void withoutKeptNamesakesNothingIsInherited()
    {
        const auto items = itemsOf({"A.HEIC", "A.JPG", "B.JPG"});

        QVERIFY(rejectsWithKeptHeirs(items, {items.at(0).id, items.at(1).id}).isEmpty());
        QVERIFY(rejectsWithKeptHeirs(items, {u"C/B"_s}).isEmpty());
        QVERIFY(rejectsWithKeptHeirs(items, {}).isEmpty());
    }

    void aPairAndAClipOfOneNameAreNoNamesakes()
    {
        const auto items = itemsOf({"A.JPG", "A.MOV", "A.RAF"});

        QVERIFY(rejectsWithKeptHeirs(items, {u"C/A"_s}).isEmpty());
    }

    /// Whatever part of the rejects is gone, the others still name rejected files only.
    void whatIsRememberedNeverNamesAKeptFile()
    {
        const bool holds = rc::check([] {
            const auto names = *rc::gen::container<std::vector<std::string>>(
                rc::gen::element<std::string>("A.HEIC", "A.JPG", "A.TIF", "A.RAF", "A.DNG", "A.MOV",
                                              "A.MP4", "B.JPG", "B.HEIC", "B.RAF"));
            std::vector<std::filesystem::path> files;
            for (const auto &name : std::set<std::string>(names.begin(), names.end())) {
                files.emplace_back("/C/" + name);
            }
            const auto items = Pairing::pair(files);
            QSet<QString> rejected;
            std::set<std::filesystem::path> keptFiles;
            std::vector<std::filesystem::path> left;
            for (const auto &item : items) {
                if (*rc::gen::arbitrary<bool>()) {
                    rejected.insert(item.id);
                }
                for (const auto &file : item.allURLs()) {
                    if (!rejected.contains(item.id)) {
                        keptFiles.insert(file);
                        left.push_back(file);
                    } else if (*rc::gen::arbitrary<bool>()) {
                        left.push_back(file); // the deletion did not come so far
                    }
                }
            }
            const auto remembered = rejected - rejectsWithKeptHeirs(items, rejected);
            for (const auto &item : Pairing::pair(left)) {
                for (const auto &file : item.allURLs()) {
                    RC_ASSERT(!remembered.contains(item.id) || !keptFiles.contains(file));
                }
            }
        });
        QVERIFY(holds);
    }

private:
    static QList<MediaItem> itemsOf(const std::vector<std::string> &names)
    {
        std::vector<std::filesystem::path> files;
        for (const auto &name : names) {
            files.emplace_back("/C/" + name);
        }
        return Pairing::pair(files);
    }
};

QTEST_GUILESS_MAIN(SharedNamesTest)
#include "SharedNamesTest.moc"
