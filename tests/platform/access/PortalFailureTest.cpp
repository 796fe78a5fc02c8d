// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "PortalBench.h"

#include <QDBusConnectionInterface>

/// What happens when there is no portal, or when somebody ends before the question has.
class PortalFailureTest : public PortalBench {
    Q_OBJECT

private Q_SLOTS:
    void whereThePortalCannotAskTheOtherDialogDoes_data()
    {
        QTest::addColumn<bool>("isStarted");
        QTest::addColumn<QVariant>("version");
        QTest::addColumn<QString>("versionError");
        QTest::addColumn<QString>("openError");

        const auto error = [](const char16_t *name) {
            return u"org.freedesktop.DBus.Error."_s + QString::fromUtf16(name);
        };
        const QVariant good = 3U;
        QTest::newRow("no portal") << false << good << u""_s << u""_s;
        QTest::newRow("too old") << true << QVariant(2U) << u""_s << u""_s;
        QTest::newRow("version of another type") << true << QVariant(u"4"_s) << u""_s << u""_s;
        QTest::newRow("signed version") << true << QVariant(4) << u""_s << u""_s;
        QTest::newRow("no file chooser") << true << good << error(u"InvalidArgs") << u""_s;
        QTest::newRow("no properties") << true << good << error(u"UnknownMethod") << u""_s;
        QTest::newRow("version not answered") << true << good << error(u"NoReply") << u""_s;
        for (const auto *name : {u"UnknownMethod", u"ServiceUnknown", u"NoReply", u"AccessDenied",
                                 u"InvalidArgs", u"Failed"}) {
            QTest::newRow(qPrintable(u"dialog: "_s + QString::fromUtf16(name)))
                << true << good << u""_s << error(name);
        }
    }

    void whereThePortalCannotAskTheOtherDialogDoes()
    {
        failAsTheRowSays();

        open();
        QTRY_COMPARE(m_fallback->opened.size(), 1);

        const auto question = m_fallback->opened.constFirst();
        QCOMPARE(question.title, u"Kestle needs “CARD”"_s);
        QCOMPARE(question.acceptLabel, u"Grant Access"_s);
        QCOMPARE(question.directory, std::filesystem::path("/media/u/CARD"));
        QCOMPARE(question.parentWindow, u"x11:1a"_s);
        QVERIFY(m_answers.isEmpty());
        m_fallback->answer("/chosen");
        m_fallback->answer("/nobody asked");
        QCOMPARE(m_answers, Answers{"/chosen"});
    }

    void withoutAnotherDialogTheAnswerIsAbsent_data()
    {
        whereThePortalCannotAskTheOtherDialogDoes_data();
    }

    void withoutAnotherDialogTheAnswerIsAbsent()
    {
        failAsTheRowSays();
        useDialog(nullptr);

        open();
        QVERIFY(m_answers.isEmpty());

        QTRY_COMPARE(m_answers, Answers{std::nullopt});
        settle();
        QCOMPARE(m_answers.size(), 1);
    }

    void theOtherDialogsRefusalIsForwarded()
    {
        open();
        QTRY_COMPARE(m_fallback->opened.size(), 1);

        m_fallback->answer(std::nullopt);

        QCOMPARE(m_answers, Answers{std::nullopt});
    }

    void closingClosesTheOtherDialog()
    {
        open();
        QTRY_COMPARE(m_fallback->opened.size(), 1);

        m_dialog->close();
        m_fallback->answer("/late");
        m_dialog->close();

        QCOMPARE(m_fallback->closed, 1);
        QVERIFY(m_answers.isEmpty());
    }

    void theOtherDialogsAnswerToAnEarlierQuestionIsIgnored()
    {
        open();
        QTRY_COMPARE(m_fallback->opened.size(), 1);
        openAndShow();
        QCOMPARE(m_fallback->closed, 1);

        m_fallback->answer("/late");

        QVERIFY(m_answers.isEmpty());
    }

    void aPortalThatStartsLaterIsAskedNextTime()
    {
        open();
        QTRY_COMPARE(m_fallback->opened.size(), 1);
        m_fallback->answer(std::nullopt);

        openAndShow();
        m_portal->choose({u"file:///A"_s});

        QTRY_COMPARE(m_answers, (Answers{std::nullopt, "/A"}));
        QCOMPARE(m_fallback->opened.size(), 1);
    }

    void aPortalThatTheBusStartsSlowlyIsWaitedFor()
    {
        end();
        begin({u"org.freedesktop.portal.Desktop"_s});
        open();
        QTest::qWait(300);
        QVERIFY(m_fallback->opened.isEmpty());

        QVERIFY(m_portal->start());
        QTRY_COMPARE(m_portal->opened.size(), 1);
        settle();
        m_portal->choose({u"file:///A"_s});

        QTRY_COMPARE(m_answers, Answers{"/A"});
    }

    void aPortalThatIsTooSlowHasItsDialogClosed()
    {
        QVERIFY(m_portal->start());
        m_portal->openError = u"org.freedesktop.DBus.Error.NoReply"_s;

        open();

        QTRY_COMPARE(m_portal->closed, QStringList{m_portal->newestRequest()});
        m_portal->choose({u"file:///late"_s});
        settle();
        QVERIFY(m_answers.isEmpty());
        QCOMPARE(m_fallback->opened.size(), 1);
    }

    void whenThePortalEndsTheQuestionIsRefused()
    {
        openAndShow();

        m_portal->stop();

        QTRY_COMPARE(m_answers, Answers{std::nullopt});
        QVERIFY(m_fallback->opened.isEmpty());
    }

