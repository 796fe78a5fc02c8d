// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/painting/Canvas.h"
#include "demo/painting/View.h"

/// The places the sample photographer went to. Each paints the light that reaches the camera;
/// what film and exposure make of it is Development's business. Pure and safe from any thread.
namespace Scenes {

[[nodiscard]] Canvas mistyRidges(const View &view);
[[nodiscard]] Canvas balloons(const View &view);
[[nodiscard]] Canvas alps(const View &view);
[[nodiscard]] Canvas dunes(const View &view);
[[nodiscard]] Canvas sea(const View &view);
[[nodiscard]] Canvas lake(const View &view);
[[nodiscard]] Canvas forest(const View &view);
[[nodiscard]] Canvas cityNight(const View &view);
[[nodiscard]] Canvas rainStreet(const View &view);
[[nodiscard]] Canvas flower(const View &view);
[[nodiscard]] Canvas portrait(const View &view);
[[nodiscard]] Canvas winterTree(const View &view);
[[nodiscard]] Canvas milkyWay(const View &view);
[[nodiscard]] Canvas aurora(const View &view);
[[nodiscard]] Canvas rainyWindow(const View &view);
[[nodiscard]] Canvas lightTrails(const View &view);
[[nodiscard]] Canvas moon(const View &view);
[[nodiscard]] Canvas longExposure(const View &view);
[[nodiscard]] Canvas hills(const View &view);

} // namespace Scenes
