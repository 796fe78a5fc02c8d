// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

#include <QCoroTask>
#include <QSGRendererInterface>

#include <cmath>

using namespace Qt::StringLiterals;

/// A photo at 100 % in the real window, compared with what was decoded. Run at several scales, and
/// with OpenGL.
class ZoomTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (int y = 0; y < m_picture.height(); ++y) {
            auto *row = reinterpret_cast<QRgb *>(m_picture.scanLine(y));
            for (int x = 0; x < m_picture.width(); ++x) {
                row[x] = 0xff000000U | (quint32(x) * 7919U ^ quint32(y) * 104729U * 256U);
            }
        }
    }

    void theSubjectLiesInTheMiddle_data()
    {
        QTest::addColumn<ImageMetadata>("metadata");
        QTest::addColumn<QPointF>("anchor");

        const QPointF middle(1500, 1000);
        const QPointF subject(701, 1303);
        QTest::newRow("of an upright picture")
            << ImageMetadata{.subjectArea = subject, .orientation = 1} << subject;
        QTest::newRow("of a picture without an orientation")
            << ImageMetadata{.subjectArea = subject} << subject;
        QTest::newRow("but not of a turned one")
            << ImageMetadata{.subjectArea = subject, .orientation = 6} << middle;
        QTest::newRow("but the picture's middle without a subject")
            << ImageMetadata{.orientation = 1} << middle;
    }

    void theSubjectLiesInTheMiddle()
    {
        QFETCH(const ImageMetadata, metadata);
        QFETCH(const QPointF, anchor);
        WindowBench bench;

        zoom(bench, metadata);

        QVERIFY(isShown(bench, anchor, {0, 0}));
    }

    void everyPixelIsOnePixelAfterPansByKey()
    {
        WindowBench bench;
        zoom(bench, {});
        const QPointF middle(1500, 1000);
        QSizeF pan(0, 0);
        const std::vector<std::pair<Qt::Key, QSizeF>> steps{
            {Qt::Key_Left, {80, 0}},  {Qt::Key_Up, {0, 80}},     {Qt::Key_Left, {80, 0}},
            {Qt::Key_Down, {0, -80}}, {Qt::Key_Right, {-80, 0}}, {Qt::Key_Down, {0, -80}},
        };
        for (const auto &[key, by] : steps) {
            bench.key(key);
            pan += by;

            QCOMPARE(bench.appState.zoomPan(), pan);
            QVERIFY(isShown(bench, middle, pan));
        }
    }

    void everyPixelIsOnePixelInAWindowOfAnySize_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("1001 by 701") << QSize(1001, 701);
        QTest::newRow("1003 by 702") << QSize(1003, 702);
        QTest::newRow("1178 by 799") << QSize(1178, 799);
    }

    void everyPixelIsOnePixelInAWindowOfAnySize()
    {
        QFETCH(const QSize, size);
        WindowBench bench(size);
        zoom(bench, {});
        bench.key(Qt::Key_Left);

        press(bench);
        moveTo(bench, {21, -13});

        QVERIFY(isShown(bench, {1500, 1000}, {101, -13}));
    }

    void everyPixelIsOnePixelDuringAndAfterDrags()
    {
        WindowBench bench;
        zoom(bench, {});
        const QPointF middle(1500, 1000);
        bench.key(Qt::Key_Left);

        press(bench);
        moveTo(bench, {15, -6});
        moveTo(bench, {30, -12});
        QCOMPARE(bench.appState.zoomPan(), QSizeF(80, 0));
        QVERIFY(isShown(bench, middle, {110, -12}));
        release(bench, {30, -12});
        QCOMPARE(bench.appState.zoomPan(), QSizeF(110, -12));
        QCOMPARE(dragOffset(bench), QSizeF(0, 0));
        QVERIFY(isShown(bench, middle, {110, -12}));

        press(bench);
        QCOMPARE(dragOffset(bench), QSizeF(0, 0));
        for (int step = 1; step <= 7; ++step) {
            moveTo(bench, {-11 * step, 9 * step});
        }
        release(bench, {-77, 63});
        QCOMPARE(bench.appState.zoomPan(), QSizeF(33, 51));
        QVERIFY(isShown(bench, middle, {33, 51}));
    }

    void aDragOfOneMovementCounts()
    {
        WindowBench bench;
        zoom(bench, {});

        press(bench);
        moveTo(bench, {25, 18});
        QVERIFY(isShown(bench, {1500, 1000}, {25, 18}));
        release(bench, {25, 18});

        QCOMPARE(bench.appState.zoomPan(), QSizeF(25, 18));
    }

    void aDragBeginsTenPointsAway_data()
    {
        QTest::addColumn<QPoint>("by");
        QTest::addColumn<bool>("begins");
        QTest::newRow("nine to the side") << QPoint(9, 0) << false;
        QTest::newRow("ten to the side") << QPoint(10, 0) << true;
        QTest::newRow("ten upwards") << QPoint(0, -10) << true;
        QTest::newRow("seven each way, which are less than ten") << QPoint(7, 7) << false;
        QTest::newRow("eight each way, which are more") << QPoint(-8, 8) << true;
    }

    void aDragBeginsTenPointsAway()
    {
        QFETCH(const QPoint, by);
        QFETCH(const bool, begins);
        WindowBench bench;
        zoom(bench, {});
        const QSizeF moved = begins ? QSizeF(by.x(), by.y()) : QSizeF(0, 0);

        press(bench);
        moveTo(bench, by);

        QCOMPARE(dragOffset(bench), moved);
        release(bench, by);
        QCOMPARE(bench.appState.zoomPan(), moved);
    }

    void aDragThatHasBegunComesBackExactly()
    {
        WindowBench bench;
        zoom(bench, {});

        press(bench);
        moveTo(bench, {40, 40});
        moveTo(bench, {3, -2});
        release(bench, {3, -2});

        QCOMPARE(bench.appState.zoomPan(), QSizeF(3, -2));
    }

    void aDragThatIsCutShortLeavesNothingBehind()
    {
        WindowBench bench;
        zoom(bench, {});
        press(bench);
        moveTo(bench, {40, 40});

        bench.key(Qt::Key_Z);
        QTRY_VERIFY(!bench.find(u"zoom"_s));
        bench.key(Qt::Key_Z);
        QTRY_VERIFY(bench.find(u"zoom"_s));
        moveTo(bench, {60, 60});
        release(bench, {60, 60});

        QCOMPARE(bench.appState.zoomPan(), QSizeF(0, 0));
        QTRY_VERIFY(!bench.find(u"spinner"_s));
        QVERIFY(isShown(bench, {1500, 1000}, {0, 0}));
    }

    void aDragEndsWithThePictureThatItMoved()
    {
        WindowBench bench;
        zoom(bench, {});
        bench.key(Qt::Key_Z);
        bench.key(Qt::Key_X);
        bench.key(Qt::Key_Z);
        QCOMPARE(bench.appState.session()->currentIndex(), 1);
        QTRY_VERIFY(bench.find(u"pixels"_s));
        press(bench);
        moveTo(bench, {40, 40});
        QCOMPARE(dragOffset(bench), QSizeF(40, 40));

        bench.appState.undoDecision();
        bench.appState.setZoomed(true);
        moveTo(bench, {60, 60});
        release(bench, {60, 60});

        QCOMPARE(bench.appState.session()->currentIndex(), 0);
        QCOMPARE(bench.appState.zoomPan(), QSizeF(0, 0));
        QTRY_VERIFY(bench.find(u"pixels"_s));
        press(bench); // the next one counts
        moveTo(bench, {20, 0});
        release(bench, {20, 0});
        QCOMPARE(bench.appState.zoomPan(), QSizeF(20, 0));
    }

    void whatResizesTheWindowMovesNoPicture_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::newRow("left edge") << QPoint(2, 350);
        QTest::newRow("right edge") << QPoint(997, 350);
        QTest::newRow("corner") << QPoint(2, 697);
    }

    void whatResizesTheWindowMovesNoPicture()
    {
        QFETCH(const QPoint, from);
        WindowBench bench;
        zoom(bench, {});

        QTest::mousePress(bench.window, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step) {
            QTest::mouseMove(bench.window, from + QPoint(from.x() < 500 ? 4 : -4, -4) * step);
            QCOMPARE(dragOffset(bench), QSizeF(0, 0));
        }
        QTest::mouseRelease(bench.window, Qt::LeftButton, {}, QPoint(500, 350));

        QCOMPARE(bench.appState.zoomPan(), QSizeF(0, 0));
    }

    void aPictureCanBeMovedOutOfSight()
    {
        WindowBench bench;
        zoom(bench, {});

        bench.appState.setZoomPan({-3000, 2500});

        QVERIFY(isShown(bench, {1500, 1000}, {-3000, 2500}));
    }

    void aFileWithoutAPictureKeepsTheSpinner()
    {
        WindowBench bench;
        bench.cull({"BROKEN1.JPG", "DSCF0002.JPG"});
        bench.key(Qt::Key_Z);
        QTRY_VERIFY(bench.find(u"zoom"_s));

        const auto none = QCoro::waitFor(bench.pipeline.fullImage(bench.item(0), {}));

        QVERIFY(none.isNull());
        QCoreApplication::processEvents();
        const auto *spinner = bench.find(u"spinner"_s);
        QVERIFY(spinner);
        QVERIFY(spinner->parentItem() == bench.find(u"zoom"_s));
    }

