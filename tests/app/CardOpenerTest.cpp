// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/CardOpener.h"

#include "app/SessionKeeper.h"
#include "tests/app/FakeAccess.h"
#include "tests/app/GatedFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class CardOpenerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_access = std::make_shared<FakeAccess>();
        m_sessions = std::make_unique<SessionKeeper>(m_folder->path().toStdString(), 1h);
        m_told.clear();
    }

    void cleanup()
    {
        m_access->letAllGo();
        m_opener.reset();
        m_sessions.reset();
    }

    void theFirstUsableCardIsFound()
    {
        makeOpener(1min);

        m_opener->findUsable({card("EMPTY"), card("ONE", HasDCIM), card("TWO", HasDCIM)});

        QTRY_COMPARE(m_told, QStringList(u"found ONE"_s));
    }

    void withoutAUsableCardItIsTheFirstThatIsNotAccessible()
    {
        makeOpener(1min);
        m_access->closed = {card("ONE", HasDCIM).volumeURL, card("TWO", HasDCIM).volumeURL};

        m_opener->findUsable({card("EMPTY"), card("ONE"), card("TWO")});

        QTRY_COMPARE(m_told, QStringList(u"found ONE"_s));
    }

    void aUsableCardComesBeforeOneThatIsNotAccessible()
    {
        makeOpener(1min);
        m_access->closed = {card("ONE", HasDCIM).volumeURL};

        m_opener->findUsable({card("ONE"), card("TWO", HasDCIM)});

        QTRY_COMPARE(m_told, QStringList(u"found TWO"_s));
    }

    void whoAnswersAtOnceIsNotPreferred()
    {
        makeOpener(1min);
        const auto closed = card("ONE", HasDCIM);
        const auto usable = card("TWO", HasDCIM);
        m_access->closed = {closed.volumeURL};

        for (int time = 0; time < 100; ++time) { // whether it answers at once, is chance
            m_opener->findUsable({closed, usable});
            QVERIFY(QTest::qWaitFor([this] { return !m_told.isEmpty(); }));
            QCOMPARE(m_told.takeFirst(), u"found TWO"_s);
        }
    }

    void aSlowCardBehindAUsableOneIsNotWaitedFor()
    {
        makeOpener(1min);
        m_access->hold(card("SLOW", HasDCIM).volumeURL);

        m_opener->findUsable({card("ONE", HasDCIM), card("SLOW")});

        QTRY_COMPARE(m_told, QStringList(u"found ONE"_s));
        m_access->letAllGo();
        settle();
        QCOMPARE(m_told.size(), 1);
    }

    void aSlowCardInFrontIsWaitedForAsLongAsPatienceLasts()
    {
        makeOpener(1min);
        m_access->hold(card("SLOW", HasDCIM).volumeURL);

        m_opener->findUsable({card("SLOW"), card("TWO", HasDCIM)});

        QTRY_COMPARE(m_access->asked.load(), 2);
        settle();
        QVERIFY(m_told.isEmpty());
        m_access->letAllGo();
        QTRY_COMPARE(m_told, QStringList(u"found SLOW"_s));
    }

    void aCardWithoutAnAnswerIsPassedOver()
    {
        makeOpener(20ms);
        m_access->hold(card("SLOW", HasDCIM).volumeURL);

        m_opener->findUsable({card("SLOW"), card("TWO", HasDCIM)});

        QTRY_COMPARE(m_told, QStringList(u"found TWO"_s));
        m_access->letAllGo();
        settle();
        QCOMPARE(m_told.size(), 1);
    }

    void aCardThatIsNotAccessibleIsToldOnceTheSlowOneIsPassedOver()
    {
        makeOpener(20ms);
        m_access->hold(card("SLOW", HasDCIM).volumeURL);
        m_access->closed = {card("CLOSED", HasDCIM).volumeURL};

        m_opener->findUsable({card("SLOW"), card("CLOSED")});

        QTRY_COMPARE(m_told, QStringList(u"found CLOSED"_s));
    }

    void aLateAnswerIsJudgedWhenItComes()
    {
        makeOpener(10ms);
        m_access->hold(card("SLOW", HasDCIM).volumeURL);
        m_opener->findUsable({card("SLOW"), card("EMPTY")});
        QTest::qWait(50);
        QVERIFY(m_told.isEmpty());

        m_access->letAllGo();

        QTRY_COMPARE(m_told, QStringList(u"found SLOW"_s));
    }

    void whoWasPassedOverHoldsUpNoLaterSearch()
    {
        makeOpener(600ms);
        m_access->hold(card("SLOW", HasDCIM).volumeURL);
        m_opener->findUsable({card("SLOW")});
        QTest::qWait(700);

        m_opener->findUsable({card("SLOW"), card("TWO", HasDCIM)});

        QTRY_COMPARE_WITH_TIMEOUT(m_told, QStringList(u"found TWO"_s), 500);
        QCOMPARE(m_access->asked.load(), 2); // the slow one once
    }

    void manyCardsThatHangHoldUpNoOther()
    {
        makeOpener(10ms);
        QList<CardInfo> cards;
        for (int number = 0; number < 8; ++number) {
            cards.append(card("SLOW" + std::to_string(number), HasDCIM));
            m_access->hold(cards.last().volumeURL);
        }
        cards.append(card("LAST", HasDCIM));

        m_opener->findUsable(cards);

        QTRY_COMPARE(m_told, QStringList(u"found LAST"_s));
    }

    void theNewestWishWins()
    {
        makeOpener(1min);
        m_access->hold(card("SLOW", HasDCIM).volumeURL);
        m_opener->ask(card("SLOW"));
        m_opener->ask(card("TWO", HasDCIM));
        QTRY_COMPARE(m_told, QStringList(u"answered TWO"_s));

        m_access->letAllGo();

        settle();
        QCOMPARE(m_told.size(), 1);
    }

    void aWishThatWasCancelledIsNotTold()
    {
        makeOpener(1min);
        m_access->hold(card("ONE", HasDCIM).volumeURL);
        m_opener->ask(card("ONE"));
        m_opener->cancel();

        m_access->letAllGo();

        settle();
        QVERIFY(m_told.isEmpty());
    }

    void aCardThatCameBackIsAskedAnew()
    {
        makeOpener(1min);
        m_access->hold(card("ONE", HasDCIM).volumeURL);
        m_opener->findUsable({card("ONE")});
        QTRY_COMPARE(m_access->asked.load(), 1);
        m_opener->forgetAllBut({});

        m_opener->findUsable({card("ONE")});

        QTRY_COMPARE(m_access->asked.load(), 2);
        m_access->letAllGo();
        QTRY_COMPARE(m_told, QStringList(u"found ONE"_s));
        settle();
        QCOMPARE(m_told.size(), 1);
    }

    void aGrantIsJudgedAndTold()
    {
        makeOpener(1min);
        const auto one = card("ONE", HasDCIM);
        m_access->closed = {one.volumeURL};

        m_opener->judgeGrant(one, one.volumeURL);

        QTRY_COMPARE(m_told, QStringList(u"granted ONE"_s));
    }

    void aGrantThatLeadsElsewhereIsJudgedThere()
    {
        makeOpener(1min);
        const auto one = card("ONE");
        const auto seen = card("SEEN", HasDCIM).volumeURL;
        m_access->closed = {one.volumeURL};
        m_access->grantsLead = true;
        bool hasDCIM = false;
        connect(m_opener.get(), &CardOpener::granted, this,
                [&](const CardProbe &probe) { hasDCIM = probe.hasDCIM; });

        m_opener->judgeGrant(one, seen);

        QTRY_COMPARE(m_told, QStringList(u"granted ONE"_s));
        QVERIFY(hasDCIM);
    }

    void aGrantThatCameTooLateEnds()
    {
        makeOpener(1min);
        const auto one = card("ONE", HasDCIM);
        m_access->hold(one.volumeURL);
        m_opener->judgeGrant(one, one.volumeURL);
        m_opener->cancel();

        m_access->letGo(one.volumeURL);

        QTRY_COMPARE(m_access->stopCount(), size_t(1));
        settle();
        QVERIFY(m_told.isEmpty());
    }

    void aStoredGrantThatIsNotUsedEnds()
    {
        makeOpener(1min);
        m_access->closed = {card("EMPTY").volumeURL};
        m_access->bookmarks[u"UUID-EMPTY"_s] = card("EMPTY").volumeURL;

        m_opener->findUsable({card("EMPTY"), card("TWO", HasDCIM)});

        QTRY_COMPARE(m_told, QStringList(u"found TWO"_s));
        QTRY_COMPARE(m_access->stopCount(), size_t(1));
    }

    void aStoredGrantThatServesNothingEnds()
    {
        makeOpener(1min);
        m_access->closed = {card("EMPTY").volumeURL};
        m_access->bookmarks[u"UUID-EMPTY"_s] = card("EMPTY").volumeURL;

        m_opener->findUsable({card("EMPTY")});

        QTRY_COMPARE(m_access->stopCount(), size_t(1));
        QVERIFY(m_told.isEmpty());
    }

    void itIsToldWhetherASessionIsKept()
    {
        makeOpener(1min);
        const auto one = card("ONE", HasDCIM);
        m_sessions->saveSoon(one.volumeUUID, [one] {
            return SessionSnapshot{.volumeUUID = one.volumeUUID,
                                   .savedAt = QDateTime::currentDateTime()};
        });

        m_opener->ask(one);
        QTRY_COMPARE(m_told, QStringList(u"answered ONE, resumable"_s));
        m_told.clear();
        m_opener->findUsable({one});
        QTRY_COMPARE(m_told, QStringList(u"found ONE, resumable"_s));
        m_told.clear();
        m_opener->judgeGrant(one, one.volumeURL);
        QTRY_COMPARE(m_told, QStringList(u"granted ONE, resumable"_s));
    }

