// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvClip.h"

#include "platform/media/ClipFile.h"
#include "platform/media/ClipPlayback.h"
#include "platform/media/ClipStream.h"
#include "platform/media/MovieBoxes.h"
#include "platform/media/MpvImages.h"
#include "platform/media/MpvOpenGlFrames.h"
#include "platform/media/SampleCount.h"
#include "platform/media/SampleTable.h"
#include "platform/media/TrackMatrix.h"

#include <mpv/client.h>

#include <utility>

using namespace std::chrono_literals;

/// How long it sleeps when nothing happens: what it waits for with a limit is not told.
static constexpr auto longestSleep = 500ms;

namespace {

/// What a clip's file says before libmpv opens it.
struct Tables {
    bool areMonstrous = false;
    PictureTurn turn;
    FrameTimes frameTimes;
};

Tables tablesOf(const InputFile &file, const MovieBoxes::IsWanted &isWanted)
{
    MovieBoxes movie(file, isWanted);
    if (SampleCount::isMonstrous(movie)) {
        return {.areMonstrous = true, .turn = {}, .frameTimes = {}};
    }
    auto frames = SampleTable::frames(movie);
    return {.areMonstrous = false,
            .turn = TrackMatrix::turn(movie),
            .frameTimes =
                frames ? FrameTimes(std::move(frames->times), frames->end) : FrameTimes()};
}

} // namespace

MpvClip::MpvClip(std::filesystem::path path, MpvHandle::Settings settings)
    : m_path(std::move(path))
    , m_settings(settings)
{
}

void MpvClip::run()
{
    ClipFile file(m_path);
    auto opened = file.file();
    if (!opened) {
        tell({.hasFailed = true});
        return;
    }
    const auto tables = tablesOf(*opened, [this] { return !isClosed(); });
    opened.reset();
    if (isClosed()) {
        return;
    }
    if (tables.areMonstrous) {
        tell({.hasFailed = true});
        return;
    }
    const auto mpv = MpvHandle::create(m_settings); // goes before the file
    if (!mpv || !ClipStream::offer(mpv->get(), file)) {
        tell({.hasFailed = true});
        return;
    }
    const auto wake = [](void *self) { static_cast<MpvClip *>(self)->stir(); };
    mpv_set_wakeup_callback(mpv->get(), wake, this);
    lendOut(*mpv, tables.turn);
    play(*mpv, tables.frameTimes, tables.turn);
    file.close(); // nothing on the card holds up what follows, nor does it hold the card
    callIn(*mpv);
}

void MpvClip::play(const MpvHandle &mpv, const FrameTimes &frameTimes, const PictureTurn &turn)
{
    const auto wake = [](void *self) { static_cast<MpvClip *>(self)->stir(); };
    ClipPlayback playback(mpv, frameTimes);
    std::optional<MpvImages> images;
    bool hasBegun = false;
    for (;;) {
        std::unique_lock lock(m_mutex);
        m_stirs.wait_for(lock, longestSleep, [this] { return m_isStirred; });
        m_isStirred = false;
        if (m_isClosed) {
            return;
        }
        const auto wish = m_wish;
        const auto drawing = m_drawing;
        const auto imageSize = m_imageSize;
        const bool wasBorrowed = m_wasBorrowed;
        lock.unlock();

        if (drawing == Drawing::Processor && !images) {
            images.emplace(mpv, wake, this);
        }
        if (!hasBegun && (images || wasBorrowed)) {
            hasBegun = true;
            playback.open(images ? 0 : turn.degrees); // the images are turned here
        }
        playback.takeEvents();
        if (images) {
            publish(images->next(imageSize, turn));
        }
        playback.follow(wish);
        tell(playback.report());
        lock.lock();
        m_videoTrack = playback.videoTrack();
        lock.unlock();
    }
}

void MpvClip::lendOut(const MpvHandle &mpv, const PictureTurn &turn)
{
    Changed changed;
    {
        const std::lock_guard lock(m_mutex);
        m_lent = mpv.get();
        m_turn = turn;
        m_isStirred = true;
        changed = m_changed;
    }
    if (changed) {
        changed();
    }
}

