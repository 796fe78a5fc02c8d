// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QSize>

/// Builds HEIF files item by item, so that a test knows what is in them.
namespace HeifBytes {

struct Reference {
    /// Four characters.
    QByteArray type;
    QList<quint16> to;
};

struct Item {
    quint16 id = 0;
    /// Four characters.
    QByteArray type = {};
    /// Whole boxes.
    QList<QByteArray> properties = {};
    QByteArray data = {};
    QList<Reference> references = {};
};

[[nodiscard]] QByteArray file(quint16 primary, const QList<Item> &items);

/// Property boxes beyond those of BoxBytes.
[[nodiscard]] QByteArray cropProperty(QSize size, QPoint doubledOffset);
[[nodiscard]] QByteArray colorProperty(int primaries, int transfer, int matrix, bool fullRange);
[[nodiscard]] QByteArray profileProperty(const QByteArray &icc);
[[nodiscard]] QByteArray purposeProperty(const QByteArray &name);

/// The data of a grid and of an overlay over red, opaque, with its parts at @p corners.
[[nodiscard]] QByteArray gridData(int columns, int rows, QSize size);
[[nodiscard]] QByteArray overlayData(QSize size, const QList<QPoint> &corners);

} // namespace HeifBytes
