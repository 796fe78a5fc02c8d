// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/volumes/MountedVolumes.h"

MountedVolumes::MountedVolumes(QObject *parent)
    : QObject(parent)
{
}
