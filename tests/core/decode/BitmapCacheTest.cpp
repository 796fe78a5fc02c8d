// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/decode/BitmapCache.h"

#include <QTest>

using namespace Qt::StringLiterals;

static QImage bitmap(int width)
{
    return QImage(width, 1, QImage::Format_RGB32);
}

class BitmapCacheTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theOldestInsertionGoesFirstWhateverWasUsedLast()
    {
        BitmapCache cache(2);
        cache.insert(u"A"_s, bitmap(1));
        cache.insert(u"B"_s, bitmap(2));
        QVERIFY(!cache.value(u"A"_s).isNull());

        cache.insert(u"C"_s, bitmap(3));

        QVERIFY(!cache.contains(u"A"_s));
        QCOMPARE(cache.order(), (QStringList{u"B"_s, u"C"_s}));
    }

    void aReplacedBitmapKeepsItsPlace()
    {
        BitmapCache cache(2);
        cache.insert(u"A"_s, bitmap(1));
        cache.insert(u"B"_s, bitmap(2));

        cache.insert(u"A"_s, bitmap(9));

        QCOMPARE(cache.order(), (QStringList{u"A"_s, u"B"_s}));
        QCOMPARE(cache.value(u"A"_s).width(), 9);
    }

    void nothingIsNotKept()
    {
        BitmapCache cache(2);

        cache.insert(u"A"_s, QImage());

        QCOMPARE(cache.size(), 0);
        QVERIFY(cache.order().isEmpty());
    }

    void keysAndOrderAlwaysAgree()
    {
        BitmapCache cache(5);
        for (int step = 0; step < 1000; ++step) {
            cache.insert(QString::number(step * 7919 % 13), bitmap(1));

            QVERIFY(cache.size() <= 5);
            QCOMPARE(cache.order().size(), cache.size());
            for (const auto &key : cache.order()) {
                QVERIFY(cache.contains(key));
                QCOMPARE(cache.order().count(key), 1);
            }
        }
        cache.clear();
        QCOMPARE(cache.size(), 0);
    }
};

QTEST_GUILESS_MAIN(BitmapCacheTest)
#include "BitmapCacheTest.moc"
