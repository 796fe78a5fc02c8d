// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <filesystem>
#include <optional>

/// The right to read and delete the files of a card. Blocks on the card; safe from several
/// threads, and never called on the main thread except saveBookmark() and stopAccess().
class CardAccess {
public:
    virtual ~CardAccess() = default;

    /// Whether the folder's entries can be listed.
    [[nodiscard]] virtual bool isReadable(const std::filesystem::path &url) const = 0;

    /// Where the grant that was stored for the volume leads to, its access open and the caller's
    /// to stop. One that leads nowhere any more is forgotten.
    [[nodiscard]] virtual std::optional<std::filesystem::path>
    resolveBookmark(const QString &volumeUUID) = 0;

    /// Stores the grant of @p url for the volume.
    virtual void saveBookmark(const std::filesystem::path &url, const QString &volumeUUID) = 0;

    /// Asks the user for the folder @p directory of the card called @p name; absent when refused.
    [[nodiscard]] virtual std::optional<std::filesystem::path>
    requestAccess(const std::filesystem::path &directory, const QString &name) = 0;

    /// Ends an access that resolveBookmark() or requestAccess() opened.
    virtual void stopAccess(const std::filesystem::path &url) = 0;

protected:
    CardAccess() = default;
    CardAccess(const CardAccess &) = default;
    CardAccess &operator=(const CardAccess &) = default;
};
