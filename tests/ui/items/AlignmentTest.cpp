// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/FitImage.h"
#include "ui/items/SharpScaling.h"
#include "ui/items/Symbol.h"
#include "ui/items/SymbolDrawing.h"

#include <QMetaEnum>
#include <QPainter>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <memory>
#include <random>

/// What is drawn for exactly so many pixels comes onto them unchanged, wherever the item lies. Run
/// at several scales.
class AlignmentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_window.setColor(Qt::black);
        m_window.resize(wholeSize);
        m_window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m_window));
        const QByteArray scale = qgetenv("QT_SCALE_FACTOR");
        QCOMPARE(m_window.effectiveDevicePixelRatio(), scale.isEmpty() ? 1 : scale.toDouble());
        m_ratio = m_window.effectiveDevicePixelRatio();
    }

    void init()
    {
        m_window.resize(wholeSize);
        m_parent = std::make_unique<QQuickItem>(m_window.contentItem());
    }

    void cleanup() { m_parent.reset(); }

    void everySymbolIsDrawnPixelByPixel_data()
    {
        QTest::addColumn<QSizeF>("size");
        for (const QSizeF size : {QSizeF(11, 11), QSizeF(12, 12), QSizeF(18, 18), QSizeF(22, 22),
                                  QSizeF(30, 17), QSizeF(56, 56)}) {
            QTest::addRow("%g x %g", size.width(), size.height()) << size;
        }
    }

    void everySymbolIsDrawnPixelByPixel()
    {
        QFETCH(const QSizeF, size);
        m_parent->setPosition({7, 5});
        Symbol symbol(m_parent.get());
        symbol.setPosition({30.4, 20.7});
        symbol.setSize(size);
        const auto kinds = QMetaEnum::fromType<Symbol::Kind>();
        for (int i = 0; i < kinds.keyCount(); ++i) {
            const auto kind = Symbol::Kind(kinds.value(i));
            symbol.setKind(kind);

            const qreal side = std::min(size.width(), size.height());
            const int pixels = int(std::lround(side * m_ratio));
            const QPointF middle = QPointF(37.4, 25.7) + QPointF(size.width(), size.height()) / 2;
            const QPointF corner = middle * m_ratio - QPointF(pixels, pixels) / 2;
            QVERIFY2(isDrawn(drawing(kind, pixels), corner), kinds.key(i));
        }
    }

    void aSymbolStaysOnPixelsWhenWhatItStandsInIsMoved()
    {
        Symbol symbol(m_parent.get());
        symbol.setPosition({20, 20});
        symbol.setSize({18, 18});
        QVERIFY(isDrawnAround({29, 29}, 18));

        for (const qreal x : {0.3, 0.5, 7.9, 41.25}) {
            m_parent->setX(x);

            QVERIFY2(isDrawnAround({29 + x, 29}, 18), qPrintable(QString::number(x)));
        }
    }

    void aTurnedSymbolTurnsAroundItsMiddle()
    {
        Symbol symbol(m_parent.get());
        symbol.setPosition({20.3, 20.3});
        symbol.setSize({40, 40});
        symbol.setKind(Symbol::Kind::CheckInCircle); // round without
        const auto middleOfDrawn = [this] {
            const QImage screen = grab();
            QPointF sum;
            double count = 0;
            for (int y = 0; y < screen.height(); ++y) {
                for (int x = 0; x < screen.width(); ++x) {
                    const double weight = qGray(screen.pixel(x, y));
                    sum += QPointF(x + 0.5, y + 0.5) * weight;
                    count += weight;
                }
            }
            return sum / count;
        };
        const auto upright = middleOfDrawn();
        symbol.setRotation(180);

        const auto turned = middleOfDrawn();

        // The mark in the circle is not in its middle: the two lie on either side of the axis.
        const QPointF axis = (upright + turned) / 2;
        QVERIFY(std::abs(axis.x() - 40.3 * m_ratio) <= 0.5);
        QVERIFY(std::abs(axis.y() - 40.3 * m_ratio) <= 0.5);
    }

    void aBitmapOfTheShownSizeIsNotResampled()
    {
        const QImage noise = noiseOf(QSize(int(80 * m_ratio), int(60 * m_ratio)));
        FitImage item(m_parent.get());
        item.setSize(QSizeF(noise.size()) / m_ratio);
        for (const QPointF place : {QPointF(10, 10), QPointF(10.3, 10.7), QPointF(30.49, 20.51)}) {
            m_parent->setPosition(place);
            item.setImage(noise);

            QVERIFY(isDrawn(noise, place * m_ratio));
        }
    }

    void nothingIsResampledInAWindowOfAnySize()
    {
        const QImage noise = noiseOf(QSize(int(160 * m_ratio), int(100 * m_ratio)));
        FitImage item(m_parent.get());
        item.setSize(QSizeF(noise.size()) / m_ratio);
        m_parent->setPosition({40.3, 30.7});
        item.setImage(noise);
        for (const QSize size : {QSize(221, 151), QSize(222, 155), QSize(223, 153)}) {
            m_window.resize(size); // whose pixels are no whole number of points
            QTRY_COMPARE(m_window.size(), size);

            QTRY_VERIFY(isDrawn(noise, m_parent->position() * m_ratio, 0, 1));
        }
    }

    void aThumbnailIsTheCopyThatWasMadeForIt()
    {
        const QImage noise = noiseOf({256, 170});
        FitImage item(m_parent.get());
        item.setFillMode(FitImage::FillMode::Crop);
        item.setRadius(4);
        item.setSize({56, 56});
        item.setImage(noise);
        const int side = int(std::lround(56 * m_ratio));
        const QImage copy = SharpScaling::scaled(noise, QRect(43, 0, 170, 170), {side, side});
        const int corner = int(std::ceil(4 * m_ratio));
        const QRect straight = copy.rect().adjusted(0, corner, 0, -corner);
        for (const qreal x : {8.0, 8.5, 20.3, 100.25}) {
            m_parent->setPosition({x, 10.4});

            const QPointF place = m_parent->position() * m_ratio;
            QVERIFY2(isDrawn(copy.copy(straight), place + QPointF(0, corner), 2),
                     qPrintable(QString::number(x)));
        }
    }

    void nothingIsDrawnOutsideTheItem_data()
    {
        QTest::addColumn<QPointF>("place");
        QTest::addColumn<QSizeF>("size");
        QTest::newRow("on whole points") << QPointF(20, 20) << QSizeF(90, 60);
        QTest::newRow("between points") << QPointF(20.3, 20.6) << QSizeF(90.4, 60.3);
        QTest::newRow("narrow") << QPointF(20.5, 20.5) << QSizeF(33.3, 90.1);
    }

    void nothingIsDrawnOutsideTheItem()
    {
        QFETCH(const QPointF, place);
        QFETCH(const QSizeF, size);
        QImage white(200, 133, QImage::Format_RGB32);
        white.fill(Qt::white);
        ScalingPool pool;
        FitImage item(m_parent.get());
        item.setPosition(place);
        item.setSize(size);
        for (auto *scaler : {&pool, static_cast<ScalingPool *>(nullptr)}) {
            item.setPool(scaler);
            for (const auto mode : {FitImage::FillMode::Fit, FitImage::FillMode::Crop}) {
                item.setFillMode(mode);
                item.setImage(white.copy());

                // Moved to whole pixels, it may reach over its edges by half of one.
                const QRect own =
                    QRectF(place * m_ratio - QPointF(0.5, 0.5), size * m_ratio + QSizeF(1, 1))
                        .toAlignedRect();
                const QImage screen = grab();
                int inside = 0;
                int outside = 0;
                for (int y = 0; y < screen.height(); ++y) {
                    for (int x = 0; x < screen.width(); ++x) {
                        const bool drawn = qGray(screen.pixel(x, y)) > 0;
                        (own.contains(x, y) ? inside : outside) += drawn ? 1 : 0;
                    }
                }
                QVERIFY(inside > 0);
                QCOMPARE(outside, 0);
            }
        }
    }

