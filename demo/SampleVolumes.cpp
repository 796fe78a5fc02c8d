// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/SampleVolumes.h"

using namespace Qt::StringLiterals;

static MountedVolume card(const std::filesystem::path &folder, const QString &uuid,
                          const QString &label)
{
    return {.mountPoint = folder,
            .uuid = uuid,
            .label = label,
            .isRemovable = true,
            .isEjectable = true};
}

void SampleVolumes::mount(const std::filesystem::path &folder,
                          const std::filesystem::path &secondFolder)
{
    m_volumes = {card(folder, u"5A3D-4B1E"_s, u"SAMPLE CARD"_s)};
    if (!secondFolder.empty()) {
        m_volumes.append(card(secondFolder, u"5A3D-4B1F"_s, u"SECOND CARD"_s));
    }
    Q_EMIT changed();
}
