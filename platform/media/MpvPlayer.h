// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/ClipReport.h"
#include "platform/media/ClipWish.h"
#include "platform/media/VideoPlayer.h"
#include "platform/threads/Mailbox.h"

class MpvClip;

/// A VideoPlayer by libmpv. All of it that may take long happens on the clip's own thread; here is
/// what is known of it.
class MpvPlayer final : public VideoPlayer {
public:
    explicit MpvPlayer(std::shared_ptr<MpvClip> clip);
    /// The clip ends and lets go of its file in its own time.
    ~MpvPlayer() override;

    [[nodiscard]] double rate() const override;
    void play() override;
    void pause() override;
    [[nodiscard]] Seconds currentTime() const override;
    [[nodiscard]] std::optional<Seconds> duration() const override;
    void seek(Seconds time) override;
    [[nodiscard]] std::shared_ptr<VideoFrames> frames() const override;

    /// Whether the frame that was sought last is still to come.
    [[nodiscard]] bool isSeeking() const { return m_report.seek != m_wish.seek; }

    /// Whether the clip turned out not to be playable.
    [[nodiscard]] bool hasFailed() const { return m_report.hasFailed; }

private:
    void take(const ClipReport &report);
    [[nodiscard]] bool isAtEnd() const;

    const std::shared_ptr<MpvClip> m_clip;
    const std::shared_ptr<Mailbox> m_mailbox;
    ClipWish m_wish;
    ClipReport m_report;
    Seconds m_time = Seconds(0);
};
