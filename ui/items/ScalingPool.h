// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QThreadPool>

/// Where the items of one window scale their bitmaps. Outlives them, so that none waits for its
/// own.
class ScalingPool : public QThreadPool {
    Q_OBJECT

public:
    explicit ScalingPool(QObject *parent = nullptr);
};
