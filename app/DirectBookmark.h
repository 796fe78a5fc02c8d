// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <optional>

/// What is remembered of a direct grant: a place, and the card that it was granted for.
struct DirectBookmark {
    std::filesystem::path url = {}; ///< absolute
    QString volumeUUID = {};

    /// A compact JSON object (RFC 8259); the place in it is percent-encoded (RFC 3986), as it need
    /// not be text.
    [[nodiscard]] QByteArray data() const;

    /// The bookmark in @p data; absent when it is none, or one of another form of access.
    [[nodiscard]] static std::optional<DirectBookmark> from(const QByteArray &data);

    bool operator==(const DirectBookmark &) const = default;
};