private:
    enum Content { HasNothing, HasDCIM };

    CardInfo card(const std::string &name, Content content = HasNothing) const
    {
        const auto url = std::filesystem::path(m_folder->path().toStdString()) / name;
        std::filesystem::create_directories(content == HasDCIM ? url / "DCIM" : url);
        return {.volumeURL = url,
                .volumeUUID = u"UUID-"_s + QString::fromStdString(name),
                .name = QString::fromStdString(name)};
    }

    void makeOpener(std::chrono::milliseconds patience)
    {
        m_opener = std::make_unique<CardOpener>(m_access, std::make_shared<GatedFiles>(),
                                                *m_sessions, patience);
        const auto note = [this](const QString &what) {
            return [this, what](const CardProbe &probe) {
                m_told.append(what + u' ' + probe.card.name +
                              (probe.hasSession ? u", resumable"_s : QString()));
            };
        };
        connect(m_opener.get(), &CardOpener::found, this, note(u"found"_s));
        connect(m_opener.get(), &CardOpener::answered, this, note(u"answered"_s));
        connect(m_opener.get(), &CardOpener::granted, this, note(u"granted"_s));
    }

    /// Time for what should not happen.
    static void settle() { QTest::qWait(50); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<FakeAccess> m_access;
    std::unique_ptr<SessionKeeper> m_sessions;
    std::unique_ptr<CardOpener> m_opener;
    QStringList m_told;
};

QTEST_GUILESS_MAIN(CardOpenerTest)
#include "CardOpenerTest.moc"
