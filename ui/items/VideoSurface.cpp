// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/VideoSurface.h"

#include "platform/media/VideoFrames.h"
#include "platform/threads/Mailbox.h"
#include "ui/items/OpenGlSurface.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRendererInterface>

VideoSurface::VideoSurface(QQuickItem *parent)
    : AlignedItem(parent)
    , m_mailbox(std::make_shared<Mailbox>(this))
{
    setFlag(ItemHasContents);
}

VideoSurface::~VideoSurface()
{
    m_mailbox->close();
}

void VideoSurface::setPlayer(VideoPlayer *player)
{
    if (m_player == player) {
        return;
    }
    m_player = player;
    m_frames = player ? player->frames() : nullptr;
    m_shown = Drawing::Unknown;
    if (m_openGl) {
        m_openGl->setFrames(nullptr);
    }
    refresh();
    Q_EMIT playerChanged();
}

QSize VideoSurface::pixelSize() const
{
    const QSizeF pixels = size() * pixelRatio();
    constexpr qreal rounding = 1e-6; // of a size that means whole pixels
    return {static_cast<int>(pixels.width() + rounding),
            static_cast<int>(pixels.height() + rounding)};
}

void VideoSurface::refresh()
{
    polish();
    update();
}

void VideoSurface::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    AlignedItem::geometryChange(newGeometry, oldGeometry);
    refresh();
}

void VideoSurface::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemSceneChange) {
        disconnect(m_graphics);
        if (data.window) {
            m_graphics = connect(data.window, &QQuickWindow::sceneGraphInitialized, this,
                                 &VideoSurface::refresh, Qt::QueuedConnection);
        }
        refresh();
    } else if (change == ItemDevicePixelRatioHasChanged) {
        refresh();
    }
    AlignedItem::itemChange(change, data);
}

VideoSurface::Drawing VideoSurface::drawing() const
{
    if (!window() || !window()->isSceneGraphInitialized()) {
        return Drawing::Unknown;
    }
    const bool isOpenGl =
        window()->rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL;
    return isOpenGl && !m_openGlFails ? Drawing::OpenGl : Drawing::Processor;
}

void VideoSurface::updatePolish()
{
    const QSize pixels = pixelSize();
    if (!m_frames || pixels.isEmpty()) {
        return;
    }
    const auto wanted = drawing();
    if (wanted != m_shown) {
        show(wanted);
    }
    if (m_shown == Drawing::Processor) {
        m_frames->setImageSize(pixels);
    } else if (m_shown == Drawing::OpenGl) {
        m_openGl->setPosition(onWholePixel({}));
        m_openGl->setSize(inPoints(pixels));
        m_openGl->setPixels(pixels);
    }
}

void VideoSurface::show(Drawing drawing)
{
    m_shown = drawing;
    if (drawing == Drawing::Processor) {
        m_frames->showImages(pixelSize(),
                             [mailbox = m_mailbox, this] { mailbox->post([this] { update(); }); });
    } else if (drawing == Drawing::OpenGl) {
        if (!m_openGl) {
            m_openGl = std::make_unique<OpenGlSurface>(this);
            connect(m_openGl.get(), &OpenGlSurface::failed, this, [this] {
                m_openGlFails = true;
                m_openGl->setFrames(nullptr);
                refresh();
            });
        }
        m_openGl->setFrames(m_frames);
    }
}

QSGNode *VideoSurface::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    const QImage image = m_frames && m_shown == Drawing::Processor ? m_frames->image() : QImage();
    if (image.isNull()) {
        delete old;
        return nullptr;
    }
    auto *node = static_cast<QSGImageNode *>(old);
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Nearest);
    }
    if (!old || m_textureKey != image.cacheKey()) {
        m_textureKey = image.cacheKey();
        node->setTexture(window()->createTextureFromImage(image, QQuickWindow::TextureIsOpaque));
    }
    // One of the size before is stretched for the moment.
    node->setRect(QRectF(onWholePixel({}), inPoints(pixelSize())));
    node->setSourceRect(image.rect());
    return node;
}
