// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/items/AlignedItem.h"

#include <QColor>

/// A small drawing of ours in one colour, crisp at any size and scale. Drawn into the largest
/// square that fits, made a whole number of pixels, centred.
class Symbol : public AlignedItem {
    Q_OBJECT
    Q_PROPERTY(Kind kind READ kind WRITE setKind NOTIFY kindChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    enum class Kind {
        Card,
        Cross,
        CrossInCircle,
        Play,
        Bin,
        CheckInCircle,
        WarningTriangle,
        BrokenPicture,
        Spokes,
        Menu,
        Minimise,
        Maximise,
        Restore,
        Chevron,
        Check,
    };
    Q_ENUM(Kind)

    explicit Symbol(QQuickItem *parent = nullptr);

    [[nodiscard]] Kind kind() const { return m_kind; }

    void setKind(Kind kind);

    [[nodiscard]] QColor color() const { return m_color; }

    void setColor(const QColor &color);

Q_SIGNALS:
    void kindChanged();
    void colorChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void redraw();

    bool m_textureIsOld = true;
    Kind m_kind = Kind::Cross;
    QColor m_color = Qt::white;
};
