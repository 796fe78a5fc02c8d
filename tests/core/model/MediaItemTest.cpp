// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/MediaItem.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Paths = std::vector<std::filesystem::path>;

class MediaItemTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPairShowsItsPreviewAndListsRawFirst()
    {
        const auto item = make("a.RAF", "a.JPG", {});

        QCOMPARE(item.displayURL(), "/card/a.JPG");
        QCOMPARE(item.displayName(), u"a.JPG"_s);
        QCOMPARE(item.allURLs(), (Paths{"/card/a.RAF", "/card/a.JPG"}));
    }

    void aRawAloneShowsTheRaw() { QCOMPARE(make("a.RAF", {}, {}).displayURL(), "/card/a.RAF"); }

    void aClipShowsItself()
    {
        const auto item = make({}, {}, "a.MOV");

        QCOMPARE(item.displayURL(), "/card/a.MOV");
        QCOMPARE(item.allURLs(), Paths{"/card/a.MOV"});
    }

    void theListKeepsTheOrderRawPreviewVideo()
    {
        QCOMPARE(make("a.RAF", "a.JPG", "a.MOV").allURLs(),
                 (Paths{"/card/a.RAF", "/card/a.JPG", "/card/a.MOV"}));
    }

    void anItemWithoutFilesListsNone() { QVERIFY(MediaItem().allURLs().empty()); }

    void equalityComparesEveryField()
    {
        const auto item = make("a.RAF", "a.JPG", {});
        auto dated = item;
        dated.captureDate = QDateTime::fromSecsSinceEpoch(0, Qt::UTC);

        QCOMPARE(item, make("a.RAF", "a.JPG", {}));
        QVERIFY(item != dated);
    }

private:
    static MediaItem make(const char *raw, const char *preview, const char *video)
    {
        const auto location = [](const char *name) {
            return name ? std::optional(std::filesystem::path("/card") / name) : std::nullopt;
        };
        return {u"CARD/A"_s,     video ? MediaKind::video : MediaKind::photo,
                location(raw),   location(preview),
                location(video), std::nullopt};
    }
};

QTEST_GUILESS_MAIN(MediaItemTest)
#include "MediaItemTest.moc"
