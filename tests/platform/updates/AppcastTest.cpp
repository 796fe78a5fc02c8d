// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/Appcast.h"
#include "tests/platform/updates/FeedText.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;

class AppcastTest : public QObject {
    Q_OBJECT

    using Version = FeedText::Version;

private Q_SLOTS:
    void anItemIsReadWhole()
    {
        const auto feed = read(FeedText::of({.version = "20",
                                             .shownVersion = "2.0",
                                             .notes = "<p>Faster</p>",
                                             .download = "https://kestle.test/a.tar.xz",
                                             .length = 123,
                                             .signature = "c2ln",
                                             .more = "<link>https://kestle.test/2.0</link>"}));

        QVERIFY(feed);
        const AppcastItem expected{.version = u"20"_s,
                                   .shownVersion = u"2.0"_s,
                                   .channel = {},
                                   .minimumSystemVersion = {},
                                   .maximumSystemVersion = {},
                                   .notes = u"Faster"_s,
                                   .page = QUrl(u"https://kestle.test/2.0"_s),
                                   .download = QUrl(u"https://kestle.test/a.tar.xz"_s),
                                   .signature = "c2ln"_ba,
                                   .length = 123};
        QCOMPARE(feed->items(), QList<AppcastItem>{expected});
    }

    void versionsMayStandAtTheDownload()
    {
        const auto feed = read("<item><enclosure url='https://x.test/a' length='1' "
                               "sparkle:edSignature='s' sparkle:version='7' "
                               "sparkle:shortVersionString='0.7'/></item>");

        QVERIFY(feed);
        QCOMPARE(feed->items().first().version, u"7"_s);
        QCOMPARE(feed->items().first().shownVersion, u"0.7"_s);
    }

    void addressesMayBeRelative()
    {
        const auto feed = read(FeedText::of({.download = "files/a.tar.xz", .length = 1}));
        QCOMPARE(feed->items().first().download,
                 QUrl(u"https://kestle.test/feed/files/a.tar.xz"_s));
    }

    void theShownVersionHidesAndBreaksNothing()
    {
        const auto feed = read(FeedText::of({.version = "2.0",
                                             .shownVersion = "Two\n\xE2\x80\xAE"
                                                             "99"}) +
                               FeedText::of({.version = "3\xE2\x80\x8B"}));

        QVERIFY(feed);
        QCOMPARE(feed->items().first().shownVersion, u"Two 99"_s);
        QCOMPARE(feed->items().last().shownVersion, u"3"_s);
    }

    void aVersionThatIsNotSeenIsNone()
    {
        const auto feed = read(FeedText::of({.version = "\xE2\x80\x8B",
                                             .download = "https://x.test/a",
                                             .length = 1,
                                             .signature = "s"}));

        QVERIFY(feed);
        QVERIFY(!feed->newestFor({.version = u"1.0"_s, .systemVersion = u"6.1"_s}, true));
    }

