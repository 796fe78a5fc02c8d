// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/Preferences.h"
#include "app/UpdateController.h"
#include "tests/ui/WindowBench.h"
#include "ui/translations/Translations.h"

#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

/// A language whose words are 40 % longer than English ones.
class LongWords final : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char * /*context*/, const char *sourceText,
                                    const char * /*disambiguation*/, int /*n*/) const override
    {
        QString text;
        qsizetype owed = 0;
        for (const auto letter : QString::fromUtf8(sourceText)) {
            text += letter;
            owed += letter.isLetter() ? 4 : 0;
            if (!letter.isLetter()) {
                continue;
            }
            for (; owed >= 10; owed -= 10) {
                text += letter.toLower();
            }
        }
        return text;
    }
};

QString described(const QQuickItem *text)
{
    return u"“%1” (%2)"_s.arg(text->property("text").toString().left(60), text->objectName());
}

/// The part of @p item that its ancestors let through.
QRectF visibleRect(const QQuickItem *item)
{
    auto rect = WindowBench::rectOf(item);
    for (const auto *parent = item->parentItem(); parent; parent = parent->parentItem()) {
        if (parent->clip()) {
            rect &= WindowBench::rectOf(parent);
        }
    }
    return rect;
}

qreal opacityOf(const QQuickItem *item)
{
    qreal opacity = 1;
    for (; item; item = item->parentItem()) {
        opacity *= item->opacity();
    }
    return opacity;
}

} // namespace

