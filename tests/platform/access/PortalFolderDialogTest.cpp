// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "PortalBench.h"

#include <QRegularExpression>

/// Questions to a portal that can ask the user, and what comes of them.
class PortalFolderDialogTest : public PortalBench {
    Q_OBJECT

private Q_SLOTS:
    void theDialogIsAskedForWithEveryOption()
    {
        QVERIFY(m_portal->start());
        m_dialog->open({.title = u"Kestle needs “CARD”"_s,
                        .acceptLabel = u"Grant Access"_s,
                        .directory = "/media/caf\xE9 %41",
                        .parentWindow = u"x11:1a"_s});

        QTRY_COMPARE(m_portal->opened.size(), 1);
        const auto call = m_portal->opened.constFirst();
        QCOMPARE(call.signature(), u"ssa{sv}"_s);
        QCOMPARE(call.arguments().at(0).toString(), u"x11:1a"_s);
        QCOMPARE(call.arguments().at(1).toString(), u"Kestle needs “CARD”"_s);
        auto options = m_portal->options();
        // QVariant compares across types, so the types are compared first.
        for (const auto &name : {u"modal"_s, u"multiple"_s, u"directory"_s}) {
            QCOMPARE(options.value(name).metaType(), QMetaType::fromType<bool>());
        }
        const auto token = options.take(u"handle_token"_s);
        QCOMPARE(token.metaType(), QMetaType::fromType<QString>());
        QVERIFY2(QRegularExpression(u"^[A-Za-z0-9_]{20,}$"_s).match(token.toString()).hasMatch(),
                 qPrintable(token.toString()));
        QCOMPARE(options,
                 (QVariantMap{{u"accept_label"_s, u"Grant Access"_s},
                              {u"modal"_s, true},
                              {u"multiple"_s, false},
                              {u"directory"_s, true},
                              {u"current_folder"_s, QByteArray("/media/caf\xE9 %41", 16)}}));
    }

    void whatIsNotGivenIsNotSent()
    {
        QVERIFY(m_portal->start());

        m_dialog->open({});

        QTRY_COMPARE(m_portal->opened.size(), 1);
        QVERIFY(!m_portal->options().contains(u"accept_label"_s));
        QVERIFY(!m_portal->options().contains(u"current_folder"_s));
    }

    void everyQuestionHasAnotherToken()
    {
        openAndShow();
        const auto first = m_portal->options().value(u"handle_token"_s).toString();

        openAndShow();

        QVERIFY(m_portal->options().value(u"handle_token"_s).toString() != first);
    }

    void theAnswerIsTheFolder_data()
    {
        QTest::addColumn<QStringList>("uris");
        QTest::addColumn<QByteArray>("folder");

        QTest::newRow("plain") << QStringList{u"file:///media/u/CARD"_s} << "/media/u/CARD"_ba;
        QTest::newRow("spaces and umlauts")
            << QStringList{u"file:///MY%20%C3%9CBUNG"_s} << "/MY \xC3\x9C\x42UNG"_ba;
        QTest::newRow("percent signs") << QStringList{u"file:///100%25%2541"_s} << "/100%%41"_ba;
        QTest::newRow("not UTF-8") << QStringList{u"file:///caf%E9"_s} << "/caf\xE9"_ba;
        QTest::newRow("several") << QStringList{u"file:///A"_s, u"file:///B"_s} << "/A"_ba;
        QTest::newRow("another kind first")
            << QStringList{u"gphoto2://Camera/"_s, u"file:///B"_s} << "/B"_ba;
    }

    void theAnswerIsTheFolder()
    {
        QFETCH(const QStringList, uris);
        QFETCH(const QByteArray, folder);
        openAndShow();

        m_portal->choose(uris);

        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(m_answers[0]);
        QCOMPARE(QByteArray::fromStdString(m_answers[0]->native()), folder);
        settle();
        QCOMPARE(m_answers.size(), 1);
        QVERIFY(m_portal->closed.isEmpty());
        QVERIFY(m_fallback->opened.isEmpty());
    }

    void withoutAFolderTheAnswerIsAbsent_data()
    {
        QTest::addColumn<quint32>("code");
        QTest::addColumn<QVariantMap>("results");

        const auto uris = [](const QVariant &value) { return QVariantMap{{u"uris"_s, value}}; };
        const QStringList folder = {u"file:///media/u/CARD"_s};
        QTest::newRow("refused") << 1U << QVariantMap();
        QTest::newRow("refused, with a folder") << 1U << uris(folder);
        QTest::newRow("ended otherwise") << 2U << QVariantMap();
        QTest::newRow("ended otherwise, with a folder") << 2U << uris(folder);
        QTest::newRow("unknown code") << 7U << uris(folder);
        QTest::newRow("no results") << 0U << QVariantMap();
        QTest::newRow("no URI") << 0U << uris(QStringList());
        QTest::newRow("another kind of URI") << 0U << uris(QStringList{u"mtp://phone/"_s});
        QTest::newRow("another machine's") << 0U << uris(QStringList{u"file://server/A"_s});
        QTest::newRow("a text for a list") << 0U << uris(folder.constFirst());
        QTest::newRow("bytes for texts")
            << 0U << uris(QVariant::fromValue(QByteArrayList{"file:///media/u/CARD"_ba}));
    }

    void withoutAFolderTheAnswerIsAbsent()
    {
        QFETCH(const quint32, code);
        QFETCH(const QVariantMap, results);
        openAndShow();

        m_portal->respond(code, results);

        QTRY_COMPARE(m_answers, Answers{std::nullopt});
        QVERIFY(m_fallback->opened.isEmpty());
    }