private:
    /// In the middle of the picture, in points.
    static constexpr QPoint dragStart{500, 350};

    void zoom(WindowBench &bench, const ImageMetadata &metadata) const
    {
        bench.metadata->otherwise = metadata;
        bench.pictures.full = [this](const auto &) { return m_picture; };
        bench.cull(ScreenBench::shots(2));
        bench.key(Qt::Key_I); // nothing over the picture
        QTRY_VERIFY(!bench.find(u"exifBar"_s));
        bench.key(Qt::Key_Z);
        QTRY_VERIFY(bench.find(u"pixels"_s));
        QTRY_VERIFY(!bench.find(u"spinner"_s));
    }

    static void press(const WindowBench &bench)
    {
        QTest::mousePress(bench.window, Qt::LeftButton, {}, dragStart);
    }

    static void moveTo(const WindowBench &bench, QPoint by)
    {
        QTest::mouseMove(bench.window, dragStart + by);
    }

    static void release(const WindowBench &bench, QPoint by)
    {
        QTest::mouseRelease(bench.window, Qt::LeftButton, {}, dragStart + by);
    }

    static QSizeF dragOffset(const WindowBench &bench)
    {
        return bench.find(u"zoom"_s)->property("dragOffset").toSizeF();
    }

    /// Whether every pixel of the view is that of the picture, when its @p anchor lies in the
    /// middle of the view, moved by @p pan in points; as near to it as whole pixels allow.
    [[nodiscard]] bool isShown(const WindowBench &bench, QPointF anchor, QSizeF pan) const
    {
        const QImage whole = bench.window->grabWindow();
        // A window whose pixels are no whole number of points is stretched over the next whole
        // number of them on a graphics card, and has a margin without.
        const qreal nominal = bench.window->effectiveDevicePixelRatio();
        const bool isStretched =
            bench.window->rendererInterface()->graphicsApi() != QSGRendererInterface::Software;
        const QPointF ratio = isStretched ? QPointF(whole.width() / qreal(bench.window->width()),
                                                    whole.height() / qreal(bench.window->height()))
                                          : QPointF(nominal, nominal);
        const auto inPixels = [&](QPointF point) {
            return QPointF(point.x() * ratio.x(), point.y() * ratio.y());
        };
        const QRectF view = WindowBench::rectOf(bench.find(u"pixels"_s));
        const auto exact = inPixels(view.center() + QPointF(pan.width(), pan.height())) - anchor;
        // The step indicator lies over its upper end.
        const QRectF free = view.adjusted(0, 40, 0, 0);
        const QRect pixels =
            QRectF(inPixels(free.topLeft()), inPixels(free.bottomRight())).toRect();
        const QImage grab =
            whole.copy(pixels.adjusted(1, 1, -1, -1)).convertToFormat(QImage::Format_RGB32);
        const QPointF corner = exact - pixels.topLeft() - QPointF(1, 1);
        for (int x = int(std::ceil(corner.x() - 0.501)); x <= corner.x() + 0.501; ++x) {
            for (int y = int(std::ceil(corner.y() - 0.501)); y <= corner.y() + 0.501; ++y) {
                if (wrongPixels(grab, {x, y}) == 0) {
                    return true;
                }
            }
        }
        return false;
    }

    /// Of @p grab, whose upper left is the picture's corner at @p corner.
    [[nodiscard]] qint64 wrongPixels(const QImage &grab, QPoint corner) const
    {
        const QRgb black = 0xff000000;
        qint64 wrong = 0;
        for (int y = 0; y < grab.height(); ++y) {
            const auto *shown = reinterpret_cast<const QRgb *>(grab.constScanLine(y));
            const int row = y - corner.y();
            const bool hasRow = row >= 0 && row < m_picture.height();
            const auto *pixels =
                reinterpret_cast<const QRgb *>(m_picture.constScanLine(hasRow ? row : 0));
            for (int x = 0; x < grab.width(); ++x) {
                const int column = x - corner.x();
                const bool inside = hasRow && column >= 0 && column < m_picture.width();
                wrong += ((shown[x] ^ (inside ? pixels[column] : black)) & 0xffffff) != 0 ? 1 : 0;
            }
        }
        return wrong;
    }

    QImage m_picture{3000, 2000, QImage::Format_RGB32};
};

QTEST_MAIN(ZoomTest)
#include "ZoomTest.moc"
