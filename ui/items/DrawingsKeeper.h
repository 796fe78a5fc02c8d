// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

#include <atomic>
#include <memory>
#include <vector>

class Mailbox;
class OpenGlFrames;
class QQuickWindow;

/// Keeps what has drawn a clip in a window until the clip has let go of it: whoever destroyed it
/// before would wait for the clip's decoder, and that with the main thread standing still.
class DrawingsKeeper : public QObject {
    Q_OBJECT

public:
    /// The one of @p window, which owns it. For the main thread.
    [[nodiscard]] static DrawingsKeeper *of(QQuickWindow *window);

    /// The same where there is one, else null. Also for the thread that draws, while the main
    /// thread waits for it.
    [[nodiscard]] static DrawingsKeeper *known(const QQuickWindow *window);

    ~DrawingsKeeper() override;

    /// Destroys @p drawing, which may be null, as soon as that does not wait. On the thread that
    /// draws.
    void take(std::unique_ptr<OpenGlFrames> drawing);

    /// How many are kept. For any thread.
    [[nodiscard]] int count() const { return m_count; }

private:
    struct Kept {
        std::unique_ptr<OpenGlFrames> drawing;
        std::shared_ptr<std::atomic<bool>> isLetGo;
    };

    explicit DrawingsKeeper(QQuickWindow *window);
    void destroyLetGo();
    void destroyAll();

    QQuickWindow *const m_window;
    const std::shared_ptr<Mailbox> m_mailbox;
    std::vector<Kept> m_kept; ///< of the thread that draws
    std::atomic<int> m_count = 0;
};
