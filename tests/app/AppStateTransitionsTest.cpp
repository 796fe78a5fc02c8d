// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/MenuCommands.h"
#include "tests/app/Workbench.h"

#include <QSignalSpy>

#include <map>

using namespace Qt::StringLiterals;
using Kind = Phase::Kind;

Q_DECLARE_METATYPE(Phase)

/// Every operation that moves between phases, in every phase.
class AppStateTransitionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<Workbench>(); }

    void eachOperationLeadsWhereItShould_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<Kind>("from");
        QTest::addColumn<Phase>("to");
        const auto deleting = Phase::deleting(0, 3);
        const auto summary = Phase::summary(3, 0, 0);
        // An operation whose phase is not named leaves it alone.
        const std::map<QString, std::map<Kind, Phase>> table = {
            {u"start"_s, {{Kind::CardReady, Phase::scanning()}}},
            {u"go to review"_s,
             {{Kind::Culling, Phase::review()}, {Kind::Summary, Phase::review()}}},
            {u"back to culling"_s,
             {{Kind::Review, Phase::culling()}, {Kind::Summary, Phase::culling()}}},
            {u"back to card screen"_s,
             {{Kind::NeedsAccess, Phase::cardReady(false)},
              {Kind::Scanning, Phase::cardReady(false)},
              {Kind::NoMedia, Phase::cardReady(false)},
              {Kind::Culling, Phase::cardReady(true)},
              {Kind::Review, Phase::cardReady(true)},
              {Kind::Summary, Phase::cardReady(true)}}},
            {u"menu: back to card screen"_s,
             {{Kind::Culling, Phase::cardReady(true)}, {Kind::Review, Phase::cardReady(true)}}},
            {u"menu: finish culling"_s, {{Kind::Culling, Phase::review()}}},
            {u"delete"_s, {{Kind::Review, deleting}}},
            {u"close summary"_s, {{Kind::Summary, Phase::cardReady(false)}}},
            {u"grant access"_s, {{Kind::NeedsAccess, Phase::cardReady(false)}}},
            {u"unmount"_s,
             {{Kind::NeedsAccess, Phase::waitingForCard()},
              {Kind::Scanning, Phase::waitingForCard()},
              {Kind::NoMedia, Phase::waitingForCard()},
              {Kind::CardReady, Phase::waitingForCard()},
              {Kind::Culling, Phase::waitingForCard()},
              {Kind::Review, Phase::waitingForCard()},
              {Kind::Deleting, Phase::waitingForCard()},
              {Kind::Summary, Phase::waitingForCard()}}},
            {u"Return"_s,
             {{Kind::NeedsAccess, Phase::cardReady(false)},
              {Kind::CardReady, Phase::scanning()},
              {Kind::Culling, Phase::review()}}},
            {u"Escape"_s,
             {{Kind::Culling, Phase::cardReady(true)}, {Kind::Review, Phase::culling()}}},
        };
        const std::map<Kind, Phase> phases = {{Kind::WaitingForCard, Phase::waitingForCard()},
                                              {Kind::NeedsAccess, Phase::needsAccess()},
                                              {Kind::Scanning, Phase::scanning()},
                                              {Kind::NoMedia, Phase::noMedia()},
                                              {Kind::CardReady, Phase::cardReady(false)},
                                              {Kind::Culling, Phase::culling()},
                                              {Kind::Review, Phase::review()},
                                              {Kind::Deleting, deleting},
                                              {Kind::Summary, summary}};
        for (const auto &[operation, moves] : table) {
            for (const auto &[from, phase] : phases) {
                const auto move = moves.find(from);
                const auto name = operation + u", from "_s + nameOf(from);
                QTest::newRow(qUtf8Printable(name))
                    << operation << from << (move != moves.end() ? move->second : phase);
            }
        }
    }

    void eachOperationLeadsWhereItShould()
    {
        QFETCH(const QString, operation);
        QFETCH(const Kind, from);
        QFETCH(const Phase, to);
        m_bench->reach(from);
        if (QTest::currentTestFailed()) {
            return;
        }
        m_bench->files->scanIsHeld = to.kind == Kind::Scanning;
        m_bench->files->removalIsHeld = to.kind == Kind::Deleting;

        perform(operation);

        QTRY_COMPARE(app().phase(), to);
        QTest::qWait(0);
        QCOMPARE(app().phase(), to);
    }

    void aSecondCardIsChosenOnlyBeforeCulling_data()
    {
        QTest::addColumn<Kind>("from");
        QTest::addColumn<bool>("possible");
        for (const auto kind :
             {Kind::WaitingForCard, Kind::NeedsAccess, Kind::NoMedia, Kind::CardReady}) {
            QTest::newRow(qUtf8Printable(nameOf(kind))) << kind << true;
        }
        for (const auto kind :
             {Kind::Scanning, Kind::Culling, Kind::Review, Kind::Deleting, Kind::Summary}) {
            QTest::newRow(qUtf8Printable(nameOf(kind))) << kind << false;
        }
    }

    void aSecondCardIsChosenOnlyBeforeCulling()
    {
        QFETCH(const Kind, from);
        QFETCH(const bool, possible);
        m_bench->reach(from);
        const auto before = app().phase();
        m_bench->access->closed.insert(m_bench->makeCard("TWO", {}));
        m_bench->access->closed.insert(m_bench->makeCard("THREE", {}));
        m_bench->mountCard("TWO", {});
        m_bench->mountCard("THREE", {});
        QTRY_VERIFY(app().availableCards().size() >= 2);
        // Without a card, the first that can be granted is taken, and it is not ours to choose.
        QTRY_VERIFY(app().card());
        const auto card = *app().card();

        const bool consumed = m_bench->press(KeyPress::Tab);

        QCOMPARE(consumed, possible);
        if (possible) {
            QTRY_VERIFY(*app().card() != card);
            QCOMPARE(app().phase(), Phase::needsAccess());
            QVERIFY(!app().hasSession());
        } else {
            QTest::qWait(20);
            QCOMPARE(*app().card(), card);
            QCOMPARE(app().phase(), before);
        }
    }

    void aRemovalLeavesNothingOfTheCard_data()
    {
        QTest::addColumn<Kind>("from");
        for (const auto kind : {Kind::NeedsAccess, Kind::Scanning, Kind::NoMedia, Kind::CardReady,
                                Kind::Culling, Kind::Review, Kind::Deleting, Kind::Summary}) {
            QTest::newRow(qUtf8Printable(nameOf(kind))) << kind;
        }
    }

    void aRemovalLeavesNothingOfTheCard()
    {
        QFETCH(const Kind, from);
        m_bench->reach(from);
        app().setZoomed(true);
        app().setReviewEnlarged(true);
        app().setConfirmingDelete(true);
        app().playVideo({.id = u"C"_s, .kind = MediaKind::video, .videoURL = "/c.mov"});
        bool toldTooEarly = false;
        connect(&app(), &AppState::zoomedChanged, this,
                [&] { toldTooEarly |= app().phase().kind != Kind::WaitingForCard; });

        m_bench->volumes.unmount(m_bench->cardRoot);

        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        QVERIFY(!app().card());
        QVERIFY(!app().hasSession());
        QVERIFY(!app().zoomed());
        QVERIFY(!app().reviewEnlarged());
        QVERIFY(!app().confirmingDelete());
        QVERIFY(!app().videoPlayer());
        QCOMPARE(m_bench->player.alive, 0);
        QVERIFY(!toldTooEarly);
    }

