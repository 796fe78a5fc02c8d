// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/store/SessionSnapshot.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <set>

/// Follows a JSON document as it is parsed and keeps the fields of a snapshot, nothing else: memory
/// grows with the rejected ids, whatever else the document holds. (A document in memory, such as
/// QJsonDocument, takes more than 2 GiB for 64 MiB of small objects.)
class SnapshotReader : public nlohmann::json_sax<nlohmann::json> {
public:
    /// Absent unless the document ended well and had every field in its type. Of fields that come
    /// twice, the last one counts.
    [[nodiscard]] std::optional<SessionSnapshot> snapshot() &&;

    // What the parser calls. False stops it.
    bool null() override;
    bool boolean(bool value) override;
    bool number_integer(number_integer_t value) override;
    bool number_unsigned(number_unsigned_t value) override;
    bool number_float(number_float_t value, const string_t &text) override;
    bool string(string_t &value) override;
    bool binary(binary_t &value) override;
    bool key(string_t &name) override;
    bool start_object(std::size_t elements) override;
    bool end_object() override;
    bool start_array(std::size_t elements) override;
    bool end_array() override;
    bool parse_error(std::size_t position, const std::string &token,
                     const nlohmann::detail::exception &error) override;

private:
    enum class Field { volumeUUID, inventoryHash, rejectedIDs, currentIndex, savedAt };

    bool takeIndex(std::optional<qint64> index);
    bool takeMisfit();
    bool enter();

    int m_depth = 0;                   ///< how many objects and arrays are open
    std::optional<Field> m_field = {}; ///< whose value comes next, or is open
    std::set<Field> m_present = {};    ///< the fields that have a value of their type
    SessionSnapshot m_snapshot = {};
};