/// Waits until nobody draws any more.
void MpvClip::callIn(const MpvHandle &mpv)
{
    {
        const std::lock_guard lock(m_mutex);
        m_lent = nullptr;
    }
    takeDownPictures(mpv);
    std::vector<std::function<void()>> letGo;
    {
        const std::lock_guard lock(m_mutex);
        m_hasLetGo = true;
        letGo.swap(m_letGo);
    }
    for (const auto &tell : letGo) {
        tell();
    }
    std::unique_lock lock(m_mutex);
    m_stirs.wait(lock, [this] { return m_borrowers == 0; });
}

/// Ends the decoder, and what waits there for its frames to be drawn, as far as somebody still has
/// them to draw.
void MpvClip::takeDownPictures(const MpvHandle &mpv)
{
    constexpr uint64_t isDown = 1; // nothing else is awaited any more
    constexpr double look = 0.1;   // seconds between two looks
    mpv_set_wakeup_callback(mpv.get(), nullptr, nullptr);
    mpv.set("vid", "no", isDown);
    const auto isBorrowed = [this] {
        const std::lock_guard lock(m_mutex);
        return m_borrowers > 0;
    };
    while (isBorrowed()) {
        const auto *event = mpv_wait_event(mpv.get(), look);
        if (event->event_id == MPV_EVENT_SHUTDOWN ||
            (event->event_id == MPV_EVENT_SET_PROPERTY_REPLY && event->reply_userdata == isDown)) {
            return;
        }
    }
}

bool MpvClip::isHoldingOn(std::function<void()> letGo)
{
    const std::lock_guard lock(m_mutex);
    if (!m_isClosed || m_hasLetGo) {
        return false;
    }
    m_letGo.push_back(std::move(letGo));
    return true;
}

void MpvClip::publish(QImage image)
{
    if (image.isNull()) {
        return;
    }
    Changed changed;
    {
        const std::lock_guard lock(m_mutex);
        m_image = std::move(image);
        changed = m_changed;
    }
    changed();
}

void MpvClip::tell(const ClipReport &report)
{
    if (m_told != report) {
        m_told = report;
        m_tell(report);
    }
}

void MpvClip::stir()
{
    const std::lock_guard lock(m_mutex);
    m_isStirred = true;
    m_stirs.notify_all();
}

void MpvClip::wish(const ClipWish &wish)
{
    {
        const std::lock_guard lock(m_mutex);
        m_wish = wish;
    }
    stir();
}

void MpvClip::close()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
    }
    stir();
}

bool MpvClip::isClosed() const
{
    const std::lock_guard lock(m_mutex);
    return m_isClosed;
}

void MpvClip::showImages(QSize pixels, Changed changed)
{
    {
        const std::lock_guard lock(m_mutex);
        m_drawing = Drawing::Processor;
        m_imageSize = pixels;
        m_changed = std::move(changed);
    }
    stir();
}

void MpvClip::setImageSize(QSize pixels)
{
    {
        const std::lock_guard lock(m_mutex);
        m_imageSize = pixels;
    }
    stir();
}

QImage MpvClip::image() const
{
    const std::lock_guard lock(m_mutex);
    return m_image;
}

void MpvClip::showWithOpenGl(Changed changed)
{
    const std::lock_guard lock(m_mutex);
    m_drawing = Drawing::OpenGl;
    m_changed = std::move(changed);
    if (m_lent != nullptr) {
        m_changed();
    }
}

std::unique_ptr<OpenGlFrames> MpvClip::openGl(OpenGlLoader loader, void *x11Display)
{
    mpv_handle *handle = nullptr;
    bool isMirrored = false;
    Changed changed;
    {
        const std::lock_guard lock(m_mutex);
        if (m_lent == nullptr || m_isClosed || m_drawing != Drawing::OpenGl) {
            return nullptr;
        }
        handle = m_lent;
        isMirrored = m_turn.isMirrored;
        changed = m_changed;
        ++m_borrowers;
    }
    auto frames = std::make_unique<MpvOpenGlFrames>(shared_from_this(), handle, loader, x11Display,
                                                    isMirrored, std::move(changed));
    bool isAgain = false;
    int64_t track = 0;
    if (frames->isUsable()) {
        const std::lock_guard lock(m_mutex);
        isAgain = std::exchange(m_wasBorrowed, true);
        track = m_videoTrack;
    }
    if (isAgain) { // the pictures ended with the one who drew before
        mpv_set_property_async(handle, 0, "vid", MPV_FORMAT_INT64, &track);
    }
    stir();
    return frames;
}

void MpvClip::takeBack()
{
    const std::lock_guard lock(m_mutex);
    --m_borrowers;
    m_stirs.notify_all();
}
