// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/support/CodedClip.h"

/// Every kind of clip that seeks are tried on, each once.
namespace CodedClips {

[[nodiscard]] inline QList<CodedClip> all()
{
    const auto name = [](const char *text) { return QString::fromLatin1(text); };
    QList<CodedClip> clips = {
        CodedClip::h264(name("h264.mp4"), 300).at(30000, 1001),
        CodedClip::hevc(name("hevc-open.mov"), 300).at(60000, 1001),
        CodedClip::h264(name("quick.mov"), 300).at(120, 1),
        CodedClip::h264(name("irregular.mp4"), 300).irregular(),
        CodedClip::h264(name("turned90.mov"), 300).at(25, 1),
        CodedClip::h264(name("turned180.mov"), 300).at(25, 1),
        CodedClip::hevc(name("turned270.mp4"), 300).at(30000, 1001),
        CodedClip::h264(name("stream.mts"), 300).at(25, 1),
    };
    clips[0].hasSound = true;
    clips[3].hasSound = true;
    clips[4].turn = 90;
    clips[5].turn = 180;
    clips[6].turn = 270;
    clips[7].coding += {name("-g"), name("25"), name("-keyint_min"), name("25")}; // as cameras do
    CodedClip simple = CodedClip::h264(name("simple.avi"), 300).at(25, 1);
    simple.coding = {name("-c:v"), name("mjpeg"),    name("-q:v"),
                     name("3"),    name("-pix_fmt"), name("yuvj420p")};
    clips.append(simple);
    return clips;
}

} // namespace CodedClips
