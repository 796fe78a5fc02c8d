// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QThreadPool>

class QQuickWindow;

/// Loads the libraries that the first frame does without, as soon as it is there and before anybody
/// needs them.
class LateLibraries {
public:
    LateLibraries() { m_pool.setMaxThreadCount(1); }

    /// Main thread, which is not held up.
    void loadAfterFirstFrameOf(QQuickWindow *window);

private:
    QThreadPool m_pool; ///< waited for in the end
};
