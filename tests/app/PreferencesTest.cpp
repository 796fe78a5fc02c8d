// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/Preferences.h"
#include "tests/app/Workbench.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

class PreferencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void autoAdvanceIsOnWhereNothingIsStored()
    {
        Workbench bench;
        bench.appState->start();
        const Preferences preferences(bench.defaults);
        QVERIFY(preferences.autoAdvance());
    }

    void whatIsChosenIsStoredAndTold()
    {
        Workbench bench;
        bench.appState->start();
        Preferences preferences(bench.defaults);
        QSignalSpy changed(&preferences, &Preferences::autoAdvanceChanged);

        preferences.setAutoAdvance(false);
        preferences.setAutoAdvance(false);

        QCOMPARE(changed.count(), 1);
        QVERIFY(!preferences.autoAdvance());
        QVERIFY(!bench.defaults.boolean(u"autoAdvanceOnReject"_s));
    }
};

QTEST_GUILESS_MAIN(PreferencesTest)
#include "PreferencesTest.moc"
