// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/ByteCountText.h"
#include "ui/shell/KestleApp.h"

#include <QLocale>
#include <QQuickItem>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The whole program where the environment asks for German, whether the system has that locale or
/// not.
class GermanDesktopTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        for (const auto *variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
            qputenv(variable, m_home.filePath(QString::fromLatin1(variable)).toUtf8());
        }
        // Neither cards nor portals of whoever runs the tests.
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/bus");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
        m_app = std::make_unique<KestleApp>();
        QVERIFY(m_app->show());
    }

    void cleanupTestCase()
    {
        m_app->finish();
        m_app.reset();
    }

    void itsWindowIsGerman()
    {
        QTRY_VERIFY(textsBelow(m_app->window()->contentItem()).contains(u"SD-Karte einlegen"_s));
    }

    void itsMenusAreGerman()
    {
        QStringList titles;
        for (const auto *menu : m_app->window()->findChildren<QObject *>()) {
            if (menu->inherits("QQuickMenu")) {
                titles.append(menu->property("title").toString());
            }
        }
        for (const auto &title : {u"Bearbeiten"_s, u"Auswahl"_s}) {
            QVERIFY2(titles.contains(title), qPrintable(titles.join(u", "_s)));
        }
    }

    void itWritesTheDesktopsDecimalSign() { QCOMPARE(byteCountText(12'340'000), u"12,3 MB"_s); }

private:
    static QStringList textsBelow(const QQuickItem *parent)
    {
        QStringList texts;
        for (const auto *child : parent->childItems()) {
            texts.append(child->property("text").toString());
            texts += textsBelow(child);
        }
        return texts;
    }

    QTemporaryDir m_home;
    std::unique_ptr<KestleApp> m_app;
};

QTEST_MAIN(GermanDesktopTest)
#include "GermanDesktopTest.moc"
