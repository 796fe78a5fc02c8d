// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

class ClipFile;
struct mpv_handle;

/// Lets libmpv read a clip through a descriptor of ours, so that nothing in the file can name
/// another file or a host, and so that the file can be taken away from it.
namespace ClipStream {

/// What is to be played then.
inline constexpr const char *url = "kestle://clip";

/// @p file outlives @p handle. False when it is refused.
[[nodiscard]] bool offer(mpv_handle *handle, ClipFile &file);

} // namespace ClipStream
