// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/MountedVolume.h"

#include <QList>
#include <QObject>

/// The desktop's mounted volumes. Lives on the main thread and never blocks it.
class MountedVolumes : public QObject {
    Q_OBJECT

public:
    /// What is known now, in the kernel's mount order, each mount point an entry of its own. Empty
    /// until the desktop has answered for the first time, and while it has no such service.
    [[nodiscard]] virtual QList<MountedVolume> volumes() const = 0;

Q_SIGNALS:
    /// After any mount, unmount or rename, and once when the first answer has arrived. A volume
    /// that was exchanged for another at the same mount point is first reported as gone.
    void changed();

protected:
    explicit MountedVolumes(QObject *parent = nullptr);
};
