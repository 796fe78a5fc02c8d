// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/MountedVolumes.h"

#include <memory>
#include <vector>

/// Several sources of volumes as one, in the order given.
class JoinedVolumes : public MountedVolumes {
    Q_OBJECT

public:
    explicit JoinedVolumes(std::vector<std::unique_ptr<MountedVolumes>> sources,
                           QObject *parent = nullptr);

    [[nodiscard]] QList<MountedVolume> volumes() const override;

private:
    std::vector<std::unique_ptr<MountedVolumes>> m_sources;
};
