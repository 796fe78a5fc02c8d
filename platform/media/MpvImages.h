// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>

class MpvHandle;
struct PictureTurn;
struct mpv_render_context;

/// A clip's pictures, made by the processor. For one thread, on which making one takes as long as
/// it takes.
class MpvImages {
public:
    /// Before the clip is opened. @p stir is called with @p self on any thread when there is
    /// something new, until this is destroyed; @p mpv outlives this.
    MpvImages(const MpvHandle &mpv, void (*stir)(void *), void *self);
    MpvImages(const MpvImages &) = delete;
    MpvImages &operator=(const MpvImages &) = delete;
    ~MpvImages();

    /// The picture that is due, of @p pixels, with @p turn; null when it is the same as
    /// before.
    [[nodiscard]] QImage next(QSize pixels, const PictureTurn &turn);

private:
    mpv_render_context *m_context = nullptr;
    QSize m_pixels; ///< of the picture before
    bool m_hasPicture = false;
};
