// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/KeyMonitor.h"

#include "ui/shell/LatinKey.h"

#include <QKeyEvent>
#include <QWindow>

KeyMonitor::KeyMonitor(Answers answers, QObject *parent)
    : QObject(parent)
    , m_answers(std::move(answers))
{
}

void KeyMonitor::install(QWindow *window)
{
    if (m_window) {
        return;
    }
    m_window = window;
    window->installEventFilter(this);
}

static quint16 keyCodeOf(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return KeyPress::Return;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return KeyPress::Tab;
    case Qt::Key_Space:
        return KeyPress::Space;
    case Qt::Key_Escape:
        return KeyPress::Escape;
    case Qt::Key_Left:
        return KeyPress::Left;
    case Qt::Key_Right:
        return KeyPress::Right;
    case Qt::Key_Down:
        return KeyPress::Down;
    case Qt::Key_Up:
        return KeyPress::Up;
    default:
        return KeyPress::None;
    }
}

KeyPress KeyMonitor::keyPressOf(const QKeyEvent &event)
{
    const QChar letter = latinKey(event.key(), event.nativeScanCode());
    return {.chars = letter.isNull() ? event.text().toLower() : QString(letter),
            .keyCode = keyCodeOf(event.key()),
            .command = event.modifiers().testFlag(Qt::ControlModifier)};
}

/// Shift may change what a key is called between press and release; its place stays.
static quint32 identityOf(const QKeyEvent &event)
{
    return event.nativeScanCode() != 0 ? event.nativeScanCode() : quint32(event.key());
}

bool KeyMonitor::isConsumed(const QKeyEvent &event)
{
    const bool isPopupOpen = m_answers.isPopupOpen();
    // A chord stays one when its modifier is let go first.
    constexpr auto chordModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const auto chord = quint64((event.modifiers() & chordModifiers).toInt());
    const auto situation = m_answers.situation() * 2 + (isPopupOpen ? 1 : 0) + chord;
    if (event.isAutoRepeat()) {
        const auto down = m_down.constFind(identityOf(event));
        if (down == m_down.cend() || *down != situation) {
            m_down.remove(identityOf(event)); // also when the situation comes back
            return true;
        }
    } else {
        m_down.insert(identityOf(event), situation);
    }
    if (isPopupOpen || event.modifiers().testAnyFlags(Qt::AltModifier | Qt::MetaModifier)) {
        return false;
    }
    return m_answers.handleKey(keyPressOf(event));
}

bool KeyMonitor::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_window) {
        return false;
    }
    switch (event->type()) {
    case QEvent::KeyPress:
        return isConsumed(*static_cast<QKeyEvent *>(event));
    case QEvent::KeyRelease:
        if (const auto &key = *static_cast<QKeyEvent *>(event); !key.isAutoRepeat()) {
            m_down.remove(identityOf(key));
        }
        return false;
    case QEvent::FocusOut:
        // The release will go to another window.
        m_down.clear();
        return false;
    default:
        return false;
    }
}
