// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/WindowMemory.h"

#include <QQuickWindow>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// While a window is dragged larger it has a hundred sizes.
constexpr auto writeDelay = 500ms;

WindowMemory::WindowMemory(UserDefaults &defaults, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
{
    m_delay.setSingleShot(true);
    connect(&m_delay, &QTimer::timeout, this, &WindowMemory::write);
}

/// "1200x800", with " maximised" behind it or nothing.
QVariantMap WindowMemory::properties(QSize available, QSize minimum) const
{
    const auto text = m_defaults.bytes(u"windowSize"_s).value_or(QByteArray());
    const auto words = text.split(' ');
    const auto numbers = words.first().split('x');
    QSize size(numbers.value(0).toInt(), numbers.value(1).toInt());
    if (size.isEmpty()) {
        return {};
    }
    if (!available.isEmpty()) {
        size = size.boundedTo(available);
    }
    size = size.expandedTo(minimum);
    QVariantMap properties{{u"width"_s, size.width()}, {u"height"_s, size.height()}};
    if (words.value(1) == "maximised") {
        properties.insert(u"visibility"_s, int(QWindow::Maximized));
    }
    return properties;
}

void WindowMemory::follow(QQuickWindow *window)
{
    m_window = window;
    m_size = window->size();
    connect(window, &QWindow::widthChanged, this, &WindowMemory::note);
    connect(window, &QWindow::heightChanged, this, &WindowMemory::note);
    connect(window, &QWindow::visibilityChanged, this, &WindowMemory::note);
    connect(window, &QObject::destroyed, &m_delay, &QTimer::stop);
}

void WindowMemory::note()
{
    const auto visibility = m_window->visibility();
    if (visibility == QWindow::Windowed || visibility == QWindow::Maximized) {
        // Its size is told before or after: only what has come to rest counts.
        m_seen = visibility;
        m_delay.start(writeDelay);
    } else if (visibility == QWindow::FullScreen) {
        m_delay.stop(); // what it has from now on is the screen's size
    } else if (visibility == QWindow::Hidden && m_delay.isActive()) {
        write(); // nothing more will come
    }
}

void WindowMemory::write()
{
    m_delay.stop();
    if (m_seen == QWindow::Windowed) {
        m_size = m_window->size();
    }
    auto text = QByteArray::number(m_size.width()) + 'x' + QByteArray::number(m_size.height());
    if (m_seen == QWindow::Maximized) {
        text += " maximised";
    }
    if (text != m_written) {
        m_written = text;
        m_defaults.setBytes(u"windowSize"_s, text);
    }
}
