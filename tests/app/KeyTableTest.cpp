// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/Workbench.h"

#include <map>

using namespace Qt::StringLiterals;
using Kind = Phase::Kind;

/// Which keys are consumed in which situation, cell by cell; what they do is told elsewhere.
class KeyTableTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<Workbench>(); }

    void eachKeyIsConsumedWhereItMeansSomething_data()
    {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("consumed");
        const QStringList keys =
            u"x u z i j k l q Space Return Escape Tab Left Right Up Down"_s.split(u' ');
        const std::map<QString, QString> consumed = {
            {u"waiting for a card"_s, {}},
            {u"needs access"_s, u"Return"_s},
            {u"card ready"_s, u"Return"_s},
            {u"card ready, two cards"_s, u"Return Tab"_s},
            {u"scanning"_s, {}},
            {u"no media"_s, {}},
            {u"culling a photo"_s, u"x z i Return Escape Left Right"_s},
            {u"culling a photo, two cards"_s, u"x z i Return Escape Left Right"_s},
            {u"culling a photo, zoomed"_s, u"x z i Return Escape Left Right Up Down"_s},
            {u"culling a clip that does not play"_s, u"x i Return Escape Left Right"_s},
            {u"culling a clip that plays"_s, u"x i j k l Space Return Escape Left Right"_s},
            {u"review"_s, u"x u Space Return Escape Left Right Up Down"_s},
            {u"review without rejects"_s, u"x u Escape Left Right Up Down"_s},
            {u"review, a photo enlarged"_s, u"x u z Space Escape"_s},
            {u"review, a playing clip enlarged"_s, u"x u z j k l Space Escape"_s},
            {u"review, asked for confirmation"_s, {}},
            {u"deleting"_s, {}},
            {u"summary"_s, {}},
        };
        for (const auto &[situation, its] : consumed) {
            for (const auto &key : keys) {
                QTest::newRow(qUtf8Printable(key + u": "_s + situation))
                    << situation << key << its.split(u' ').contains(key);
            }
        }
    }

    void eachKeyIsConsumedWhereItMeansSomething()
    {
        QFETCH(const QString, situation);
        QFETCH(const QString, key);
        QFETCH(const bool, consumed);
        bringAbout(situation);
        if (QTest::currentTestFailed()) {
            return;
        }
        const KeyPress press = pressOf(key);

        QCOMPARE(m_bench->keys->handleKey(press), consumed);
    }

    void chordsWithTheMenusModifierAreNeverConsumed_data()
    {
        eachKeyIsConsumedWhereItMeansSomething_data();
    }

    void chordsWithTheMenusModifierAreNeverConsumed()
    {
        QFETCH(const QString, situation);
        QFETCH(const QString, key);
        QFETCH(const bool, consumed);
        if (!consumed) {
            return; // what is not consumed without it is of no interest
        }
        bringAbout(situation);
        if (QTest::currentTestFailed()) {
            return;
        }
        KeyPress press = pressOf(key);
        press.command = true;
        const auto changes = m_bench->appState->changeCount();
        const auto phase = m_bench->appState->phase();

        QVERIFY(!m_bench->keys->handleKey(press));

        QCOMPARE(m_bench->appState->changeCount(), changes);
        QCOMPARE(m_bench->appState->phase(), phase);
    }

private:
    static KeyPress pressOf(const QString &key)
    {
        static const std::map<QString, KeyPress> named = {
            {u"Space"_s, {.chars = u" "_s, .keyCode = KeyPress::Space}},
            {u"Return"_s, {.chars = u"\r"_s, .keyCode = KeyPress::Return}},
            {u"Escape"_s, {.chars = u"\x1b"_s, .keyCode = KeyPress::Escape}},
            {u"Tab"_s, {.chars = u"\t"_s, .keyCode = KeyPress::Tab}},
            {u"Left"_s, {.keyCode = KeyPress::Left}},
            {u"Right"_s, {.keyCode = KeyPress::Right}},
            {u"Up"_s, {.keyCode = KeyPress::Up}},
            {u"Down"_s, {.keyCode = KeyPress::Down}},
        };
        const auto found = named.find(key);
        return found != named.end() ? found->second : KeyPress{.chars = key};
    }

    void bringAbout(const QString &situation)
    {
        auto &app = *m_bench->appState;
        static const std::map<QString, Kind> reached = {
            {u"waiting for a card"_s, Kind::WaitingForCard},
            {u"needs access"_s, Kind::NeedsAccess},
            {u"card ready"_s, Kind::CardReady},
            {u"card ready, two cards"_s, Kind::CardReady},
            {u"scanning"_s, Kind::Scanning},
            {u"no media"_s, Kind::NoMedia},
            {u"deleting"_s, Kind::Deleting},
            {u"summary"_s, Kind::Summary},
        };
        if (const auto kind = reached.find(situation); kind != reached.end()) {
            m_bench->reach(kind->second);
        } else {
            cull();
        }
        if (situation.endsWith(u"two cards")) {
            m_bench->mountCard("TWO", {});
            QTRY_COMPARE(app.availableCards().size(), 2);
        }
        if (situation.startsWith(u"culling a photo")) {
            app.setZoomed(situation.endsWith(u"zoomed"));
        } else if (situation.startsWith(u"culling a clip")) {
            app.selectItem(1);
            if (situation.endsWith(u"that plays")) {
                app.playVideo(*app.session()->currentItem());
            }
        } else if (situation.startsWith(u"review")) {
            if (!situation.endsWith(u"without rejects")) {
                m_bench->rejectAll();
            }
            app.finishCulling();
            app.setReviewEnlarged(situation.endsWith(u"enlarged"));
            app.setConfirmingDelete(situation.endsWith(u"confirmation"));
            if (situation.contains(u"playing")) {
                app.setReviewSelection(1);
                app.playVideo(app.session()->items().at(1));
            }
        }
    }

    /// A photo and a clip.
    void cull()
    {
        auto &app = *m_bench->appState;
        app.start();
        m_bench->cardRoot = m_bench->mountCard("CARD", {"A.JPG", "B.MOV", "C.JPG"});
        QTRY_COMPARE(app.phase(), Phase::cardReady(false));
        app.startCulling();
        QTRY_COMPARE(app.phase(), Phase::culling());
    }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(KeyTableTest)
#include "KeyTableTest.moc"
