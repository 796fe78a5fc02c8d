// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/FitImage.h"
#include "ui/items/PixelImage.h"
#include "ui/items/Symbol.h"

#include <QMetaEnum>
#include <QPainter>
#include <QQuickWindow>
#include <QSGNode>
#include <QTest>

namespace {

class CountedTiles : public PixelImage {
public:
    using PixelImage::PixelImage;

    int tiles = 0;

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override
    {
        auto *node = PixelImage::updatePaintNode(old, data);
        tiles = node ? node->childCount() : 0;
        return node;
    }
};

} // namespace

/// What the items draw, looked at in a real window.
class ItemsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QQuickWindow>();
        m_window->setColor(Qt::black);
        m_window->resize(400, 300);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void cleanup() { letPoolGo(); }

    void placements_data()
    {
        QTest::addColumn<bool>("crops");
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSizeF>("area");
        QTest::addColumn<QRectF>("target");
        QTest::addColumn<QRectF>("source");

        QTest::newRow("a wide picture fits by its width")
            << false << QSize(600, 200) << QSizeF(300, 300) << QRectF(0, 100, 300, 100)
            << QRectF(0, 0, 600, 200);
        QTest::newRow("a tall picture fits by its height")
            << false << QSize(200, 600) << QSizeF(300, 300) << QRectF(100, 0, 100, 300)
            << QRectF(0, 0, 200, 600);
        QTest::newRow("a small picture is enlarged")
            << false << QSize(30, 20) << QSizeF(300, 300) << QRectF(0, 50, 300, 200)
            << QRectF(0, 0, 30, 20);
        QTest::newRow("a wide picture loses its sides")
            << true << QSize(600, 200) << QSizeF(50, 50) << QRectF(0, 0, 50, 50)
            << QRectF(200, 0, 200, 200);
        QTest::newRow("a tall picture loses top and bottom")
            << true << QSize(200, 600) << QSizeF(50, 50) << QRectF(0, 0, 50, 50)
            << QRectF(0, 200, 200, 200);
    }

    void placements()
    {
        QFETCH(bool, crops);
        QFETCH(QSize, picture);
        QFETCH(QSizeF, area);
        QFETCH(QRectF, target);
        QFETCH(QRectF, source);

        const auto place = crops ? PicturePlacement::cropping(picture, area)
                                 : PicturePlacement::fitting(picture, area);

        QCOMPARE(place.target, target);
        QCOMPARE(place.source, source);
    }

    void aFinePatternShownSmallIsSmoothGrey()
    {
        QImage pattern(3000, 2000, QImage::Format_RGB32);
        for (int y = 0; y < pattern.height(); ++y) {
            for (int x = 0; x < pattern.width(); ++x) {
                pattern.setPixel(x, y, (x + y) % 2 == 0 ? 0xffffffff : 0xff000000);
            }
        }
        FitImage item(m_window->contentItem());
        item.setPool(&m_pool);
        item.setSize({300, 200});

        item.setImage(pattern);

        QTRY_VERIFY(isFlat(m_window->grabWindow().copy(20, 20, 260, 160), 128, 6));
    }

    void roundedCornersShowWhatIsBehind()
    {
        QImage white(100, 100, QImage::Format_RGB32);
        white.fill(Qt::white);
        FitImage item(m_window->contentItem());
        item.setPool(&m_pool);
        item.setSize({56, 56});
        item.setFillMode(FitImage::FillMode::Crop);
        item.setRadius(8);

        item.setImage(white);

        const QImage grab = m_window->grabWindow();
        QVERIFY(qGray(grab.pixel(0, 0)) < 20);
        QVERIFY(qGray(grab.pixel(55, 55)) < 20);
        QCOMPARE(qGray(grab.pixel(28, 0)), 255);
        QCOMPARE(qGray(grab.pixel(28, 28)), 255);
    }

    void nobodyWaitsForAnItemThatIsStillScaling()
    {
        QImage large(3000, 2000, QImage::Format_RGB32);
        large.fill(Qt::red);
        holdPool();
        auto item = std::make_unique<FitImage>(m_window->contentItem());
        item->setPool(&m_pool);
        item->setSize({300, 200});
        item->setImage(large);
        (void)m_window->grabWindow(); // asks for the copy

        item.reset();

        QVERIFY(m_poolIsHeld); // here before any copy could be made
        letPoolGo();
        QCoreApplication::processEvents();
    }

    void aLargeBitmapIsDrawnPlainlyUntilItsCopyIsThere()
    {
        QImage large(3000, 2000, QImage::Format_RGB32);
        large.fill(Qt::red);
        holdPool();
        FitImage item(m_window->contentItem());
        item.setPool(&m_pool);
        item.setSize({300, 200});

        item.setImage(large);

        const QColor shown = m_window->grabWindow().pixelColor(150, 100);
        letPoolGo();
        QCOMPARE(shown, QColor(Qt::red));
    }

    void aNewBitmapReplacesTheOldOneAndNoneClears()
    {
        FitImage item(m_window->contentItem());
        item.setPool(&m_pool);
        item.setSize({100, 100});
        QImage red(10, 10, QImage::Format_RGB32);
        red.fill(Qt::red);
        item.setImage(red);
        QCOMPARE(m_window->grabWindow().pixelColor(50, 50), QColor(Qt::red));

        item.setImage({});

        QCOMPARE(m_window->grabWindow().pixelColor(50, 50), QColor(Qt::black));
    }

    void everyPixelOfTheBitmapIsOnePixelOfTheScreen_data()
    {
        QTest::addColumn<QPointF>("anchor");
        QTest::addColumn<QSizeF>("pan");

        QTest::newRow("in the middle") << QPointF(1500, 1000) << QSizeF(0, 0);
        QTest::newRow("across tile borders") << QPointF(1024, 1024) << QSizeF(0, 0);
        QTest::newRow("panned") << QPointF(1500, 1000) << QSizeF(80, -80);
        QTest::newRow("panned by parts of a point") << QPointF(1500, 1000) << QSizeF(12.3, 7.7);
        QTest::newRow("at the corner") << QPointF(0, 0) << QSizeF(0, 0);
        QTest::newRow("out of sight") << QPointF(0, 0) << QSizeF(1e12, -1e12);
    }

    void everyPixelOfTheBitmapIsOnePixelOfTheScreen()
    {
        QFETCH(QPointF, anchor);
        QFETCH(QSizeF, pan);
        QImage image(3000, 2000, QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                image.setPixel(x, y, qRgb(x * 7 & 255, y * 5 & 255, (x + y) & 255));
            }
        }
        PixelImage item(m_window->contentItem());
        item.setSize({400, 300});
        item.setAnchor(anchor);
        item.setPan(pan);

        item.setImage(image);

        const QImage grab = m_window->grabWindow();
        const double left = std::round(200 - anchor.x() + pan.width());
        const double top = std::round(150 - anchor.y() + pan.height());
        int wrong = 0;
        for (int y = 0; y < grab.height(); ++y) {
            for (int x = 0; x < grab.width(); ++x) {
                const bool inside = x >= left && y >= top && x < left + 3000 && y < top + 2000;
                const QRgb wanted = inside ? image.pixel(int(x - left), int(y - top)) : 0xff000000;
                wrong += (grab.pixel(x, y) & 0xffffff) == (wanted & 0xffffff) ? 0 : 1;
            }
        }
        QCOMPARE(wrong, 0);
    }

    void onlyWhatIsInViewOfALargePictureIsUploaded()
    {
        QImage image(11648, 8736, QImage::Format_RGB32); // 100 megapixels
        QVERIFY(!image.isNull());
        image.fill(Qt::blue);
        const QRect inView = QRect(4000, 8000, 400, 300);
        for (int y = inView.top(); y <= inView.bottom(); ++y) {
            auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
            for (int x = inView.left(); x <= inView.right(); ++x) {
                row[x] = qRgb(x & 255, y & 255, (x ^ y) & 255);
            }
        }
        CountedTiles item(m_window->contentItem());
        item.setSize({400, 300});
        item.setAnchor({4200, 8150});

        item.setImage(image);

        const QImage grab = m_window->grabWindow().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(grab, image.copy(inView));
        QVERIFY2(item.tiles <= 4, qPrintable(QString::number(item.tiles)));
        item.setPan({-3000, -80});
        (void)m_window->grabWindow();
        QVERIFY2(item.tiles <= 4, qPrintable(QString::number(item.tiles)));
    }

    void everySymbolDrawsSomethingWithinItsSquare()
    {
        Symbol symbol(m_window->contentItem());
        symbol.setPosition({100, 100});
        symbol.setSize({48, 48});
        const auto kinds = QMetaEnum::fromType<Symbol::Kind>();
        for (int i = 0; i < kinds.keyCount(); ++i) {
            symbol.setKind(Symbol::Kind(kinds.value(i)));
            const QImage grab = m_window->grabWindow();
            int inside = 0;
            int outside = 0;
            for (int y = 0; y < grab.height(); ++y) {
                for (int x = 0; x < grab.width(); ++x) {
                    const bool drawn = qGray(grab.pixel(x, y)) > 40;
                    (QRect(100, 100, 48, 48).contains(x, y) ? inside : outside) += drawn ? 1 : 0;
                }
            }
            QVERIFY2(inside > 30, kinds.key(i));
            QCOMPARE(outside, 0);
        }
    }

private:
    static bool isFlat(const QImage &image, int grey, int tolerance)
    {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (std::abs(qGray(image.pixel(x, y)) - grey) > tolerance) {
                    return false;
                }
            }
        }
        return true;
    }

    /// The pool makes no copy until it is let go.
    void holdPool()
    {
        m_poolIsHeld = true;
        m_pool.start([this] {
            while (m_poolIsHeld) {
                QThread::msleep(1);
            }
        });
    }

    void letPoolGo()
    {
        m_poolIsHeld = false;
        m_pool.waitForDone();
    }

    std::atomic_bool m_poolIsHeld = false;
    ScalingPool m_pool;
    std::unique_ptr<QQuickWindow> m_window;
};

QTEST_MAIN(ItemsTest)
#include "ItemsTest.moc"
