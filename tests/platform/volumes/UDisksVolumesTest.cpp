// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "FakeUDisks.h"

#include "platform/volumes/UDisksVolumes.h"
#include "tests/support/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

using Texts = QStringList;

/// Remembers what was known at each change, as "mount point uuid label".
class History : public QObject {
    Q_OBJECT

public:
    explicit History(const MountedVolumes &volumes)
    {
        connect(&volumes, &MountedVolumes::changed, this,
                [this, &volumes] { states.append(textOf(volumes)); });
    }

    static QString textOf(const MountedVolumes &volumes)
    {
        QStringList texts;
        for (const auto &volume : volumes.volumes()) {
            texts.append(QString::fromStdString(volume.mountPoint.string()) + u' ' + volume.uuid +
                         u' ' + volume.label);
        }
        return texts.join(u", "_s);
    }

    QStringList states;
};

class UDisksVolumesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qInstallMessageHandler(countMessage); }

    void init()
    {
        m_messages = 0;
        m_bus = std::make_unique<PrivateBus>();
        QVERIFY(!m_bus->address().isEmpty());
        m_service = std::make_unique<FakeUDisks>(connectAs(u"service"_s));
    }

    void cleanup()
    {
        m_service.reset();
        QDBusConnection::disconnectFromBus(u"service"_s);
        QDBusConnection::disconnectFromBus(u"client"_s);
        m_bus.reset();
        QCOMPARE(m_messages, 0); // nothing is written to the terminal
    }

    void theFirstAnswerIsReportedOnceAlsoWhenNothingIsMounted()
    {
        QVERIFY(m_service->start());
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);

        QVERIFY(volumes.volumes().isEmpty());
        QTRY_COMPARE(history.states, Texts{u""_s});
        settle();
        QCOMPARE(history.states, Texts{u""_s});
    }

    void theFirstListHasWhatIsMounted()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"ABCD-0001"_s, u"CARD"_s, {"/media/u/CARD"});
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);

        QTRY_COMPARE(history.states, Texts{u"/media/u/CARD ABCD-0001 CARD"_s});
        const auto volume = volumes.volumes().constFirst();
        QCOMPARE(volume.device, u"/dev/sdb1"_s);
        QVERIFY(volume.isRemovable && volume.isEjectable && volume.isLocal && !volume.isReadOnly);
    }

    void volumesComeInTheOrderOfTheMountTable()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"B"_s, {"/media/u/B"});
        m_service->made.addCard(u"sdc"_s, u"2"_s, u"A"_s, {"/media/u/A"});
        UDisksVolumes volumes(connectAs(u"client"_s), [] {
            return QList<Mount>{{.mountPoint = "/media/u/A"},
                                {.mountPoint = "/media/u/B", .isReadOnly = true}};
        });
        const History history(volumes);

        QTRY_COMPARE(history.states, Texts{u"/media/u/A 2 A, /media/u/B 1 B"_s});
        QVERIFY(!volumes.volumes()[0].isReadOnly);
        QVERIFY(volumes.volumes()[1].isReadOnly);
    }

    void aMountPointSurvivesByteForByte()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CAFE"_s, {"/media/caf\xE9"});
        UDisksVolumes volumes(connectAs(u"client"_s));

        QTRY_COMPARE(volumes.volumes().size(), 1);
        QCOMPARE(volumes.volumes()[0].mountPoint.native(), std::string("/media/caf\xE9"));
    }

    void insertionMountRenameUnmountAndRemovalAreReported()
    {
        QVERIFY(m_service->start());
        UDisksVolumes volumes(connectAs(u"client"_s));
        History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);

        m_service->insertCard(u"sdb"_s, u"ABCD-0001"_s, u"CARD"_s, {});
        settle();
        QCOMPARE(history.states.size(), 1);
        m_service->mount(u"sdb1"_s, {"/media/u/CARD"});
        QTRY_COMPARE(history.states.size(), 2);
        QCOMPARE(history.states.last(), u"/media/u/CARD ABCD-0001 CARD"_s);
        m_service->rename(u"sdb1"_s, u"NEW"_s);
        QTRY_COMPARE(history.states.size(), 3);
        QCOMPARE(history.states.last(), u"/media/u/CARD ABCD-0001 NEW"_s);
        m_service->mount(u"sdb1"_s, {});
        QTRY_COMPARE(history.states.size(), 4);
        QCOMPARE(history.states.last(), u""_s);
        m_service->mount(u"sdb1"_s, {"/media/u/NEW"});
        QTRY_COMPARE(history.states.size(), 5);
        m_service->removeCard(u"sdb"_s);
        QTRY_COMPARE(history.states.size(), 6);
        QCOMPARE(history.states.last(), u""_s);
    }

    void aFloodOfNoticesIsReadOnce()
    {
        QVERIFY(m_service->start());
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);
        settle();
        const auto before = m_service->reads;

        m_service->insertCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        for (int i = 0; i < 200; ++i) {
            m_service->rename(u"sdb1"_s, u"CARD%1"_s.arg(i));
        }

        QTRY_COMPARE(history.states.last(), u"/media/u/CARD 1 CARD199"_s);
        settle();
        QVERIFY2(m_service->reads - before <= 4, qPrintable(QString::number(m_service->reads)));
    }

    void aSteadyStreamOfNoticesDoesNotKeepAMountFromBeingReported()
    {
        QVERIFY(m_service->start());
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);
        QTimer stream;
        connect(&stream, &QTimer::timeout, this, [this] {
            m_service->sendPropertiesChanged(HandMadeTree::drivePath(u"x"_s), "Drive", {});
        });
        stream.start(5);

        m_service->insertCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});

        QTRY_COMPARE(volumes.volumes().size(), 1);
    }

    void anOlderAnswerNeverReplacesANewerOne()
    {
        QVERIFY(m_service->start());
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);
        settle();
        m_service->holdsAnswers = true;
        const auto before = m_service->reads;

        m_service->insertCard(u"sdb"_s, u"1"_s, u"OLD"_s, {"/media/u/CARD"});
        QTRY_COMPARE(m_service->reads, before + 1);
        m_service->rename(u"sdb1"_s, u"NEW"_s);
        QTRY_COMPARE(m_service->reads, before + 2);
        m_service->answerHeld();
        m_service->holdsAnswers = false;

        QTRY_COMPARE(history.states.last(), u"/media/u/CARD 1 NEW"_s);
        settle();
        QCOMPARE(history.states, (Texts{u""_s, u"/media/u/CARD 1 NEW"_s}));
    }

    void aServiceThatDidNotAnswerIsAskedAgainAndWhatWasKnownStays()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);
        settle();

        m_service->error = u"org.freedesktop.DBus.Error.NoReply"_s;
        m_service->rename(u"sdb1"_s, u"NEW"_s);
        settle();
        QCOMPARE(history.states, Texts{u"/media/u/CARD 1 CARD"_s});
        m_service->error.clear();

        QTRY_COMPARE_WITH_TIMEOUT(history.states.size(), 2, 10'000);
        QCOMPARE(history.states.last(), u"/media/u/CARD 1 NEW"_s);
    }

    void anotherProgramsSignalsAreNotTheServices()
    {
        QVERIFY(m_service->start());
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);
        settle();
        const auto before = m_service->reads;

        FakeUDisks stranger(connectAs(u"stranger"_s));
        stranger.insertCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        stranger.rename(u"sdb1"_s, u"X"_s);
        stranger.removeCard(u"sdb"_s);
        QTest::qWait(150); // longer than notices are collected
        QDBusConnection::disconnectFromBus(u"stranger"_s);

        QCOMPARE(m_service->reads, before);
    }

    void volumesAppearWhenTheServiceStartsLater()
    {
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTest::qWait(150);
        QVERIFY(volumes.volumes().isEmpty());
        QVERIFY(history.states.isEmpty());

        QVERIFY(m_service->start());

        QTRY_COMPARE(history.states, Texts{u"/media/u/CARD 1 CARD"_s});
    }

    void nothingIsMountedWhileTheServiceIsGone()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);

        m_service->stop();
        QTRY_COMPARE(history.states.size(), 2);
        QCOMPARE(history.states.last(), u""_s);
        QTest::qWait(150);
        QCOMPARE(history.states.size(), 2);
        QVERIFY(m_service->start());

        QTRY_COMPARE(history.states.size(), 3);
        QCOMPARE(history.states.last(), u"/media/u/CARD 1 CARD"_s);
    }

    void anAnswerThatComesAfterTheServiceWentIsIgnored()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        m_service->holdsAnswers = true;
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(m_service->reads, 1);
        settle();

        m_service->stop();
        m_service->answerHeld();
        QTest::qWait(150);

        QVERIFY(volumes.volumes().isEmpty());
    }

    void anotherCardAtTheSamePathIsReportedAsARemovalFirst_data()
    {
        QTest::addColumn<QString>("disk");
        QTest::addColumn<QString>("uuid");

        QTest::newRow("other device, other UUID") << u"sdc"_s << u"2"_s;
        QTest::newRow("other device, same UUID") << u"sdc"_s << u"1"_s;
        QTest::newRow("same device, other UUID") << u"sdb"_s << u"2"_s;
        QTest::newRow("same device, same UUID") << u"sdb"_s << u"1"_s;
    }

    void anotherCardAtTheSamePathIsReportedAsARemovalFirst()
    {
        QFETCH(QString, disk);
        QFETCH(QString, uuid);
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sda"_s, u"0"_s, u"STAYS"_s, {"/media/u/A"});
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);
        settle();

        m_service->removeCard(u"sdb"_s);
        m_service->insertCard(disk, uuid, u"CARD"_s, {"/media/u/CARD"});

        QTRY_COMPARE(history.states,
                     (Texts{u"/media/u/A 0 STAYS, /media/u/CARD 1 CARD"_s, u"/media/u/A 0 STAYS"_s,
                            u"/media/u/A 0 STAYS, /media/u/CARD %1 CARD"_s.arg(uuid)}));
    }

    void unmountAndMountOfOneCardInOneReadingIsReportedAsARemovalFirst()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);
        settle();

        m_service->mount(u"sdb1"_s, {});
        m_service->mount(u"sdb1"_s, {"/media/u/CARD"});

        QTRY_COMPARE(history.states,
                     (Texts{u"/media/u/CARD 1 CARD"_s, u""_s, u"/media/u/CARD 1 CARD"_s}));
    }

    void aSecondMountOfACardDoesNotRemoveTheFirst()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);
        settle();

        m_service->mount(u"sdb1"_s, {"/media/u/CARD", "/mnt/again"});

        QTRY_COMPARE(history.states, (Texts{u"/media/u/CARD 1 CARD"_s,
                                            u"/media/u/CARD 1 CARD, /mnt/again 1 CARD"_s}));
    }

    void aListenerMayEndTheSourceAtTheRemoval()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        auto volumes = std::make_unique<UDisksVolumes>(connectAs(u"client"_s));
        QTRY_COMPARE(volumes->volumes().size(), 1);
        settle();
        connect(volumes.get(), &MountedVolumes::changed, this, [&volumes] { volumes.reset(); });

        m_service->removeCard(u"sdb"_s);
        m_service->insertCard(u"sdc"_s, u"2"_s, u"CARD"_s, {"/media/u/CARD"});

        QTRY_VERIFY(!volumes);
    }

    void withoutABusNothingIsMounted()
    {
        const UDisksVolumes volumes(
            QDBusConnection::connectToBus(u"unix:path=/nonexistent"_s, u"client"_s));
        QSignalSpy spy(&volumes, &MountedVolumes::changed);

        QTest::qWait(150);

        QVERIFY(volumes.volumes().isEmpty());
        QCOMPARE(spy.count(), 0);
    }

    void whenTheBusEndsNothingIsMounted()
    {
        QVERIFY(m_service->start());
        m_service->made.addCard(u"sdb"_s, u"1"_s, u"CARD"_s, {"/media/u/CARD"});
        UDisksVolumes volumes(connectAs(u"client"_s));
        const History history(volumes);
        QTRY_COMPARE(history.states.size(), 1);

        m_bus->stop();

        QTRY_COMPARE(history.states.size(), 2);
        QCOMPARE(history.states.last(), u""_s);
    }

private:
    QDBusConnection connectAs(const QString &name) const
    {
        return QDBusConnection::connectToBus(m_bus->address(), name);
    }

    /// Until the reading that is due now, if any, has been answered.
    void settle() const
    {
        auto reads = -1;
        while (reads != m_service->reads) {
            reads = m_service->reads;
            QTest::qWait(120);
        }
    }

    static void countMessage(QtMsgType, const QMessageLogContext &, const QString &text)
    {
        ++m_messages;
        std::fprintf(stderr, "message: %s\n", qPrintable(text));
    }

    static inline int m_messages = 0;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FakeUDisks> m_service;
};

QTEST_GUILESS_MAIN(UDisksVolumesTest)
#include "UDisksVolumesTest.moc"