    void whenThePortalsProcessEndsTheQuestionIsRefused()
    {
        openAndShow();

        endPortalProcess();

        QTRY_COMPARE(m_answers, Answers{std::nullopt});
        settle();
        QCOMPARE(m_answers.size(), 1);
    }

    void whenThePortalIsReplacedTheQuestionIsRefused()
    {
        openAndShow();
        const auto reply = connectAs(u"stranger"_s)
                               .interface()
                               ->registerService(u"org.freedesktop.portal.Desktop"_s,
                                                 QDBusConnectionInterface::QueueService);
        QCOMPARE(reply.value(), QDBusConnectionInterface::ServiceQueued);

        m_portal->stop();

        QTRY_COMPARE(m_answers, Answers{std::nullopt});
    }

    void whenThePortalEndsBeforeTheDialogOpensTheOtherDialogAsks_data()
    {
        QTest::addColumn<bool>("isVersionAnswered");

        QTest::newRow("before its version is known") << false;
        QTest::newRow("before the dialog is there") << true;
    }

    void whenThePortalEndsBeforeTheDialogOpensTheOtherDialogAsks()
    {
        QFETCH(const bool, isVersionAnswered);
        QVERIFY(m_portal->start());
        m_portal->heldCall = isVersionAnswered ? u"OpenFile"_s : u"Get"_s;
        open();
        QTRY_COMPARE(m_portal->versionCalls, 1);
        QTRY_COMPARE(m_portal->opened.size(), isVersionAnswered ? 1 : 0);

        endPortalProcess();

        QTRY_COMPARE(m_fallback->opened.size(), 1);
        settle();
        QCOMPARE(m_fallback->opened.size(), 1);
        m_fallback->answer("/chosen");
        QCOMPARE(m_answers, Answers{"/chosen"});
    }

    void aPortalThatOnlyLostItsNameShowsNoSecondDialog()
    {
        QVERIFY(m_portal->start());
        m_portal->heldCall = u"OpenFile"_s;
        open();
        QTRY_COMPARE(m_portal->opened.size(), 1);
        m_portal->stop();
        QTRY_COMPARE(m_fallback->opened.size(), 1);

        m_portal->answerHeld();

        QTRY_COMPARE(m_portal->closed, QStringList{m_portal->newestRequest()});
        QVERIFY(m_answers.isEmpty());
    }

    void whenTheBusEndsTheQuestionIsRefused()
    {
        openAndShow();

        m_bus->stop();

        QTRY_COMPARE(m_answers, Answers{std::nullopt});
        open();
        QTRY_COMPARE(m_fallback->opened.size(), 1);
    }

    void whenTheBusEndsBeforeTheDialogOpensTheOtherDialogAsks()
    {
        QVERIFY(m_portal->start());
        m_portal->heldCall = u"Get"_s;
        open();
        QTRY_COMPARE(m_portal->versionCalls, 1);

        m_bus->stop();

        QTRY_COMPARE(m_fallback->opened.size(), 1);
        QVERIFY(m_answers.isEmpty());
    }

    void withoutABusTheOtherDialogAsks()
    {
        PortalFolderDialog dialog(
            QDBusConnection::connectToBus(u"unix:path=/nonexistent"_s, u"nowhere"_s),
            m_fallback.get());

        dialog.open({.title = u"first"_s});
        dialog.open({.title = u"second"_s});
        QVERIFY(m_fallback->opened.isEmpty());

        QTRY_COMPARE(m_fallback->opened.size(), 1);
        settle();
        QCOMPARE(m_fallback->opened.size(), 1);
        QCOMPARE(m_fallback->opened.constFirst().title, u"second"_s);
        QDBusConnection::disconnectFromBus(u"nowhere"_s);
    }

    void aDialogThatIsDestroyedClosesItsQuestion()
    {
        openAndShow();

        m_dialog.reset();

        QTRY_COMPARE(m_portal->closed, QStringList{m_portal->newestRequest()});
        m_portal->choose({u"file:///late"_s});
        settle();
        QVERIFY(m_answers.isEmpty());
    }

    void aDialogThatIsDestroyedBeforeItOpenedClosesItsQuestion()
    {
        QVERIFY(m_portal->start());
        m_portal->heldCall = u"OpenFile"_s;
        open();
        QTRY_COMPARE(m_portal->opened.size(), 1);

        m_dialog.reset();
        m_portal->answerHeld();

        QTRY_COMPARE(m_portal->closed, QStringList{m_portal->newestRequest()});
    }

    void aDialogThatIsDestroyedClosesTheOtherOne()
    {
        open();
        QTRY_COMPARE(m_fallback->opened.size(), 1);

        m_dialog.reset();

        QCOMPARE(m_fallback->closed, 1);
        m_fallback->answer("/late");
        QVERIFY(m_answers.isEmpty());
    }

    void theDialogMayBeDestroyedByTheOneItAnswers()
    {
        openAndShow();
        connect(m_dialog.get(), &FolderDialog::answered, this, [this] { m_dialog.reset(); });

        m_portal->choose({u"file:///A"_s});

        QTRY_VERIFY(!m_dialog);
        QCOMPARE(m_answers, Answers{"/A"});
        settle();
        QVERIFY(m_portal->closed.isEmpty());
    }

private:
    void failAsTheRowSays()
    {
        QFETCH(const bool, isStarted);
        QFETCH(const QVariant, version);
        QFETCH(const QString, versionError);
        QFETCH(const QString, openError);
        QVERIFY(!isStarted || m_portal->start());
        m_portal->version = version;
        m_portal->versionError = versionError;
        m_portal->openError = openError;
    }
};

QTEST_GUILESS_MAIN(PortalFailureTest)
#include "PortalFailureTest.moc"
