// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/MountedVolumes.h"

/// The folder of a sample card, offered as if it were a card in a reader.
class SampleVolume final : public MountedVolumes {
    Q_OBJECT

public:
    SampleVolume()
        : MountedVolumes(nullptr)
    {
    }

    [[nodiscard]] QList<MountedVolume> volumes() const override { return m_volumes; }

    /// Puts the card in.
    void mount(const std::filesystem::path &folder);

private:
    QList<MountedVolume> m_volumes;
};
