// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/instance/SingleInstance.h"
#include "tests/support/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Role = SingleInstance::Role;

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(!m_bus.address().isEmpty());
        // Read once in the life of a process.
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
        qputenv("XDG_RUNTIME_DIR", "/nowhere");
        qunsetenv("XDG_ACTIVATION_TOKEN");
        qunsetenv("DESKTOP_STARTUP_ID");
    }

    void theFirstHoldsTheName()
    {
        SingleInstance first(name);

        QCOMPARE(first.role(10s), Role::First);

        auto bus = QDBusConnection::connectToBus(m_bus.address(), u"looking"_s);
        QVERIFY(bus.interface()->isServiceRegistered(name));
        QDBusConnection::disconnectFromBus(u"looking"_s);
    }

    void aSecondWakesTheFirst()
    {
        SingleInstance first(name);
        QCOMPARE(first.role(10s), Role::First);
        QSignalSpy wanted(&first, &SingleInstance::activationWanted);

        QCOMPARE(anotherStart({}), u"second"_s);

        QCOMPARE(wanted.count(), 1);
    }

    void theSecondHandsOverWhatItsDesktopAllows()
    {
        SingleInstance first(name);
        QCOMPARE(first.role(10s), Role::First);
        QSignalSpy wanted(&first, &SingleInstance::activationWanted);

        QCOMPARE(anotherStart({{u"XDG_ACTIVATION_TOKEN"_s, u"token-7"_s}}), u"second"_s);

        QCOMPARE(wanted.value(0).value(0).toString(), u"token-7"_s);
    }

    void whatTheDesktopWantsOpenedBringsItToTheFront()
    {
        SingleInstance first(name);
        QCOMPARE(first.role(10s), Role::First);
        QSignalSpy wanted(&first, &SingleInstance::activationWanted);
        auto bus = QDBusConnection::connectToBus(m_bus.address(), u"desktop"_s);
        auto call = QDBusMessage::createMethodCall(name, u"/org/example/Program"_s,
                                                   u"org.freedesktop.Application"_s, u"Open"_s);
        call << QStringList{u"file:///media/card"_s} << QVariantMap();

        bus.asyncCall(call);

        QTRY_COMPARE(wanted.count(), 1);
        QDBusConnection::disconnectFromBus(u"desktop"_s);
    }

    void whenTheFirstHasEndedTheNextIsFirst()
    {
        {
            SingleInstance first(name);
            QCOMPARE(first.role(10s), Role::First);
        }

        SingleInstance next(name);

        QCOMPARE(next.role(10s), Role::First);
    }

    void aFirstThatIsBusyLeavesTheSecondWhatItIs()
    {
        SingleInstance first(name);
        QCOMPARE(first.role(10s), Role::First);
        QProcess second;
        second.start(QCoreApplication::applicationFilePath(), {u"--ask-in-haste"_s});

        // No event loop runs here meanwhile.
        QVERIFY(second.waitForReadyRead(20'000));

        QCOMPARE(second.readAllStandardOutput().trimmed(), "second"_ba);
        second.waitForFinished();
    }

    void aSecondTakesThePlaceOfAFirstThatEnds()
    {
        auto first = std::make_unique<SingleInstance>(name);
        QCOMPARE(first->role(10s), Role::First);
        QProcess second;
        second.start(QCoreApplication::applicationFilePath(), {u"--ask"_s});
        QVERIFY(!second.waitForReadyRead(500)); // it waits

        first.reset();

        QVERIFY(second.waitForReadyRead(20'000));
        QCOMPARE(second.readAllStandardOutput().trimmed(), "first"_ba);
        second.waitForFinished();
    }

    void withoutABusEveryoneIsFirst_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("none") << QString();
        QTest::newRow("nobody there") << u"unix:path=/nowhere/bus"_s;
        QTest::newRow("no address") << u"nonsense"_s;
    }

    void withoutABusEveryoneIsFirst()
    {
        QFETCH(const QString, address);
        SingleInstance first(name);
        QCOMPARE(first.role(10s), Role::First);

        QCOMPARE(anotherStart({{u"DBUS_SESSION_BUS_ADDRESS"_s, address}}), u"first"_s);
    }

    void aBusThatDoesNotAnswerIsNotWaitedFor()
    {
        QTemporaryDir folder;
        const auto socket = folder.filePath(u"bus"_s);
        QProcess silent; // takes the connection and says nothing
        silent.start(
            u"python3"_s,
            {u"-c"_s,
             u"import socket, sys\ns = socket.socket(socket.AF_UNIX)\ns.bind(sys.argv[1])\n"
             "s.listen()\nprint('ready', flush=True)\nc = s.accept()[0]\n"
             "sys.stdin.read()"_s,
             socket});
        QVERIFY(silent.waitForReadyRead(10'000));

        QCOMPARE(anotherStart({{u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path="_s + socket}}),
                 u"first"_s);

        silent.kill();
        silent.waitForFinished();
    }

private:
    /// What another process is told, "first" or "second".
    static QString anotherStart(const QMap<QString, QString> &variables)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto &[key, value] : variables.asKeyValueRange()) {
            value.isEmpty() ? environment.remove(key) : environment.insert(key, value);
        }
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {u"--ask"_s});
        QSignalSpy told(&process, &QProcess::readyReadStandardOutput);
        // The first one has to answer meanwhile.
        const bool isTold = told.wait(20'000);
        const auto answer = process.readAllStandardOutput().trimmed();
        process.kill(); // it may wait for the bus
        process.waitForFinished();
        return isTold ? QString::fromUtf8(answer) : u"(no answer)"_s;
    }

public:
    inline static const QString name = QStringLiteral("org.example.Program");

private:
    PrivateBus m_bus;
};

/// Two roles in one program: the test, and the second start that it makes of itself.
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const bool isHasty = argc == 2 && qstrcmp(argv[1], "--ask-in-haste") == 0;
    if (isHasty || (argc == 2 && qstrcmp(argv[1], "--ask") == 0)) {
        SingleInstance instance(SingleInstanceTest::name,
                                isHasty ? SingleInstance::Patience{.answer = 300ms, .end = 300ms}
                                        : SingleInstance::Patience());
        std::puts(instance.role(isHasty ? 100ms : 3s) == Role::First ? "first" : "second");
        std::fflush(stdout);
        return 0;
    }
    SingleInstanceTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "SingleInstanceTest.moc"
