// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/ScreenBench.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickStyle>

using namespace Qt::StringLiterals;

/// Counts as the screens write them.
class CountsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle(u"Basic"_s); }

    void countsArePlainDecimals_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");

        QTest::newRow("progress") << u"DeleteProgressView { done: 1000000; total: 12345678 }"_s
                                  << u"progressText"_s << u"Deleting 1000000 of 12345678"_s;
        QTest::newRow("none") << u"DeleteProgressView { done: 0; total: 1 }"_s << u"progressText"_s
                              << u"Deleting 0 of 1"_s;
        const auto summary = u"SummaryView { deleted: 1000000; failed: 2000000; kept: 3000000 }"_s;
        QTest::newRow("deleted") << summary << u"counts"_s
                                 << u"Deleted 1000000 files, kept 3000000 items."_s;
        QTest::newRow("failed") << summary << u"failures"_s << u"2000000 could not be deleted."_s;
        const auto question = u"ConfirmDeleteContent { title: ''; itemCount: 1000000; "
                              "fileCount: 2000000; sizeText: '7 TB' }"_s;
        QTest::newRow("items of the question")
            << question << u"confirmMessage"_s
            << u"1000000 rejected items (7 TB). SD cards have no trash — this cannot be undone."_s;
        QTest::newRow("files of the question")
            << question << u"confirmButton"_s << u"Delete 2000000 files"_s;
        QTest::newRow("title of the question")
            << u"ConfirmDelete { itemCount: 1; fileCount: 1000000; sizeText: '' }"_s << u""_s
            << u"Permanently delete 1000000 files from the card?"_s;
    }

    void countsArePlainDecimals()
    {
        QFETCH(QString, screen);
        QFETCH(QString, name);
        QFETCH(QString, text);
        ScreenBench bench;
        QQmlEngine engine;
        engine.addImportPath(u"qrc:/"_s);
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Kestle\n" + screen.toUtf8(), {});
        QVariantMap properties;
        if (!screen.startsWith(u"DeleteProgressView") && !screen.startsWith(u"ConfirmDeleteC")) {
            properties.insert(u"appState"_s, QVariant::fromValue(&bench.appState));
        }

        const std::unique_ptr<QObject> root(component.createWithInitialProperties(properties));

        QVERIFY2(root, qPrintable(component.errorString()));
        if (name.isEmpty()) {
            QCOMPARE(root->property("title").toString(), text);
        } else {
            const auto *item = root->findChild<QQuickItem *>(name);
            QVERIFY(item);
            QCOMPARE(item->property("text").toString(), text);
        }
    }

    void aDeletionOfNothingShowsAnEmptyBar()
    {
        QQmlEngine engine;
        engine.addImportPath(u"qrc:/"_s);
        QQmlComponent component(&engine);
        component.setData("import Kestle\nDeleteProgressView { done: 0; total: 0 }", {});

        const std::unique_ptr<QObject> root(component.create());

        QVERIFY2(root, qPrintable(component.errorString()));
        QCOMPARE(root->findChild<QQuickItem *>(u"progress"_s)->property("position").toReal(), 0.0);
        QCOMPARE(root->findChild<QQuickItem *>(u"progressDone"_s)->width(), 0.0);
        QVERIFY(root->setProperty("total", 4));
        QVERIFY(root->setProperty("done", 1));
        QCOMPARE(root->findChild<QQuickItem *>(u"progressDone"_s)->width(), 80.0);
    }
};

QTEST_MAIN(CountsTest)
#include "CountsTest.moc"
