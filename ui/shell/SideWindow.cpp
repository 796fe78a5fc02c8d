// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/SideWindow.h"

#include <QQmlComponent>
#include <QQmlEngine>

SideWindow::SideWindow(QQmlEngine &engine, QQuickWindow *main, const QUrl &source,
                       const QVariantMap &properties)
    : m_engine(engine)
    , m_main(main)
    , m_source(source)
    , m_properties(properties)
{
}

SideWindow::~SideWindow() = default;

void SideWindow::open(Focus focus)
{
    if (!m_window) {
        QQmlComponent component(&m_engine, m_source);
        auto *const made = component.createWithInitialProperties(m_properties);
        m_window.reset(qobject_cast<QQuickWindow *>(made));
        if (!m_window) {
            delete made;
            return;
        }
        // So it does not keep the program going alone, and stays before the main window.
        m_window->setTransientParent(m_main);
    }
    // What Qt looks at on X11; under Wayland the compositor decides who gets the keys.
    m_window->setProperty("_q_showWithoutActivating", focus == Focus::Left);
    m_window->show();
    if (focus == Focus::Taken) {
        m_window->raise();
        m_window->requestActivate();
    }
}

void SideWindow::hide()
{
    if (m_window) {
        m_window->hide();
    }
}
