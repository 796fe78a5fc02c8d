// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/PlainNotes.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;

class PlainNotesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void markupBecomesPlainText_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("text");
        QTest::newRow("paragraphs") << u"<p>One</p><p>Two</p>"_s << u"One\n\nTwo"_s;
        QTest::newRow("a list") << u"<h2>New</h2><ul><li>A</li><li>B</li></ul>"_s
                                << u"New\n\n• A\n• B"_s;
        QTest::newRow("line breaks") << u"One<br>Two<br/>Three"_s << u"One\nTwo\nThree"_s;
        QTest::newRow("lines of the source are none") << u"One\n  Two"_s << u"One Two"_s;
        QTest::newRow("references")
            << u"a &lt;b&gt; &amp; &#8364;&#x20AC; &nbsp;c"_s << u"a <b> & €€ c"_s;
        QTest::newRow("what is no reference")
            << u"R&D; &unknown; & &#0; &#xD800;"_s << u"R&D; &unknown; & &#0; &#xD800;"_s;
        QTest::newRow("scripts go with what they hold")
            << u"a<script>alert('<b>')</script>b<SCRIPT src='x'>c</SCRIPT >d"_s << u"abd"_s;
        QTest::newRow("styles go with what they hold") << u"<style>p{}</style>a"_s << u"a"_s;
        QTest::newRow("comments go") << u"a<!-- <p>b</p> -->c"_s << u"ac"_s;
        QTest::newRow("links leave their text")
            << u"<a href='https://x.test'>page</a>"_s << u"page"_s;
        QTest::newRow("pictures leave nothing") << u"<img src='file:///etc/passwd'>a"_s << u"a"_s;
        QTest::newRow("a tag without an end") << u"a<p"_s << u"a"_s;
        QTest::newRow("a script without an end") << u"a<script>b"_s << u"a"_s;
        QTest::newRow("text that hides or turns") << u"a\u202Eb\u200Bc\u0007d"_s << u"abcd"_s;
        QTest::newRow("the same by number") << u"a&#x202E;b"_s << u"ab"_s;
        QTest::newRow("the same beyond the first plane") << u"a\U000E0041b&#xE0042;"_s << u"ab"_s;
        QTest::newRow("signs beyond the first plane") << u"a📷b"_s << u"a📷b"_s;
        QTest::newRow("nothing") << QString() << QString();
    }

    void markupBecomesPlainText()
    {
        QFETCH(const QString, html);
        QFETCH(const QString, text);

        QCOMPARE(plainNotes(html, NotesFormat::Html), text);
    }

    void plainNotesKeepTheirLinesAndSigns()
    {
        QCOMPARE(plainNotes(u"1 < 2\n\n\n\n&amp; more\n"_s, NotesFormat::Plain),
                 u"1 < 2\n\n&amp; more"_s);
    }

    void longNotesAreCut()
    {
        QCOMPARE(plainNotes(QString(100'000, u'a'), NotesFormat::Plain).size(), 20'001);
        QCOMPARE(plainNotes(QString(100'000, u'a'), NotesFormat::Html).size(), 20'001);
    }

    void noPairIsCutInTwo()
    {
        const auto text = plainNotes(u'a' + u"📷"_s.repeated(20'000), NotesFormat::Plain);

        QVERIFY(text.isValidUtf16());
        QVERIFY(text.endsWith(u"📷…"_s));
    }

    void aLineHidesAndBreaksNothing()
    {
        QCOMPARE(plainLine(u" Two\n\u202E99\t\u2066b "_s), u"Two 99 b"_s);
    }

    void hostileNotesTakeNoTime_data()
    {
        QTest::addColumn<QString>("piece");
        for (const auto *piece :
             {u"<", u"&", u"<!--", u"<script>", u"</", u"<a>", u"&#x;", u"<li>"}) {
            QTest::newRow(qPrintable(QString::fromUtf16(piece))) << QString::fromUtf16(piece);
        }
    }

    void hostileNotesTakeNoTime()
    {
        QFETCH(const QString, piece);
        QElapsedTimer time;
        time.start();

        const auto text = plainNotes(piece.repeated(1024 * 1024 / piece.size()), NotesFormat::Html);

        QVERIFY(text.size() <= 20'001);
        QVERIFY(time.elapsed() < 5000); // with each looking through all others, minutes
    }
};

QTEST_GUILESS_MAIN(PlainNotesTest)
#include "PlainNotesTest.moc"
