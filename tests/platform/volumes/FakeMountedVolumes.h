// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/MountedVolumes.h"

/// A volume source that tells what a test hands it.
class FakeMountedVolumes final : public MountedVolumes {
public:
    explicit FakeMountedVolumes(const QList<MountedVolume> &volumes = {})
        : m_volumes(volumes)
    {
    }

    [[nodiscard]] QList<MountedVolume> volumes() const override { return m_volumes; }

    void setVolumes(const QList<MountedVolume> &volumes)
    {
        m_volumes = volumes;
        Q_EMIT changed();
    }

private:
    QList<MountedVolume> m_volumes;
};
