// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>

struct mpv_handle;

/// One libmpv, set up to play clips for us: nothing of the user's settings, nothing on the
/// terminal, no files but the one it is given, no pictures but for whoever draws them.
class MpvHandle {
public:
    struct Settings {
        /// Lets the graphics card decode where it can.
        bool hardwareDecoding = true;
        /// Otherwise there is silence.
        bool sound = true;

        bool operator==(const Settings &) const = default;
    };

    enum class Format { Number, Flag };

    /// Takes some milliseconds. Null when there is none to be had.
    [[nodiscard]] static std::unique_ptr<MpvHandle> create(const Settings &settings);
    MpvHandle(const MpvHandle &) = delete;
    MpvHandle &operator=(const MpvHandle &) = delete;
    /// Blocks until all of it has ended.
    ~MpvHandle();

    [[nodiscard]] mpv_handle *get() const { return m_handle; }

    /// Has a command done at some time; its end is told as an event with @p reply.
    void command(std::initializer_list<const char *> words, uint64_t reply = 0) const;
    void set(const char *property, bool value) const;
    void set(const char *property, const char *value, uint64_t reply = 0) const;

    /// Asks for a value, which is told as an event with @p reply.
    void ask(const char *property, Format format, uint64_t reply) const;

    struct VideoTrack {
        int64_t number = 1;
        int turn = 0; ///< that libmpv makes by itself, in degrees clockwise
    };

    /// The track that is shown: the first that is enabled, else the first; the first of all where
    /// there is none. Waits for libmpv: only to be asked while that waits itself, between opening a
    /// clip and playing it.
    [[nodiscard]] VideoTrack videoTrack() const;
    /// Takes that one, and turns its pictures so far clockwise in all. The same holds.
    void show(const VideoTrack &track, int turn) const;

private:
    explicit MpvHandle(mpv_handle *handle)
        : m_handle(handle)
    {
    }

    mpv_handle *m_handle;
};
