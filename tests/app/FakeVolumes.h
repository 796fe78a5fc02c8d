// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/MountedVolumes.h"

/// Volumes as a test says.
class FakeVolumes final : public MountedVolumes {
public:
    explicit FakeVolumes(const QList<MountedVolume> &volumes = {})
        : MountedVolumes(nullptr)
        , m_volumes(volumes)
    {
    }

    [[nodiscard]] QList<MountedVolume> volumes() const override { return m_volumes; }

    void setVolumes(const QList<MountedVolume> &volumes)
    {
        m_volumes = volumes;
        Q_EMIT changed();
    }

    void mount(const std::filesystem::path &mountPoint, const QString &uuid, const QString &label)
    {
        m_volumes.append({.mountPoint = mountPoint,
                          .uuid = uuid,
                          .label = label,
                          .isRemovable = true,
                          .isEjectable = true});
        Q_EMIT changed();
    }

    void unmount(const std::filesystem::path &mountPoint)
    {
        m_volumes.removeIf(
            [&](const MountedVolume &volume) { return volume.mountPoint == mountPoint; });
        Q_EMIT changed();
    }

    void rename(const std::filesystem::path &mountPoint, const QString &label)
    {
        for (auto &volume : m_volumes) {
            if (volume.mountPoint == mountPoint) {
                volume.label = label;
            }
        }
        Q_EMIT changed();
    }

private:
    QList<MountedVolume> m_volumes;
};
