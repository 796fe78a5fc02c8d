// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"
#include "platform/imageio/PropertyDictionary.h"

#include <optional>

/// Reads the properties of an image file of any kind we know. Blocks; safe from several threads.
namespace FileProperties {

/// See ImageSource::properties().
[[nodiscard]] std::optional<PropertyDictionary> read(const InputFile &file);

} // namespace FileProperties
