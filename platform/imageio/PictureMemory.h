// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>

/// Where pictures lie in memory.
namespace PictureMemory {

/// A Format_RGB32 picture of @p size, what it shows undefined; null where there is no memory for
/// it. A large one is asked of the system in large pages, where it has them: to hand out a hundred
/// megabytes in small ones takes a fifth of the time that a JPEG takes to be decoded into them.
[[nodiscard]] QImage picture(QSize size);

} // namespace PictureMemory
