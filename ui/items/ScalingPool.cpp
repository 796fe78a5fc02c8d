// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/ScalingPool.h"

#include <QThread>

#include <algorithm>

/// The other processors have pictures to decode.
static int threads()
{
    return std::max(1, QThread::idealThreadCount() / 2);
}

ScalingPool::ScalingPool(QObject *parent)
    : QThreadPool(parent)
{
    setMaxThreadCount(threads());
}
