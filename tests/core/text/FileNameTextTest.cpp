// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/FileNameText.h"

#include <QRandomGenerator>
#include <QTest>

#include <map>

using namespace Qt::StringLiterals;

class FileNameTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void validUtf8IsItself_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("ascii") << u"DSCF0001.RAF"_s;
        QTest::newRow("empty") << u""_s;
        QTest::newRow("two bytes") << u"caf\u00E9"_s;
        QTest::newRow("three bytes") << u"\u65E5\u672C"_s;
        QTest::newRow("four bytes") << u"\U0001F600"_s;
        QTest::newRow("decomposed stays") << u"cafe\u0301"_s;
    }

    void validUtf8IsItself()
    {
        QFETCH(const QString, text);

        QCOMPARE(keyText(text.toStdString()), text);
    }

    void invalidBytesBecomePrivateCodePoints()
    {
        const char32_t escape = 0x10FE00 + 0xE9;

        QCOMPARE(keyText("caf\xE9.JPG"), u"caf"_s + QString::fromUcs4(&escape, 1) + u".JPG"_s);
    }

    void theEscapesThemselvesAreEscaped()
    {
        const char32_t escape = 0x10FE00 + 0xE9;
        const auto spelled = QString::fromUcs4(&escape, 1).toStdString();

        QVERIFY(keyText(spelled) != keyText("\xE9"));
    }

    void differentNamesNeverShareAText()
    {
        QRandomGenerator random(1);
        const std::string bytes("a\x80\xE9\xC3\xA9\xF4\x8F\xB8\x80\xFF", 10);
        std::map<QString, std::string> seen;

        for (int round = 0; round < 20'000; ++round) {
            std::string name;
            for (int length = random.bounded(1, 7); length > 0; --length) {
                name += bytes[static_cast<size_t>(random.bounded(int(bytes.size())))];
            }
            const auto [entry, isNew] = seen.emplace(keyText(name), name);
            QVERIFY2(isNew || entry->second == name, qPrintable(entry->first));
        }
    }

    void displayTextShowsReplacementCharacters()
    {
        QCOMPARE(displayText("caf\xE9.JPG"), u"caf\uFFFD.JPG"_s);
    }
};

QTEST_GUILESS_MAIN(FileNameTextTest)
#include "FileNameTextTest.moc"
