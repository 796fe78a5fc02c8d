// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>
#include <QTranslator>

/// The texts of the program in the user's language; they are compiled in. What has no translation
/// is English. Lives in the main thread, beside the application object and not longer.
class Translations {
public:
    Translations() = default;
    Translations(const Translations &) = delete;
    Translations &operator=(const Translations &) = delete;

    /// The languages compiled in besides English, as two-letter codes of ISO 639.
    [[nodiscard]] static QStringList languages();

    /// The first of @p wanted that Kestle speaks; English is empty, and so is the answer where it
    /// speaks none of them. @p wanted is as QLocale::uiLanguages() has it.
    [[nodiscard]] static QString chosen(const QStringList &wanted);

    /// From now on texts are in the chosen one of @p wanted.
    void install(const QStringList &wanted);

private:
    QTranslator m_texts;
    QTranslator m_qtTexts; ///< what Qt itself tells screen readers, for one
};