private:
    AppState &app() const { return *m_bench->appState; }

    static QString nameOf(Kind kind)
    {
        return QString::fromLatin1(QMetaEnum::fromType<Kind>().valueToKey(int(kind)));
    }

    void perform(const QString &operation)
    {
        MenuCommands menu(app(), *m_bench->keys);
        const std::map<QString, std::function<void()>> operations = {
            {u"start"_s, [&] { app().startCulling(); }},
            {u"go to review"_s, [&] { app().goToReview(); }},
            {u"back to culling"_s, [&] { app().backToCulling(); }},
            {u"back to card screen"_s, [&] { app().backToCardScreen(); }},
            {u"menu: back to card screen"_s, [&] { menu.backToCardScreen(); }},
            {u"menu: finish culling"_s, [&] { menu.finishCulling(); }},
            {u"delete"_s, [&] { app().performDelete(); }},
            {u"close summary"_s, [&] { app().closeSummary(); }},
            {u"grant access"_s, [&] { app().grantAccess(); }},
            {u"unmount"_s, [&] { m_bench->volumes.unmount(m_bench->cardRoot); }},
            {u"Return"_s, [&] { (void)m_bench->press(KeyPress::Return); }},
            {u"Escape"_s, [&] { (void)m_bench->press(KeyPress::Escape); }},
        };
        operations.at(operation)();
    }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(AppStateTransitionsTest)
#include "AppStateTransitionsTest.moc"
