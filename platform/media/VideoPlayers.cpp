// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/VideoPlayers.h"

#include "platform/media/MpvClip.h"
#include "platform/media/MpvPlayer.h"

#include <atomic>
#include <chrono>
#include <clocale>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>

/// Clips at work at once: each that plays, or is about to begin or to end, has a dozen threads and
/// some ten megabytes. One is looked at; on a card that hangs they stay.
static constexpr int mostAtWork = 8;
/// How often one that waits for its turn looks whether it is still wanted.
static constexpr std::chrono::milliseconds pauseBetweenLooks(100);

class VideoPlayers::Threads {
public:
    ~Threads()
    {
        for (auto &entry : m_entries) {
            entry.thread.join();
        }
    }

    void run(std::shared_ptr<MpvClip> clip)
    {
        reap();
        auto &entry = m_entries.emplace_back();
        entry.thread = std::thread([this, &entry, clip = std::move(clip)]() mutable {
            work(*clip);
            clip.reset();
            entry.hasEnded = true;
        });
    }

    [[nodiscard]] qsizetype count()
    {
        reap();
        return qsizetype(m_entries.size());
    }

private:
    struct Entry {
        std::thread thread;
        std::atomic_bool hasEnded = false;
    };

    void work(MpvClip &clip)
    {
        {
            std::unique_lock lock(m_mutex);
            // Nobody tells when a clip is closed: those that wait behind a card that hangs would
            // grow in number with every step.
            while (m_atWork >= mostAtWork) {
                if (clip.isClosed()) {
                    return;
                }
                m_frees.wait_for(lock, pauseBetweenLooks);
            }
            ++m_atWork;
        }
        if (!clip.isClosed()) {
            clip.run();
        }
        const std::lock_guard lock(m_mutex);
        --m_atWork;
        m_frees.notify_one();
    }

    void reap()
    {
        m_entries.remove_if([](Entry &entry) {
            if (!entry.hasEnded) {
                return false;
            }
            entry.thread.join(); // it has nothing more to do
            return true;
        });
    }

    std::list<Entry> m_entries;
    std::mutex m_mutex;
    std::condition_variable m_frees;
    int m_atWork = 0;
};

VideoPlayers::VideoPlayers(Settings settings)
    : m_settings(settings)
    , m_threads(std::make_unique<Threads>())
{
    std::setlocale(LC_NUMERIC, "C");
}

VideoPlayers::~VideoPlayers() = default;

std::unique_ptr<VideoPlayer> VideoPlayers::player(const std::filesystem::path &url)
{
    const MpvHandle::Settings settings{.hardwareDecoding = m_settings.hardwareDecoding,
                                       .sound = m_settings.sound};
    auto clip = std::make_shared<MpvClip>(url, settings);
    auto player = std::make_unique<MpvPlayer>(clip);
    m_threads->run(std::move(clip));
    return player;
}

qsizetype VideoPlayers::clipCount() const
{
    return m_threads->count();
}
