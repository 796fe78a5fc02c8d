// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/ClipStarter.h"

ClipStarter::ClipStarter(QObject *parent)
    : ItemLoader(parent)
{
}

QCoro::Task<> ClipStarter::load(MediaItem item)
{
    // Not from within what the controller is telling: with the rest of it the view may go.
    const auto play = [this, item, begun = generation()] {
        if (appState() && m_isShown && begun == generation()) {
            appState()->playVideo(item);
        }
    };
    QMetaObject::invokeMethod(this, play, Qt::QueuedConnection);
    co_return;
}
