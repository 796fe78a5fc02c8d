// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/VideoPlayer.h"
#include "ui/items/AlignedItem.h"

#include <QPointer>

#include <memory>

class Mailbox;
class OpenGlSurface;
class VideoFrames;

/// Shows what a player plays: the picture upright, whole and as large as the item allows, black
/// around it, on whole pixels of the window. Nothing without a player. A graphics card draws where
/// the scene graph uses OpenGL, else the processor.
class VideoSurface : public AlignedItem {
    Q_OBJECT
    Q_PROPERTY(VideoPlayer *player READ player WRITE setPlayer NOTIFY playerChanged)

public:
    explicit VideoSurface(QQuickItem *parent = nullptr);
    ~VideoSurface() override;

    [[nodiscard]] VideoPlayer *player() const { return m_player; }

    void setPlayer(VideoPlayer *player);

    /// How many pixels of the window the picture and what is around it take.
    [[nodiscard]] QSize pixelSize() const;

Q_SIGNALS:
    void playerChanged();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    /// Who draws.
    enum class Drawing { Unknown, Processor, OpenGl };

    [[nodiscard]] Drawing drawing() const;
    void show(Drawing drawing);
    void refresh();

    QPointer<VideoPlayer> m_player;
    std::shared_ptr<VideoFrames> m_frames; ///< of the player
    const std::shared_ptr<Mailbox> m_mailbox;
    std::unique_ptr<OpenGlSurface> m_openGl; ///< made when it is first needed
    Drawing m_shown = Drawing::Unknown;      ///< of these frames
    bool m_openGlFails = false;
    QMetaObject::Connection m_graphics;
    qint64 m_textureKey = 0;
};
