// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <filesystem>
#include <optional>

/// The right to read and delete the files of a card. Safe from several threads; isReadable(),
/// resolveBookmark() and root() block on the card and are never called on the main thread.
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

    /// Where the files of the card are that is mounted at @p volumeURL and accessed by @p granted.
    [[nodiscard]] virtual std::filesystem::path
    root(const std::filesystem::path &volumeURL, const std::filesystem::path &granted) const = 0;

    /// Ends an access that resolveBookmark() or the user opened.
    virtual void stopAccess(const std::filesystem::path &url) = 0;

protected:
    CardAccess() = default;
    CardAccess(const CardAccess &) = default;
    CardAccess &operator=(const CardAccess &) = default;
};
