// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/SessionStore.h"
#include "tests/core/store/MadeUpSnapshots.h"

#include <QCryptographicHash>
#include <QTest>

using namespace Qt::StringLiterals;

static QList<MediaItem> itemsNamed(const QStringList &ids)
{
    QList<MediaItem> items;
    for (const auto &id : ids) {
        items.append({.id = id});
    }
    return items;
}

static QString sha256(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

class InventoryHashTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void inventoriesHashTheirIDs_data()
    {
        QTest::addColumn<QStringList>("ids");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none")
            << QStringList()
            << u"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"_s;
        QTest::newRow("two") << QStringList{u"B"_s, u"A"_s} << sha256("A\nB");
        QTest::newRow("two in order") << QStringList{u"A"_s, u"B"_s} << sha256("A\nB");
        QTest::newRow("one") << QStringList{u"ABC"_s} << sha256("ABC");
        QTest::newRow("by code points, not by digits' value")
            << QStringList{u"10"_s, u"9"_s, u"a"_s, u"Z"_s} << sha256("10\n9\nZ\na");
        QTest::newRow("by code points, not by UTF-16 units")
            << QStringList{u"\U0001F600"_s, u"\uFF21"_s} << sha256("\uFF21\n\U0001F600");
        QTest::newRow("bytes that are no text")
            << QStringList{u"\U0010FEFF"_s, u"\U0010FE80"_s} << sha256("\U0010FE80\n\U0010FEFF");
        QTest::newRow("prefix first") << QStringList{u"A/B"_s, u"A"_s} << sha256("A\nA/B");
    }

    void inventoriesHashTheirIDs()
    {
        QFETCH(const QStringList, ids);
        QFETCH(const QString, expected);

        QCOMPARE(SessionStore::inventoryHash(itemsNamed(ids)), expected);
    }

    void theHashOfTwoItemsIsWrittenOut()
    {
        QCOMPARE(SessionStore::inventoryHash(itemsNamed({u"B"_s, u"A"_s})),
                 u"23519a43c66b4c342f25b32e09797ec5f3fc0be388cd8243fb3449afbdce4013"_s);
    }

    void inventoriesIgnoreEverythingButTheIDs()
    {
        const QList<MediaItem> bare = itemsNamed({u"A"_s, u"B"_s});
        auto rich = bare;
        rich[0].kind = MediaKind::video;
        rich[0].videoURL = "/card/DCIM/A.MOV";
        rich[1].captureDate = QDateTime(QDate(2026, 11, 15), QTime(12, 0), Qt::UTC);

        QCOMPARE(SessionStore::inventoryHash(rich), SessionStore::inventoryHash(bare));
    }

    void inventoriesHashAlikeInAnyOrder()
    {
        QVERIFY(rc::check("order does not matter", [] {
            QStringList ids;
            for (const auto &id : *rc::gen::container<std::vector<QString>>(anyText())) {
                ids.append(id);
            }
            const auto hash = SessionStore::inventoryHash(itemsNamed(ids));
            RC_ASSERT(hash.size() == 64);
            std::ranges::reverse(ids);
            RC_ASSERT(SessionStore::inventoryHash(itemsNamed(ids)) == hash);
            std::ranges::sort(ids);
            RC_ASSERT(SessionStore::inventoryHash(itemsNamed(ids)) == hash);
        }));
        // Equal to a reader, but two names on the card.
        QCOMPARE(SessionStore::inventoryHash(itemsNamed({u"\u00E9"_s, u"e\u0301"_s})),
                 SessionStore::inventoryHash(itemsNamed({u"e\u0301"_s, u"\u00E9"_s})));
    }

    void inventoriesDifferByAFile()
    {
        const auto hash = SessionStore::inventoryHash(itemsNamed({u"A"_s, u"B"_s}));

        QVERIFY(SessionStore::inventoryHash(itemsNamed({u"A"_s})) != hash);
        QVERIFY(SessionStore::inventoryHash(itemsNamed({u"A"_s, u"B"_s, u"C"_s})) != hash);
        QVERIFY(SessionStore::inventoryHash(itemsNamed({u"A"_s, u"b"_s})) != hash);
    }
};

QTEST_GUILESS_MAIN(InventoryHashTest)
#include "InventoryHashTest.moc"
