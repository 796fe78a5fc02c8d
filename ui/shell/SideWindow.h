// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <QUrl>
#include <QVariantMap>

#include <memory>

class QQmlEngine;

/// A window beside the main one: made when it is first opened, brought to the front when it is
/// opened again, and closed with the main window.
class SideWindow {
public:
    enum class Focus {
        Taken, ///< the user asked for the window
        Left,  ///< it comes by itself, and the keys stay where they are
    };

    /// Of the component at @p source, given @p properties, for @p main; @p engine outlives it.
    SideWindow(QQmlEngine &engine, QQuickWindow *main, const QUrl &source,
               const QVariantMap &properties = {});
    ~SideWindow();

    void open(Focus focus = Focus::Taken);
    /// Out of sight, but not closed by the user.
    void hide();

    /// Nothing before it was first opened.
    [[nodiscard]] QQuickWindow *window() const { return m_window.get(); }

private:
    QQmlEngine &m_engine;
    QPointer<QQuickWindow> m_main;
    QUrl m_source;
    QVariantMap m_properties;
    std::unique_ptr<QQuickWindow> m_window;
};
