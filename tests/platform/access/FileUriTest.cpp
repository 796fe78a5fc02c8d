// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/FileUri.h"

#include <QRandomGenerator>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

class FileUriTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void filesOfThisMachineHaveAPath_data()
    {
        QTest::addColumn<QString>("uri");
        QTest::addColumn<QByteArray>("path");

        QTest::newRow("plain") << u"file:///media/u/CARD"_s << "/media/u/CARD"_ba;
        QTest::newRow("named host") << u"file://localhost/media"_s << "/media"_ba;
        QTest::newRow("capitals in scheme and host") << u"FILE://LocalHost/A"_s << "/A"_ba;
        QTest::newRow("the root") << u"file:///"_s << "/"_ba;
        QTest::newRow("slashes at the end") << u"file:///media//"_s << "/media"_ba;
        QTest::newRow("spaces") << u"file:///MY%20CARD"_s << "/MY CARD"_ba;
        QTest::newRow("percent sign") << u"file:///100%25%2541"_s << "/100%%41"_ba;
        QTest::newRow("umlauts") << u"file:///%C3%9Cbung"_s
                                 << "/\xC3\x9C"
                                    "bung"_ba;
        QTest::newRow("umlauts as they are") << u"file:///Übung"_s
                                             << "/\xC3\x9C"
                                                "bung"_ba;
        QTest::newRow("not UTF-8") << u"file:///caf%E9%ff"_s << "/caf\xE9\xFF"_ba;
        QTest::newRow("what would end a path") << u"file:///a%3Fb%23c"_s << "/a?b#c"_ba;
        QTest::newRow("newline") << u"file:///a%0Ab"_s << "/a\nb"_ba;
    }

    void filesOfThisMachineHaveAPath()
    {
        QFETCH(const QString, uri);
        QFETCH(const QByteArray, path);

        const auto found = FileUri::localPath(uri);

        QVERIFY(found);
        QCOMPARE(QByteArray::fromStdString(found->native()), path);
    }

    void nothingElseHasAPath_data()
    {
        QTest::addColumn<QString>("uri");

        QTest::newRow("empty") << u""_s;
        QTest::newRow("shorter than the scheme") << u"file:/"_s;
        QTest::newRow("a path") << u"/media/u/CARD"_s;
        QTest::newRow("a page") << u"https://example.org/media"_s;
        QTest::newRow("a camera") << u"gphoto2://Camera/DCIM"_s;
        QTest::newRow("scheme that only begins so") << u"files:///media"_s;
        QTest::newRow("another machine") << u"file://server/media"_s;
        QTest::newRow("no path") << u"file://"_s;
        QTest::newRow("host without a path") << u"file://localhost"_s;
        QTest::newRow("relative") << u"file:media"_s;
        QTest::newRow("NUL") << u"file:///a%00b"_s;
        QTest::newRow("bare NUL") << u"file:///a"_s + QChar(u'\0') + u'b';
        QTest::newRow("slash within a name") << u"file:///a%2Fb"_s;
        QTest::newRow("cut off") << u"file:///a%2"_s;
        QTest::newRow("cut off at the sign") << u"file:///a%"_s;
        QTest::newRow("no hexadecimal digits") << u"file:///a%G0"_s;
        QTest::newRow("no second digit") << u"file:///a%0G"_s;
        QTest::newRow("query") << u"file:///a?b"_s;
        QTest::newRow("fragment") << u"file:///a#b"_s;
        QTest::newRow("half a character") << u"file:///"_s + QChar(0xD800);
    }

    void nothingElseHasAPath()
    {
        QFETCH(const QString, uri);

        QVERIFY(!FileUri::localPath(uri));
    }

    void everyNameSurvives()
    {
        QRandomGenerator random(5);
        for (int round = 0; round < 5000; ++round) {
            QByteArray name("/x");
            for (auto left = random.bounded(12); left > 0; --left) {
                const auto byte = char(random.bounded(1, 256));
                name.append(byte == '/' ? 'x' : byte);
            }

            const auto uri = u"file://"_s + QString::fromLatin1(name.toPercentEncoding("/"_ba));

            QCOMPARE(FileUri::localPath(uri), std::filesystem::path(name.toStdString()));
        }
    }

    void damagedTextNeverGivesARelativePathOrAByteThatNoPathHas()
    {
        QRandomGenerator random(7);
        const auto alphabet = u"file:///%%%02Fg?#lochst\u00FC\0"_s;
        int found = 0;
        for (int round = 0; round < 50'000; ++round) {
            auto uri = round % 2 == 0 ? u"file://"_s : u""_s;
            for (auto left = random.bounded(14); left > 0; --left) {
                uri.append(alphabet[random.bounded(int(alphabet.size()))]);
            }

            const auto path = FileUri::localPath(uri);

            if (path) {
                ++found;
                QVERIFY(path->is_absolute());
                QCOMPARE(path->native().find('\0'), std::string::npos);
            }
        }
        QVERIFY(found > 0);
    }
};

QTEST_GUILESS_MAIN(FileUriTest)
#include "FileUriTest.moc"
