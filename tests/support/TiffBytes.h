// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QSize>

#include <filesystem>
#include <functional>

/// Writes TIFF files of every layout, by libtiff.
namespace TiffBytes {

/// The values are those of the tags.
struct Layout {
    QSize size = {64, 48};
    quint16 bits = 8;
    quint16 samples = 3;
    quint16 photometric = 2;
    quint16 compression = 1;
    quint16 sampleFormat = 1;
    bool planar = false;
    bool big = false;
    /// Strips where it is empty.
    QSize tile = {};
    quint32 rowsPerStrip = 7;
    quint16 orientation = 1;
    QList<quint16> extraSamples = {};
    QByteArray profile = {};
    QList<quint16> palette = {};
    quint32 subfile = 0;
};

/// What a sample is, 1 being the largest number; of floating-point ones the number itself.
using Value = std::function<double(QPoint at, int sample)>;

/// A directory behind those that are in the file already. False when this libtiff cannot.
[[nodiscard]] bool append(const std::filesystem::path &path, const Layout &layout,
                          const Value &value);

/// Whether this libtiff knows a compression.
[[nodiscard]] bool canCompress(quint16 compression);

} // namespace TiffBytes
