// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/IntegralNumber.h"

#include <charconv>
#include <string>

template<typename Integer>
static std::optional<Integer> parsed(std::string_view text)
{
    Integer value = 0;
    const auto *end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && last == end ? std::optional(value) : std::nullopt;
}

/// The power of ten that follows the digits; an exponent's plus sign means nothing.
static std::optional<qint64> exponentOf(std::string_view text)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    return text.empty() ? 0 : parsed<int>(text);
}

std::optional<qint64> integralNumber(std::string_view number)
{
    constexpr std::size_t longest = 19; // digits of a 64-bit integer
    constexpr std::string_view decimal = "0123456789";

    const bool isNegative = number.starts_with('-');
    number.remove_prefix(isNegative ? 1 : 0);
    const auto mantissa = number.substr(0, number.find_first_of("eE"));
    const auto whole = mantissa.substr(0, mantissa.find_first_not_of(decimal));
    const auto fraction = mantissa.substr(std::min(whole.size() + 1, mantissa.size()));

    auto digits = std::string(whole).append(fraction);
    if (digits.empty() || digits.find_first_not_of(decimal) != std::string::npos) {
        return std::nullopt;
    }
    digits.erase(0, digits.find_first_not_of('0'));
    if (digits.empty()) {
        return 0; // whatever the exponent
    }
    const auto significant = digits.find_last_not_of('0') + 1;
    const auto exponent = exponentOf(number.substr(std::min(mantissa.size() + 1, number.size())));
    if (!exponent || significant > longest) {
        return std::nullopt;
    }
    const auto zeros = *exponent - static_cast<qint64>(fraction.size()) +
                       static_cast<qint64>(digits.size() - significant);
    if (zeros < 0 || zeros > static_cast<qint64>(longest - significant)) {
        return std::nullopt;
    }
    digits.resize(significant);
    digits.append(static_cast<std::size_t>(zeros), '0');
    return parsed<qint64>(isNegative ? '-' + digits : digits);
}
