// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/DrawingsKeeper.h"

#include "platform/media/OpenGlFrames.h"

#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

namespace {

/// A clip's drawing, and what becomes of it.
struct Fate {
    bool isHeld = true;
    bool isDestroyed = false;
    std::function<void()> letGo;
};

class HeldFrames final : public OpenGlFrames {
public:
    explicit HeldFrames(Fate &fate)
        : m_fate(fate)
    {
    }
    ~HeldFrames() override { m_fate.isDestroyed = true; }

    bool isUsable() const override { return true; }
    void draw(unsigned /*framebuffer*/, QSize /*pixels*/) override {}
    bool isStillHeld(std::function<void()> letGo) override
    {
        m_fate.letGo = std::move(letGo);
        return m_fate.isHeld;
    }

private:
    Fate &m_fate;
};

} // namespace

class DrawingsKeeperTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(20, 20);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void aWindowHasOne()
    {
        QCOMPARE(DrawingsKeeper::known(m_window.get()), nullptr);

        auto *keeper = DrawingsKeeper::of(m_window.get());

        QCOMPARE(DrawingsKeeper::of(m_window.get()), keeper);
        QCOMPARE(DrawingsKeeper::known(m_window.get()), keeper);
    }

    void whatNobodyHoldsGoesAtOnce()
    {
        Fate fate{.isHeld = false, .isDestroyed = false, .letGo = {}};
        auto *keeper = DrawingsKeeper::of(m_window.get());

        keeper->take(std::make_unique<HeldFrames>(fate));
        keeper->take(nullptr);

        QVERIFY(fate.isDestroyed);
        QCOMPARE(keeper->count(), 0);
    }

    void whatAClipHoldsGoesWhenTheClipHasLetGo()
    {
        Fate first;
        Fate second;
        auto *keeper = DrawingsKeeper::of(m_window.get());
        keeper->take(std::make_unique<HeldFrames>(first));
        keeper->take(std::make_unique<HeldFrames>(second));

        for (int frame = 0; frame < 3; ++frame) {
            QSignalSpy drawn(m_window.get(), &QQuickWindow::afterRendering);
            m_window->update();
            QVERIFY(drawn.count() > 0 || drawn.wait());
        }
        QCOMPARE(keeper->count(), 2);
        QVERIFY(!first.isDestroyed && !second.isDestroyed);

        second.letGo(); // nobody else asks for a frame
        QTRY_VERIFY(second.isDestroyed);
        QCOMPARE(keeper->count(), 1);
        QVERIFY(!first.isDestroyed);
        first.letGo();
        QTRY_COMPARE(keeper->count(), 0);
        QVERIFY(first.isDestroyed);
    }

    void nothingIsKeptLongerThanItsWindow()
    {
        Fate fate;
        DrawingsKeeper::of(m_window.get())->take(std::make_unique<HeldFrames>(fate));

        m_window.reset();

        QVERIFY(fate.isDestroyed);
        fate.letGo(); // which nobody waits for any more
    }

private:
    std::unique_ptr<QQuickWindow> m_window;
};

QTEST_MAIN(DrawingsKeeperTest)
#include "DrawingsKeeperTest.moc"
