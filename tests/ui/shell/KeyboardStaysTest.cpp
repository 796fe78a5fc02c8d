// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/Dice.h"
#include "tests/ui/WindowBench.h"
#include "tests/ui/shell/KeyModel.h"

#include <algorithm>
#include <memory>
#include <random>

using namespace Qt::StringLiterals;
using Kind = Phase::Kind;

static constexpr int actionsPerPart = 4000;
static constexpr int actionsPerBurst = 25;

/// Whatever is done to the window with the mouse or by the desktop, the keys go on doing what they
/// are for. The same seed does the same.
class KeyboardStaysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keysDoWhatTheyAreForAfterAnything_data()
    {
        QTest::addColumn<quint64>("seed");
        const auto seed = qEnvironmentVariable("KESTLE_WALK_SEED");
        if (!seed.isEmpty()) {
            QTest::newRow("one") << seed.toULongLong();
            return;
        }
        QTest::newRow("first part") << quint64(1);
        QTest::newRow("second part") << quint64(2);
        QTest::newRow("third part") << quint64(3);
        QTest::newRow("fourth part") << quint64(4);
        QTest::newRow("fifth part") << quint64(5);
    }

    void keysDoWhatTheyAreForAfterAnything()
    {
        QFETCH(const quint64, seed);
        m_dice = std::make_unique<Dice>(seed);
        m_bench = std::make_unique<WindowBench>();
        m_checked.clear();
        m_did.clear();
        auto shots = ScreenBench::shots(23);
        shots.push_back("DSCF0024.MOV");
        app().start();
        m_bench->pictures.arePlain = true;
        m_bench->files->removalsFail = true; // whatever is confirmed, there is something left
        m_cards = {m_bench->mountCard("ONE", shots), m_bench->mountCard("TWO", shots)};
        QVERIFY(QTest::qWaitFor([&] { return app().phase().kind == Kind::CardReady; }));

        for (int done = 0; done < actionsPerPart; done += actionsPerBurst) {
            m_did.clear();
            goSomewhere();
            for (int action = 0; action < actionsPerBurst && !QTest::currentTestFailed();
                 ++action) {
                act();
            }
            if (!QTest::currentTestFailed()) {
                letEverythingGo();
            }
            if (!QTest::currentTestFailed()) {
                checkAllKeys();
            }
            if (QTest::currentTestFailed()) {
                qWarning("burst after %d actions of seed %llu: %s", done, seed,
                         qPrintable(m_did.join(u", "_s)));
                return;
            }
        }

        // What was never come upon is not proven.
        for (const auto kind : {Kind::WaitingForCard, Kind::CardReady, Kind::Culling, Kind::Review,
                                Kind::Deleting, Kind::Summary}) {
            QVERIFY2(m_checked[kind] >= 4, qPrintable(u"phase %1"_s.arg(int(kind))));
        }
        for (const auto &warning : m_bench->warnings) {
            qWarning("%s", qPrintable(warning.toString()));
        }
        QVERIFY(m_bench->warnings.isEmpty());
    }

    void cleanup() { m_bench.reset(); }

