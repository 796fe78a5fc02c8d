// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/MemoryFiles.h"

#include "tests/app/walk/MemoryHeldCard.h"

using EntryKind = FileManager::EntryKind;
using Path = std::filesystem::path;

static const std::string dcim = "/DCIM";

std::vector<Path> MemoryFiles::regularFilesBelow(const Path &folder) const
{
    m_world.touchCard();
    const auto root = folder.parent_path().native();
    m_world.pass(WalkGate::scan(root));
    if (!m_world.mayRead(root)) {
        return {};
    }
    return m_world.read([&](const WalkWorld &facts) {
        std::vector<Path> files;
        const auto *mount = facts.mountAt(root);
        if (mount && facts.cards[mount->card].hasDcim) {
            for (const auto &[file, number] : facts.cards[mount->card].files) {
                files.push_back(folder / file);
            }
        }
        return files;
    });
}

std::optional<EntryKind> MemoryFiles::kindOf(const Path &path) const
{
    m_world.touchCard();
    const auto root = path.parent_path().native();
    const bool isDcim = m_world.read([&](const WalkWorld &facts) {
        const auto *mount = facts.mountAt(root);
        return mount && facts.cards[mount->card].hasDcim && path.filename() == "DCIM";
    });
    return isDcim ? std::optional(EntryKind::Directory) : std::nullopt;
}

bool MemoryFiles::isListable(const Path &folder) const
{
    m_world.touchCard();
    return m_world.mayRead(folder.native());
}

Path MemoryFiles::resolvingSymlinks(const Path &path) const
{
    return path.lexically_normal();
}

bool MemoryFiles::isLink(const Path & /*path*/) const
{
    return false;
}

std::optional<qint64> MemoryFiles::fileSize(const Path &path) const
{
    return numberOf(path) ? std::optional<qint64>(1) : std::nullopt;
}

bool MemoryFiles::isReadOnly(const Path &folder) const
{
    m_world.touchCard();
    return m_world.read([&](const WalkWorld &facts) {
        const auto *mount = facts.mountAt(folder.native());
        return mount && facts.cards[mount->card].isReadOnly;
    });
}

std::unique_ptr<HeldCard> MemoryFiles::hold(const Path &root, std::error_code &error) const
{
    m_world.touchCard();
    const auto life = m_world.read([&](const WalkWorld &facts) {
        const auto *mount = facts.mountAt(root.native());
        return mount ? std::optional(mount->life) : std::nullopt;
    });
    if (!life) {
        error = std::make_error_code(std::errc::no_such_file_or_directory);
        return nullptr;
    }
    return std::make_unique<MemoryHeldCard>(m_world, root.native(), *life);
}

std::optional<int> MemoryFiles::numberOf(const Path &path) const
{
    return m_world.read([&](const WalkWorld &facts) -> std::optional<int> {
        for (const auto &mount : facts.mounts) {
            const auto prefix = mount.path + dcim + '/';
            if (path.native().starts_with(prefix)) {
                const auto &files = facts.cards[mount.card].files;
                const auto file = files.find(path.native().substr(prefix.size()));
                return file != files.end() ? std::optional(file->second) : std::nullopt;
            }
        }
        return std::nullopt;
    });
}
