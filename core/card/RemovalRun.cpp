// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/RemovalRun.h"

#include "core/card/DeletionReasons.h"

#include <algorithm>

using namespace Qt::StringLiterals;

/// Folders held open at a time; far from the usual limit of 1024 descriptors, and cards of more
/// folders are worked off in groups.
constexpr size_t mostOpenFolders = 200;

static QString text(const std::error_code &error)
{
    return QString::fromStdString(error.message());
}

static bool saysNothingThere(const std::error_code &error)
{
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

/// So that a sibling volume whose name begins with the card's name stays outside.
static std::string withTrailingSeparator(std::string path)
{
    return path.ends_with('/') ? path : path + '/';
}

RemovalRun::RemovalRun(const std::vector<Location> &urls, const Location &volumeURL,
                       const FileManager &fileManager, const CardMark *scanned)
    : m_urls(urls)
    , m_fileManager(fileManager)
{
    m_card = fileManager.hold(volumeURL, m_death); // before all else: this card, and no later one
    const auto root = fileManager.resolvingSymlinks(volumeURL);
    m_rootPrefix = withTrailingSeparator(root.native());
    HeldCard::PathBytes doomed;
    for (const auto &url : urls) {
        m_targets.push_back(targetAt(url));
        const auto &target = m_targets.back();
        doomed.insert((target.folder / target.name).native());
        doomed.insert(target.path.native());
    }
    if (!m_card) {
        return;
    }
    // What was found or resolved on another card than the one held, must not be looked for on this.
    if (!m_card->isAt(root) || (scanned && !m_card->bears(*scanned))) {
        m_death = std::make_error_code(std::errc::no_such_device);
    }
    m_card->chooseWitness(doomed);
}

const RemovalRun::Location &RemovalRun::resolvedFolder(const Location &url)
{
    const auto parent = url.parent_path();
    auto folder = m_resolvedFolders.find(parent);
    if (folder == m_resolvedFolders.end()) {
        folder = m_resolvedFolders.emplace(parent, m_fileManager.resolvingSymlinks(parent)).first;
    }
    return folder->second;
}

RemovalRun::Target RemovalRun::targetAt(const Location &url)
{
    const auto &folder = resolvedFolder(url);
    const auto folderPrefix = withTrailingSeparator(folder.native());
    const auto name = url.filename();
    // In a folder that is resolved, only a link leads elsewhere; the whole way costs much more.
    const bool leadsElsewhere =
        name.empty() || name.native() == "." || name.native() == ".." || m_fileManager.isLink(url);
    const auto resolved = leadsElsewhere ? m_fileManager.resolvingSymlinks(url).native()
                                         : folderPrefix + name.native();
    // The folder, too: a link from elsewhere into the card does not lie on the card itself.
    Target target;
    if (!resolved.starts_with(m_rootPrefix) || !folderPrefix.starts_with(m_rootPrefix)) {
        target.reason = DeletionReasons::outsideCardVolume();
        return target;
    }
    auto relativeFolder = folderPrefix.substr(m_rootPrefix.size());
    if (!relativeFolder.empty()) {
        relativeFolder.pop_back();
    }
    target.isInside = true;
    target.path = resolved.substr(m_rootPrefix.size());
    target.folder = relativeFolder;
    target.name = name;
    return target;
}

DeleteResult RemovalRun::run(const Progress &progress, const std::stop_token &stop)
{
    const auto total = static_cast<qint64>(m_targets.size());
    for (size_t first = 0, end = 0; first < m_targets.size(); first = end) {
        openFolders(first, end);
        for (size_t index = first; index < end; ++index) {
            if (stop.stop_requested()) {
                fail(m_targets[index], std::make_error_code(std::errc::operation_canceled));
                continue;
            }
            judge(m_targets[index], stop);
            if (progress) {
                progress(static_cast<qint64>(index + 1), total);
            }
        }
        syncFolders(first, end);
    }
    syncCard();

    DeleteResult result;
    for (size_t index = 0; index < m_targets.size(); ++index) {
        const auto &target = m_targets[index];
        if (target.outcome == Outcome::Removed) {
            result.deleted.push_back(m_urls[index]);
        } else {
            result.failures.push_back({m_urls[index], target.reason});
        }
    }
    return result;
}

/// Opens the folders of the targets from @p first on, and the card's own as the last resort, before
/// anything is removed: only a descriptor from before tells the truth when it is synced.
void RemovalRun::openFolders(size_t first, size_t &end)
{
    m_openedFolders.clear();
    for (end = first; end < m_targets.size(); ++end) {
        const auto &target = m_targets[end];
        if (!target.isInside || !m_card || m_openedFolders.contains(target.folder)) {
            continue;
        }
        if (m_openedFolders.size() == mostOpenFolders) {
            break;
        }
        m_openedFolders.emplace(target.folder, m_card->openFolder(target.folder));
    }
    if (m_card && end > first && !m_openedFolders.contains(Location())) {
        m_openedFolders.emplace(Location(), m_card->openFolder({}));
    }
}

void RemovalRun::judge(Target &target, const std::stop_token &stop)
{
    if (!target.isInside) {
        return; // has its reason already
    }
    if (m_death) {
        fail(target, m_death);
        return;
    }
    const auto found = m_card->lookUp(target.path);
    if (found.error) {
        failOrNotFound(target, found.error);
    } else if (found.kind == HeldCard::EntryKind::Directory) {
        target.reason = DeletionReasons::notARegularFile();
    } else if (stop.stop_requested()) { // a card that hung may have taken long over the look
        fail(target, std::make_error_code(std::errc::operation_canceled));
    } else {
        removeFrom(target);
    }
}

void RemovalRun::removeFrom(Target &target)
{
    if (const auto notOpened = m_openedFolders.at(target.folder)) {
        failOrNotFound(target, notOpened);
    } else if (const auto error = m_card->remove(target.folder, target.name)) {
        failOrNotFound(target, error);
    } else {
        target.outcome = Outcome::Removed;
    }
}

void RemovalRun::fail(Target &target, const std::error_code &error)
{
    target.outcome = Outcome::Failed;
    target.reason = text(error);
}

/// "Nothing there" is also what a card that was pulled answers.
void RemovalRun::failOrNotFound(Target &target, const std::error_code &error)
{
    const auto death = proveAlive();
    if (!saysNothingThere(error)) {
        fail(target, error);
    } else if (death) {
        fail(target, death);
    } else {
        target.outcome = Outcome::NotFound;
        target.reason = DeletionReasons::fileNotFound();
    }
}

std::error_code RemovalRun::proveAlive()
{
    if (!m_death) {
        m_death = m_card->proveAlive();
    }
    return m_death;
}

/// Each folder once, and only those that something hangs on. What is not found hangs on it, too:
/// without a file to read it is the only proof that the card is there.
void RemovalRun::syncFolders(size_t first, size_t end)
{
    std::map<Location, std::error_code> synced;
    for (size_t index = first; index < end; ++index) {
        auto &target = m_targets[index];
        if (target.outcome == Outcome::Failed) {
            continue;
        }
        const auto folder = m_openedFolders.at(target.folder) ? Location() : target.folder;
        auto outcome = synced.find(folder);
        if (outcome == synced.end()) {
            outcome = synced.emplace(folder, syncFolder(folder)).first;
        }
        if (outcome->second) {
            fail(target, outcome->second);
            (void)proveAlive();
        }
    }
    if (m_card) {
        m_card->closeFolders();
    }
}

/// A file system may tell of an error once, whosever it was, and have forgotten it when the next
/// folder is synced: after the first error no yes counts.
std::error_code RemovalRun::syncFolder(const Location &folder)
{
    const auto notOpened = m_openedFolders.at(folder);
    const auto error = notOpened ? notOpened : m_card->syncFolder(folder);
    if (!m_syncError) {
        m_syncError = error;
    }
    return m_syncError;
}

/// The last word on the whole run: the card takes all of it, and is there when it has.
void RemovalRun::syncCard()
{
    const auto isFailed = [](const Target &target) { return target.outcome == Outcome::Failed; };
    if (std::ranges::all_of(m_targets, isFailed)) {
        return;
    }
    const auto error = m_card->syncAll();
    const auto death = proveAlive();
    for (auto &target : m_targets) {
        if (error && target.outcome == Outcome::Removed) {
            fail(target, error);
        } else if (death && !isFailed(target)) {
            fail(target, death);
        }
    }
}
