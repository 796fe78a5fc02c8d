// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/MountedVolumes.h"

/// Folders offered as if they were cards in a reader.
class SampleVolumes final : public MountedVolumes {
    Q_OBJECT

public:
    SampleVolumes()
        : MountedVolumes(nullptr)
    {
    }

    [[nodiscard]] QList<MountedVolume> volumes() const override { return m_volumes; }

    /// Puts in the sample card in @p folder and, where it is not empty, a second one.
    void mount(const std::filesystem::path &folder, const std::filesystem::path &secondFolder);

private:
    QList<MountedVolume> m_volumes;
};
