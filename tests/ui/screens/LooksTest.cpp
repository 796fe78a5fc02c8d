// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"
#include "ui/items/Symbol.h"

#include <QFont>
#include <QQmlProperty>

using namespace Qt::StringLiterals;

/// Sizes, texts, fonts and colours of what lies over and beside the pictures.
class LooksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<WindowBench>(); }

    void cleanup() { m_bench.reset(); }

    void theBadgeIsARedCapsuleAroundItsLabel()
    {
        cull({"A.JPG"});
        m_bench->key(Qt::Key_X); // the review
        m_bench->key(Qt::Key_Escape);
        QTRY_VERIFY(m_bench->find(u"badge"_s));

        const auto *const badge = m_bench->find(u"badge"_s);
        const auto *const text = m_bench->itemsShowing(u"Rejected"_s).value(0);
        QVERIFY(text);
        const auto *const label = text->parentItem();
        const auto *const symbol = label->childItems().first();
        QCOMPARE(colorOf(badge), shade(red, 0.85));
        QCOMPARE(badge->property("radius").toReal(), badge->height() / 2);
        QCOMPARE(rect(badge), rect(label).adjusted(-12, -6, 12, 6));
        QCOMPARE(symbol->property("kind").value<Symbol::Kind>(), Symbol::Kind::CrossInCircle);
        QCOMPARE(colorOf(symbol), QColor(Qt::white));
        QVERIFY(rect(symbol).right() < rect(text).left());
        expectFont(text, 13, QFont::DemiBold, false);
        QCOMPARE(colorOf(text), QColor(Qt::white));
        const auto area = rect(m_bench->find(u"imageArea"_s));
        QCOMPARE(rect(badge).bottomLeft(), area.bottomLeft() + QPointF(16, -16));
    }

    void theInformationBarHasItsValuesInTheirShades()
    {
        ImageMetadata meta{.pixelWidth = 6240, .pixelHeight = 4160, .aperture = 2.8, .iso = 400};
        meta.lensModel = u"XF 35"_s;
        meta.fuji = FujiSettings{.filmSimulation = u"Velvia"_s, .grain = u"Weak"_s};
        m_bench->metadata->otherwise = meta;
        cull({"A.JPG"});
        QTRY_VERIFY(m_bench->texts().contains(u"ISO 400"_s));
        m_bench->waitForFrames();

        const auto *const bar = m_bench->find(u"exifBar"_s);
        QCOMPARE(colorOf(bar), shade(Qt::black, 0.6));
        const auto *const name = m_bench->find(u"exifName"_s);
        QCOMPARE(textOf(name), u"A.JPG"_s);
        expectFont(name, 12, QFont::DemiBold, true);
        QCOMPARE(colorOf(name), QColor(Qt::white));
        QCOMPARE(name->opacity(), 1.0);
        QCOMPARE(rect(bar).height(), rect(name).height() + 16);
        for (const auto &value : {u"6240×4160"_s, u"ƒ/2.8"_s, u"ISO 400"_s, u"XF 35"_s}) {
            const auto *const text = m_bench->itemsShowing(value).value(0);
            QVERIFY2(text, qPrintable(value));
            expectFont(text, 12, QFont::Normal, true);
            QCOMPARE(colorOf(text), QColor(Qt::white));
            QCOMPARE(text->opacity(), 0.9);
        }
        for (const auto &value : {u"Velvia"_s, u"Grain Weak"_s}) {
            const auto *const text = m_bench->itemsShowing(value).value(0);
            QVERIFY2(text, qPrintable(value));
            expectFont(text, 12, QFont::Normal, true);
            QCOMPARE(colorOf(text), green);
            QCOMPARE(text->opacity(), 1.0);
        }
    }

    void whatTheBarHasNoRoomForIsLeftOutWhole()
    {
        m_bench->metadata->otherwise = ImageMetadata{.pixelWidth = 6240,
                                                     .pixelHeight = 4160,
                                                     .aperture = 2.8,
                                                     .exposureTime = 1.0 / 8000,
                                                     .iso = 12800};
        enlargeTexts(2.2);
        cull({std::string(120, 'N') + ".JPG"});
        QTRY_VERIFY(m_bench->texts().contains(u"ISO 12800"_s));
        m_bench->waitForFrames();

        const auto end = rect(m_bench->find(u"processNav"_s)).left();
        int shown = 0;
        int leftOut = 0;
        for (const auto &value : {u"6240×4160"_s, u"ƒ/2.8"_s, u"1/8000s"_s, u"ISO 12800"_s}) {
            const auto *const text = m_bench->itemsShowing(value).value(0);
            QVERIFY2(text, qPrintable(value));
            ++(text->opacity() > 0 ? shown : leftOut);
            QCOMPARE(text->opacity() > 0, rect(text).right() <= end);
        }
        QVERIFY(shown > 0);
        QVERIFY(leftOut > 0);
    }

    void aLensAloneHasTheRestOfTheBar()
    {
        ImageMetadata meta{.iso = 400};
        meta.lensModel = QString(200, u'L');
        m_bench->metadata->otherwise = meta;
        cull({"A.JPG"});
        QTRY_VERIFY(m_bench->texts().contains(u"ISO 400"_s));
        m_bench->waitForFrames();

        const auto *const lens = m_bench->find(u"exifLens"_s);
        // Its last letters may end before what it was given.
        const auto end = lens->mapToScene(QPointF(lens->width(), 0)).x();
        QCOMPARE(end, rect(lens->parentItem()->parentItem()).right());
    }

    void theStepsLieInADarkCapsule()
    {
        cull({"A.JPG"});
        m_bench->waitForFrames();

        const auto *const nav = m_bench->find(u"processNav"_s);
        const auto *const capsule = nav->childItems().first();
        QList<QRectF> texts;
        for (const auto &text : {u"Card"_s, u"Cull"_s, u"Review"_s}) {
            const auto *const item = m_bench->itemsShowing(text).value(0);
            QVERIFY2(item, qPrintable(text));
            expectFont(item, 11, QFont::Medium, false);
            texts.append(rect(item));
        }
        const auto separators = m_bench->itemsShowing(u"›"_s);
        QCOMPARE(separators.size(), 2);
        for (int place = 0; place < 2; ++place) {
            expectFont(separators.at(place), 11, QFont::Medium, false);
            QCOMPARE(rect(separators.at(place)).left() - texts.at(place).right(), 5);
            QCOMPARE(texts.at(place + 1).left() - rect(separators.at(place)).right(), 5);
            QCOMPARE(rect(separators.at(place)).center().y(), texts.at(place).center().y());
        }
        QCOMPARE(colorOf(capsule), shade(Qt::black, 0.55));
        QCOMPARE(capsule->property("radius").toReal(), capsule->height() / 2);
        QCOMPARE(rect(capsule), (texts.first() | texts.last()).adjusted(-10, -5, 10, 5));
        QCOMPARE(rect(nav).top(), rect(capsule).top() - 6);
        QCOMPARE(rect(nav).right(), rect(capsule).right() + 10);
    }

    void aStepIsPressedAroundItsTextToo()
    {
        cull({"A.JPG"});
        m_bench->waitForFrames();
        const auto text = rect(m_bench->itemsShowing(u"Card"_s).value(0));

        QTest::mouseClick(m_bench->window, Qt::LeftButton, {},
                          (text.bottomRight() + QPointF(1, 3)).toPoint());

        QCOMPARE(m_bench->appState.phase(), Phase::cardReady(true));
    }

    void theStripCountsBelowItsThumbnails()
    {
        cull(ScreenBench::shots(12));
        m_bench->waitForFrames();

        const auto *const band = m_bench->find(u"filmstrip"_s);
        const auto *const strip = m_bench->find(u"strip"_s);
        QCOMPARE(colorOf(band), shade(Qt::black, 0.9));
        QCOMPARE(strip->height(), 64);
        const auto *const position = m_bench->find(u"position"_s);
        const auto *const count = m_bench->find(u"rejectCount"_s);
        QCOMPARE(textOf(position), u"1 / 12"_s);
        QCOMPARE(textOf(count), u"0 rejected"_s);
        for (const auto *const text : {position, count}) {
            expectFont(text, 11, QFont::Normal, true);
            QCOMPARE(rect(text).top(), rect(strip).bottom() + 4);
            QCOMPARE(rect(text).bottom(), rect(band).bottom() - 6);
        }
        QCOMPARE(rect(position).left(), rect(band).left() + 12);
        QCOMPARE(rect(count).right(), rect(band).right() - 12);
        QCOMPARE(colorOf(count), shade(Qt::white, 0.6));
        m_bench->key(Qt::Key_X);
        QCOMPARE(textOf(count), u"1 rejected"_s);
        QCOMPARE(colorOf(count), red);
    }

    void aThumbnailShowsDecisionKindAndPlace()
    {
        m_bench->pictures.thumbnailsAreHeld = true;
        cull({"A.MOV", "B.JPG"});
        m_bench->key(Qt::Key_X); // and on to the next
        QTRY_VERIFY(m_bench->find(u"layer"_s));
        m_bench->waitForFrames();

        const auto *const layer = m_bench->find(u"layer"_s);
        const auto *const thumb = layer->parentItem();
        QCOMPARE(thumb->size(), QSizeF(56, 56));
        const auto *const empty = thumb->childItems().first();
        QVERIFY(empty->isVisible());
        QCOMPARE(colorOf(empty), shade(grey, 0.2));
        QCOMPARE(colorOf(layer), shade(Qt::black, 0.55));
        const auto *const border = m_bench->find(u"border"_s);
        QVERIFY(border->parentItem() != thumb); // the next is the current one
        QCOMPARE(rect(border).left() - rect(thumb).right(), 4);
        for (const auto *const part : {empty, layer, border}) {
            QCOMPARE(part->property("radius").toReal(), 4);
            QCOMPARE(part->size(), thumb->size());
        }
        const QQmlProperty width(const_cast<QQuickItem *>(border), u"border.width"_s);
        const QQmlProperty color(const_cast<QQuickItem *>(border), u"border.color"_s);
        QCOMPARE(width.read().toInt(), 2);
        QCOMPARE(color.read().value<QColor>(), QColor(Qt::white));
        QCOMPARE(colorOf(border).alpha(), 0);
        const auto *const cross = m_bench->find(u"cross"_s);
        expectSymbol(cross, Symbol::Kind::Cross, 18, red);
        QCOMPARE(rect(cross).center(), rect(thumb).center());
        const auto *const play = m_bench->find(u"play"_s);
        QCOMPARE(play->parentItem(), thumb);
        expectSymbol(play, Symbol::Kind::Play, 12, shade(Qt::white, 0.8));
        QCOMPARE(rect(play).bottomRight(), rect(thumb).bottomRight() - QPointF(4, 4));
    }

    void aRejectShowsItsNameAndWhetherItIsSelected()
    {
        m_bench->pictures.thumbnailsAreHeld = true;
        cull({"A.JPG", "B.JPG"});
        m_bench->key(Qt::Key_X);
        m_bench->key(Qt::Key_X);
        QTRY_COMPARE(m_bench->appState.phase(), Phase::review());
        QTRY_VERIFY(m_bench->find(u"border"_s));
        m_bench->waitForFrames();

        const auto *const border = m_bench->find(u"border"_s);
        const auto *const cell = border->parentItem();
        QVERIFY(qAbs(cell->width() / cell->height() - 1.5) < 0.02);
        const QQmlProperty width(const_cast<QQuickItem *>(border), u"border.width"_s);
        const QQmlProperty color(const_cast<QQuickItem *>(border), u"border.color"_s);
        QCOMPARE(width.read().toInt(), 3);
        QCOMPARE(color.read().value<QColor>(), QColor(Qt::white));
        QCOMPARE(border->property("radius").toReal(), 6);
        QCOMPARE(border->size(), cell->size());
        QCOMPARE(colorOf(m_bench->find(u"missingPicture"_s)), shade(grey, 0.2));
        const auto *const name = m_bench->find(u"name"_s);
        QCOMPARE(textOf(name), u"A.JPG"_s);
        expectFont(name, 10, QFont::Normal, true);
        const auto *const label = name->parentItem();
        QCOMPARE(colorOf(label), shade(Qt::black, 0.6));
        QCOMPARE(label->property("radius").toReal(), 3);
        QCOMPARE(name->property("padding").toReal(), 4);
        QCOMPARE(rect(label).bottomLeft(), rect(cell).bottomLeft() + QPointF(4, -4));
    }

    void theCardScreenCallsACardThatIsNotSetCard()
    {
        QQmlComponent component(&m_bench->engine, u"qrc:/Kestle/screens/CardScreen.qml"_s);
        QVERIFY2(component.isReady(), qPrintable(component.errorString()));
        const std::unique_ptr<QObject> screen(component.createWithInitialProperties(
            {{u"appState"_s, QVariant::fromValue(&m_bench->appState)}}));
        QVERIFY2(screen, qPrintable(component.errorString()));

        QVERIFY(!m_bench->appState.card());
        QCOMPARE(screen->property("cardName").toString(), u"Card"_s);
    }

    void theCardScreenIsSparseWithAGreyCard()
    {
        expectSymbol(m_bench->find(u"cardSymbol"_s), Symbol::Kind::Card, 56, shade(Qt::white, 0.6));
        QCOMPARE(m_bench->text(u"title"_s), u"Insert an SD card"_s);
        expectFont(m_bench->find(u"title"_s), 22, QFont::Bold, false);
        QCOMPARE(m_bench->text(u"message"_s),
                 u"Kestle is waiting for a volume with a DCIM folder."_s);
    }

