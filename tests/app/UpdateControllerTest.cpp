// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/UpdateControllerBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using Kind = UpdateResult::Kind;

class UpdateControllerTest : public QObject, private UpdateControllerBench {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }

    void cleanup() { m_controller.reset(); }

    void nothingIsSearchedAtTheFirstStart()
    {
        m_controller->searchIfDue();
        m_now = m_now.addSecs(hours(23));
        m_controller->searchIfDue();

        QCOMPARE(m_searchesMade, 0); // not even made
    }

    void aSearchComesADayAfterTheFirstStart()
    {
        letADayPass();

        m_controller->searchIfDue();

        QVERIFY(m_search);
        QVERIFY(m_search->isGoingOn);
        QVERIFY(!m_controller->isShown());
    }

    void thereIsOneSearchADay()
    {
        letADayPass();
        m_controller->searchIfDue();
        m_search->end({.kind = Kind::UpToDate});
        m_now = m_now.addSecs(hours(23));
        m_controller->searchIfDue();
        QCOMPARE(m_search->starts, 1);

        m_now = m_now.addSecs(hours(1));
        m_controller->searchIfDue();

        QCOMPARE(m_search->starts, 2);
    }

    void aNewStartIsNoNewDay()
    {
        letADayPass();
        m_controller->searchIfDue();
        m_search->end({.kind = Kind::UpToDate});

        restart();
        m_controller->searchIfDue();

        QCOMPARE(m_searchesMade, 1);
    }

    void aClockThatWasSetBackDoesNotEndTheSearches()
    {
        letADayPass();
        m_now = m_now.addYears(-1);

        m_controller->searchIfDue();

        QVERIFY(m_search);
        m_search->end({.kind = Kind::UpToDate});
        m_controller->searchIfDue();
        QCOMPARE(m_search->starts, 1);
    }

    void whatFailsByItselfIsSilent_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::newRow("offline") << Kind::NotReached;
        QTest::newRow("no feed") << Kind::NotAFeed;
        QTest::newRow("forged") << Kind::NotVerified;
        QTest::newRow("no room") << Kind::NotKept;
        QTest::newRow("up to date") << Kind::UpToDate;
        QTest::newRow("known already") << Kind::KnownAlready;
    }

    void whatFailsByItselfIsSilent()
    {
        QFETCH(const Kind, kind);
        letADayPass();
        QSignalSpy changed(m_controller.get(), &UpdateController::changed);
        m_controller->searchIfDue();

        m_search->end({.kind = kind});

        QCOMPARE(changed.count(), 0);
        QVERIFY(!m_controller->isShown());
        m_now = m_now.addSecs(hours(1));
        m_controller->searchIfDue(); // also a failed search was the day's
        QCOMPARE(m_search->starts, 1);
    }

    void aNewVersionIsToldOnce()
    {
        letADayPass();
        m_controller->searchIfDue();
        QCOMPARE(m_search->knownVersions, QStringList());
        m_search->end(newVersion());
        QVERIFY(m_controller->isShown());
        QCOMPARE(m_controller->headline(), u"There is a newer version, Two"_s);
        QCOMPARE(m_controller->notes(), u"Faster"_s);
        m_controller->dismiss();
        QVERIFY(!m_controller->isShown());
        QVERIFY(!m_controller->hasDownload());

        restart();
        m_now = m_now.addDays(2);
        m_controller->searchIfDue();

        QCOMPARE(m_search->knownVersions, QStringList{u"2.0"_s});
    }

    void whoAsksIsToldAgain()
    {
        letADayPass();
        m_controller->searchIfDue();
        m_search->end(newVersion());
        m_controller->dismiss();

        m_controller->checkForUpdates();

        QVERIFY(m_controller->isSearching());
        QCOMPARE(m_search->knownVersions, QStringList());
        m_search->end(newVersion());
        QVERIFY(m_controller->isShown());
        QVERIFY(!m_controller->isSearching());
    }

    void nothingIsSearchedWhileTheUserIsAtWork_data()
    {
        QTest::addColumn<Phase>("phase");
        QTest::addColumn<bool>("searches");
        QTest::newRow("waiting") << Phase::waitingForCard() << true;
        QTest::newRow("access") << Phase::needsAccess() << true;
        QTest::newRow("scanning") << Phase::scanning() << false;
        QTest::newRow("no media") << Phase::noMedia() << true;
        QTest::newRow("card ready") << Phase::cardReady(false) << true;
        QTest::newRow("culling") << Phase::culling() << false;
        QTest::newRow("review") << Phase::review() << false;
        QTest::newRow("deleting") << Phase::deleting(0, 1) << false;
        QTest::newRow("summary") << Phase::summary(1, 0, 0) << true;
    }

    void nothingIsSearchedWhileTheUserIsAtWork()
    {
        QFETCH(const Phase, phase);
        QFETCH(const bool, searches);
        letADayPass();
        enter(phase);

        m_controller->searchIfDue();

        QCOMPARE(m_searchesMade, searches ? 1 : 0);
    }

    void aSearchStepsBackWhenTheUserBeginsToWork()
    {
        letADayPass();
        m_controller->searchIfDue();

        enter(Phase::scanning());

        QVERIFY(!m_search->isGoingOn);
        enter(Phase::summary(1, 0, 0));
        m_now = m_now.addSecs(hours(1));
        m_controller->searchIfDue(); // it did not count
        QVERIFY(m_search->isGoingOn);
    }

    void aSearchThatSteppedBackRestsForAnHour()
    {
        letADayPass();
        m_controller->searchIfDue();
        enter(Phase::scanning());
        enter(Phase::waitingForCard());

        m_now = m_now.addSecs(hours(1) - 1);
        m_controller->searchIfDue();
        QCOMPARE(m_search->starts, 1);

        m_controller->checkForUpdates(); // who asks need not wait
        QCOMPARE(m_search->starts, 2);
    }

    void aDownloadAtFaultIsNotFetchedAgainForAWeek_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::newRow("not what was signed") << Kind::NotVerified;
        QTest::newRow("no room for it") << Kind::NotKept;
    }

    void aDownloadAtFaultIsNotFetchedAgainForAWeek()
    {
        QFETCH(const Kind, kind);
        letADayPass();
        m_controller->searchIfDue();
        m_search->end({.kind = kind, .version = u"2.0"_s});

        restart();
        m_now = m_now.addDays(6);
        m_controller->searchIfDue();
        QCOMPARE(m_search->knownVersions, QStringList{u"2.0"_s});
        m_search->end({.kind = Kind::KnownAlready});

        m_now = m_now.addDays(1);
        m_controller->searchIfDue(); // it may have been mended
        QCOMPARE(m_search->knownVersions, QStringList());
    }

    void aServerThatIsNotReachedIsAskedAgain()
    {
        letADayPass();
        m_controller->searchIfDue();
        m_search->end({.kind = Kind::NotReached, .version = u"2.0"_s});

        m_now = m_now.addDays(1);
        m_controller->searchIfDue();

        QCOMPARE(m_search->knownVersions, QStringList());
    }

    void whoAsksSeesHowFarItIs()
    {
        m_controller->checkForUpdates();
        QCOMPARE(m_controller->toFetch(), 0);
        QSignalSpy changed(m_controller.get(), &UpdateController::changed);

        m_search->progress(500'000, 2'000'000);
        m_search->progress(500'001, 2'000'000); // nobody would see that

        QCOMPARE(changed.count(), 1);
        QVERIFY(m_controller->isSearching());
        QCOMPARE(m_controller->fetched(), 500'000);
        QCOMPARE(m_controller->toFetch(), 2'000'000);
        QCOMPARE(m_controller->headline(), u"Checking a newer version…"_s);
        QCOMPARE(m_controller->detail(), u"25% of its download is here."_s);
        m_search->end({.kind = Kind::UpToDate});
        QCOMPARE(m_controller->toFetch(), 0);
    }

    void howFarASearchOfOurOwnIsStaysUnseen()
    {
        letADayPass();
        m_controller->searchIfDue();
        QSignalSpy changed(m_controller.get(), &UpdateController::changed);

        m_search->progress(1, 2);

        QCOMPARE(changed.count(), 0);
    }

    void whatCameByItselfIsSetAsideWhileTheUserWorks_data()
    {
        nothingIsSearchedWhileTheUserIsAtWork_data();
    }

    void whatCameByItselfIsSetAsideWhileTheUserWorks()
    {
        QFETCH(const Phase, phase);
        QFETCH(const bool, searches);
        letADayPass();
        m_controller->searchIfDue();
        m_search->end(newVersion());
        QSignalSpy changed(m_controller.get(), &UpdateController::changed);

        enter(phase);
        QCOMPARE(m_controller->isShown(), searches);
        QCOMPARE(changed.count(), searches ? 0 : 1);

        enter(Phase::summary(1, 0, 0));
        QVERIFY(m_controller->isShown());
        QVERIFY(m_controller->canSave());
        m_controller->dismiss();
        enter(phase);
        enter(Phase::waitingForCard());
        QVERIFY(!m_controller->isShown());
    }

    void whatTheUserAskedForStaysWhileHeWorks()
    {
        letADayPass();
        m_controller->searchIfDue();
        m_search->end(newVersion());
        enter(Phase::culling());

        m_controller->checkForUpdates();
        QVERIFY(m_controller->isShown());
        m_search->end(newVersion());
        enter(Phase::review());

        QVERIFY(m_controller->isShown());
    }

    void whatTheUserAskedForGoesOnWhileHeWorks()
    {
        m_controller->checkForUpdates();

        enter(Phase::culling());

        QVERIFY(m_search->isGoingOn);
    }

    void whoAsksDuringASearchOfOurOwnIsAnswered()
    {
        letADayPass();
        m_controller->searchIfDue();

        m_controller->checkForUpdates();
        m_search->end({.kind = Kind::UpToDate});

        QVERIFY(m_controller->isShown());
        QCOMPARE(m_controller->headline(), u"Kestle is up to date"_s);
        QCOMPARE(m_controller->detail(), u"You have the newest version, 1.0."_s);
    }

    void failuresAreToldToWhoAsks_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("detail");
        QTest::newRow("offline") << Kind::NotReached
                                 << u"The server could not be reached, or did not answer."_s;
        QTest::newRow("no feed") << Kind::NotAFeed
                                 << u"What the server answered could not be read."_s;
        QTest::newRow("forged")
            << Kind::NotVerified
            << u"What the server answered was not signed by Kestle's makers. It was thrown away."_s;
        QTest::newRow("no room")
            << Kind::NotKept
            << u"There was no room to keep the newer version until it is checked."_s;
    }

    void failuresAreToldToWhoAsks()
    {
        QFETCH(const Kind, kind);
        QFETCH(const QString, detail);
        m_controller->checkForUpdates();

        m_search->end({.kind = kind});

        QCOMPARE(m_controller->headline(), u"Kestle could not look for a newer version"_s);
        QCOMPARE(m_controller->detail(), detail);
        QVERIFY(!m_controller->hasDownload() && !m_controller->hasPage());
    }

    void itIsToldWhatWasSigned_data()
    {
        QTest::addColumn<bool>("isFeedSigned");
        QTest::addColumn<QString>("detail");
        QTest::newRow("the version")
            << true << u"You have 1.0. The newer version was signed by Kestle's makers."_s;
        QTest::newRow("the download alone")
            << false
            << u"You have 1.0. The download was signed by Kestle's makers; of which version it is, only the server says."_s;
    }

    void itIsToldWhatWasSigned()
    {
        QFETCH(const bool, isFeedSigned);
        QFETCH(const QString, detail);
        m_controller->checkForUpdates();
        auto result = newVersion();
        result.isFeedSigned = isFeedSigned;

        m_search->end(result);

        QCOMPARE(m_controller->detail(), detail);
    }

    void askingTwiceSearchesOnce()
    {
        m_controller->checkForUpdates();
        m_controller->checkForUpdates();
        QCOMPARE(m_search->starts, 1);
    }

    void closingBreaksTheSearchOff()
    {
        m_controller->checkForUpdates();

        m_controller->dismiss();

        QVERIFY(!m_search->isGoingOn);
        QVERIFY(!m_controller->isShown());
    }

    void thePageIsOpened()
    {
        auto result = newVersion();
        result.page = QUrl(u"https://kestle.test/2"_s);
        m_controller->checkForUpdates();
        m_search->end(result);

        m_controller->openPage();

        QCOMPARE(m_opened, QList{result.page});
    }

    void withoutAFeedTheSoftwareCentreIsNamedAndOpened()
    {
        m_hasFeed = false;
        restart();
        letADayPass();
        QCOMPARE(m_searchesMade, 0);

        m_controller->checkForUpdates();
        QVERIFY(m_controller->isShown());
        QVERIFY(m_controller->hasSoftwareCentre());
        QCOMPARE(m_controller->headline(), u"Your system keeps Kestle up to date"_s);
        m_controller->openSoftwareCentre();

        QCOMPARE(m_opened, QList{QUrl(u"appstream:org.example.Kestle"_s)});
        QVERIFY(!m_controller->isShown());
    }

    void aSystemWithoutSoftwareCentreIsTold()
    {
        m_hasFeed = false;
        m_desktopOpens = false;
        restart();
        m_controller->checkForUpdates();

        m_controller->openSoftwareCentre();

        QVERIFY(m_controller->isShown());
        QVERIFY(!m_controller->hasSoftwareCentre());
        QVERIFY(m_controller->detail().startsWith(u"No software centre"_s));
    }
};

QTEST_GUILESS_MAIN(UpdateControllerTest)
#include "UpdateControllerTest.moc"
