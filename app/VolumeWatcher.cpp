// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/VolumeWatcher.h"

#include "platform/volumes/MountedVolumes.h"

VolumeWatcher::VolumeWatcher(const MountedVolumes &volumes, OnChange onChange)
    : m_volumes(volumes)
    , m_onChange(std::move(onChange))
{
    QObject::connect(&volumes, &MountedVolumes::changed, &m_connection, [this] { refresh(); });
    refresh();
}

void VolumeWatcher::refresh() const
{
    std::vector<std::filesystem::path> urls;
    for (const auto &volume : m_volumes.volumes()) {
        if (volume.isLocal && (volume.isRemovable || volume.isEjectable)) {
            urls.push_back(volume.mountPoint);
        }
    }
    m_onChange(urls);
}
