// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/OpenGlSurface.h"

#include "platform/media/VideoFrames.h"
#include "platform/threads/Mailbox.h"
#include "ui/items/DrawingsKeeper.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QQuickOpenGLUtils>
#include <QQuickWindow>

#include <utility>

namespace {

void *functionOfContext(void * /*unused*/, const char *name)
{
    auto *context = QOpenGLContext::currentContext();
    return context ? reinterpret_cast<void *>(context->getProcAddress(name)) : nullptr;
}

/// Null but in a session of X11.
void *x11Display()
{
#if QT_CONFIG(xcb)
    if (const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) {
        return x11->display();
    }
#endif
    return nullptr;
}

/// Lives on the thread that draws.
class SurfaceRenderer final : public QQuickFramebufferObject::Renderer {
public:
    SurfaceRenderer(DrawingsKeeper *keeper, std::shared_ptr<Mailbox> mailbox,
                    std::function<void()> fail)
        : m_keeper(keeper)
        , m_mailbox(std::move(mailbox))
        , m_fail(std::move(fail))
        , m_x11Display(x11Display())
    {
    }

    ~SurfaceRenderer() override { retire(); }

    void synchronize(QQuickFramebufferObject *item) override
    {
        const auto *surface = static_cast<OpenGlSurface *>(item);
        m_wanted = surface->frames();
        if (m_pixels != surface->pixels()) {
            m_pixels = surface->pixels();
            invalidateFramebufferObject();
        }
    }

    QOpenGLFramebufferObject *createFramebufferObject(const QSize & /*inPoints*/) override
    {
        return new QOpenGLFramebufferObject(m_pixels.expandedTo({1, 1}));
    }

    void render() override
    {
        if (m_frames != m_wanted) {
            retire();
            m_frames = m_wanted;
        }
        if (m_frames && !m_drawing) {
            m_drawing = m_frames->openGl(functionOfContext, m_x11Display);
        }
        if (m_drawing && !m_drawing->isUsable()) {
            m_drawing.reset();
            m_frames.reset();
            m_mailbox->post(m_fail);
        }
        if (m_drawing) {
            m_drawing->draw(framebufferObject()->handle(), framebufferObject()->size());
        } else {
            auto *functions = QOpenGLContext::currentContext()->functions();
            functions->glClearColor(0, 0, 0, 0);
            functions->glClear(GL_COLOR_BUFFER_BIT);
        }
        QQuickOpenGLUtils::resetOpenGLState();
    }

private:
    void retire()
    {
        if (m_keeper) {
            m_keeper->take(std::move(m_drawing));
        }
        m_drawing.reset();
    }

    DrawingsKeeper *const m_keeper; ///< of the window, which goes later; may be null
    const std::shared_ptr<Mailbox> m_mailbox;
    const std::function<void()> m_fail;
    void *const m_x11Display;
    QSize m_pixels;
    std::shared_ptr<VideoFrames> m_wanted;
    std::shared_ptr<VideoFrames> m_frames;
    std::unique_ptr<OpenGlFrames> m_drawing; ///< of m_frames
};

} // namespace

OpenGlSurface::OpenGlSurface(QQuickItem *parent)
    : QQuickFramebufferObject(parent)
    , m_mailbox(std::make_shared<Mailbox>(this))
{
    // Qt 6.4 counts whole points first, and stretches the picture where pixels are no multiple.
    setTextureFollowsItemSize(false);
    setSmooth(false);
}

OpenGlSurface::~OpenGlSurface()
{
    m_mailbox->close();
}

void OpenGlSurface::setFrames(const std::shared_ptr<VideoFrames> &frames)
{
    if (m_frames == frames) {
        return;
    }
    m_frames = frames;
    if (m_frames) {
        if (window()) {
            (void)DrawingsKeeper::of(window());
        }
        m_frames->showWithOpenGl(
            [mailbox = m_mailbox, this] { mailbox->post([this] { update(); }); });
    }
    update();
}

void OpenGlSurface::setPixels(QSize pixels)
{
    if (m_pixels != pixels) {
        m_pixels = pixels;
        update();
    }
}

QQuickFramebufferObject::Renderer *OpenGlSurface::createRenderer() const
{
    auto *self = const_cast<OpenGlSurface *>(this);
    return new SurfaceRenderer(DrawingsKeeper::known(window()), m_mailbox,
                               [self] { Q_EMIT self->failed(); });
}
