// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/hevc/CodedColor.h"

#include <QByteArray>
#include <QSize>

#include <memory>
#include <optional>

/// A still picture coded as HEVC (ITU-T H.265), as its planes. Blocks; decode() is safe from
/// several threads, and what it returns can be read by any.
class HevcPicture {
public:
    struct Plane {
        const uchar *bytes = nullptr;
        qsizetype stride = 0;
        QSize size = {};
    };

    /// The picture in @p data, whose parameters are in @p configuration, both as in ISO 14496-15,
    /// 8.3.3. What damage has destroyed is grey. Nothing when no picture can be had,
    /// and when it has more than @p mostPixels or needed more than @p memory bytes, which is found
    /// before they are taken.
    [[nodiscard]] static std::optional<HevcPicture> decode(const QByteArray &configuration,
                                                           const QByteArray &data, qint64 memory,
                                                           qint64 mostPixels);

    HevcPicture(HevcPicture &&) noexcept;
    HevcPicture &operator=(HevcPicture &&) noexcept;
    ~HevcPicture();

    [[nodiscard]] QSize size() const;

    /// Samples of more than eight bits take two bytes, in the order of this machine.
    [[nodiscard]] int bits() const;

    /// 1, or 3: brightness, blue, red; or green, blue, red when the matrix of color() is 0.
    [[nodiscard]] int planeCount() const;
    /// All but the first may be smaller.
    [[nodiscard]] Plane plane(int index) const;

    /// What the stream itself says of it.
    [[nodiscard]] CodedColor color() const;

private:
    struct Frame;
    explicit HevcPicture(std::unique_ptr<Frame> frame);

    std::unique_ptr<Frame> m_frame;
};
