// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/PublicKey.h"
#include "platform/updates/SignedFeed.h"
#include "tests/platform/updates/Signer.h"

#include <QTest>

using namespace Qt::StringLiterals;

class SignaturesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePublishedExamplesVerify_data()
    {
        // RFC 8032, 7.1
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<QByteArray>("signature");
        QTest::newRow("TEST 1: no bytes")
            << "d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a"_ba
            << ""_ba
            << "e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e06522490155"
               "5fb8821590a33bacc61e39701cf9b46bd25bf5f0595bbe24655141438e7a100b"_ba;
        QTest::newRow("TEST 3: two bytes")
            << "fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025"_ba
            << "af82"_ba
            << "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac"
               "18ff9b538d16f290ae67f760984dc6594a7c15e9716ed28dc027beceea1ec40a"_ba;
    }

    void thePublishedExamplesVerify()
    {
        QFETCH(const QByteArray, key);
        QFETCH(const QByteArray, message);
        QFETCH(const QByteArray, signature);
        const auto bytes = QByteArray::fromHex(message);

        const auto publicKey = PublicKey::fromBase64(QByteArray::fromHex(key).toBase64());

        QVERIFY(publicKey);
        QVERIFY(publicKey->verifies(bytes, QByteArray::fromHex(signature).toBase64()));
        QVERIFY(!publicKey->verifies(bytes + "x", QByteArray::fromHex(signature).toBase64()));
    }

    void whatIsNoKeyIsNone_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("too short") << QByteArray(31, 'k').toBase64();
        QTest::newRow("too long") << QByteArray(33, 'k').toBase64();
        QTest::newRow("not Base64") << QByteArray(44, '*');
    }

    void whatIsNoKeyIsNone()
    {
        QFETCH(const QByteArray, text);
        QVERIFY(!PublicKey::fromBase64(text));
    }

    void whatIsNoSignatureFitsNothing_data()
    {
        QTest::addColumn<QByteArray>("signature");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("too short") << QByteArray(63, 's').toBase64();
        QTest::newRow("too long") << QByteArray(65, 's').toBase64();
        QTest::newRow("another one") << m_stranger.signatureOf("message"_ba);
        QTest::newRow("of another message") << m_signer.signatureOf("massage"_ba);
    }

    void whatIsNoSignatureFitsNothing()
    {
        QFETCH(const QByteArray, signature);
        QVERIFY(!key().verifies("message"_ba, signature));
    }

    void aFeedIsJudgedByItsSignature_data()
    {
        using Trust = SignedFeed::Trust;
        const auto content = "<rss/>\n"_ba;
        const auto whole = m_signer.signedFeed(content);
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Trust>("trust");
        QTest::newRow("signed") << whole << Trust::Signed;
        QTest::newRow("without a signature") << content << Trust::Unsigned;
        QTest::newRow("by somebody else") << m_stranger.signedFeed(content) << Trust::Forged;
        QTest::newRow("changed") << QByteArray(whole).replace("<rss/>", "<RSS/>") << Trust::Forged;
        QTest::newRow("with more in front") << " " + whole << Trust::Forged;
        QTest::newRow("with more behind") << whole + "<item/>" << Trust::Forged;
        QTest::newRow("cut off") << whole.chopped(8) << Trust::Forged;
        QTest::newRow("of another length")
            << QByteArray(whole).replace("length: 7", "length: 8") << Trust::Forged;
        QTest::newRow("with an empty block")
            << content + "<!-- sparkle-signatures:\n-->" << Trust::Forged;
        QTest::newRow("with a second block that is none")
            << whole + "<!-- sparkle-signatures:\n-->" << Trust::Forged;
    }

    void aFeedIsJudgedByItsSignature()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const SignedFeed::Trust, trust);

        const auto feed = SignedFeed::judged(bytes, key());

        QCOMPARE(feed.trust, trust);
        if (trust != SignedFeed::Trust::Forged) {
            QCOMPARE(feed.content, "<rss/>\n"_ba);
        }
    }

private:
    [[nodiscard]] PublicKey key() const { return *PublicKey::fromBase64(m_signer.publicKey()); }

    Signer m_signer;
    Signer m_stranger;
};

QTEST_GUILESS_MAIN(SignaturesTest)
#include "SignaturesTest.moc"