/// Texts at twice the usual size, in a language of long words, in the smallest window; or in the
/// language and at the size that the environment asks for.
class LongTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const auto language = qEnvironmentVariable("KESTLE_LONG_TEXTS");
        if (language.isEmpty()) {
            QVERIFY(QCoreApplication::installTranslator(&m_words));
        } else {
            QCOMPARE(Translations::chosen({language}), language);
            m_translations.install({language});
        }
        m_isMadeUp = language.isEmpty();
        m_factor = qEnvironmentVariable("KESTLE_TEXT_FACTOR", u"2"_s).toInt();
        QVERIFY(m_factor == 1 || m_factor == 2);
    }

    void init()
    {
        m_bench = std::make_unique<WindowBench>();
        QQmlComponent larger(&m_bench->engine);
        larger.setData("import QtQml; import Kestle;"
                       "QtObject { Component.onCompleted: Look.textFactor = " +
                           QByteArray::number(m_factor) + " }",
                       QUrl());
        const std::unique_ptr<QObject> done(larger.create());
        QVERIFY2(done, qPrintable(larger.errorString()));
    }

    void cleanup() { m_bench.reset(); }

    void theTextsAreAsLargeAndLongAsTheTestMeans()
    {
        if (m_isMadeUp) {
            QVERIFY(m_bench->text(u"title"_s).size() >= u"Insert an SD card"_s.size() * 1.25);
        } else {
            QVERIFY(m_bench->text(u"title"_s) != u"Insert an SD card"_s);
        }
        QCOMPARE(m_bench->find(u"title"_s)->property("font").value<QFont>().pixelSize(),
                 22 * m_factor);
    }

    void waitingForACard() { expectOrder(); }

    void aCardThatIsReadyAmongTwo()
    {
        m_bench->appState.start();
        m_bench->mountCard("A rather long name of a card", ScreenBench::shots(1));
        m_bench->mountCard("TWO", ScreenBench::shots(1));
        QTRY_COMPARE(m_bench->appState.phase(), Phase::cardReady(false));
        QTRY_VERIFY(m_bench->find(u"picker"_s));
        expectOrder();
    }

    void aCardThatNeedsAccess()
    {
        m_bench->appState.start();
        m_bench->access->closed.insert(m_bench->mountLater("CARD", ScreenBench::shots(1)));
        m_bench->mountCard("CARD", {});
        QTRY_COMPARE(m_bench->appState.phase(), Phase::needsAccess());
        expectOrder();
    }

    void aCardWithoutPictures()
    {
        m_bench->appState.start();
        m_bench->mountCard("CARD", {"NOTES.TXT"});
        QTRY_COMPARE(m_bench->appState.phase(), Phase::cardReady(false));
        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(m_bench->appState.phase(), Phase::noMedia());
        expectOrder();
    }

    void culling()
    {
        ImageMetadata meta{.pixelWidth = 6240, .pixelHeight = 4160, .aperture = 2.8, .iso = 12800};
        meta.lensModel = u"XF100-400mmF4.5-5.6 R LM OIS WR"_s;
        meta.fuji = FujiSettings{.filmSimulation = u"Classic Negative"_s,
                                 .dynamicRange = u"DR400"_s,
                                 .grain = u"Strong/Large"_s};
        m_bench->metadata->otherwise = meta;
        m_bench->cull(ScreenBench::shots(30));
        m_bench->defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        m_bench->key(Qt::Key_X);
        QTRY_VERIFY(m_bench->texts().contains(u"ISO 12800"_s));
        QTRY_VERIFY(m_bench->find(u"badge"_s));
        expectOrder();
    }

    void theReview_data()
    {
        QTest::addColumn<int>("rejects");
        QTest::addColumn<bool>("isLocked");
        QTest::newRow("nothing rejected") << 0 << false;
        QTest::newRow("some rejects") << 12 << false;
        QTest::newRow("a locked card") << 12 << true;
    }

    void theReview()
    {
        QFETCH(int, rejects);
        QFETCH(bool, isLocked);
        review(rejects, isLocked);
        expectOrder();
    }

    void theEnlargedReject()
    {
        review(3, false);
        m_bench->key(Qt::Key_Space);
        QTRY_VERIFY(m_bench->find(u"enlarged"_s));
        expectOrder(m_bench->find(u"enlarged"_s));
    }

    void theQuestion()
    {
        review(12, false);
        m_bench->key(Qt::Key_Return);
        QTRY_VERIFY(m_bench->find(u"confirmTitle"_s));
        QTest::qWait(50);
        const auto *const content = m_bench->find(u"confirmTitle"_s)->parentItem()->parentItem();
        expectOrder(content);
        for (const auto &button : {u"confirmButton"_s, u"cancelButton"_s}) {
            QVERIFY(
                WindowBench::rectOf(content).contains(WindowBench::rectOf(m_bench->find(button))));
        }
        QVERIFY(content->width() < 1000 - 96);
    }

    void deletingAndItsOutcome_data()
    {
        QTest::addColumn<bool>("fails");
        QTest::newRow("all well") << false;
        QTest::newRow("failures") << true;
    }

    void deletingAndItsOutcome()
    {
        QFETCH(bool, fails);
        review(3, false);
        m_bench->files->removalIsHeld = true;
        m_bench->files->removalsFail = fails;
        m_bench->appState.performDelete();
        QTRY_VERIFY(m_bench->find(u"progressText"_s));
        expectOrder();
        m_bench->letGo();
        QTRY_VERIFY(m_bench->find(u"counts"_s));
        expectOrder();
        if (fails) {
            m_bench->click(u"failuresButton"_s);
            QTRY_VERIFY(m_bench->find(u"failureReason"_s));
            expectOrder();
        }
    }

    void theMenus_data()
    {
        QTest::addColumn<QByteArray>("menu");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("Kestle") << QByteArray("Kestle") << QByteArray("About Kestle");
        QTest::newRow("Edit") << QByteArray("Edit") << QByteArray("Undo Decision");
        QTest::newRow("Cull") << QByteArray("Cull") << QByteArray("Finish Culling → Review");
    }

    void theMenus()
    {
        QFETCH(const QByteArray, menu);
        QFETCH(const QByteArray, command);
        const auto shown = [](const QByteArray &text) {
            return QCoreApplication::translate("MainMenu", text.constData());
        };
        m_bench->click(u"menuButton"_s);
        QTRY_VERIFY(!m_bench->itemsShowing(shown(menu)).isEmpty());
        expectOrder(listOf(m_bench->itemsShowing(shown(menu)).last()));
        m_bench->click(m_bench->itemsShowing(shown(menu)).last());
        QTRY_VERIFY(!m_bench->itemsShowing(shown(command)).isEmpty());
        expectOrder(listOf(m_bench->itemsShowing(shown(command)).last()));
    }

    void theWindowsBeside_data()
    {
        QTest::addColumn<QString>("window");
        for (const auto *window : {"About", "Settings", "Update"}) {
            QTest::newRow(window) << QString::fromLatin1(window);
        }
    }

    void theWindowsBeside()
    {
        QFETCH(const QString, window);
        Preferences preferences(m_bench->defaults);
        UpdateController updates(m_bench->defaults, {});
        updates.checkForUpdates(); // says who updates Kestle
        QVariantMap properties;
        if (window == u"Settings"_s) {
            properties.insert(u"preferences"_s, QVariant::fromValue(&preferences));
        } else if (window == u"Update"_s) {
            properties.insert(u"updates"_s, QVariant::fromValue(&updates));
        }
        QQmlComponent component(&m_bench->engine,
                                QUrl(u"qrc:/Kestle/shell/%1Window.qml"_s.arg(window)));
        const std::unique_ptr<QObject> made(component.createWithInitialProperties(properties));
        auto *const beside = qobject_cast<QQuickWindow *>(made.get());
        QVERIFY2(beside, qPrintable(component.errorString()));
        beside->show();
        QVERIFY(QTest::qWaitForWindowExposed(beside));
        QVERIFY(beside->width() <= 1000 && beside->height() <= 700);
        expectOrder(beside->contentItem());
    }

