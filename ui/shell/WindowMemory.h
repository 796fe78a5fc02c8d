// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/settings/UserDefaults.h"

#include <QObject>
#include <QQuickWindow>
#include <QSize>
#include <QTimer>
#include <QVariantMap>

/// Remembers in the user defaults how large the main window is, and whether it is maximised. Where
/// it stands is the desktop's affair. Main thread only.
class WindowMemory : public QObject {
    Q_OBJECT

public:
    explicit WindowMemory(UserDefaults &defaults, QObject *parent = nullptr);

    /// Properties to make the window with: the size last seen, as far as @p available has room for
    /// it, and never less than @p minimum. None when nothing is remembered.
    [[nodiscard]] QVariantMap properties(QSize available, QSize minimum) const;

    /// Remembers from now on what becomes of @p window.
    void follow(QQuickWindow *window);

    /// Whether the window was maximised when it was last neither minimised nor on the full screen.
    [[nodiscard]] bool isMaximised() const { return m_seen == QWindow::Maximized; }

private:
    void note();
    void write();

    UserDefaults &m_defaults;
    QQuickWindow *m_window = nullptr;
    QSize m_size; ///< of the window when it is neither maximised nor on the full screen
    QWindow::Visibility m_seen = QWindow::Windowed;
    QByteArray m_written;
    QTimer m_delay;
};
