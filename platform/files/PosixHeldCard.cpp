// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/PosixHeldCard.h"

#include "platform/checks/Precondition.h"
#include "platform/files/OpenBeneath.h"
#include "platform/files/PosixCardMark.h"
#include "platform/files/SystemCall.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

static std::error_code lastError()
{
    return {errno, std::generic_category()};
}

FileDescriptor PosixHeldCard::openRoot(const std::filesystem::path &root, std::error_code &error)
{
    const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    FileDescriptor descriptor(::open(root.c_str(), flags | O_NOATIME));
    if (!descriptor.isOpen() && errno == EPERM) {
        descriptor = FileDescriptor(::open(root.c_str(), flags));
    }
    error = descriptor.isOpen() ? std::error_code() : lastError();
    return descriptor;
}

PosixHeldCard::PosixHeldCard(FileDescriptor root)
    : m_root(std::move(root))
    , m_identity(FolderIdentity::of(m_root.number()))
    , m_protection(m_root.number())
{
}

bool PosixHeldCard::isAt(const std::filesystem::path &path) const
{
    return m_identity && FolderIdentity::of(AT_FDCWD, path.c_str(), 0) == m_identity;
}

std::shared_ptr<const CardMark> PosixHeldCard::mark() const
{
    return std::make_shared<PosixCardMark>(m_root.number());
}

bool PosixHeldCard::bears(const CardMark &mark) const
{
    const auto *own = dynamic_cast<const PosixCardMark *>(&mark);
    return own && m_identity && own->isOf(*m_identity);
}

HeldCard::Lookup PosixHeldCard::lookUp(const std::filesystem::path &path) const
{
    const auto descriptor = openBeneath(m_root.number(), path, O_PATH | O_NOFOLLOW);
    struct stat status = {};
    if (!descriptor.isOpen() || ::fstat(descriptor.number(), &status) != 0) {
        return {.kind = {}, .error = lastError()};
    }
    if (S_ISLNK(status.st_mode)) { // links were resolved before: this one leads nowhere
        return {.kind = {}, .error = {ENOENT, std::generic_category()}};
    }
    return {.kind = S_ISDIR(status.st_mode) ? EntryKind::Directory : EntryKind::Other, .error = {}};
}

void PosixHeldCard::chooseWitness(const PathBytes &doomed)
{
    m_witness = LifeWitness::beneath(m_root.number(), [&doomed](const std::filesystem::path &path) {
        return !doomed.contains(path.native());
    });
}

std::error_code PosixHeldCard::proveAlive()
{
    if (m_death) {
        return m_death;
    }
    const auto statement = m_witness ? m_witness->ask() : LifeWitness::Statement{};
    if (statement.isProof) {
        m_death = statement.error;
    } else if (!m_identity || FolderIdentity::of(m_root.number()) != m_identity) {
        m_death = {ENODEV, std::generic_category()};
    }
    return m_death;
}

std::error_code PosixHeldCard::openFolder(const std::filesystem::path &folder)
{
    if (m_folders.contains(folder)) {
        return {};
    }
    auto descriptor = openBeneathForReading(m_root.number(), folder, O_DIRECTORY);
    if (!descriptor.isOpen()) {
        return lastError();
    }
    const auto identity = FolderIdentity::of(descriptor.number());
    if (!identity) {
        return lastError();
    }
    m_folders.emplace(folder, Folder{std::move(descriptor), *identity});
    return {};
}

std::error_code PosixHeldCard::remove(const std::filesystem::path &folder,
                                      const std::filesystem::path &name)
{
    const auto opened = m_folders.find(folder);
    precondition(opened != m_folders.end(), "a folder must be opened before a file leaves it");
    precondition(!name.has_parent_path(), "an entry is removed by its name");
    const auto now = openBeneath(m_root.number(), folder, O_PATH | O_DIRECTORY);
    if (!now.isOpen()) {
        return lastError();
    }
    const auto identity = FolderIdentity::of(now.number());
    if (!identity) {
        return lastError();
    }
    if (identity != opened->second.identity) {
        return {ESTALE, std::generic_category()};
    }
    if (m_protection.protects(now.number(), name)) {
        return {EPERM, std::generic_category()};
    }
    return ::unlinkat(now.number(), name.c_str(), 0) == 0 ? std::error_code() : lastError();
}

std::error_code PosixHeldCard::syncFolder(const std::filesystem::path &folder)
{
    auto opened = m_folders.extract(folder);
    precondition(!opened.empty(), "a folder must be opened before it is synced");
    // Only the first answer of a descriptor counts: a dead card may say yes to the second.
    if (::fsync(opened.mapped().descriptor.number()) != 0 && !isUnsupported(errno)) {
        return lastError();
    }
    return {};
}

void PosixHeldCard::closeFolders()
{
    m_folders.clear();
}

std::error_code PosixHeldCard::syncAll()
{
    return ::syncfs(m_root.number()) == 0 ? std::error_code() : lastError();
}
