// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <random>
#include <vector>

/// Chance that is the same on every machine for the same seed.
class Dice {
public:
    explicit Dice(quint64 seed)
        : m_engine(seed)
    {
    }

    [[nodiscard]] int below(int limit)
    {
        return static_cast<int>(m_engine() % static_cast<quint64>(limit));
    }

    [[nodiscard]] int between(int first, int last) { return first + below(last - first + 1); }

    [[nodiscard]] bool oneIn(int count) { return below(count) == 0; }

    /// Out of some that there are.
    template<typename Value>
    [[nodiscard]] const Value &oneOf(const std::vector<Value> &values)
    {
        return values[static_cast<size_t>(below(static_cast<int>(values.size())))];
    }

    /// An index, the likelier the greater its weight; one weight is above 0.
    [[nodiscard]] size_t weighted(const std::vector<int> &weights)
    {
        int total = 0;
        for (const int weight : weights) {
            total += weight;
        }
        int left = below(total);
        size_t index = 0;
        while (left >= weights[index]) {
            left -= weights[index++];
        }
        return index;
    }

private:
    std::mt19937_64 m_engine; ///< whose numbers the standard prescribes
};
