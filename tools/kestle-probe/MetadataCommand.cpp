// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tools/kestle-probe/MetadataCommand.h"

#include "core/metadata/ExifReader.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

template<typename T>
void put(QJsonObject &object, const QString &name, const std::optional<T> &value)
{
    if (value) {
        object.insert(name, *value);
    }
}

QJsonObject toJson(const FujiSettings &settings)
{
    QJsonObject object;
    put(object, u"filmSimulation"_s, settings.filmSimulation);
    put(object, u"dynamicRange"_s, settings.dynamicRange);
    put(object, u"whiteBalanceShift"_s, settings.whiteBalanceShift);
    put(object, u"highlightTone"_s, settings.highlightTone);
    put(object, u"shadowTone"_s, settings.shadowTone);
    put(object, u"grain"_s, settings.grain);
    put(object, u"colorChrome"_s, settings.colorChrome);
    put(object, u"colorChromeBlue"_s, settings.colorChromeBlue);
    return object;
}

QJsonValue toJson(const std::optional<ImageMetadata> &metadata)
{
    if (!metadata) {
        return QJsonValue::Null;
    }
    QJsonObject object;
    put(object, u"pixelWidth"_s, metadata->pixelWidth);
    put(object, u"pixelHeight"_s, metadata->pixelHeight);
    put(object, u"orientation"_s, metadata->orientation);
    put(object, u"aperture"_s, metadata->aperture);
    put(object, u"exposureTime"_s, metadata->exposureTime);
    put(object, u"iso"_s, metadata->iso);
    put(object, u"lensModel"_s, metadata->lensModel);
    put(object, u"exposureText"_s, metadata->exposureText());
    if (metadata->captureDate) {
        object.insert(u"captureDate"_s, metadata->captureDate->toSecsSinceEpoch());
    }
    if (metadata->subjectArea) {
        object.insert(u"subjectArea"_s,
                      QJsonArray{metadata->subjectArea->x(), metadata->subjectArea->y()});
    }
    if (metadata->fuji) {
        object.insert(u"fuji"_s, toJson(*metadata->fuji));
    }
    return object;
}

} // namespace

ExitStatus metadataCommand(const QStringList &arguments)
{
    if (arguments.isEmpty()) {
        return BadUsage;
    }
    const ExifReader reader;
    QJsonArray list;
    for (const auto &file : arguments) {
        const auto path = QFile::encodeName(file).toStdString();
        list.append(QJsonObject{{u"file"_s, file}, {u"metadata"_s, toJson(reader.read(path))}});
    }
    std::fputs(QJsonDocument(list).toJson().constData(), stdout);
    return Success;
}