private:
    AppState &app() const { return m_bench->appState; }

    QQuickWindow *window() const { return m_bench->window; }

    bool isPopupOpen() const { return window()->property("popupOpen").toBool(); }

    // To the phases, by ways that need no key

    void goSomewhere()
    {
        m_did.append(u"from phase %1"_s.arg(int(app().phase().kind)));
        switch (m_dice->below(8)) {
        case 0:
            app().backToCardScreen();
            break;
        case 1:
        case 2:
            cull();
            break;
        case 3:
        case 4:
            cull();
            rejectSome();
            app().goToReview();
            break;
        case 5:
            beginDeletion(m_dice->oneIn(2));
            break;
        case 6:
            m_bench->volumes.setVolumes({});
            break;
        default:
            break;
        }
        m_did.append(u"to phase %1"_s.arg(int(app().phase().kind)));
    }

    void cull()
    {
        if (app().phase().kind == Kind::Summary) {
            app().closeSummary();
        }
        app().backToCardScreen();
        if (app().phase().kind == Kind::CardReady) {
            app().startCulling();
            QVERIFY(QTest::qWaitFor([&] { return app().phase() == Phase::culling(); }));
        }
        m_bench->defaults.setBoolean(u"autoAdvanceOnReject"_s, m_dice->oneIn(2));
    }

    void rejectSome()
    {
        if (!app().session()) {
            return;
        }
        const AppState::Operation operation(app());
        for (const auto &item : app().session()->items()) {
            if (app().session()->isRejected(item) == m_dice->oneIn(4)) {
                app().session()->toggle(item.id);
            }
        }
        app().recordChange();
    }

    void beginDeletion(bool isHeld)
    {
        cull();
        rejectSome();
        app().goToReview();
        if (app().phase().kind == Kind::Review && app().session()->hasRejects()) {
            m_bench->files->removalIsHeld = isHeld;
            app().performDelete();
        }
    }

    // What may happen to a window

    void act()
    {
        using Action = void (KeyboardStaysTest::*)();
        static const std::vector<std::pair<int, Action>> actions = {
            {300, &KeyboardStaysTest::click},       {60, &KeyboardStaysTest::doubleClick},
            {120, &KeyboardStaysTest::drag},        {100, &KeyboardStaysTest::pressOnly},
            {60, &KeyboardStaysTest::releaseOnly},  {120, &KeyboardStaysTest::wheel},
            {80, &KeyboardStaysTest::openMenu},     {40, &KeyboardStaysTest::clickControl},
            {60, &KeyboardStaysTest::ask},          {120, &KeyboardStaysTest::someKey},
            {12, &KeyboardStaysTest::resize},       {6, &KeyboardStaysTest::hideAndShow},
            {12, &KeyboardStaysTest::loseFocus},    {10, &KeyboardStaysTest::toggleStrip},
            {5, &KeyboardStaysTest::reportVolumes},
        };
        std::vector<int> weights;
        for (const auto &[weight, action] : actions) {
            weights.push_back(weight);
        }
        (this->*actions[m_dice->weighted(weights)].second)();
    }

    /// Anywhere but on what ends the application.
    QPoint somewhere()
    {
        const auto size = window()->size();
        for (;;) {
            const QPoint place(m_dice->below(size.width()), m_dice->below(size.height()));
            if (!isDeadly(place)) {
                return place;
            }
        }
    }

    bool isDeadly(QPoint place) const
    {
        QList<QQuickItem *> deadly;
        if (isPopupOpen()) { // to look for it takes its time
            deadly = m_bench->itemsShowing(u"Quit"_s);
        }
        for (auto *&item : deadly) {
            item = item->parentItem()->parentItem(); // its entry
        }
        deadly.append(m_bench->find(u"closeButton"_s));
        return std::ranges::any_of(deadly, [place](const QQuickItem *item) {
            return item && WindowBench::rectOf(item).adjusted(-1, -1, 1, 1).contains(place);
        });
    }

    Qt::MouseButton someButton()
    {
        return m_dice->oneIn(5) ? m_dice->oneIn(2) ? Qt::RightButton : Qt::MiddleButton
                                : Qt::LeftButton;
    }

    void did(const QString &what, QPoint place = {})
    {
        m_did.append(u"%1 %2,%3"_s.arg(what).arg(place.x()).arg(place.y()));
    }

    void click()
    {
        const auto place = somewhere();
        did(u"click"_s, place);
        QTest::mouseClick(window(), someButton(), {}, place);
    }

    /// Large areas would hide the small ones from clicks at random.
    void clickControl()
    {
        static const std::vector<QString> names = {
            u"startButton"_s,    u"cardPicker"_s, u"deleteButton"_s, u"confirmButton"_s,
            u"cancelButton"_s,   u"doneButton"_s, u"cardStep"_s,     u"cullStep"_s,
            u"failuresButton"_s, u"reviewStep"_s, u"menuButton"_s,   u"maximiseButton"_s,
        };
        const auto name = m_dice->oneOf(names);
        if (const auto *item = m_bench->find(name)) {
            const auto place = WindowBench::rectOf(item).center().toPoint();
            if (!isDeadly(place)) {
                did(name, place);
                QTest::mouseClick(window(), Qt::LeftButton, {}, place);
            }
        }
    }

    void doubleClick()
    {
        const auto place = somewhere();
        did(u"double click"_s, place);
        QTest::mouseDClick(window(), Qt::LeftButton, {}, place);
    }

    void drag()
    {
        const auto from = somewhere();
        const auto to = somewhere();
        did(u"drag from"_s, from);
        did(u"to"_s, to);
        QTest::mousePress(window(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 3; ++step) {
            QTest::mouseMove(window(), from + (to - from) * step / 3);
        }
        if (!isDeadly(to)) {
            QTest::mouseRelease(window(), Qt::LeftButton, {}, to);
        }
    }

    /// Much may happen before it is let go.
    void pressOnly()
    {
        const auto place = somewhere();
        did(u"press"_s, place);
        QTest::mousePress(window(), Qt::LeftButton, {}, place);
    }

    void releaseOnly()
    {
        const auto place = somewhere();
        did(u"release"_s, place);
        QTest::mouseRelease(window(), Qt::LeftButton, {}, place);
    }

    void wheel()
    {
        const QPointF place = somewhere();
        const QPoint turn(m_dice->oneIn(3) ? 120 : 0, m_dice->oneIn(2) ? 120 : -240);
        did(u"wheel"_s, place.toPoint());
        QWheelEvent event(place, window()->mapToGlobal(place), {}, turn, {}, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(window(), &event);
    }

    void openMenu()
    {
        did(u"menu"_s);
        if (m_dice->oneIn(2)) {
            QTest::keyClick(window(), Qt::Key_F10);
        } else if (m_bench->find(u"menuButton"_s)) {
            m_bench->click(u"menuButton"_s);
        }
        const int moves = m_dice->below(4);
        for (int move = 0; isPopupOpen() && move < moves; ++move) {
            QTest::keyClick(window(), m_dice->oneIn(3) ? Qt::Key_Right : Qt::Key_Down);
        }
    }

    void ask()
    {
        if (app().phase().kind == Kind::Review && app().session()->hasRejects()) {
            did(u"question"_s);
            app().setConfirmingDelete(true);
        }
    }

    void someKey()
    {
        static const std::vector<Qt::Key> keys = {
            Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Space, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,
            Qt::Key_Escape, Qt::Key_Down,    Qt::Key_X,     Qt::Key_Z,    Qt::Key_U,     Qt::Key_I};
        const auto key = m_dice->oneOf(keys);
        did(u"key %1"_s.arg(int(key), 0, 16));
        QTest::keyClick(window(), key);
    }

    void resize()
    {
        const QSize size(m_dice->between(1000, 1300), m_dice->between(700, 900));
        did(u"resize"_s, QPoint(size.width(), size.height()));
        window()->resize(size);
        QCoreApplication::processEvents();
    }

    void hideAndShow()
    {
        did(u"hide and show"_s);
        window()->hide();
        QCoreApplication::processEvents();
        window()->show();
        QCoreApplication::processEvents();
    }

    void loseFocus()
    {
        did(u"another window"_s);
        QWindow other;
        other.resize(10, 10);
        other.show();
        other.requestActivate();
        QCoreApplication::processEvents();
        other.close();
        window()->requestActivate();
        QCoreApplication::processEvents();
    }

    void toggleStrip()
    {
        did(u"F11"_s);
        QTest::keyClick(window(), Qt::Key_F11);
    }

    void reportVolumes()
    {
        did(u"volumes"_s);
        Q_EMIT m_bench->volumes.changed();
    }

    // The check

    /// The hands off the mouse, the window in front; what is open is closed by Escape.
    void letEverythingGo()
    {
        for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
            QTest::mouseRelease(window(), button, {}, QPoint(500, 350));
        }
        if (!window()->isActive()) {
            window()->show();
            window()->requestActivate();
            QVERIFY(QTest::qWaitForWindowActive(window()));
        }
        // A menu, and those within it.
        for (int depth = 0; depth < 3 && isPopupOpen(); ++depth) {
            QTest::keyClick(window(), Qt::Key_Escape);
        }
        QVERIFY2(QTest::qWaitFor([this] { return !isPopupOpen(); }),
                 "Escape does not reach what is open");
        QVERIFY(!app().confirmingDelete());
        // Another card may have been chosen that has not answered yet; the newest wish wins.
        if (app().canSwitchCards()) {
            const auto other = 1 - app().currentCardIndex();
            app().switchToCardAt(other);
            QVERIFY(QTest::qWaitFor([&] { return app().currentCardIndex() == other; }));
        }
    }

    static QString keyName(Qt::Key key) { return QKeySequence(key).toString(); }

    void checkAllKeys()
    {
        if (app().phase().kind == Kind::Scanning) {
            QVERIFY(QTest::qWaitFor([this] { return app().phase().kind != Kind::Scanning; }));
        }
        ++m_checked[app().phase().kind];
        std::vector<Qt::Key> keys = {Qt::Key_X,     Qt::Key_U,    Qt::Key_Z,      Qt::Key_I,
                                     Qt::Key_J,     Qt::Key_K,    Qt::Key_L,      Qt::Key_Q,
                                     Qt::Key_Space, Qt::Key_Tab,  Qt::Key_Left,   Qt::Key_Right,
                                     Qt::Key_Up,    Qt::Key_Down, Qt::Key_Escape, Qt::Key_Return};
        for (auto left = keys.size(); left > 1; --left) {
            std::swap(keys[left - 1], keys[size_t(m_dice->below(int(left)))]);
        }
        for (const auto key : keys) {
            checkKey(key);
            if (QTest::currentTestFailed()) {
                return;
            }
        }
        if (app().phase().kind == Kind::Deleting) {
            m_bench->files->removalIsHeld = false;
            QVERIFY(QTest::qWaitFor([&] { return app().phase().kind == Kind::Summary; }));
            ++m_checked[Kind::Summary];
            checkKey(Qt::Key_Return);
        }
        if (app().availableCards().isEmpty()) {
            m_bench->volumes.mount(m_cards[0], u"UUID-ONE"_s, u"ONE"_s);
            m_bench->volumes.mount(m_cards[1], u"UUID-TWO"_s, u"TWO"_s);
            QVERIFY(QTest::qWaitFor([&] { return app().phase().kind == Kind::CardReady; }));
        }
    }

    void checkKey(Qt::Key key)
    {
        const auto before = KeyModel::of(app());
        auto wanted = before;
        wanted.press(key);
        QTest::keyClick(window(), key);
        if (before.kind == Kind::Deleting && !m_bench->files->removalIsHeld) {
            return; // it may have ended
        }
        // Only another card has to be asked first.
        if (wanted.card != before.card) {
            QVERIFY(QTest::qWaitFor([&] { return app().currentCardIndex() == wanted.card; }));
        }
        const auto fault = wanted.differenceFrom(KeyModel::of(app()));
        QVERIFY2(
            fault.isEmpty(),
            qPrintable(u"%1 in phase %2: %3"_s.arg(keyName(key)).arg(int(before.kind)).arg(fault)));
        if (app().phase().kind == Kind::Scanning) {
            QVERIFY(QTest::qWaitFor([&] { return app().phase().kind == Kind::Culling; }));
        }
        if (app().confirmingDelete()) {
            closeQuestion();
        }
    }

    void closeQuestion()
    {
        QVERIFY(QTest::qWaitFor([this] {
            const auto *const cancel = m_bench->find(u"cancelButton"_s);
            return cancel && cancel->hasActiveFocus();
        }));
        QTest::keyClick(window(), m_dice->oneIn(2) ? Qt::Key_Escape : Qt::Key_Return);
        QVERIFY(QTest::qWaitFor([this] { return !isPopupOpen(); }));
        QVERIFY(!app().confirmingDelete());
        QCOMPARE(app().phase(), Phase::review());
    }

    std::unique_ptr<Dice> m_dice;
    std::unique_ptr<WindowBench> m_bench;
    std::vector<std::filesystem::path> m_cards;
    QStringList m_did; ///< of this burst
    QMap<Kind, int> m_checked;
};

QTEST_MAIN(KeyboardStaysTest)
#include "KeyboardStaysTest.moc"
