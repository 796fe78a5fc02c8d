// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/SampleVolume.h"

using namespace Qt::StringLiterals;

void SampleVolume::mount(const std::filesystem::path &folder)
{
    m_volumes = {{.mountPoint = folder,
                  .uuid = u"5A3D-4B1E"_s,
                  .label = u"SAMPLE CARD"_s,
                  .isRemovable = true,
                  .isEjectable = true}};
    Q_EMIT changed();
}
