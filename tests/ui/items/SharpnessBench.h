// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/ui/items/Resample.h"
#include "ui/items/FitImage.h"

#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTest>

/// A window that shows one picture at one size, in pixels whatever the scale is.
class SharpnessBench {
public:
    static constexpr QSize shownPixels{360, 240};

    SharpnessBench()
    {
        window.setColor(Qt::black);
        window.resize(420, 300);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window)) {
            qFatal("The window does not appear");
        }
    }

    ~SharpnessBench() { pool.waitForDone(); }

    [[nodiscard]] bool isOpenGL() const
    {
        return window.rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL;
    }

    [[nodiscard]] QImage grabOf(const QImage &image, ScalingPool *scaler, bool smooth)
    {
        const QPoint place(24, 16);
        const qreal ratio = window.effectiveDevicePixelRatio();
        FitImage item(window.contentItem());
        item.setPool(scaler);
        item.setPosition(QPointF(place) / ratio);
        item.setSize(QSizeF(shownPixels) / ratio);
        item.setSmoothScaling(smooth);
        item.setImage(image);
        return window.grabWindow().copy(QRect(place, shownPixels));
    }

    /// Compares what is shown of a bitmap of this size with a good resample of it.
    void judge(QSize bitmap, ScalingPool *scaler)
    {
        const QImage image = Resample::picture(bitmap);
        const QImage reference = Resample::lanczos(image, shownPixels);

        const QImage grab = grabOf(image, scaler, true);

        const double sharpness =
            Resample::gradientEnergy(grab) / Resample::gradientEnergy(reference);
        const double difference = Resample::difference(grab, reference);
        QVERIFY2(sharpness > 0.88 && sharpness < 1.05, qPrintable(QString::number(sharpness)));
        QVERIFY2(difference < 2.5, qPrintable(QString::number(difference)));
    }

    ScalingPool pool;
    QQuickWindow window;
};
