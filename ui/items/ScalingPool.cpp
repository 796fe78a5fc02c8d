// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/ScalingPool.h"

/// One picture is looked at, at a time; the other processors have pictures to decode.
static constexpr int copiesAtOnce = 1;

ScalingPool::ScalingPool(QObject *parent)
    : QThreadPool(parent)
{
    setMaxThreadCount(copiesAtOnce);
}
