// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/translations/Translations.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

static const auto folder = u":/translations"_s;

QStringList Translations::languages()
{
    auto names = QDir(folder).entryList({u"kestle_*.qm"_s}, QDir::Files, QDir::Name);
    for (auto &name : names) {
        name = name.section(u'_', 1).section(u'.', 0, 0);
    }
    return names;
}

QString Translations::chosen(const QStringList &wanted)
{
    const auto spoken = languages();
    for (const auto &tag : wanted) {
        const auto language = tag.section(u'-', 0, 0).section(u'_', 0, 0).toLower();
        if (language == u"en"_s || language == u"c"_s) {
            return {};
        }
        if (spoken.contains(language)) {
            return language;
        }
    }
    return {};
}

void Translations::install(const QStringList &wanted)
{
    const auto language = chosen(wanted);
    if (language.isEmpty()) {
        return;
    }
    // Of two translators, the one installed last is asked first.
    if (m_qtTexts.load(u"qtbase_"_s + language,
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&m_qtTexts);
    }
    if (m_texts.load(u"kestle_"_s + language, folder)) {
        QCoreApplication::installTranslator(&m_texts);
    }
}