private:
    /// The window as its next frame shows it. A grab alone does not follow what has moved.
    QImage grab()
    {
        QSignalSpy frames(&m_window, &QQuickWindow::frameSwapped);
        const int another = 2; // the first may have been under way
        for (int frame = 0; frame < another; ++frame) {
            m_window.update();
            if (frames.size() <= frame && !frames.wait()) {
                qFatal("The window draws no frame");
            }
        }
        return m_window.grabWindow();
    }

    static QImage noiseOf(QSize size)
    {
        QImage noise(size, QImage::Format_RGB32);
        std::mt19937 random(3);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                noise.setPixel(x, y, 0xff000000U | (quint32(random()) & 0xffffffU));
            }
        }
        return noise;
    }

    static QImage drawing(Symbol::Kind kind, int pixels)
    {
        QImage image(pixels, pixels, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(pixels / SymbolDrawing::side, pixels / SymbolDrawing::side);
        SymbolDrawing::draw(kind, Qt::white, &painter);
        return image;
    }

    [[nodiscard]] bool isDrawnAround(QPointF middle, qreal side)
    {
        const int pixels = int(std::lround(side * m_ratio));
        return isDrawn(drawing(Symbol::Kind::Cross, pixels),
                       middle * m_ratio - QPointF(pixels, pixels) / 2);
    }

    /// Whether @p image is on screen, a pixel on a pixel, not farther than half of one and @p slack
    /// from @p place, in pixels, and its every pixel within @p tolerance levels.
    [[nodiscard]] bool isDrawn(const QImage &image, QPointF place, int tolerance = 1,
                               double slack = 0.001)
    {
        const QImage screen = grab();
        const QRectF near(place - QPointF(0.5, 0.5) * (1 + 2 * slack),
                          QSizeF(1, 1) * (1 + 2 * slack));
        for (int x = int(std::ceil(near.left())); x <= near.right(); ++x) {
            for (int y = int(std::ceil(near.top())); y <= near.bottom(); ++y) {
                const QRect part({x, y}, image.size());
                if (screen.rect().contains(part) && isSame(image, screen.copy(part), tolerance)) {
                    return true;
                }
            }
        }
        return false;
    }

    static bool isSame(const QImage &one, const QImage &other, int tolerance)
    {
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                const QRgb a = one.pixel(x, y);
                const QRgb b = other.pixel(x, y);
                if (std::abs(qRed(a) - qRed(b)) > tolerance ||
                    std::abs(qGreen(a) - qGreen(b)) > tolerance ||
                    std::abs(qBlue(a) - qBlue(b)) > tolerance) {
                    return false;
                }
            }
        }
        return true;
    }

    /// Of the window, in points; a whole number of pixels at each scale.
    static constexpr QSize wholeSize{220, 152};

    QQuickWindow m_window;
    qreal m_ratio = 1;
    std::unique_ptr<QQuickItem> m_parent;
};

QTEST_MAIN(AlignmentTest)
#include "AlignmentTest.moc"
