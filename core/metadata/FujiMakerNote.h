// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/FujiSettings.h"
#include "platform/imageio/PropertyDictionary.h"

/// Puts the settings of Fujifilm's maker note into words.
namespace FujiMakerNote {

/// The settings in the dictionary "{MakerFuji}" of an image's @p properties, or nothing when there
/// is none or it says nothing that we know. Codes without a text, such as 0 for off, leave their
/// field absent. Pure.
[[nodiscard]] std::optional<FujiSettings> parse(const PropertyDictionary &properties);

} // namespace FujiMakerNote
