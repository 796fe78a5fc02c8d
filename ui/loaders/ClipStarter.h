// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/loaders/ItemLoader.h"

/// Has the clip of its item played, once both properties are set, and of each item that comes in
/// its place. What ends it is the controller's business. Main thread only.
class ClipStarter : public ItemLoader {
    Q_OBJECT

public:
    explicit ClipStarter(QObject *parent = nullptr);

private:
    QCoro::Task<> load(MediaItem item) override;
};
