// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/DrawingsKeeper.h"

#include "platform/media/OpenGlFrames.h"
#include "platform/threads/Mailbox.h"

#include <QQuickOpenGLUtils>
#include <QQuickWindow>

#include <utility>

DrawingsKeeper *DrawingsKeeper::known(const QQuickWindow *window)
{
    return window->findChild<DrawingsKeeper *>({}, Qt::FindDirectChildrenOnly);
}

DrawingsKeeper *DrawingsKeeper::of(QQuickWindow *window)
{
    auto *const keeper = known(window);
    return keeper ? keeper : new DrawingsKeeper(window);
}

DrawingsKeeper::DrawingsKeeper(QQuickWindow *window)
    : QObject(window)
    , m_window(window)
    , m_mailbox(std::make_shared<Mailbox>(window))
{
    // Both with the window's context current, on the thread that draws.
    connect(window, &QQuickWindow::beforeRendering, this, &DrawingsKeeper::destroyLetGo,
            Qt::DirectConnection);
    connect(window, &QQuickWindow::sceneGraphInvalidated, this, &DrawingsKeeper::destroyAll,
            Qt::DirectConnection);
}

DrawingsKeeper::~DrawingsKeeper()
{
    m_mailbox->close();
}

void DrawingsKeeper::take(std::unique_ptr<OpenGlFrames> drawing)
{
    if (!drawing) {
        return;
    }
    auto isLetGo = std::make_shared<std::atomic<bool>>(false);
    const bool isHeld = drawing->isStillHeld([isLetGo, mailbox = m_mailbox, window = m_window] {
        *isLetGo = true;
        mailbox->post([window] { window->update(); }); // a frame destroys it
    });
    if (isHeld) {
        m_kept.push_back({std::move(drawing), std::move(isLetGo)});
        ++m_count;
    }
}

void DrawingsKeeper::destroyLetGo()
{
    const auto destroyed =
        std::erase_if(m_kept, [](const Kept &kept) { return kept.isLetGo->load(); });
    if (destroyed > 0) {
        m_count -= static_cast<int>(destroyed);
        QQuickOpenGLUtils::resetOpenGLState();
    }
}

void DrawingsKeeper::destroyAll()
{
    m_kept.clear();
    m_count = 0;
}