private:
    void review(int rejects, bool isLocked)
    {
        if (isLocked) {
            m_bench->files->makeReadOnly(m_bench->mountLater("CARD", {}));
        }
        m_bench->cull(ScreenBench::shots(rejects + 1));
        for (int index = 0; index < rejects; ++index) {
            m_bench->key(Qt::Key_X);
        }
        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(m_bench->appState.phase(), Phase::review());
        QTRY_VERIFY(m_bench->find(u"deleteButton"_s));
        QTest::qWait(50);
    }

    static const QQuickItem *listOf(const QQuickItem *entry)
    {
        while (entry && !entry->inherits("QQuickListView")) {
            entry = entry->parentItem();
        }
        return entry;
    }

    static void collect(const QQuickItem *parent, QList<const QQuickItem *> &texts)
    {
        for (const auto *child : parent->childItems()) {
            if (!child->isVisible()) {
                continue;
            }
            if (child->inherits("QQuickText") && !child->property("text").toString().isEmpty() &&
                opacityOf(child) > 0) {
                texts.append(child);
            }
            collect(child, texts);
        }
    }

    /// No text is cut but those that are made to be, none leaves the window or its control, and no
    /// two lie on each other.
    void expectOrder(const QQuickItem *below = nullptr)
    {
        m_bench->waitForFrames();
        if (const auto folder = qEnvironmentVariable("KESTLE_GRABS"); !folder.isEmpty()) {
            m_bench->window->grabWindow().save(
                u"%1/long-%2-%3.png"_s
                    .arg(folder, QString::fromLatin1(QTest::currentTestFunction()))
                    .arg(++m_grabs));
        }
        QStringList faults;
        QList<const QQuickItem *> texts;
        collect(below ? below : m_bench->window->contentItem(), texts);
        QVERIFY(!texts.isEmpty());
        const QRectF window(QPointF(), texts.first()->window()->size());
        for (const auto *text : texts) {
            const auto rect = WindowBench::rectOf(text);
            const bool mayElide = text->property("elide").toInt() != int(Qt::ElideNone);
            if (!mayElide && (text->property("truncated").toBool() ||
                              text->property("contentWidth").toReal() > text->width() + 1 ||
                              text->property("contentHeight").toReal() > text->height() + 1)) {
                faults.append(described(text) + u" is cut"_s);
            }
            const auto seen = visibleRect(text);
            if (seen.isEmpty()) {
                continue; // scrolled out of sight
            }
            if (!window.contains(rect) && seen == rect) {
                faults.append(described(text) + u" leaves the window"_s);
            }
            for (const auto *parent = text->parentItem(); parent; parent = parent->parentItem()) {
                if (parent->inherits("QQuickAbstractButton") &&
                    !WindowBench::rectOf(parent).adjusted(-1, -1, 1, 1).contains(rect)) {
                    faults.append(described(text) + u" leaves its button"_s);
                }
            }
            for (const auto *other : texts) {
                const auto common = visibleRect(other) & seen;
                if (other > text && common.width() > 1 && common.height() > 1) {
                    faults.append(described(text) + u" lies on "_s + described(other));
                }
            }
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    }

    LongWords m_words;
    Translations m_translations;
    bool m_isMadeUp = true;
    int m_factor = 2;
    std::unique_ptr<WindowBench> m_bench;
    int m_grabs = 0;
};

QTEST_MAIN(LongTextsTest)
#include "LongTextsTest.moc"
