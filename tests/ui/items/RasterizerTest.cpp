// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/Rasterizer.h"

#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QSignalSpy>
#include <QTest>

/// Run without a graphics card and with an OpenGL of the processor's.
class RasterizerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isKnownByTheNameOfItsOpenGL_data()
    {
        QTest::addColumn<QByteArray>("renderer");
        QTest::addColumn<bool>("isProcessors");
        const auto row = [](const char *renderer, bool isProcessors) {
            QTest::newRow(renderer) << QByteArray(renderer) << isProcessors;
        };
        row("llvmpipe (LLVM 15.0.6, 256 bits)", true);
        row("softpipe", true);
        row("Software Rasterizer", true);
        row("ANGLE (Google, Vulkan 1.3.0 (SwiftShader Device (Subzero)), SwiftShader driver)",
            true);
        row("Mesa Intel(R) UHD Graphics 620 (KBL GT2)", false);
        row("AMD Radeon RX 6600 (navi23, LLVM 15.0.6, DRM 3.49, 6.1.0-13-amd64)", false);
        row("NVIDIA GeForce RTX 3060/PCIe/SSE2", false);
        row("SVGA3D; build: RELEASE;  LLVM;", false);
        row("virgl (Mesa Intel(R) Xe Graphics)", false);
        row("", false);
    }

    void isKnownByTheNameOfItsOpenGL()
    {
        QFETCH(const QByteArray, renderer);
        QTEST(Rasterizer::isProcessors(renderer), "isProcessors");
    }

    void theProcessorIsFoundOutByTheFirstFrame()
    {
        QQuickWindow window;
        auto *rasterizer = Rasterizer::of(&window);
        QCOMPARE(Rasterizer::of(&window), rasterizer);
        const QSignalSpy changes(rasterizer, &Rasterizer::changed);
        window.resize(100, 100);
        window.show();

        QTRY_VERIFY(rasterizer->isProcessor());

        const bool isOpenGL =
            window.rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL;
        QCOMPARE(rasterizer->isPainter(), !isOpenGL);
        QTRY_COMPARE(changes.size(), isOpenGL ? 1 : 0);
    }
};

QTEST_MAIN(RasterizerTest)
#include "RasterizerTest.moc"
