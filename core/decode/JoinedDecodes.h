// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

/// Spares the decoding of a picture that is being decoded already, or just was: the screen and the
/// fetching ahead often ask for the same one, knowing nothing of each other. Safe from several
/// threads; a second one that asks for the same picture waits for the first.
class JoinedDecodes {
public:
    using Decode =
        std::function<QImage(const std::filesystem::path &url, std::optional<int> maxPixel)>;

    explicit JoinedDecodes(Decode decode);
    JoinedDecodes(const JoinedDecodes &) = delete;
    JoinedDecodes &operator=(const JoinedDecodes &) = delete;

    /// What the decoder makes of the file; a failure is never remembered.
    [[nodiscard]] QImage picture(const std::filesystem::path &url, std::optional<int> maxPixel);

    /// The same locations name other files from now on: nothing that began earlier is used again.
    void forget();

private:
    struct Key {
        std::filesystem::path url;
        std::optional<int> maxPixel;

        auto operator<=>(const Key &) const = default;
    };
    struct Running {
        bool isDone = false;
        QImage image;
    };
    struct Recent {
        Key key;
        QImage image;
    };

    void finish(const Key &key, const std::shared_ptr<Running> &running, const QImage &image);

    Decode m_decode;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    // Guarded by the mutex:
    std::map<Key, std::shared_ptr<Running>> m_running;
    std::deque<Recent> m_recent;
};