    void addressesThatAreNotSafeAreNone_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("plain HTTP") << "http://kestle.test/a"_ba;
        QTest::newRow("a file") << "file:///etc/passwd"_ba;
        QTest::newRow("a script") << "javascript:alert(1)"_ba;
        QTest::newRow("no host") << "https:///a"_ba;
    }

    void addressesThatAreNotSafeAreNone()
    {
        QFETCH(const QByteArray, address);

        const auto feed = read(FeedText::of({.download = address,
                                             .length = 1,
                                             .signature = "s",
                                             .more = "<link>" + address + "</link>"}));

        QVERIFY(feed);
        QVERIFY(feed->items().first().download.isEmpty());
        QVERIFY(feed->items().first().page.isEmpty());
    }

    void downloadsForOtherSystemsAreLeftOut()
    {
        const auto feed = read(
            "<item><sparkle:version>2</sparkle:version>"
            "<enclosure url='https://x.test/windows' sparkle:os='windows' length='1'/>"
            "<sparkle:deltas><enclosure url='https://x.test/delta' length='1'/></sparkle:deltas>"
            "<enclosure url='https://x.test/linux' sparkle:os='linux' length='2'/>"
            "<enclosure url='https://x.test/any' length='3'/></item>");

        QVERIFY(feed);
        QCOMPARE(feed->items().first().download, QUrl(u"https://x.test/linux"_s));
        QCOMPARE(feed->items().first().length, 2);
    }

    void whatIsNoWholeFeedIsNone_data()
    {
        const auto whole = FeedText::feed(FeedText::of({}));
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("text") << "Not Found"_ba;
        QTest::newRow("a page") << "<html><body/></html>"_ba;
        QTest::newRow("cut off") << whole.first(whole.size() / 2);
        QTest::newRow("cut off at the end") << whole.chopped(4);
        QTest::newRow("two of them") << whole + whole.sliced(whole.indexOf("<rss"));
        QTest::newRow("a document type")
            << QByteArray(whole).replace("<rss", "<!DOCTYPE rss []><rss");
        QTest::newRow("an entity of its own")
            << QByteArray(whole)
                   .replace("<rss", "<!DOCTYPE rss [<!ENTITY a 'b'>]><rss")
                   .replace("<title>", "<title>&a;");
        QTest::newRow("an entity of a file")
            << QByteArray(whole)
                   .replace("<rss", "<!DOCTYPE rss [<!ENTITY a SYSTEM 'file:///etc/passwd'>]><rss")
                   .replace("<title>", "<title>&a;");
        QTest::newRow("an entity of nobody's")
            << QByteArray(whole).replace("<title>", "<title>&a;");
        QTest::newRow("zeros") << QByteArray(1000, '\0');
    }

    void whatIsNoWholeFeedIsNone()
    {
        QFETCH(const QByteArray, bytes);
        QVERIFY(!Appcast::read(bytes, feedAddress));
    }

    void theNewestThatCanBeVerifiedIsTaken_data()
    {
        QTest::addColumn<QList<Version>>("versions");
        QTest::addColumn<QString>("newest");
        const auto with = [](const QByteArray &version, const QByteArray &more = {}) {
            return Version{.version = version,
                           .download = "https://x.test/a",
                           .length = 1,
                           .signature = "s",
                           .more = more};
        };
        QTest::newRow("a newer one") << QList{with("1.1")} << u"1.1"_s;
        QTest::newRow("the same") << QList{with("1.0")} << QString();
        QTest::newRow("the same with a zero more") << QList{with("1.0.0")} << QString();
        QTest::newRow("an older one") << QList{with("0.9")} << QString();
        QTest::newRow("none") << QList<Version>() << QString();
        QTest::newRow("in any order") << QList{with("1.1"), with("1.10"), with("1.9")} << u"1.10"_s;
        QTest::newRow("not a prerelease") << QList{with("1.2b1"), with("1.1")} << u"1.1"_s;
        QTest::newRow("not a prerelease behind a dash") << QList{with("1.2-rc1")} << QString();
        QTest::newRow("not what is shown as one")
            << QList{with("12",
                          "<sparkle:shortVersionString>1.2 beta</sparkle:shortVersionString>")}
            << QString();
        QTest::newRow("not on a channel")
            << QList{with("1.2", "<sparkle:channel>beta</sparkle:channel>"), with("1.1")}
            << u"1.1"_s;
        QTest::newRow("not for newer systems")
            << QList{with("1.2",
                          "<sparkle:minimumSystemVersion>6.2</sparkle:minimumSystemVersion>"),
                     with("1.1",
                          "<sparkle:minimumSystemVersion>6.1</sparkle:minimumSystemVersion>")}
            << u"1.1"_s;
        QTest::newRow("not for older systems")
            << QList{with("1.2", "<sparkle:maximumSystemVersion>5</sparkle:maximumSystemVersion>")}
            << QString();
        QTest::newRow("not without a download") << QList{Version{.version = "1.1"}} << QString();
        QTest::newRow("not a page that nobody signed")
            << QList{Version{.version = "1.1", .more = "<link>https://x.test/</link>"}}
            << QString();
        QTest::newRow("not without a signature")
            << QList{Version{.version = "1.1", .download = "https://x.test/a", .length = 1}}
            << QString();
        QTest::newRow("not without a length")
            << QList{Version{.version = "1.1", .download = "https://x.test/a", .signature = "s"}}
            << QString();
        QTest::newRow("not without a number") << QList{with("")} << QString();
        QTest::newRow("not of an endless number") << QList{with(QByteArray(101, '9'))} << QString();
    }

    void theNewestThatCanBeVerifiedIsTaken()
    {
        QFETCH(const QList<Version>, versions);
        QFETCH(const QString, newest);
        QByteArray items;
        for (const auto &version : versions) {
            items += FeedText::of(version);
        }

        const auto item =
            read(items)->newestFor({.version = u"1.0"_s, .systemVersion = u"6.1.0"_s}, false);

        QCOMPARE(item ? item->version : QString(), newest);
    }

    void aSignedFeedMayOfferAPage()
    {
        const auto feed =
            read(FeedText::of({.version = "1.1", .more = "<link>https://x.test/</link>"}));
        QVERIFY(feed->newestFor({.version = u"1.0"_s, .systemVersion = u"6.1"_s}, true));
    }

    void whoRunsAPrereleaseIsToldOfThem()
    {
        const auto feed = read(FeedText::of(
            {.version = "1.2b2", .download = "https://x.test/a", .length = 1, .signature = "s"}));
        QVERIFY(feed->newestFor({.version = u"1.2b1"_s, .systemVersion = u"6.1"_s}, false));
    }

    void hostileFeedsTakeNoTime_data()
    {
        QTest::addColumn<QByteArray>("items");
        QTest::newRow("deeply nested") << QByteArray("<a>").repeated(250'000);
        QTest::newRow("deeply nested in an item") << "<item>" + QByteArray("<a>").repeated(250'000);
        QTest::newRow("many items") << QByteArray("<item></item>").repeated(75'000);
        QTest::newRow("a long number")
            << FeedText::of({.version = QByteArray("1.").repeated(400'000),
                             .download = "https://x.test/a",
                             .length = 1,
                             .signature = "s"});
    }

    void hostileFeedsTakeNoTime()
    {
        QFETCH(const QByteArray, items);
        QElapsedTimer time;
        time.start();

        if (const auto feed = read(items)) {
            QVERIFY(!feed->newestFor({.version = u"1.0"_s, .systemVersion = u"6.1"_s}, true));
        }

        QVERIFY(time.elapsed() < 10'000);
    }

private:
    static std::optional<Appcast> read(const QByteArray &items)
    {
        return Appcast::read(FeedText::feed(items), feedAddress);
    }

    inline static const QUrl feedAddress{u"https://kestle.test/feed/appcast.xml"_s};
};

QTEST_GUILESS_MAIN(AppcastTest)
#include "AppcastTest.moc"
