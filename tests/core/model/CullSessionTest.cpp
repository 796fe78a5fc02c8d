// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/CullSession.h"

#include <QTest>

#include <random>

using namespace Qt::StringLiterals;

static QList<MediaItem> items(std::initializer_list<QString> ids)
{
    QList<MediaItem> all;
    for (const auto &id : ids) {
        all.append({.id = id, .previewURL = "/card/DCIM/" + id.toStdString() + ".JPG"});
    }
    return all;
}

static QList<MediaItem> abc()
{
    return items({u"A"_s, u"B"_s, u"C"_s});
}

static QStringList idsOf(const QList<MediaItem> &list)
{
    QStringList ids;
    for (const auto &item : list) {
        ids.append(item.id);
    }
    return ids;
}

/// What is rejected once the decisions on @p rows have been reversed, where nothing was.
static QSet<QString> reversed(const QList<MediaItem> &list, const QList<qint64> &rows)
{
    QSet<QString> rejected;
    for (const auto row : rows) {
        const auto &id = list.at(row).id;
        rejected.contains(id) ? (void)rejected.remove(id) : (void)rejected.insert(id);
    }
    return rejected;
}

class CullSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anEmptySessionBearsEverything()
    {
        CullSession session({});

        QVERIFY(!session.currentItem());
        QVERIFY(!session.next());
        QVERIFY(!session.previous());
        QVERIFY(session.isAtLastItem());
        QVERIFY(!session.toggleCurrent());
        QVERIFY(!session.undo());
        session.jump(0);
        QCOMPARE(session.currentIndex(), 0);
        QCOMPARE(session.rejectedCount(), 0);
    }

    void aFreshSessionStandsAtTheFirstItemWithNothingRejected()
    {
        const CullSession session(abc());

        QCOMPARE(session.currentIndex(), 0);
        QCOMPARE(session.currentItem()->id, u"A"_s);
        QVERIFY(!session.hasRejects());
        QVERIFY(!session.isAtLastItem());
    }

    void theWalkStopsAtBothEnds()
    {
        CullSession session(abc());

        QVERIFY(!session.previous());
        QCOMPARE(session.currentIndex(), 0);
        QVERIFY(session.next());
        QVERIFY(session.next());
        QVERIFY(session.isAtLastItem());
        QVERIFY(!session.next());
        QCOMPARE(session.currentIndex(), 2);
        QVERIFY(session.previous());
        QCOMPARE(session.currentIndex(), 1);
    }

    void jumpsOutsideTheListAreIgnored()
    {
        CullSession session(abc());

        session.jump(2);
        QCOMPARE(session.currentIndex(), 2);
        session.jump(-1);
        QCOMPARE(session.currentIndex(), 2);
        session.jump(3);
        QCOMPARE(session.currentIndex(), 2);
    }

    void undoGoesBackDecisionByDecisionAndShowsEach()
    {
        CullSession session(abc());
        QVERIFY(session.toggle(u"A"_s));
        QVERIFY(session.toggle(u"B"_s));
        session.jump(2);

        QVERIFY(session.undo());
        QVERIFY(!session.rejectedIDs().contains(u"B"_s));
        QCOMPARE(session.currentIndex(), 1);
        QVERIFY(session.undo());
        QVERIFY(!session.hasRejects());
        QCOMPARE(session.currentIndex(), 0);
        QVERIFY(!session.undo());
    }

    void undoTogglesBackRatherThanRestoring()
    {
        CullSession session(abc());
        QVERIFY(session.toggle(u"A"_s));
        QVERIFY(!session.toggle(u"A"_s));

        QVERIFY(session.undo());
        QVERIFY(session.rejectedIDs().contains(u"A"_s));
        QVERIFY(session.undo());
        QVERIFY(!session.rejectedIDs().contains(u"A"_s));
        QVERIFY(!session.undo());
    }

    void undoOfARescueRejectsAgain()
    {
        CullSession session(abc(), {u"B"_s});
        QVERIFY(!session.toggle(u"B"_s));

        QVERIFY(session.undo());

        QVERIFY(session.rejectedIDs().contains(u"B"_s));
    }

    void theIndexIsClampedIntoTheList()
    {
        QList<MediaItem> ten;
        for (int number = 0; number < 10; ++number) {
            ten += items({QString::number(number)});
        }

        QCOMPARE(CullSession(ten, {}, 500).currentIndex(), 9);
        QCOMPARE(CullSession(ten, {}, -3).currentIndex(), 0);
        QCOMPARE(CullSession(ten, {}, 4).currentIndex(), 4);
        QCOMPARE(CullSession({}, {}, 4).currentIndex(), 0);
    }

    void rejectsThatAreNotOnTheCardAreDropped()
    {
        const CullSession session(abc(), {u"B"_s, u"GONE"_s});

        QCOMPARE(session.rejectedCount(), 1);
        QCOMPARE(idsOf(session.rejectedItems()), QStringList{u"B"_s});
    }

    void togglingAnUnknownIdChangesNothing()
    {
        CullSession session(abc());

        QVERIFY(!session.toggle(u"X"_s));
        QVERIFY(!session.hasRejects());
        QVERIFY(!session.undo());
    }

    void toggleDoesNotMove()
    {
        CullSession session(abc());

        QVERIFY(session.toggleCurrent());

        QCOMPARE(session.currentIndex(), 0);
        QVERIFY(session.isRejected(*session.currentItem()));
        QVERIFY(!session.toggleCurrent());
        QVERIFY(!session.isRejected(*session.currentItem()));
    }

    void rejectsAreListedInShootingOrder()
    {
        CullSession session(abc());
        (void)session.toggle(u"C"_s);
        (void)session.toggle(u"A"_s);

        QCOMPARE(idsOf(session.rejectedItems()), (QStringList{u"A"_s, u"C"_s}));
    }

    /// A long random walk beside the simplest model of it.
    void randomWalksAgreeWithASimpleModel()
    {
        std::mt19937 random(3);
        for (int round = 0; round < 200; ++round) {
            QList<MediaItem> list;
            const qint64 count = random() % 6;
            for (qint64 number = 0; number < count; ++number) {
                list += items({QString::number(number)});
            }
            CullSession session(list);
            QSet<QString> rejected;
            QList<QString> undo;
            qint64 index = 0;

            for (int step = 0; step < 60; ++step) {
                const qint64 pick = qint64(random() % 8) - 1;
                switch (random() % 5) {
                case 0:
                    QCOMPARE(session.next(), index + 1 < count);
                    index = index + 1 < count ? index + 1 : index;
                    break;
                case 1:
                    QCOMPARE(session.previous(), index > 0);
                    index = index > 0 ? index - 1 : 0;
                    break;
                case 2:
                    session.jump(pick);
                    index = pick >= 0 && pick < count ? pick : index;
                    break;
                case 3: {
                    const auto id = QString::number(pick);
                    const bool known = pick >= 0 && pick < count;
                    QCOMPARE(session.toggle(id), known && !rejected.contains(id));
                    if (known) {
                        undo.append(id);
                        rejected.contains(id) ? (void)rejected.remove(id)
                                              : (void)rejected.insert(id);
                    }
                    break;
                }
                default:
                    QCOMPARE(session.undo(), !undo.isEmpty());
                    if (!undo.isEmpty()) {
                        const auto id = undo.takeLast();
                        rejected.contains(id) ? (void)rejected.remove(id)
                                              : (void)rejected.insert(id);
                        index = id.toLongLong();
                    }
                }
                QCOMPARE(session.currentIndex(), index);
                QCOMPARE(session.rejectedIDs(), rejected);
                QCOMPARE(session.rejectedItems().size(), rejected.size());
                QCOMPARE(reversed(list, session.reversals()), rejected);
                for (qint64 number = -1; number <= session.rejectedCount(); ++number) {
                    const auto *reject = session.rejectedItem(number);
                    QCOMPARE(reject ? *reject : MediaItem(), session.rejectedItems().value(number));
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(CullSessionTest)
#include "CullSessionTest.moc"
