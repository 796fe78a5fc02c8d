// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/loaders/ItemLoader.h"

/// Has the clip of its item played, once both properties are set, and of each item that comes in
/// its place. What ends it is the controller's business. Main thread only.
class ClipStarter : public ItemLoader {
    Q_OBJECT
    Q_PROPERTY(bool shown MEMBER m_isShown REQUIRED)

public:
    explicit ClipStarter(QObject *parent = nullptr);

private:
    QCoro::Task<> load(MediaItem item) override;

    bool m_isShown = false; ///< whether the view is in a window, and not about to go
};
