// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/MountedVolumes.h"

/// A folder that is taken for a card.
class OneVolume final : public MountedVolumes {
public:
    explicit OneVolume(const char *mountPoint)
        : MountedVolumes(nullptr)
    {
        m_volumes.append({.mountPoint = mountPoint,
                          .uuid = QStringLiteral("WALK"),
                          .label = QStringLiteral("WALK"),
                          .isRemovable = true});
    }

    [[nodiscard]] QList<MountedVolume> volumes() const override { return m_volumes; }

private:
    QList<MountedVolume> m_volumes;
};
