// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvHandle.h"

#include "platform/hevc/LibavLimits.h"
#include "platform/hevc/LibavLog.h"
#include "platform/media/MediaLimits.h"

#include <mpv/client.h>

#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::pair<const char *, const char *> options[] = {
    {"vo", "libmpv"},
    // Alone with its clip.
    {"config", "no"},
    {"load-scripts", "no"},
    {"load-auto-profiles", "no"},
    {"load-osd-console", "no"},
    {"load-stats-overlay", "no"},
    {"osc", "no"},
    {"ytdl", "no"},
    {"resume-playback", "no"},
    {"input-default-bindings", "no"},
    {"input-builtin-bindings", "no"},
    {"access-references", "no"},
    {"ordered-chapters", "no"},
    {"sub-auto", "no"},
    {"audio-file-auto", "no"},
    {"cover-art-auto", "no"},
    {"sid", "no"},
    {"osd-level", "0"},
    {"cache", "no"}, // for hosts
    {"demuxer", "lavf"},
    {"demuxer-max-bytes", "64MiB"},
    {"demuxer-max-back-bytes", "0"},
    {"audio-fallback-to-null", "yes"},
    {"audio-client-name", "Kestle"},
    // Stays on its last frame, and whether it is paused is for us alone to say.
    {"idle", "yes"},
    {"keep-open", "yes"},
    {"keep-open-pause", "no"},
    {"pause", "yes"},
    {"hr-seek", "yes"},
    // Whoever draws takes a frame when it is due, and waits for none.
    {"video-timing-offset", "0"},
};

/// A list with commas in a value is only to be had as a structure.
void setMap(mpv_handle *handle, const char *option,
            std::initializer_list<std::pair<const char *, const char *>> entries)
{
    std::vector<char *> keys;
    std::vector<mpv_node> values;
    for (const auto &[key, value] : entries) {
        keys.push_back(const_cast<char *>(key)); // which it copies
        values.push_back({.u = {.string = const_cast<char *>(value)}, .format = MPV_FORMAT_STRING});
    }
    mpv_node_list list = {.num = int(values.size()), .values = values.data(), .keys = keys.data()};
    mpv_node node = {.u = {.list = &list}, .format = MPV_FORMAT_NODE_MAP};
    mpv_set_option(handle, option, MPV_FORMAT_NODE, &node);
}

} // namespace

std::unique_ptr<MpvHandle> MpvHandle::create(const Settings &settings)
{
    silenceLibav();
    limitLibav();
    std::unique_ptr<MpvHandle> result(new MpvHandle(mpv_create()));
    auto *handle = result->m_handle;
    if (handle == nullptr) {
        return nullptr;
    }
    for (const auto &[name, value] : options) {
        mpv_set_option_string(handle, name, value); // builds differ in what they know
    }
    mpv_set_option_string(handle, "hwdec", settings.hardwareDecoding ? "auto-safe" : "no");
    // Others are tried with every OpenGL context, and one complains on the terminal.
    mpv_set_option_string(handle, "gpu-hwdec-interop",
                          settings.hardwareDecoding ? "vaapi-egl" : "no");
    if (!settings.sound) {
        mpv_set_option_string(handle, "ao", "null");
    }
    setMap(handle, "demuxer-lavf-o",
           {{"format_whitelist", MediaLimits::formats},
            {"protocol_whitelist", "none"},
            {"max_streams", std::to_string(MediaLimits::mostTracks).c_str()}});
    setMap(handle, "vd-lavc-o", {{"max_pixels", std::to_string(MediaLimits::mostPixels).c_str()}});
    return mpv_initialize(handle) >= 0 ? std::move(result) : nullptr;
}

MpvHandle::~MpvHandle()
{
    if (m_handle != nullptr) {
        mpv_terminate_destroy(m_handle);
    }
}

void MpvHandle::command(std::initializer_list<const char *> words, uint64_t reply) const
{
    std::vector<const char *> arguments(words);
    arguments.push_back(nullptr);
    mpv_command_async(m_handle, reply, arguments.data());
}

void MpvHandle::set(const char *property, bool value) const
{
    int flag = value ? 1 : 0;
    mpv_set_property_async(m_handle, 0, property, MPV_FORMAT_FLAG, &flag);
}

void MpvHandle::set(const char *property, const char *value, uint64_t reply) const
{
    mpv_set_property_async(m_handle, reply, property, MPV_FORMAT_STRING, &value);
}

void MpvHandle::ask(const char *property, Format format, uint64_t reply) const
{
    mpv_get_property_async(m_handle, reply, property,
                           format == Format::Number ? MPV_FORMAT_DOUBLE : MPV_FORMAT_FLAG);
}

MpvHandle::VideoTrack MpvHandle::videoTrack() const
{
    const auto nameOf = [](int64_t index, const char *what) {
        return "track-list/" + std::to_string(index) + what;
    };
    const auto isSet = [&](int64_t index, const char *what) {
        int value = 0;
        mpv_get_property(m_handle, nameOf(index, what).c_str(), MPV_FORMAT_FLAG, &value);
        return value != 0;
    };
    const auto number = [&](int64_t index, const char *what, int64_t otherwise) {
        mpv_get_property(m_handle, nameOf(index, what).c_str(), MPV_FORMAT_INT64, &otherwise);
        return otherwise;
    };
    const auto isVideo = [&](int64_t index) {
        char *type = nullptr;
        mpv_get_property(m_handle, nameOf(index, "/type").c_str(), MPV_FORMAT_STRING, &type);
        const bool result = type != nullptr && std::strcmp(type, "video") == 0;
        mpv_free(type);
        return result && !isSet(index, "/albumart");
    };

    int64_t count = 0;
    mpv_get_property(m_handle, "track-list/count", MPV_FORMAT_INT64, &count);
    std::optional<VideoTrack> first;
    for (int64_t index = 0; index < count; ++index) {
        if (!isVideo(index)) {
            continue;
        }
        const VideoTrack track = {.number = number(index, "/id", 1),
                                  .turn =
                                      static_cast<int>(number(index, "/demux-rotation", 0) % 360)};
        if (isSet(index, "/default")) {
            return track;
        }
        first = first.value_or(track);
    }
    return first.value_or(VideoTrack());
}

void MpvHandle::show(const VideoTrack &track, int turn) const
{
    int64_t number = track.number;
    int64_t rest = (turn - track.turn + 360) % 360; // libmpv adds it to its own
    mpv_set_property(m_handle, "vid", MPV_FORMAT_INT64, &number);
    mpv_set_property(m_handle, "video-rotate", MPV_FORMAT_INT64, &rest);
}