private:
    inline static const QColor red{0xff, 0x45, 0x3a};
    inline static const QColor green{0x30, 0xd1, 0x58};
    inline static const QColor grey{0x8e, 0x8e, 0x93};

    /// As its name tells it, so that rounding on the way does not count.
    static QColor shade(QColor color, double opacity)
    {
        color.setAlphaF(float(opacity));
        return QColor::fromRgba(color.rgba());
    }

    static QColor colorOf(const QQuickItem *item)
    {
        return QColor::fromRgba(item->property("color").value<QColor>().rgba());
    }

    static QString textOf(const QQuickItem *item) { return item->property("text").toString(); }

    static QRectF rect(const QQuickItem *item) { return WindowBench::rectOf(item); }

    static void expectFont(const QQuickItem *text, int pixels, QFont::Weight weight, bool isMono)
    {
        const auto font = text->property("font").value<QFont>();
        QCOMPARE(font.pixelSize(), pixels);
        QCOMPARE(font.weight(), weight);
        QCOMPARE(font.family() == u"monospace"_s, isMono);
    }

    static void expectSymbol(const QQuickItem *symbol, Symbol::Kind kind, int size, QColor color)
    {
        QCOMPARE(symbol->property("kind").value<Symbol::Kind>(), kind);
        QCOMPARE(symbol->size(), QSizeF(size, size));
        QCOMPARE(colorOf(symbol), color);
    }

    void cull(const std::vector<std::string> &shots) const { m_bench->cull(shots); }

    void enlargeTexts(double factor) const
    {
        QQmlComponent larger(&m_bench->engine);
        larger.setData("import QtQml; import Kestle;"
                       "QtObject { required property real factor;"
                       " Component.onCompleted: Look.textFactor = factor }",
                       QUrl());
        const std::unique_ptr<QObject> done(
            larger.createWithInitialProperties({{u"factor"_s, factor}}));
        QVERIFY2(done, qPrintable(larger.errorString()));
    }

    std::unique_ptr<WindowBench> m_bench;
};

QTEST_MAIN(LooksTest)
#include "LooksTest.moc"
