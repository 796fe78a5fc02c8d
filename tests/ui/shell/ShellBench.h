// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/app/FakeVolumes.h"
#include "ui/shell/KestleApp.h"

#include <QQuickItem>
#include <QTemporaryDir>
#include <QTest>

#include <fstream>

/// The whole program as its user has it, in a home of its own, with keys, mouse and a card.
class ShellBench {
protected:
    void begin()
    {
        m_home = std::make_unique<QTemporaryDir>();
        for (const auto *variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
            qputenv(variable, m_home->filePath(QString::fromLatin1(variable)).toUtf8());
        }
        // Neither cards nor portals of whoever runs the tests.
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/bus");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
        start();
    }

    void end()
    {
        if (m_app) {
            m_app->finish();
        }
        m_app.reset();
        m_volumes = nullptr;
    }

    void start()
    {
        m_app.reset();
        auto volumes = std::make_unique<FakeVolumes>();
        m_volumes = volumes.get();
        KestleApp::Extras extras;
        extras.moreVolumes.push_back(std::move(volumes));
        const auto picture = [](auto &&...) { return QImage(30, 20, QImage::Format_RGB32); };
        extras.makeSearch = m_makeSearch;
        extras.decoders = DecodePipeline::Decoders{.picture = picture, .videoFrame = picture};
        m_app = std::make_unique<KestleApp>(std::move(extras));
        QVERIFY(m_app->show());
        QVERIFY(QTest::qWaitForWindowActive(m_app->window()));
    }

    void mountCard()
    {
        const auto card = std::filesystem::path(m_home->path().toStdString()) / "card";
        std::filesystem::create_directories(card / "DCIM/100_FUJI");
        for (const auto *name : {"DSCF0001.JPG", "DSCF0002.JPG", "DSCF0003.JPG"}) {
            std::ofstream(card / "DCIM/100_FUJI" / name) << "no picture";
        }
        m_volumes->mount(card, QStringLiteral("UUID"), QStringLiteral("CARD"));
    }

    void cull()
    {
        mountCard();
        QTRY_COMPARE(m_app->appState().phase(), Phase::cardReady(false));
        key(Qt::Key_Return);
        QTRY_COMPARE(m_app->appState().phase(), Phase::culling());
    }

    [[nodiscard]] CullSession &session() const { return *m_app->appState().session(); }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(m_app->window(), key, modifiers);
    }

    /// Once it has. A window is active already while another one of the program has the keys.
    [[nodiscard]] static bool hasKeys(const QWindow *window)
    {
        return QTest::qWaitFor([=] { return window && QGuiApplication::focusWindow() == window; });
    }

    [[nodiscard]] static QQuickWindow *sideWindow(const QString &name)
    {
        for (auto *window : QGuiApplication::allWindows()) {
            if (window->objectName() == name) {
                return qobject_cast<QQuickWindow *>(window);
            }
        }
        return nullptr;
    }

    template<typename Fits>
    static void collect(QQuickItem *parent, Fits fits, QList<QQuickItem *> &found)
    {
        for (auto *child : parent->childItems()) {
            if (child->isVisible()) {
                if (fits(child)) {
                    found.append(child);
                }
                collect(child, fits, found);
            }
        }
    }

    [[nodiscard]] static QQuickItem *find(QQuickWindow *window, const QString &name)
    {
        QList<QQuickItem *> found;
        collect(
            window->contentItem(), [&](auto *item) { return item->objectName() == name; }, found);
        return found.value(0);
    }

    [[nodiscard]] static QList<QQuickItem *> withText(QQuickWindow *window, const QString &text)
    {
        QList<QQuickItem *> found;
        collect(
            window->contentItem(),
            [&](auto *item) {
                return item->inherits("QQuickText") && item->property("text") == text;
            },
            found);
        return found;
    }

    static void click(QQuickItem *item)
    {
        QVERIFY(item);
        const auto middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(item->window(), Qt::LeftButton, {}, middle.toPoint());
    }

    void choose(const QString &menu, const QString &command) const
    {
        auto *const window = m_app->window();
        click(find(window, QStringLiteral("menuButton")));
        QTRY_VERIFY(!withText(window, menu).isEmpty());
        click(withText(window, menu).last());
        QTRY_VERIFY(!withText(window, command).isEmpty());
        click(withText(window, command).last());
        QTRY_VERIFY(!window->property("popupOpen").toBool());
    }

    std::unique_ptr<QTemporaryDir> m_home;
    FakeVolumes *m_volumes = nullptr;
    /// In place of what searches for newer versions.
    std::function<std::unique_ptr<UpdateSearch>()> m_makeSearch;
    std::unique_ptr<KestleApp> m_app;
};
