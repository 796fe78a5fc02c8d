// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"
#include "platform/imageio/PropertyDictionary.h"

#include <optional>

/// Reads the properties of the rarer formats through Exiv2: Canon's CRW, whose settings lie
/// scattered in records of their own, Minolta's MRW, and PNG. Blocks; safe from several threads.
namespace Exiv2Properties {

/// Nothing when Exiv2 cannot read the file. Reads it whole, up to 64 MiB.
[[nodiscard]] std::optional<PropertyDictionary> read(const InputFile &file);

} // namespace Exiv2Properties
