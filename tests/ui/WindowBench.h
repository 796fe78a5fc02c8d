// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/ui/ScreenBench.h"
#include "ui/shell/KeyMonitor.h"

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSignalSpy>

/// The real main window over a ScreenBench, with keys and mouse as a user has them.
class WindowBench : public ScreenBench {
public:
    explicit WindowBench(QSize size = {1000, 700}, std::chrono::milliseconds summaryStays = {})
        : ScreenBench(summaryStays)
        , monitor({.handleKey =
                       [this](const KeyPress &key) {
                           return keys.handleKey(key) || keys.pressDefaultButton(key);
                       },
                   .isPopupOpen = [this] { return window->property("popupOpen").toBool(); },
                   .situation = [this] { return keys.situation(); }})
    {
        QQuickStyle::setStyle(QStringLiteral("Basic"));
        engine.addImportPath(QStringLiteral("qrc:/"));
        QObject::connect(&engine, &QQmlEngine::warnings, &engine,
                         [this](const QList<QQmlError> &errors) { warnings += errors; });
        engine.setInitialProperties({
            {QStringLiteral("appState"), QVariant::fromValue(&appState)},
            {QStringLiteral("menuCommands"), QVariant::fromValue(&menuCommands)},
        });
        engine.load(QUrl(QStringLiteral("qrc:/Kestle/shell/Main.qml")));
        window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
        if (!window) {
            qFatal("The main window cannot be made");
        }
        window->resize(size);
        monitor.install(window);
        if (!QTest::qWaitForWindowActive(window)) {
            qFatal("The main window does not become active");
        }
    }

    ~WindowBench() { letGo(); }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window, key, modifiers);
    }

    /// The item called @p name that is on screen, or nothing.
    [[nodiscard]] QQuickItem *find(const QString &name) const
    {
        return find(window->contentItem(), name);
    }

    [[nodiscard]] QString text(const QString &name) const
    {
        const auto *item = find(name);
        return item ? item->property("text").toString() : QStringLiteral("(not on screen)");
    }

    /// Every text on screen.
    [[nodiscard]] QStringList texts() const
    {
        QList<QQuickItem *> items;
        collectTexts(window->contentItem(), items);
        QStringList texts;
        for (const auto *item : items) {
            texts.append(item->property("text").toString());
        }
        return texts;
    }

    /// Every visible item that shows exactly @p text.
    [[nodiscard]] QList<QQuickItem *> itemsShowing(const QString &text) const
    {
        QList<QQuickItem *> items;
        collectTexts(window->contentItem(), items);
        items.removeIf([&](const auto *item) { return item->property("text") != text; });
        return items;
    }

    void click(const QString &name) const
    {
        const auto *item = find(name);
        QVERIFY2(item, qPrintable(name));
        click(item);
    }

    void click(const QQuickItem *item) const
    {
        const auto middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(window, Qt::LeftButton, {}, middle.toPoint());
    }

    /// Until what was changed has been laid out and drawn.
    void waitForFrames() const
    {
        for (int frame = 0; frame < 2; ++frame) {
            QSignalSpy drawn(window, &QQuickWindow::afterRendering);
            window->update();
            QVERIFY(drawn.count() > 0 || drawn.wait(5000));
        }
    }

    [[nodiscard]] static QRectF rectOf(const QQuickItem *item)
    {
        return item->mapRectToScene(item->boundingRect());
    }

    QList<QQmlError> warnings;
    KeyMonitor monitor;
    QQmlApplicationEngine engine;
    QQuickWindow *window = nullptr;

private:
    [[nodiscard]] static QQuickItem *find(QQuickItem *parent, const QString &name)
    {
        for (auto *child : parent->childItems()) {
            if (!child->isVisible()) {
                continue;
            }
            if (child->objectName() == name) {
                return child;
            }
            if (auto *found = find(child, name)) {
                return found;
            }
        }
        return nullptr;
    }

    static void collectTexts(const QQuickItem *parent, QList<QQuickItem *> &texts)
    {
        for (auto *child : parent->childItems()) {
            if (!child->isVisible()) {
                continue;
            }
            if (child->inherits("QQuickText")) {
                texts.append(child);
            }
            collectTexts(child, texts);
        }
    }
};
