// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/PlannedShot.h"

#include "demo/scenes/Scenes.h"

using namespace Qt::StringLiterals;

constexpr FilmLook provia{.dynamicRange = 100};
constexpr FilmLook velvia{.filmMode = 0x200,
                          .dynamicRange = 200,
                          .highlightTone = 16,
                          .colorChrome = 0x20,
                          .colorChromeBlue = 0x40};
constexpr FilmLook astia{.filmMode = 0x300, .dynamicRange = 0, .shadowTone = 16};
constexpr FilmLook classicChrome{.filmMode = 0x600,
                                 .dynamicRange = 400,
                                 .shadowTone = -16,
                                 .highlightTone = 24,
                                 .grainRoughness = 0x20,
                                 .grainSize = 0x10,
                                 .colorChrome = 0x40,
                                 .shiftRed = 40,
                                 .shiftBlue = -60};
constexpr FilmLook classicNegative{.filmMode = 0x800,
                                   .dynamicRange = 400,
                                   .shadowTone = -8,
                                   .highlightTone = -8,
                                   .grainRoughness = 0x40,
                                   .grainSize = 0x20,
                                   .colorChrome = 0x40,
                                   .colorChromeBlue = 0x20,
                                   .shiftRed = 20,
                                   .shiftBlue = -20};
constexpr FilmLook eterna{.filmMode = 0x700, .dynamicRange = 200, .shadowTone = 32};
constexpr FilmLook nostalgic{.filmMode = 0xA00,
                             .dynamicRange = 400,
                             .grainRoughness = 0x20,
                             .grainSize = 0x20,
                             .shiftRed = 60,
                             .shiftBlue = -80};
constexpr FilmLook acros{.filmMode = 0,
                         .saturation = 0x500,
                         .dynamicRange = 200,
                         .shadowTone = -32,
                         .highlightTone = -16,
                         .grainRoughness = 0x40,
                         .grainSize = 0x10};
constexpr FilmLook acrosRed{.filmMode = 0,
                            .saturation = 0x501,
                            .dynamicRange = 200,
                            .shadowTone = -32,
                            .highlightTone = -32,
                            .grainRoughness = 0x40,
                            .grainSize = 0x20};

// What a look does to the picture; the codes alone would not be seen.
static Development developmentOf(const FilmLook &look)
{
    Development d;
    switch (look.filmMode) {
    case 0x200:
        d.saturation = 1.22F;
        d.contrast = 1.1F;
        break;
    case 0x300:
        d.saturation = 1.05F;
        d.contrast = 0.95F;
        break;
    case 0x600:
        d.saturation = 0.82F;
        d.contrast = 1.12F;
        break;
    case 0x700:
        d.saturation = 0.78F;
        d.contrast = 0.9F;
        break;
    case 0x800:
        d.saturation = 0.92F;
        d.contrast = 1.14F;
        break;
    case 0xA00:
        d.saturation = 0.92F;
        d.warmth = 0.3F;
        break;
    default:
        break;
    }
    if (look.saturation != 0) {
        d.monochrome = true;
        d.contrast = look.saturation == 0x501 ? 1.28F : 1.16F;
    }
    d.warmth += 0.004F * static_cast<float>(look.shiftRed);
    d.grain = look.grainRoughness == 0x40 ? 1.7F : look.grainRoughness == 0x20 ? 1.15F : 0.7F;
    return d;
}

struct Lens {
    const char *name;
    double focalLength;
};

constexpr Lens wide{"XF10-24mmF4 R OIS WR", 14};
constexpr Lens zoom{"XF16-55mmF2.8 R LM WR", 31.5};
constexpr Lens normal{"XF35mmF1.4 R", 35};
constexpr Lens portraitLens{"XF56mmF1.2 R WR", 56};
constexpr Lens macro{"XF80mmF2.8 R LM OIS WR Macro", 80};
constexpr Lens tele{"XF100-400mmF4.5-5.6 R LM OIS WR", 400};

// A shot in a few words; what is not said keeps its default.
static PlannedShot shot(Canvas (*scene)(const View &), float moment, uint32_t place,
                        const FilmLook &look, const Lens &lens, double aperture, double exposure,
                        int iso, const QDateTime &captured)
{
    PlannedShot result;
    result.scene = scene;
    result.moment = moment;
    result.place = place;
    result.development = developmentOf(look);
    result.settings.look = look;
    result.settings.lens = lens.name;
    result.settings.focalLength = lens.focalLength;
    result.settings.aperture = aperture;
    result.settings.exposureTime = exposure;
    result.settings.iso = iso;
    result.settings.captured = captured;
    return result;
}

