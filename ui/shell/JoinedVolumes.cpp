// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/JoinedVolumes.h"

JoinedVolumes::JoinedVolumes(std::vector<std::unique_ptr<MountedVolumes>> sources, QObject *parent)
    : MountedVolumes(parent)
    , m_sources(std::move(sources))
{
    for (const auto &source : m_sources) {
        connect(source.get(), &MountedVolumes::changed, this, &MountedVolumes::changed);
    }
}

QList<MountedVolume> JoinedVolumes::volumes() const
{
    QList<MountedVolume> all;
    for (const auto &source : m_sources) {
        all.append(source->volumes());
    }
    return all;
}