    void aResponseOfAnotherShapeIsARefusal()
    {
        openAndShow();
        auto signal = QDBusMessage::createTargetedSignal(
            m_portal->opened.constLast().service(), m_portal->newestRequest(),
            u"org.freedesktop.portal.Request"_s, u"Response"_s);
        signal << u"file:///media/u/CARD"_s;

        connectAs(u"portal"_s).send(signal);

        QTRY_COMPARE(m_answers, Answers{std::nullopt});
    }

    void aClosedQuestionIsClosedAtThePortalAndHasNoAnswer()
    {
        openAndShow();

        m_dialog->close();

        QTRY_COMPARE(m_portal->closed, QStringList{m_portal->newestRequest()});
        m_portal->choose({u"file:///late"_s});
        settle();
        QVERIFY(m_answers.isEmpty());
        m_dialog->close();
        settle();
        QCOMPARE(m_portal->closed.size(), 1);
    }

    void closingWithoutAQuestionDoesNothing()
    {
        QVERIFY(m_portal->start());

        m_dialog->close();

        settle();
        QCOMPARE(m_portal->versionCalls, 0);
        QVERIFY(m_portal->closed.isEmpty());
        QVERIFY(m_answers.isEmpty());
    }

    void aQuestionClosedBeforeItsDialogOpensIsClosedOnceItDoes()
    {
        QVERIFY(m_portal->start());
        m_portal->heldCall = u"OpenFile"_s;
        open();
        QTRY_COMPARE(m_portal->opened.size(), 1);

        m_dialog->close();
        settle();
        QVERIFY(m_portal->closed.isEmpty());
        m_portal->answerHeld();

        QTRY_COMPARE(m_portal->closed, QStringList{m_portal->newestRequest()});
        m_portal->choose({u"file:///late"_s});
        settle();
        QVERIFY(m_answers.isEmpty());
    }

    void aQuestionClosedBeforeThePortalIsKnownIsNeverAsked()
    {
        QVERIFY(m_portal->start());
        m_portal->heldCall = u"Get"_s;
        open();
        QTRY_COMPARE(m_portal->versionCalls, 1);

        m_dialog->close();
        m_portal->answerHeld();

        settle();
        QVERIFY(m_portal->opened.isEmpty());
        QVERIFY(m_answers.isEmpty());
    }

    void aSecondQuestionEndsTheFirst()
    {
        openAndShow();
        const auto first = m_portal->newestRequest();

        openAndShow();

        QCOMPARE(m_portal->closed, QStringList{first});
        connectAs(u"portal"_s)
            .send(m_portal->response(first, 0, {{u"uris"_s, QStringList{u"file:///first"_s}}}));
        m_portal->choose({u"file:///second"_s});
        QTRY_COMPARE(m_answers, Answers{"/second"});
    }

    void aQuestionMayBeAskedFromTheAnswerToAnother()
    {
        openAndShow();
        const auto again = connect(m_dialog.get(), &FolderDialog::answered, this, [this] {
            if (m_answers.size() == 1) {
                open();
            }
        });

        m_portal->respond(1);
        QTRY_COMPARE(m_portal->opened.size(), 2);
        settle();
        m_portal->choose({u"file:///second"_s});

        QTRY_COMPARE(m_answers, (Answers{std::nullopt, "/second"}));
        disconnect(again);
    }

    void aResponseThatOvertakesTheMethodsReplyCounts()
    {
        QVERIFY(m_portal->start());
        m_portal->heldCall = u"OpenFile"_s;
        open();
        QTRY_COMPARE(m_portal->opened.size(), 1);

        m_portal->choose({u"file:///early"_s});
        QTRY_COMPARE(m_answers, Answers{"/early"});
        m_portal->answerHeld();

        settle();
        m_portal->stop(); // would end a question that is open
        QVERIFY(m_portal->start());
        settle();
        QCOMPARE(m_answers.size(), 1);
        QVERIFY(m_portal->closed.isEmpty());
    }

    void aRequestThatIsNotTheExpectedOneIsFollowed()
    {
        m_portal->requestPath = u"/org/freedesktop/portal/desktop/request/42"_s;
        openAndShow();
        m_portal->choose({u"file:///old"_s});
        QTRY_COMPARE(m_answers, Answers{"/old"});

        openAndShow();
        m_dialog->close();

        QTRY_COMPARE(m_portal->closed, QStringList{m_portal->requestPath});
    }

    void aResponseOfAnotherSenderIsIgnored()
    {
        openAndShow();
        auto stranger = connectAs(u"stranger"_s);
        const QVariantMap results = {{u"uris"_s, QStringList{u"file:///forged"_s}}};

        QVERIFY(stranger.send(m_portal->response(m_portal->newestRequest(), 0, results)));
        QVERIFY(stranger.send(m_portal->response(m_portal->newestRequest(), 1, {})));
        QTest::qWait(150);
        QVERIFY(m_answers.isEmpty());

        m_portal->choose({u"file:///true"_s});
        QTRY_COMPARE(m_answers, Answers{"/true"});
    }

    void aResponseToAnotherQuestionIsIgnored()
    {
        openAndShow();

        connectAs(u"portal"_s)
            .send(m_portal->response(m_portal->newestRequest() + u'x', 0,
                                     {{u"uris"_s, QStringList{u"file:///other"_s}}}));
        QTest::qWait(150);

        QVERIFY(m_answers.isEmpty());
    }
};

QTEST_GUILESS_MAIN(PortalFolderDialogTest)
#include "PortalFolderDialogTest.moc"
