// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/CardInfo.h"

#include "FakeVolumes.h"

#include <QTest>

using namespace Qt::StringLiterals;

class CardInfoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void uuidAndNameAreTheVolumes()
    {
        const FakeVolumes volumes(
            {{.mountPoint = "/media/u/OTHER", .uuid = u"0"_s},
             {.mountPoint = "/media/u/CARD1", .uuid = u"ABCD-0001"_s, .label = u"CARD"_s}});

        const auto card = CardInfo::of(volumes, "/media/u/CARD1");

        QCOMPARE(card.volumeURL, std::filesystem::path("/media/u/CARD1"));
        QCOMPARE(card.volumeUUID, u"ABCD-0001"_s);
        QCOMPARE(card.name, u"CARD"_s);
    }

    void eachFallsBackToTheLastPathComponent_data()
    {
        QTest::addColumn<QByteArray>("mountPoint");
        QTest::addColumn<bool>("known");
        QTest::addColumn<QString>("uuid");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("volumeUUID");
        QTest::addColumn<QString>("name");

        QTest::newRow("volume not known")
            << "/media/u/CARD"_ba << false << u"1"_s << u"L"_s << u"CARD"_s << u"CARD"_s;
        QTest::newRow("no UUID") << "/media/u/CARD"_ba << true << u""_s << u"LABEL"_s << u"CARD"_s
                                 << u"LABEL"_s;
        QTest::newRow("no label") << "/media/u/CARD"_ba << true << u"1-2"_s << u""_s << u"1-2"_s
                                  << u"CARD"_s;
        QTest::newRow("neither") << "/media/u/CARD"_ba << true << u""_s << u""_s << u"CARD"_s
                                 << u"CARD"_s;
        QTest::newRow("trailing separator")
            << "/media/u/CARD/"_ba << true << u""_s << u""_s << u"CARD"_s << u"CARD"_s;
        QTest::newRow("root") << "/"_ba << true << u""_s << u""_s << u"/"_s << u"/"_s;
        QTest::newRow("no location") << ""_ba << false << u""_s << u""_s << u""_s << u""_s;
        QTest::newRow("not UTF-8") << "/media/caf\xE9"_ba << true << u""_s << u""_s
                                   << u"caf\U0010FEE9"_s << u"caf\uFFFD"_s;
        QTest::newRow("texts stay as given") << "/media/u/CARD"_ba << true << u"e\u0301/%"_s
                                             << u" e\u0301 "_s << u"e\u0301/%"_s << u" e\u0301 "_s;
    }

    void eachFallsBackToTheLastPathComponent()
    {
        QFETCH(QByteArray, mountPoint);
        QFETCH(bool, known);
        QFETCH(QString, uuid);
        QFETCH(QString, label);
        QFETCH(QString, volumeUUID);
        QFETCH(QString, name);
        const std::filesystem::path url = mountPoint.toStdString();
        const FakeVolumes volumes(
            {{.mountPoint = known ? url : "/elsewhere", .uuid = uuid, .label = label}});

        const auto card = CardInfo::of(volumes, url);

        QCOMPARE(card.volumeURL, url);
        QCOMPARE(card.volumeUUID, volumeUUID);
        QCOMPARE(card.name, name);
    }

    void aCardMountedTwiceIsTwoCardsOfOneUUID()
    {
        const FakeVolumes volumes(
            {{.mountPoint = "/media/u/CARD", .uuid = u"1"_s, .label = u"CARD"_s},
             {.mountPoint = "/mnt/again", .uuid = u"1"_s, .label = u"CARD"_s}});

        const auto first = CardInfo::of(volumes, "/media/u/CARD");
        const auto second = CardInfo::of(volumes, "/mnt/again");

        QCOMPARE(first.volumeUUID, second.volumeUUID);
        QVERIFY(first != second);
    }

    void theSameVolumeMayHaveAnotherName()
    {
        const CardInfo card = {.volumeURL = "/m", .volumeUUID = u"1"_s, .name = u"N"_s};

        QVERIFY(isSameVolume(card, {.volumeURL = "/m", .volumeUUID = u"1"_s, .name = u"X"_s}));
        QVERIFY(!isSameVolume(card, {.volumeURL = "/x", .volumeUUID = u"1"_s, .name = u"N"_s}));
        QVERIFY(!isSameVolume(card, {.volumeURL = "/m", .volumeUUID = u"2"_s, .name = u"N"_s}));
    }

    void cardsAreEqualWhenLocationUUIDAndNameAre()
    {
        const CardInfo card = {.volumeURL = "/m", .volumeUUID = u"1"_s, .name = u"N"_s};

        QVERIFY(card == (CardInfo{.volumeURL = "/m", .volumeUUID = u"1"_s, .name = u"N"_s}));
        QVERIFY(card != (CardInfo{.volumeURL = "/x", .volumeUUID = u"1"_s, .name = u"N"_s}));
        QVERIFY(card != (CardInfo{.volumeURL = "/m", .volumeUUID = u"2"_s, .name = u"N"_s}));
        QVERIFY(card != (CardInfo{.volumeURL = "/m", .volumeUUID = u"1"_s, .name = u"X"_s}));
    }
};

QTEST_GUILESS_MAIN(CardInfoTest)
#include "CardInfoTest.moc"
