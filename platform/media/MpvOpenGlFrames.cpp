// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvOpenGlFrames.h"

#include <mpv/render_gl.h>

#include <utility>

MpvOpenGlFrames::MpvOpenGlFrames(std::shared_ptr<MpvClip> clip, mpv_handle *handle,
                                 VideoFrames::OpenGlLoader loader, void *x11Display,
                                 bool isMirrored, VideoFrames::Changed changed)
    : m_clip(std::move(clip))
    , m_isMirrored(isMirrored)
    , m_changed(std::move(changed))
{
    mpv_opengl_init_params openGl = {.get_proc_address = loader, .get_proc_address_ctx = nullptr};
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_API_TYPE, const_cast<char *>(MPV_RENDER_API_TYPE_OPENGL)},
        {MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &openGl},
        {x11Display != nullptr ? MPV_RENDER_PARAM_X11_DISPLAY : MPV_RENDER_PARAM_INVALID,
         x11Display},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_create(&m_context, handle, parameters) < 0) {
        m_context = nullptr;
        return;
    }
    const auto tell = [](void *self) { static_cast<MpvOpenGlFrames *>(self)->m_changed(); };
    mpv_render_context_set_update_callback(m_context, tell, this);
}

MpvOpenGlFrames::~MpvOpenGlFrames()
{
    if (m_context != nullptr) {
        mpv_render_context_free(m_context);
    }
    m_clip->takeBack();
}

void MpvOpenGlFrames::draw(unsigned framebuffer, QSize pixels)
{
    if (m_context == nullptr) {
        return;
    }
    mpv_opengl_fbo target = {.fbo = static_cast<int>(framebuffer),
                             .w = pixels.width(),
                             .h = pixels.height(),
                             .internal_format = 0};
    int flips = m_isMirrored ? 1 : 0;
    int waits = 0;
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_OPENGL_FBO, &target},
        {MPV_RENDER_PARAM_FLIP_Y, &flips},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &waits},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    mpv_render_context_render(m_context, parameters);
}

bool MpvOpenGlFrames::isStillHeld(std::function<void()> letGo)
{
    return m_context != nullptr && m_clip->isHoldingOn(std::move(letGo));
}
