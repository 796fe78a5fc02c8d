// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <optional>

/// A folder that the desktop granted to a sandboxed program: the documents portal shows it at
/// ".../doc/<document>/<name of the folder>". Pure functions over values; nothing here looks at the
/// file system.
struct DocumentGrant {
    QString document = {};           ///< the portal's id: up to eight lower-case hexadecimal digits
    std::filesystem::path path = {}; ///< the folder granted, or one below it; absolute

    /// The grant that made @p path accessible, told by the form of the path alone; absent when it
    /// is of another form, so that it was granted in another way.
    [[nodiscard]] static std::optional<DocumentGrant> ofPath(const std::filesystem::path &path);

    /// A compact JSON object (RFC 8259); the place in it is percent-encoded (RFC 3986), as it need
    /// not be text.
    [[nodiscard]] QByteArray data() const;

    /// The grant in @p data; absent when it is none, or not exactly as data() writes it but for
    /// white space and the order of the members.
    [[nodiscard]] static std::optional<DocumentGrant> from(const QByteArray &data);

    /// The same document where the documents portal is mounted at @p mountPoint, usually
    /// "/run/user/<user's number>/doc" or "/run/flatpak/doc"; absent when that is no such place.
    [[nodiscard]] std::optional<DocumentGrant>
    renewed(const std::filesystem::path &mountPoint) const;

    bool operator==(const DocumentGrant &) const = default;
};
