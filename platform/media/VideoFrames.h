// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/OpenGlFrames.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <memory>

/// The pictures of a clip, for the one who shows them, either drawn with OpenGL or as images; the
/// clip begins once that is known. Outlives its player, and then shows nothing new.
class VideoFrames {
public:
    /// Finds a function of the OpenGL context that is current.
    using OpenGlLoader = void *(*)(void *, const char *name);
    /// Called on any thread, quickly, with nothing of this.
    using Changed = std::function<void()>;

    VideoFrames() = default;
    VideoFrames(const VideoFrames &) = delete;
    VideoFrames &operator=(const VideoFrames &) = delete;
    virtual ~VideoFrames() = default;

    /// From now on image() has pictures, made by the processor, of @p pixels; @p changed tells of
    /// each. Main thread.
    virtual void showImages(QSize pixels, Changed changed) = 0;

    /// Main thread, after showImages().
    virtual void setImageSize(QSize pixels) = 0;

    /// The newest picture, upright, as large as its size allows, black around it; null before the
    /// first.
    [[nodiscard]] virtual QImage image() const = 0;

    /// From now on @p changed tells when openGl() is to be asked, and then of each picture.
    /// Main thread.
    virtual void showWithOpenGl(Changed changed) = 0;

    /// Null while it cannot be had yet, or any more. @p x11Display, which may be null, lets the
    /// graphics card decode. To be called on the thread that draws.
    [[nodiscard]] virtual std::unique_ptr<OpenGlFrames> openGl(OpenGlLoader loader,
                                                               void *x11Display) = 0;
};
