// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

using namespace Qt::StringLiterals;

/// The whole way from an inserted card to the summary by keys, as seen in the real window.
class WalkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fromTheCardToTheSummary_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("the smallest window") << QSize(1000, 700);
        QTest::newRow("a large window") << QSize(1920, 1200);
    }

    void fromTheCardToTheSummary()
    {
        QFETCH(QSize, size);
        WindowBench bench(size);
        auto &app = bench.appState;
        ImageMetadata meta{.pixelWidth = 6240, .pixelHeight = 4160, .aperture = 2.8};
        meta.exposureTime = 0.004;
        meta.iso = 400;
        meta.lensModel = u"XF16-55mmF2.8 R LM WR"_s;
        meta.fuji = FujiSettings{.filmSimulation = u"Classic Negative"_s,
                                 .dynamicRange = u"DR400"_s,
                                 .whiteBalanceShift = u"R+1 B-2"_s,
                                 .highlightTone = u"-1"_s,
                                 .shadowTone = u"+2"_s,
                                 .grain = u"Weak/Small"_s,
                                 .colorChrome = u"Strong"_s,
                                 .colorChromeBlue = u"Weak"_s};
        bench.metadata->otherwise = meta;

        grab(bench, u"01-waiting"_s);
        QCOMPARE(bench.text(u"title"_s), u"Insert an SD card"_s);
        app.start();
        auto files = ScreenBench::shots(40);
        files.push_back("DSCF0003.RAF");
        files.push_back("DSCF0005.MOV");
        files.push_back("BROKEN41.JPG");
        std::erase(files, "DSCF0005.JPG");
        bench.cardRoot = bench.mountCard("X-T5 CARD", files);
        QTRY_COMPARE(app.phase(), Phase::cardReady(false));
        grab(bench, u"02-ready"_s);
        QCOMPARE(bench.text(u"title"_s), u"X-T5 CARD"_s);
        QCOMPARE(bench.text(u"message"_s), u"Press ⏎ to start culling"_s);

        bench.key(Qt::Key_Return);
        QTRY_COMPARE(app.phase(), Phase::culling());
        QTRY_VERIFY(bench.find(u"picture"_s));
        for (int i = 0; i < 12; ++i) {
            bench.key(Qt::Key_Right);
        }
        bench.key(Qt::Key_X);
        bench.key(Qt::Key_Left);
        QTRY_VERIFY(bench.find(u"badge"_s));
        settle();
        grab(bench, u"03-culling"_s);
        QTRY_COMPARE(bench.text(u"position"_s), u"13 / 41"_s);
        QCOMPARE(bench.text(u"rejectCount"_s), u"1 rejected"_s);

        bench.key(Qt::Key_I);
        QVERIFY(!bench.find(u"exifBar"_s));
        bench.key(Qt::Key_I);
        bench.key(Qt::Key_Z);
        QTRY_VERIFY(bench.find(u"zoom"_s));
        settle();
        grab(bench, u"04-zoom"_s);
        bench.key(Qt::Key_Z);

        for (int i = 0; i < 11; ++i) {
            bench.key(Qt::Key_Left);
        }
        settle();
        for (int i = 0; i < 5; ++i) {
            bench.key(Qt::Key_X);
        }
        app.selectItem(0);
        settle();
        grab(bench, u"05-first"_s);
        app.selectItem(5);
        settle();
        grab(bench, u"06-clip"_s);
        app.selectItem(20);
        bench.key(Qt::Key_X);
        bench.key(Qt::Key_X);
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(app.phase(), Phase::review());
        settle();
        grab(bench, u"07-review"_s);
        bench.key(Qt::Key_Right);
        bench.key(Qt::Key_Space);
        QTRY_VERIFY(bench.find(u"enlarged"_s));
        settle();
        grab(bench, u"08-enlarged"_s);
        bench.key(Qt::Key_Space);
        QVERIFY(!bench.find(u"enlarged"_s));
        bench.key(Qt::Key_Return);
        QTRY_VERIFY(app.confirmingDelete());
        QTRY_VERIFY(bench.find(u"cancelButton"_s));
        QTRY_VERIFY(bench.find(u"cancelButton"_s)->hasActiveFocus());
        settle();
        grab(bench, u"09-confirm"_s);
        const auto rejects = app.session()->rejectedCount();
        bench.files->removalIsHeld = true;
        bench.key(Qt::Key_Left);
        QVERIFY(bench.find(u"confirmButton"_s)->hasActiveFocus());
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(app.phase().kind, Phase::Kind::Deleting);
        QTRY_VERIFY(bench.find(u"progress"_s));
        grab(bench, u"10-deleting"_s);
        bench.files->removalIsHeld = false;
        QTRY_COMPARE(app.phase().kind, Phase::Kind::Summary);
        settle();
        grab(bench, u"11-summary"_s);
        QCOMPARE(
            bench.text(u"counts"_s),
            u"Deleted %1 files, kept %2 items."_s.arg(app.phase().deletedCount).arg(41 - rejects));
        QCOMPARE(bench.text(u"advice"_s), u"Card ready to import in Photos or Lightroom."_s);

        bench.key(Qt::Key_Return);
        QTRY_COMPARE(app.phase(), Phase::cardReady(false));
        QTRY_COMPARE(bench.text(u"title"_s), u"X-T5 CARD"_s);
        for (const auto *gone : {"DSCF0001.JPG", "DSCF0003.JPG", "DSCF0003.RAF", "DSCF0005.MOV",
                                 "DSCF0012.JPG", "DSCF0021.JPG"}) {
            QVERIFY2(!bench.has(gone), gone);
        }
        for (const auto *kept : {"BROKEN41.JPG", "DSCF0006.JPG", "DSCF0013.JPG", "DSCF0040.JPG"}) {
            QVERIFY2(bench.has(kept), kept);
        }
        for (const auto &warning : bench.warnings) {
            qWarning("%s", qPrintable(warning.toString()));
        }
        QVERIFY(bench.warnings.isEmpty());
    }

private:
    /// Lets animations and decodes end before a picture is kept for looking at.
    static void settle()
    {
        if (qEnvironmentVariableIsSet("KESTLE_GRABS")) {
            QTest::qWait(600);
        }
    }

    /// Keeps what the window shows, for people to look at, where a folder for it is named.
    static void grab(const WindowBench &bench, const QString &name)
    {
        const auto folder = qEnvironmentVariable("KESTLE_GRABS");
        if (!folder.isEmpty()) {
            QTest::qWait(100);
            bench.window->grabWindow().save(
                u"%1/%2-%3.png"_s.arg(folder, name).arg(bench.window->width()));
        }
    }
};

QTEST_MAIN(WalkTest)
#include "WalkTest.moc"
