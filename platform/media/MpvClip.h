// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/ClipReport.h"
#include "platform/media/ClipWish.h"
#include "platform/media/MpvHandle.h"
#include "platform/media/PictureTurn.h"
#include "platform/media/VideoFrames.h"

#include <condition_variable>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

struct mpv_handle;

/// One clip with a thread of its own, on which all happens that may take long: opening it on a slow
/// card, playing it, letting go of it. Everything else only says what is wished, and waits for
/// nothing. Held by its player, by the thread and by whoever draws.
class MpvClip final : public VideoFrames, public std::enable_shared_from_this<MpvClip> {
public:
    /// Called on the clip's thread, each time something has changed.
    using Tell = std::function<void(const ClipReport &)>;

    MpvClip(std::filesystem::path path, MpvHandle::Settings settings);

    /// Before run().
    void tellTo(Tell tell) { m_tell = std::move(tell); }

    /// What its thread does, until close().
    void run();

    void wish(const ClipWish &wish);
    /// It ends, and lets go of its file.
    void close();
    [[nodiscard]] bool isClosed() const;

    void showImages(QSize pixels, Changed changed) override;
    void setImageSize(QSize pixels) override;
    [[nodiscard]] QImage image() const override;
    void showWithOpenGl(Changed changed) override;
    [[nodiscard]] std::unique_ptr<OpenGlFrames> openGl(OpenGlLoader loader,
                                                       void *x11Display) override;

    /// Whether it has been closed, but its pictures are not taken down yet. If so, @p letGo is
    /// called on its thread when they are.
    [[nodiscard]] bool isHoldingOn(std::function<void()> letGo);

    /// What openGl() has lent is not used any more.
    void takeBack();

private:
    enum class Drawing { Nobody, Processor, OpenGl };

    void stir();
    void tell(const ClipReport &report);
    void play(const MpvHandle &mpv, const class FrameTimes &frameTimes, const PictureTurn &turn);
    void lendOut(const MpvHandle &mpv, const PictureTurn &turn);
    void callIn(const MpvHandle &mpv);
    void takeDownPictures(const MpvHandle &mpv);
    void publish(QImage image);

    const std::filesystem::path m_path;
    const MpvHandle::Settings m_settings;
    Tell m_tell;
    std::optional<ClipReport> m_told;

    mutable std::mutex m_mutex; ///< of all below
    std::condition_variable m_stirs;
    bool m_isStirred = false;
    bool m_isClosed = false;
    ClipWish m_wish;
    Drawing m_drawing = Drawing::Nobody;
    Changed m_changed;
    QSize m_imageSize;
    QImage m_image;
    mpv_handle *m_lent = nullptr; ///< for OpenGL; null before it is made, and at its end
    PictureTurn m_turn;           ///< of what is lent
    int64_t m_videoTrack = 1;     ///< of what is lent
    int m_borrowers = 0;
    bool m_wasBorrowed = false;
    bool m_hasLetGo = false;
    std::vector<std::function<void()>> m_letGo; ///< who waits for that
};
