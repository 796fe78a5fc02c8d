// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/MetadataTexts.h"

#include "core/metadata/ImageMetadata.h"
#include "core/text/DecimalText.h"

using namespace Qt::StringLiterals;

static void append(QStringList &texts, const QString &prefix, const std::optional<QString> &value)
{
    if (value) {
        texts.append(prefix + *value);
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
    append(texts, {}, metadata.exposureText());
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
    append(texts, {}, fuji.filmSimulation);
    append(texts, {}, fuji.dynamicRange);
    append(texts, u"WB "_s, fuji.whiteBalanceShift);
    append(texts, u"H"_s, fuji.highlightTone);
    append(texts, u"S"_s, fuji.shadowTone);
    append(texts, u"Grain "_s, fuji.grain);
    append(texts, u"CC "_s, fuji.colorChrome);
    append(texts, u"CCB "_s, fuji.colorChromeBlue);
    return texts;
}
