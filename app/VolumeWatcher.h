// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

#include <filesystem>
#include <functional>
#include <vector>

class MountedVolumes;

/// Reports the mounted volumes that could be cards: local ones that are removable or ejectable.
/// Main thread only.
class VolumeWatcher {
public:
    using OnChange = std::function<void(const std::vector<std::filesystem::path> &urls)>;

    /// Reports once before it returns, and then after every change of @p volumes, which outlives
    /// the watcher.
    VolumeWatcher(const MountedVolumes &volumes, OnChange onChange);

    /// Reports what is mounted now, in the order of the mounts.
    void refresh() const;

private:
    const MountedVolumes &m_volumes;
    OnChange m_onChange;
    QObject m_connection; ///< ends with the watcher, and the reports with it
};
