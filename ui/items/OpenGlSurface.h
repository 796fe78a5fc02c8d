// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QQuickFramebufferObject>

#include <memory>

class Mailbox;
class VideoFrames;

/// A clip's pictures drawn with OpenGL, a pixel of theirs on a pixel of the window where the item
/// lies on whole ones.
class OpenGlSurface : public QQuickFramebufferObject {
    Q_OBJECT

public:
    explicit OpenGlSurface(QQuickItem *parent);
    ~OpenGlSurface() override;

    [[nodiscard]] const std::shared_ptr<VideoFrames> &frames() const { return m_frames; }

    /// Null to show nothing.
    void setFrames(const std::shared_ptr<VideoFrames> &frames);

    [[nodiscard]] QSize pixels() const { return m_pixels; }

    /// How many the item takes.
    void setPixels(QSize pixels);

    [[nodiscard]] Renderer *createRenderer() const override;

Q_SIGNALS:
    /// The graphics card cannot draw them.
    void failed();

private:
    std::shared_ptr<VideoFrames> m_frames;
    QSize m_pixels;
    const std::shared_ptr<Mailbox> m_mailbox;
};
