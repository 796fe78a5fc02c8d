// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <type_traits>

/// The @p function of the module's @p table, called; without a table a null pointer, @p error, or
/// nothing at all.
template<auto error, typename Table, typename Result, typename... Parameters>
Result callModule(const Table *table, Result (*Table::*function)(Parameters...),
                  std::type_identity_t<Parameters>... arguments)
{
    if (table != nullptr) {
        return (table->*function)(arguments...);
    }
    if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
    } else if constexpr (!std::is_void_v<Result>) {
        return static_cast<Result>(error);
    }
}
