// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/CardMark.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <unordered_set>

/// A mounted card whose root is held open, so that nothing else can take its place: whatever is
/// done acts on this very card, also when it has been pulled and another is mounted at its path.
///
/// Every path is relative to the root, goes through no link, to no other mount and never outside.
/// Holds descriptors on the card, which can then not be unmounted: one lives for the time of a scan
/// or a deletion, not longer. Blocks; one thread at a time.
class HeldCard {
public:
    enum class EntryKind {
        Directory,
        Other, ///< any existing entry that is not a directory
    };

    /// What a path names, or why that cannot be told.
    struct Lookup {
        std::optional<EntryKind> kind;
        std::error_code error;
    };

    HeldCard() = default;
    HeldCard(const HeldCard &) = delete;
    HeldCard &operator=(const HeldCard &) = delete;
    virtual ~HeldCard() = default;

    /// Whether @p path still leads to this card's root.
    [[nodiscard]] virtual bool isAt(const std::filesystem::path &path) const = 0;

    /// What this card is known again by when it is held anew.
    [[nodiscard]] virtual std::shared_ptr<const CardMark> mark() const = 0;

    /// Whether this is the card that @p mark was made of, and it has been mounted all the time, as
    /// far as the system can tell.
    [[nodiscard]] virtual bool bears(const CardMark &mark) const = 0;

    /// A link leads nowhere.
    [[nodiscard]] virtual Lookup lookUp(const std::filesystem::path &path) const = 0;

    /// Paths by their bytes: std::filesystem::path compares component by component, and each of
    /// thousands of files is looked for.
    using PathBytes = std::unordered_set<std::string>;

    /// Looks for a file to prove by that the card is there; none of @p doomed.
    virtual void chooseWitness(const PathBytes &doomed) = 0;

    /// An error when the card is not there any more. Reads a block from the medium itself, past
    /// every cache, for all else answers from memory when a card has been pulled. Without a file to
    /// read, or where that is not possible, a root on the same device as before counts as alive.
    /// A card once found dead stays dead.
    [[nodiscard]] virtual std::error_code proveAlive() = 0;

    /// Opens @p folder, so that files can be removed from it and it can be synced.
    [[nodiscard]] virtual std::error_code openFolder(const std::filesystem::path &folder) = 0;

    /// Removes the entry @p name itself (a link, not what it points to) from @p folder, which was
    /// opened before. Never a directory; never a file that is protected against removal, which is
    /// not permitted; nothing when the path of the folder leads to another one by now.
    [[nodiscard]] virtual std::error_code remove(const std::filesystem::path &folder,
                                                 const std::filesystem::path &name) = 0;

    /// Brings the entries of @p folder, which was opened before, onto the medium, and closes it.
    /// No error where the file system knows no such thing.
    [[nodiscard]] virtual std::error_code syncFolder(const std::filesystem::path &folder) = 0;

    /// Closes the folders that were opened and not synced.
    virtual void closeFolders() = 0;

    /// Brings the whole card onto the medium.
    [[nodiscard]] virtual std::error_code syncAll() = 0;
};
