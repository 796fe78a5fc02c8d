// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/FujiMakerNote.h"

#include "core/text/DecimalText.h"

#include <QHash>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Codes = QHash<qint64, QString>;
using Text = std::optional<QString>;

const Codes &filmSimulations()
{
    static const Codes codes = {
        {0x000, u"Provia"_s},         {0x200, u"Velvia"_s},           {0x300, u"Astia"_s},
        {0x500, u"Pro Neg. Std"_s},   {0x501, u"Pro Neg. Hi"_s},      {0x600, u"Classic Chrome"_s},
        {0x700, u"Eterna"_s},         {0x800, u"Classic Negative"_s}, {0x900, u"Bleach Bypass"_s},
        {0xA00, u"Nostalgic Neg."_s}, {0xB00, u"Reala ACE"_s},
    };
    return codes;
}

const Codes &monochromes()
{
    static const Codes codes = {
        {0x300, u"Monochrome"_s},   {0x301, u"Monochrome+R"_s}, {0x302, u"Monochrome+Ye"_s},
        {0x303, u"Monochrome+G"_s}, {0x310, u"Sepia"_s},        {0x500, u"Acros"_s},
        {0x501, u"Acros+R"_s},      {0x502, u"Acros+Ye"_s},     {0x503, u"Acros+G"_s},
    };
    return codes;
}

const Codes &strengths()
{
    static const Codes codes = {{0x20, u"Weak"_s}, {0x40, u"Strong"_s}};
    return codes;
}

const Codes &grainSizes()
{
    static const Codes codes = {{0x10, u"Small"_s}, {0x20, u"Large"_s}};
    return codes;
}

Text lookUp(const Codes &codes, std::optional<qint64> code)
{
    const auto found = code ? codes.constFind(*code) : codes.constEnd();
    return found != codes.constEnd() ? Text(*found) : std::nullopt;
}

/// Monochrome looks are recorded as a saturation, and win.
Text filmSimulation(const PropertyDictionary &note)
{
    const auto monochrome = lookUp(monochromes(), integerValue(note, u"Saturation"_s));
    return monochrome ? monochrome : lookUp(filmSimulations(), integerValue(note, u"FilmMode"_s));
}

Text dynamicRange(const PropertyDictionary &note)
{
    if (const auto development = integerValue(note, u"DevelopmentDynamicRange"_s)) {
        return u"DR%1"_s.arg(*development);
    }
    return integerValue(note, u"DynamicRangeSetting"_s) == 0 ? Text(u"DR Auto"_s) : std::nullopt;
}

/// The camera stores -16 a step: the sign is turned so that a brighter curve reads positive.
Text tone(std::optional<qint64> value)
{
    constexpr double step = -0.0625;
    if (!value || *value == 0) {
        return std::nullopt;
    }
    const double steps = static_cast<double>(*value) * step;
    const int decimals = steps == std::trunc(steps) ? 0 : 2;
    return (steps > 0 ? u"+"_s : u""_s) + decimalText(steps, decimals);
}

Text grain(const PropertyDictionary &note)
{
    auto roughness = integerValue(note, u"GrainEffectRoughness"_s);
    if (!roughness) {
        roughness = integerValue(note, u"GrainEffect"_s); // so it is called for older cameras
    }
    const auto strength = lookUp(strengths(), roughness);
    const auto size = lookUp(grainSizes(), integerValue(note, u"GrainEffectSize"_s));
    return strength && size ? *strength + u'/' + *size : strength;
}

/// One colour's shift; the camera stores 20 a step.
QString shift(QChar colour, qint64 stored)
{
    const qint64 steps = stored / 20;
    return colour + (steps > 0 ? u"+"_s : u""_s) + QString::number(steps);
}

Text whiteBalanceShift(const PropertyDictionary &note)
{
    const auto fineTune = integerList(note, u"WhiteBalanceFineTune"_s);
    if (!fineTune || fineTune->size() != 2 || *fineTune == QList<qint64>{0, 0}) {
        return std::nullopt;
    }
    return shift(u'R', fineTune->at(0)) + u' ' + shift(u'B', fineTune->at(1));
}

} // namespace

std::optional<FujiSettings> FujiMakerNote::parse(const PropertyDictionary &properties)
{
    const auto note = dictionary(properties, u"{MakerFuji}"_s);
    if (!note) {
        return std::nullopt;
    }
    const FujiSettings settings = {
        .filmSimulation = filmSimulation(*note),
        .dynamicRange = dynamicRange(*note),
        .whiteBalanceShift = whiteBalanceShift(*note),
        .highlightTone = tone(integerValue(*note, u"HighlightTone"_s)),
        .shadowTone = tone(integerValue(*note, u"ShadowTone"_s)),
        .grain = grain(*note),
        .colorChrome = lookUp(strengths(), integerValue(*note, u"ColorChromeEffect"_s)),
        .colorChromeBlue = lookUp(strengths(), integerValue(*note, u"ColorChromeFXBlue"_s)),
    };
    return settings == FujiSettings() ? std::nullopt : std::optional(settings);
}
