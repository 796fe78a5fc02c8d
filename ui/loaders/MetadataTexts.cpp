// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/MetadataTexts.h"

#include "core/metadata/ImageMetadata.h"
#include "core/text/DecimalText.h"

#include <QCoreApplication>

#include <array>

using namespace Qt::StringLiterals;

static QString translated(const char *text)
{
    return QCoreApplication::translate("MetadataTexts", text);
}

/// What a camera can be set to, in words; the names of film simulations are names.
[[maybe_unused]] static constexpr std::array settings{
    QT_TRANSLATE_NOOP("MetadataTexts", "Weak"),
    QT_TRANSLATE_NOOP("MetadataTexts", "Strong"),
    QT_TRANSLATE_NOOP("MetadataTexts", "Small"),
    QT_TRANSLATE_NOOP("MetadataTexts", "Large"),
};

static std::optional<QString> inWords(const std::optional<QString> &setting)
{
    if (!setting) {
        return {};
    }
    auto words = setting->split(u'/');
    for (auto &word : words) {
        word = translated(word.toUtf8().constData());
    }
    return words.join(u'/');
}

static void append(QStringList &texts, const std::optional<QString> &value,
                   const char *pattern = "%1")
{
    if (value) {
        texts.append(translated(pattern).arg(*value));
    }
}

QStringList MetadataTexts::capture(const ImageMetadata &metadata)
{
    QStringList texts;
    if (metadata.pixelWidth && metadata.pixelHeight) {
        texts.append(QString::number(*metadata.pixelWidth) + u'×' +
                     QString::number(*metadata.pixelHeight));
    }
    if (metadata.aperture) {
        texts.append(u"ƒ/"_s + decimalText(*metadata.aperture, 1));
    }
    append(texts, metadata.exposureText());
    if (metadata.iso) {
        texts.append(u"ISO "_s + QString::number(*metadata.iso));
    }
    return texts;
}

QString MetadataTexts::lens(const ImageMetadata &metadata)
{
    return metadata.lensModel.value_or(QString());
}

QStringList MetadataTexts::fuji(const ImageMetadata &metadata)
{
    QStringList texts;
    if (!metadata.fuji) {
        return texts;
    }
    const auto &fuji = *metadata.fuji;
    append(texts, fuji.filmSimulation);
    append(texts, fuji.dynamicRange);
    append(texts, fuji.whiteBalanceShift, QT_TRANSLATE_NOOP("MetadataTexts", "WB %1"));
    append(texts, fuji.highlightTone, QT_TRANSLATE_NOOP("MetadataTexts", "H%1"));
    append(texts, fuji.shadowTone, QT_TRANSLATE_NOOP("MetadataTexts", "S%1"));
    append(texts, inWords(fuji.grain), QT_TRANSLATE_NOOP("MetadataTexts", "Grain %1"));
    append(texts, inWords(fuji.colorChrome), QT_TRANSLATE_NOOP("MetadataTexts", "CC %1"));
    append(texts, inWords(fuji.colorChromeBlue), QT_TRANSLATE_NOOP("MetadataTexts", "CCB %1"));
    return texts;
}
