// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/MpvClip.h"
#include "platform/media/OpenGlFrames.h"

#include <memory>

struct mpv_handle;
struct mpv_render_context;

/// OpenGlFrames by libmpv, which the clip waits for with its own end.
class MpvOpenGlFrames final : public OpenGlFrames {
public:
    /// @p clip has lent @p handle, and gets it back when this is destroyed. The pictures that
    /// libmpv has turned are mirrored, up is down, if @p isMirrored.
    MpvOpenGlFrames(std::shared_ptr<MpvClip> clip, mpv_handle *handle,
                    VideoFrames::OpenGlLoader loader, void *x11Display, bool isMirrored,
                    VideoFrames::Changed changed);
    ~MpvOpenGlFrames() override;

    [[nodiscard]] bool isUsable() const override { return m_context != nullptr; }

    void draw(unsigned framebuffer, QSize pixels) override;

    [[nodiscard]] bool isStillHeld(std::function<void()> letGo) override;

private:
    std::shared_ptr<MpvClip> m_clip;
    const bool m_isMirrored;
    VideoFrames::Changed m_changed;
    mpv_render_context *m_context = nullptr;
};
