// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSize>

#include <functional>

/// Draws a clip's pictures with OpenGL. Made, used and destroyed on one thread, with one context
/// current.
class OpenGlFrames {
public:
    OpenGlFrames() = default;
    OpenGlFrames(const OpenGlFrames &) = delete;
    OpenGlFrames &operator=(const OpenGlFrames &) = delete;
    virtual ~OpenGlFrames() = default;

    /// False when the context is of no use for it.
    [[nodiscard]] virtual bool isUsable() const = 0;

    /// The newest picture, upright, as large as @p pixels allow, black around it. Leaves the state
    /// of the context changed.
    virtual void draw(unsigned framebuffer, QSize pixels) = 0;

    /// Whether its clip, which has been closed, is about to let go of this: destroying it before
    /// waits for the clip's decoder. If so, @p letGo is called then, on any thread.
    [[nodiscard]] virtual bool isStillHeld(std::function<void()> letGo) = 0;
};
