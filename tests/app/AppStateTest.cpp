// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/Workbench.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

class AppStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<Workbench>(); }

    void itBeginsWithoutACard()
    {
        QCOMPARE(app().phase(), Phase::waitingForCard());
        QVERIFY(!app().card());
        QVERIFY(!app().session());
        QVERIFY(app().showExifBar());
        QVERIFY(!app().zoomed());
        QCOMPARE(app().zoomPan(), QSizeF(0, 0));
        QCOMPARE(app().changeCount(), 0);
    }

    void startRegistersAutoAdvance()
    {
        app().start();

        QVERIFY(m_bench->defaults.boolean(u"autoAdvanceOnReject"_s));
    }

    void anEqualValueIsNotTold()
    {
        m_bench->cull(2);
        QSignalSpy zoomed(&app(), &AppState::zoomedChanged);
        QSignalSpy phase(&app(), &AppState::phaseChanged);

        app().setZoomed(false);
        app().setZoomPan({0, 0});
        app().backToCulling();

        QCOMPARE(zoomed.count(), 0);
        QCOMPARE(phase.count(), 0);
        app().setZoomed(true);
        QCOMPARE(zoomed.count(), 1);
    }

    void listenersSeeTheWholeOperation()
    {
        m_bench->cull(2);
        app().setZoomed(true);
        bool wasWhole = false;
        connect(&app(), &AppState::changeCountChanged, this,
                [&] { wasWhole = app().phase() == Phase::review() && !app().zoomed(); });

        app().finishCulling();

        QVERIFY(wasWhole);
    }

private:
    [[nodiscard]] AppState &app() const { return *m_bench->appState; }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(AppStateTest)
#include "AppStateTest.moc"
