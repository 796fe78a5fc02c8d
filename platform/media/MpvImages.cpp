// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvImages.h"

#include "platform/media/MpvHandle.h"
#include "platform/media/PictureTurn.h"

#include <mpv/render.h>

#include <algorithm>

MpvImages::MpvImages(const MpvHandle &mpv, void (*stir)(void *), void *self)
{
    // libmpv's own turn by a right angle ends the program here (seen in 0.35).
    mpv.set("video-rotate", "no");
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_API_TYPE, const_cast<char *>(MPV_RENDER_API_TYPE_SW)},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_create(&m_context, mpv.get(), parameters) >= 0) {
        mpv_render_context_set_update_callback(m_context, stir, self);
    }
}

MpvImages::~MpvImages()
{
    if (m_context != nullptr) {
        mpv_render_context_free(m_context);
    }
}

QImage MpvImages::next(QSize pixels, const PictureTurn &turn)
{
    if (m_context == nullptr || pixels.isEmpty()) {
        return {};
    }
    const bool isNew = (mpv_render_context_update(m_context) & MPV_RENDER_UPDATE_FRAME) != 0;
    m_hasPicture = m_hasPicture || isNew;
    if (!isNew && !(m_hasPicture && pixels != m_pixels)) {
        return {};
    }
    m_pixels = pixels;
    QImage image(turn.degrees % 180 == 0 ? pixels : pixels.transposed(), QImage::Format_RGB32);
    if (image.isNull()) {
        return {};
    }
    int size[] = {image.width(), image.height()};
    auto stride = static_cast<size_t>(image.bytesPerLine());
    int waits = 0;
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_SW_SIZE, size},
        {MPV_RENDER_PARAM_SW_FORMAT, const_cast<char *>("bgr0")},
        {MPV_RENDER_PARAM_SW_STRIDE, &stride},
        {MPV_RENDER_PARAM_SW_POINTER, image.bits()},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &waits},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_render(m_context, parameters) < 0) {
        return {};
    }
    // The fourth byte comes out as 0; in RGB32 it is 255.
    for (int row = 0; row < image.height(); ++row) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(row));
        std::transform(line, line + image.width(), line,
                       [](QRgb pixel) { return pixel | 0xff000000U; });
    }
    return turn == PictureTurn() ? image : image.transformed(turn.transform());
}