static PlannedShot held(PlannedShot shot, int orientation)
{
    shot.turned = orientation;
    return shot;
}

static PlannedShot withRaw(PlannedShot shot)
{
    shot.raw = true;
    return shot;
}

static PlannedShot asHeif(PlannedShot shot)
{
    shot.heif = true;
    shot.size = 2.0F / 3; // HEVC takes its time
    return shot;
}

static PlannedShot focused(PlannedShot shot, float x, float y)
{
    shot.subjectX = x;
    shot.subjectY = y;
    return shot;
}

static PlannedShot missed(PlannedShot shot, float softness)
{
    shot.development.softness = softness;
    return shot;
}

static PlannedShot shaken(PlannedShot shot, float shake)
{
    shot.development.shake = shake;
    return shot;
}

static PlannedShot exposed(PlannedShot shot, float factor)
{
    shot.development.exposure *= factor;
    return shot;
}

static PlannedShot inBurst(PlannedShot shot, int burst, float x, float y, int seconds)
{
    shot.burst = burst;
    shot.shiftX = x;
    shot.shiftY = y;
    shot.settings.captured = shot.settings.captured.addSecs(seconds);
    return shot;
}

std::vector<PlannedShot> PlannedShot::all(uint32_t seed)
{
    using namespace Scenes;
    const auto at = [](int day, int hour, int minute) {
        return QDateTime(QDate(2025, 10, day), QTime(hour, minute, 12 + minute % 40), Qt::UTC);
    };
    const uint32_t s = seed * 100;
    const auto dawn =
        shot(mistyRidges, 0.15F, s + 1, nostalgic, zoom, 8, 1.0 / 60, 160, at(11, 6, 52));
    const auto daisy = focused(
        shot(flower, 0, s + 3, astia, macro, 2.8, 1.0 / 500, 125, at(11, 10, 14)), 0.42F, 0.43F);
    const auto sunset = shot(sea, 2, s + 4, velvia, zoom, 8, 1.0 / 320, 125, at(11, 18, 21));
    const auto face = focused(shot(portrait, 0, s + 5, classicNegative, portraitLens, 1.2,
                                   1.0 / 2000, 160, at(12, 17, 44)),
                              0.62F, 0.42F);
    const auto walk = focused(
        shot(rainStreet, 0, s + 6, classicNegative, normal, 1.4, 1.0 / 125, 1600, at(12, 20, 31)),
        0.39F, 0.6F);

    return {
        withRaw(inBurst(dawn, 1, 0, 0, 0)),
        inBurst(dawn, 1, 0.9F, -0.5F, 2),
        shaken(inBurst(dawn, 1, -0.8F, 0.6F, 3), 14),
        withRaw(shot(mistyRidges, 0.9F, s + 1, provia, zoom, 8, 1.0 / 180, 160, at(11, 7, 40))),
        withRaw(shot(balloons, 0.7F, s + 2, velvia, zoom, 5.6, 1.0 / 500, 160, at(11, 7, 58))),
        held(shot(forest, 0, s + 7, eterna, zoom, 4, 1.0 / 90, 400, at(11, 8, 35)), 8),
        withRaw(shot(forest, 0, s + 8, provia, wide, 5.6, 1.0 / 60, 400, at(11, 8, 41))),
        inBurst(daisy, 2, 0, 0, 0),
        withRaw(inBurst(daisy, 2, 1.1F, 0.4F, 1)),
        missed(inBurst(daisy, 2, -0.7F, 1.2F, 2), 22),
        held(focused(shot(flower, 2, s + 9, velvia, macro, 3.2, 1.0 / 640, 125, at(11, 10, 38)),
                     0.6F, 0.43F),
             6),
        focused(shot(flower, 1, s + 10, classicChrome, macro, 4, 1.0 / 250, 200, at(11, 10, 52)),
                0.56F, 0.43F),
        withRaw(shot(hills, 0, s + 11, classicChrome, zoom, 8, 1.0 / 250, 125, at(11, 16, 12))),
        exposed(shot(hills, 0, s + 12, provia, zoom, 8, 1.0 / 30, 125, at(11, 16, 14)), 5.5F),
        withRaw(inBurst(sunset, 3, 0, 0, 0)),
        inBurst(sunset, 3, 1.0F, 0.2F, 1),
        inBurst(sunset, 3, 1.3F, -0.9F, 2),
        exposed(inBurst(sunset, 3, -1.0F, 0.5F, 40), 0.14F),
        shot(sea, 12, s + 4, eterna, zoom, 5.6, 2.5, 160, at(11, 18, 58)),
        held(withRaw(shot(milkyWay, 0, s + 13, provia, wide, 4, 20, 3200, at(11, 23, 26))), 8),
        shot(milkyWay, 0, s + 14, classicChrome, wide, 4, 25, 3200, at(11, 23, 41)),
        shot(moon, 0, s + 15, provia, tele, 8, 1.0 / 250, 200, at(11, 23, 59)),
        withRaw(shot(lake, 0, s + 16, velvia, wide, 8, 1.0 / 125, 160, at(12, 7, 31))),
        shot(lake, 0, s + 17, provia, zoom, 8, 1.0 / 160, 160, at(12, 7, 44)),
        withRaw(shot(alps, 0, s + 18, provia, zoom, 8, 1.0 / 400, 125, at(12, 11, 5))),
        shot(alps, 0, s + 19, acrosRed, zoom, 8, 1.0 / 350, 160, at(12, 11, 9)),
        missed(shot(alps, 0, s + 20, provia, zoom, 8, 1.0 / 400, 125, at(12, 11, 10)), 11),
        shot(sea, 22, s + 21, acros, zoom, 11, 1.0 / 1000, 160, at(12, 13, 27)),
        shot(longExposure, 0, s + 22, acros, wide, 11, 120, 160, at(12, 14, 2)),
        withRaw(shot(dunes, 0, s + 23, nostalgic, zoom, 8, 1.0 / 250, 125, at(12, 16, 48))),
        held(shot(dunes, 0, s + 24, classicChrome, zoom, 8, 1.0 / 200, 125, at(12, 16, 55)), 6),
        shot(dunes, 1, s + 23, astia, zoom, 5.6, 1.0 / 30, 200, at(12, 17, 30)),
        held(withRaw(inBurst(face, 4, 0, 0, 0)), 8),
        held(inBurst(face, 4, 0.8F, -0.6F, 1), 8),
        shot(alps, 1, s + 18, velvia, zoom, 8, 1.0 / 60, 160, at(12, 18, 2)),
        withRaw(shot(lightTrails, 0, s + 25, classicChrome, zoom, 11, 30, 160, at(12, 18, 52))),
        withRaw(
            shot(cityNight, 0, s + 26, classicNegative, zoom, 2.8, 1.0 / 15, 1250, at(12, 19, 40))),
        missed(shot(cityNight, 0, s + 26, provia, zoom, 2.8, 1.0 / 15, 1250, at(12, 19, 41)), 8),
        shot(cityNight, 1, s + 27, classicNegative, normal, 1.4, 1.0 / 125, 1600, at(12, 19, 50)),
        inBurst(walk, 5, 0, 0, 0),
        withRaw(inBurst(walk, 5, 1.2F, 0.5F, 1)),
        shaken(inBurst(walk, 5, -0.5F, 0.3F, 2), 20),
        shot(rainyWindow, 0, s + 28, classicNegative, normal, 2, 1.0 / 60, 1600, at(12, 21, 7)),
        exposed(shot(rainyWindow, 0, s + 29, provia, normal, 2, 1.0 / 500, 1600, at(12, 21, 9)),
                0.05F),
        withRaw(shot(aurora, 0, s + 30, provia, wide, 4, 8, 3200, at(13, 0, 34))),
        shot(aurora, 3, s + 31, velvia, wide, 4, 10, 3200, at(13, 0, 49)),
        shot(winterTree, 0, s + 32, eterna, normal, 8, 1.0 / 500, 160, at(13, 9, 18)),
        // Late in the walk, where a card made without them is walked through alike.
        asHeif(withRaw(shot(mistyRidges, 0.6F, s + 33, classicChrome, zoom, 8, 1.0 / 180, 160,
                            at(13, 9, 41)))),
        asHeif(held(shot(forest, 0, s + 34, nostalgic, zoom, 4, 1.0 / 90, 320, at(13, 10, 2)), 8)),
        asHeif(focused(shot(flower, 0, s + 35, velvia, macro, 2.8, 1.0 / 400, 125, at(13, 10, 17)),
                       0.42F, 0.43F)),
        asHeif(withRaw(shot(lake, 0, s + 36, provia, wide, 8, 1.0 / 125, 160, at(13, 10, 36)))),
    };
}
