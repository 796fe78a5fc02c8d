// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/translations/Translations.h"
#include "ui/loaders/ByteCountText.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;

/// Which language is chosen, and what it says then.
class TranslationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theUsersFirstLanguageThatKestleSpeaksIsChosen_data()
    {
        QTest::addColumn<QStringList>("wanted");
        QTest::addColumn<QString>("chosen");
        QTest::newRow("none") << QStringList() << QString();
        QTest::newRow("no locale") << QStringList{u"C"_s} << QString();
        QTest::newRow("English") << QStringList{u"en-GB"_s, u"en"_s} << QString();
        QTest::newRow("German") << QStringList{u"de-DE"_s, u"de"_s} << u"de"_s;
        QTest::newRow("Austria's") << QStringList{u"de-AT"_s} << u"de"_s;
        QTest::newRow("with a script") << QStringList{u"de-Latn-CH"_s} << u"de"_s;
        QTest::newRow("as environments write it") << QStringList{u"de_DE"_s} << u"de"_s;
        QTest::newRow("another") << QStringList{u"fr-FR"_s, u"fr"_s} << QString();
        QTest::newRow("one that begins alike") << QStringList{u"den-CA"_s} << QString();
        QTest::newRow("German as the second") << QStringList{u"fr"_s, u"de"_s} << u"de"_s;
        QTest::newRow("German after English") << QStringList{u"en"_s, u"de"_s} << QString();
        QTest::newRow("nonsense") << QStringList{u""_s, u"-"_s, u"../de"_s} << QString();
    }

    void theUsersFirstLanguageThatKestleSpeaksIsChosen()
    {
        QFETCH(const QStringList, wanted);
        QTEST(Translations::chosen(wanted), "chosen");
    }

    void germanIsCompiledIn() { QCOMPARE(Translations::languages(), QStringList{u"de"_s}); }

    void textsAreEnglishUntilAnotherLanguageIsInstalled()
    {
        Translations translations;
        translations.install({u"fr"_s});
        QCOMPARE(byteCountText(0), u"Zero KB"_s);
        QCOMPARE(files(1), u"1 files"_s);

        translations.install({u"de-DE"_s});
        QCOMPARE(byteCountText(0), u"0 KB"_s);
    }

    void anotherLanguageHasItsOwnFormsForOneAndForMany()
    {
        Translations translations;
        translations.install({u"de"_s});
        QCOMPARE(files(0), u"0 Dateien"_s);
        QCOMPARE(files(1), u"1 Datei"_s);
        QCOMPARE(files(1'000'000), u"1000000 Dateien"_s);
    }

    void whatQtItselfSaysIsTranslatedToo()
    {
        Translations translations;
        translations.install({u"de"_s});
        const auto text = QCoreApplication::translate("QPlatformTheme", "Close");
        if (text == u"Close"_s) {
            QSKIP("Qt's own translations are not installed");
        }
        QCOMPARE(text, u"Schließen"_s);
    }

    void theLanguageGoesWithItsOwner()
    {
        {
            Translations translations;
            translations.install({u"de"_s});
        }
        QCOMPARE(files(2), u"2 files"_s);
    }

private:
    static QString files(int count)
    {
        return QCoreApplication::translate("Numbers", "%n files", nullptr, count);
    }
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
