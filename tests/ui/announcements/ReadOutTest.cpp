// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>

using namespace Qt::StringLiterals;

/// What leaves the application on the bus of screen readers, as one that listens there gets it.
class ReadOutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const auto question = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                             u"org.a11y.Bus"_s, u"GetAddress"_s);
        QDBusReply<QString> address;
        QTRY_VERIFY((address = QDBusConnection::sessionBus().call(question)).isValid());
        auto bus = QDBusConnection::connectToBus(address.value(), u"reader"_s);
        QVERIFY(bus.isConnected());
        QVERIFY(bus.connect({}, {}, u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s, this,
                            SLOT(hear(QDBusMessage))));
        auto wish = QDBusMessage::createMethodCall(
            u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/registry"_s,
            u"org.a11y.atspi.Registry"_s, u"RegisterEvent"_s);
        wish.setArguments({u"object:state-changed"_s});
        QCOMPARE(bus.call(wish).type(), QDBusMessage::ReplyMessage);
        QTRY_VERIFY(QAccessible::isActive());
    }

    void init()
    {
        m_bench = std::make_unique<WindowBench>();
        m_bench->cull({"A.JPG", "B.JPG", "C.JPG"});
        QTRY_VERIFY(!m_notices.isEmpty() && m_notices.last().startsWith(u"Culling"));
        m_notices.clear();
    }

    void cleanup() { m_bench.reset(); }

    void aDecisionIsReadOutOnce()
    {
        m_bench->key(Qt::Key_X);

        QTRY_COMPARE(m_notices, QStringList{u"Rejected. 1 rejected. 2 of 3, B.JPG."_s});
        QTest::qWait(300);
        QCOMPARE(m_notices.size(), 1);
    }

    void theSameWordsAreReadOutAgainWhenTheyAreTrueAgain()
    {
        m_bench->appState.selectItem(1);
        QTRY_COMPARE(m_notices.size(), 1);
        m_bench->appState.selectItem(0);
        QTRY_COMPARE(m_notices.size(), 2);
        m_bench->appState.selectItem(1);

        QTRY_COMPARE(m_notices,
                     (QStringList{u"2 of 3, B.JPG."_s, u"1 of 3, A.JPG."_s, u"2 of 3, B.JPG."_s}));
    }

    void theQuestionTellsItsFocusedButton()
    {
        m_bench->key(Qt::Key_X);
        m_bench->key(Qt::Key_Return);
        QTRY_COMPARE(m_bench->appState.phase(), Phase::review());
        m_focused.clear();

        m_bench->key(Qt::Key_Return);

        QTRY_VERIFY(m_focused.contains(u"Cancel"_s));
        const auto *const button =
            QAccessible::queryAccessibleInterface(m_bench->find(u"cancelButton"_s));
        QCOMPARE(button->parent()->role(), QAccessible::Dialog);
        QCOMPARE(button->parent()->text(QAccessible::Name),
                 u"Permanently delete 1 files from the card?"_s);
    }

    void hear(const QDBusMessage &message)
    {
        const auto state = message.arguments().value(0).toString();
        if (message.arguments().value(1).toInt() != 1) {
            return;
        }
        const auto id = message.path().section(u'/', -1).toUInt();
        const auto *const source = QAccessible::accessibleInterface(id);
        if (!source || !source->isValid()) {
            return;
        }
        if (state == u"showing" && source->role() == QAccessible::Notification) {
            m_notices.append(source->text(QAccessible::Name));
        } else if (state == u"focused") {
            m_focused.append(source->text(QAccessible::Name));
        }
    }

private:
    std::unique_ptr<WindowBench> m_bench;
    QStringList m_notices;
    QStringList m_focused;
};

QTEST_MAIN(ReadOutTest)
#include "ReadOutTest.moc"
