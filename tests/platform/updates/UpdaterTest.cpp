// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/Updater.h"
#include "tests/platform/updates/FeedServer.h"
#include "tests/platform/updates/FeedText.h"
#include "tests/platform/updates/Signer.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Kind = UpdateResult::Kind;

/// The updater over real HTTPS, against a server that may be anybody.
class UpdaterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!QSslSocket::supportsSsl()) {
            QSKIP("Qt's OpenSSL backend is not there.");
        }
        m_certificate = TestCertificate::make();
        QVERIFY(!m_certificate.certificate.isNull() && !m_certificate.key.isNull());
    }

    void init()
    {
        trust({m_certificate.certificate});
        m_server = std::make_unique<FeedServer>(m_certificate);
        m_folder = std::make_unique<QTemporaryDir>();
        m_stranger = std::make_unique<Signer>();
        m_signer = std::make_unique<Signer>();
        m_mustBeSigned = true;
        m_options = {};
        m_options.folder = downloads().toStdString();
    }

    void cleanup()
    {
        m_result = {};
        m_updater.reset();
        // What was fetched goes with the last who knows of it.
        QVERIFY(QDir(downloads()).isEmpty(QDir::Files | QDir::Hidden));
    }

    void aNewerVersionIsOffered()
    {
        offer({.version = "2.0", .shownVersion = "Two", .notes = "<p>Faster</p>"});

        QCOMPARE(search().kind, Kind::NewVersion);

        QCOMPARE(m_result.version, u"2.0"_s);
        QCOMPARE(m_result.shownVersion, u"Two"_s);
        QCOMPARE(m_result.notes, u"Faster"_s);
        QCOMPARE(m_result.fileName, u"Kestle-2.0.tar.xz"_s);
        QVERIFY(m_result.download);
        QFile file(*m_result.download);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), m_bytes);
        QCOMPARE(file.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void aDownloadLeavesNothingBehindHoweverTheProgramEnds_data()
    {
        QTest::addColumn<bool>("isHeldBack");
        QTest::newRow("while it is fetched") << true;
        QTest::newRow("while it is offered") << false;
    }

    void aDownloadLeavesNothingBehindHoweverTheProgramEnds()
    {
        QFETCH(const bool, isHeldBack);
        offer({.version = "2.0"});
        m_server->answers[u"/Kestle-2.0.tar.xz"_s].isHeldBack = isHeldBack;
        begin(m_server->url(u"/feed.xml"_s));
        connect(m_updater.get(), &UpdateSearch::finished, this,
                [this](const UpdateResult &result) { m_result = result; });

        m_updater->start();

        if (isHeldBack) {
            QTRY_VERIFY(m_server->asked().contains(u"/Kestle-2.0.tar.xz"_s));
        } else {
            QTRY_VERIFY(m_result.download);
        }
        QVERIFY(QFileInfo::exists(downloads()));
        QVERIFY(QDir(downloads()).isEmpty(QDir::Files | QDir::Hidden));
    }

    void onlyTheUserSeesWhereDownloadsLie()
    {
        offer({.version = "2.0"});

        QCOMPARE(search().kind, Kind::NewVersion);

        constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
        QCOMPARE(QFile::permissions(downloads()) & others, QFile::Permissions());
    }

    void anEqualOrOlderVersionIsNot_data()
    {
        QTest::addColumn<QByteArray>("version");
        QTest::newRow("equal") << "1.0"_ba;
        QTest::newRow("older") << "0.9"_ba;
        QTest::newRow("prerelease") << "2.0b1"_ba;
    }

    void anEqualOrOlderVersionIsNot()
    {
        QFETCH(const QByteArray, version);
        offer({.version = version});

        QCOMPARE(search().kind, Kind::UpToDate);

        QCOMPARE(m_server->asked(), QStringList{u"/feed.xml"_s});
    }

    void aDownloadThatIsNotWhatWasSignedIsNeverOffered_data()
    {
        QTest::addColumn<QString>("fault");
        for (const auto *fault :
             {"changed", "shorter than stated", "longer than stated", "signed by somebody else",
              "signature of something else", "signature that is none"}) {
            QTest::newRow(fault) << QString::fromLatin1(fault);
        }
    }

    void aDownloadThatIsNotWhatWasSignedIsNeverOffered()
    {
        QFETCH(const QString, fault);
        auto version = verified({.version = "2.0"});
        auto &bytes = m_server->answers[u"/Kestle-2.0.tar.xz"_s].body;
        if (fault == u"changed"_s) {
            bytes[7] = 'X';
        } else if (fault == u"shorter than stated"_s) {
            bytes.chop(1);
        } else if (fault == u"longer than stated"_s) {
            bytes += 'X';
        } else if (fault == u"signed by somebody else"_s) {
            version.signature = m_stranger->signatureOf(m_bytes);
        } else if (fault == u"signature of something else"_s) {
            version.signature = m_signer->signatureOf("another file");
        } else {
            version.signature = "none";
        }
        serveSigned(FeedText::feed(FeedText::of(version)));

        QCOMPARE(search().kind, Kind::NotVerified);

        QVERIFY(!m_result.download);
        QCOMPARE(m_result.version, u"2.0"_s); // so that it need not be fetched again
        QVERIFY(m_result.shownVersion.isEmpty());
    }

    void anOldDownloadIsNotSoldAsANewVersion()
    {
        // Its signature is genuine; of which version it is, only the feed says.
        serve(FeedText::feed(FeedText::of(verified({.version = "99"}))));

        QCOMPARE(search().kind, Kind::NotVerified);

        QVERIFY(!m_result.download);
        QCOMPARE(m_server->asked(), QStringList{u"/feed.xml"_s});
    }

    void aSignedFeedMayOfferItsPage()
    {
        offer({.version = "2.0", .more = "<link>https://kestle.test/2</link>"});

        QCOMPARE(search().kind, Kind::NewVersion);

        QCOMPARE(m_result.page, QUrl(u"https://kestle.test/2"_s));
        QVERIFY(m_result.isFeedSigned);
        QVERIFY(m_result.download);
    }

    void aPageAloneIsOfferedOnlyByASignedFeed()
    {
        m_mustBeSigned = false;
        const auto feed = FeedText::feed(
            FeedText::of({.version = "2.0", .more = "<link>https://kestle.test/2</link>"}));
        serve(feed);
        QCOMPARE(search().kind, Kind::UpToDate);

        serveSigned(feed);
        QCOMPARE(search().kind, Kind::NewVersion);
        QVERIFY(!m_result.download);
    }

    void ofAFeedThatIsNotSignedOnlyTheNumberIsTaken()
    {
        m_mustBeSigned = false;
        serve(FeedText::feed(
            FeedText::of(verified({.version = "2.0",
                                   .shownVersion = "The best",
                                   .notes = "Send us your password",
                                   .more = "<link>https://somewhere.test/</link>"}))));

        QCOMPARE(search().kind, Kind::NewVersion);

        QVERIFY(!m_result.isFeedSigned);
        QCOMPARE(m_result.shownVersion, u"2.0"_s);
        QVERIFY(m_result.notes.isEmpty());
        QVERIFY(m_result.page.isEmpty());
        QVERIFY(m_result.download);
    }

    void aForgedFeedSaysNothing()
    {
        serve(m_stranger->signedFeed(FeedText::feed(FeedText::of(verified({.version = "2.0"})))));

        QCOMPARE(search().kind, Kind::NotVerified);

        QCOMPARE(m_server->asked(), QStringList{u"/feed.xml"_s});
    }

    void aFeedThatIsNoneIsTold_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("cut off in the writing") << FeedText::feed(FeedText::of({})).chopped(40);
        QTest::newRow("a page") << "<html><body>Sign in</body></html>"_ba;
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("huge") << FeedText::feed(QByteArray(1024 * 1024, ' '));
    }

    void aFeedThatIsNoneIsTold()
    {
        QFETCH(const QByteArray, bytes);
        serveSigned(bytes);
        QCOMPARE(search().kind, Kind::NotAFeed);
    }

    void anEndlessFeedIsBrokenOff()
    {
        m_server->answers[u"/feed.xml"_s] = {.body = QByteArray(64 * 1024, ' '), .isEndless = true};

        QCOMPARE(search().kind, Kind::NotAFeed);

        QVERIFY(m_server->sent < 16 * 1024 * 1024);
    }

    void anEndlessDownloadIsBrokenOff()
    {
        auto version = verified({.version = "2.0"});
        m_server->answers[u"/Kestle-2.0.tar.xz"_s] = {.body = QByteArray(64 * 1024, ' '),
                                                      .isEndless = true};
        serveSigned(FeedText::feed(FeedText::of(version)));

        QCOMPARE(search().kind, Kind::NotVerified);
    }

    void aDownloadOfAbsurdSizeIsNotBegun()
    {
        auto version = verified({.version = "2.0"});
        version.length = qint64(257) * 1024 * 1024;
        serveSigned(FeedText::feed(FeedText::of(version)));

        QCOMPARE(search().kind, Kind::NotVerified);

        QCOMPARE(m_server->asked(), QStringList{u"/feed.xml"_s});
    }

    void aTruncatedAnswerIsNone_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("the feed") << u"/feed.xml"_s;
        QTest::newRow("the download") << u"/Kestle-2.0.tar.xz"_s;
    }

    void aTruncatedAnswerIsNone()
    {
        QFETCH(const QString, path);
        offer({.version = "2.0"});
        auto &answer = m_server->answers[path];
        answer.statedLength = answer.body.size();
        answer.body.chop(10);

        QCOMPARE(search().kind, Kind::NotReached);
    }

    void aRedirectIsFollowedOverHttps()
    {
        offer({.version = "2.0"});
        m_server->answers[u"/feed.xml"_s] = {
            .status = 302, .location = m_server->url(u"/elsewhere.xml"_s).toEncoded()};
        m_server->answers[u"/elsewhere.xml"_s] = {.body = m_feed};

        QCOMPARE(search().kind, Kind::NewVersion);
    }

    void aRedirectToPlainHttpIsNotFollowed_data() { aTruncatedAnswerIsNone_data(); }

    void aRedirectToPlainHttpIsNotFollowed()
    {
        QFETCH(const QString, path);
        QTcpServer plain;
        QVERIFY(plain.listen(QHostAddress::LocalHost));
        offer({.version = "2.0"});
        m_server->answers[path] = {
            .status = 301,
            .location = "http://127.0.0.1:" + QByteArray::number(plain.serverPort()) + "/"};

        QCOMPARE(search().kind, Kind::NotReached);

        QVERIFY(!plain.hasPendingConnections());
    }

    void redirectsEnd()
    {
        m_server->answers[u"/feed.xml"_s] = {.status = 302,
                                             .location = m_server->url(u"/feed.xml"_s).toEncoded()};

        QCOMPARE(search().kind, Kind::NotReached);

        QVERIFY(m_server->asked().size() <= 7);
    }

    void aSilentServerIsLeft()
    {
        m_options.feed.silence = 200ms;
        m_server->answers[u"/feed.xml"_s] = {.statedLength = 1000};
        m_server->answers[u"/feed.xml"_s].isHeldBack = true;
        m_options.feed.duration = 400ms; // a byte now and then is not enough
        QCOMPARE(search().kind, Kind::NotReached);
    }

    void aServerThatNobodyVouchesForIsNotBelieved()
    {
        offer({.version = "2.0"});
        trust({});

        QCOMPARE(search().kind, Kind::NotReached);

        QVERIFY(m_server->asked().isEmpty());
    }

    void nobodyThereIsToldAsSuch()
    {
        const auto address = m_server->url(u"/feed.xml"_s);
        m_server.reset();
        QCOMPARE(search(address).kind, Kind::NotReached);
    }

    void anErrorOfTheServerIsToldAsSuch() { QCOMPARE(search().kind, Kind::NotReached); }

    void noRoomForTheDownloadIsToldAsSuch()
    {
        offer({.version = "2.0"});
        QFile file(m_folder->filePath(u"file"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        m_options.folder = m_folder->filePath(u"file/below"_s).toStdString();

        QCOMPARE(search().kind, Kind::NotKept);
    }

    void aKnownVersionIsNotFetchedAgain()
    {
        offer({.version = "2.0"});

        QCOMPARE(search({}, {u"1.5"_s, u"2.0"_s}).kind, Kind::KnownAlready);

        QCOMPARE(m_server->asked(), QStringList{u"/feed.xml"_s});
    }

    void itIsToldHowMuchOfADownloadIsThere()
    {
        offer({.version = "2.0"});
        begin(m_server->url(u"/feed.xml"_s));
        QSignalSpy progressed(m_updater.get(), &UpdateSearch::progressed);
        QSignalSpy finished(m_updater.get(), &UpdateSearch::finished);

        m_updater->start();
        QVERIFY(finished.wait());

        qint64 last = 0;
        for (const auto &told : progressed) {
            QVERIFY(told.at(0).toLongLong() > last);
            last = told.at(0).toLongLong();
            QCOMPARE(told.at(1).toLongLong(), m_bytes.size());
        }
        QCOMPARE(last, m_bytes.size()); // the feed is no part of it
    }

    void aSearchThatWasStoppedSaysNothing()
    {
        offer({.version = "2.0"});
        m_server->answers[u"/Kestle-2.0.tar.xz"_s] = {.statedLength = m_bytes.size(),
                                                      .isHeldBack = true};
        begin(m_server->url(u"/feed.xml"_s));
        QSignalSpy finished(m_updater.get(), &UpdateSearch::finished);
        m_updater->start();
        QTRY_VERIFY(m_server->asked().contains(u"/Kestle-2.0.tar.xz"_s));

        m_updater->stop();

        m_updater->start({u"2.0"_s});
        QVERIFY(finished.wait());
        QCOMPARE(finished.count(), 1);
        QCOMPARE(finished.first().first().value<UpdateResult>().kind, Kind::KnownAlready);
    }

    void theRequestTellsNothingOfTheUser()
    {
        serveSigned(FeedText::feed({}));
        QCOMPARE(search().kind, Kind::UpToDate);

        const auto head = m_server->lastHead().toLower();
        QVERIFY(head.contains("user-agent: kestle\r\n"));
        QVERIFY(head.contains("accept-encoding: identity\r\n"));
        QVERIFY(!head.contains("cookie"));
        QVERIFY(!head.contains("referer"));
    }

    void namesOfDownloadsAreHarmless_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        QTest::newRow("a path in it") << u"/..%2f..%2fetc%2fpasswd"_s << u"passwd"_s;
        QTest::newRow("hidden") << u"/.profile"_s << u"profile"_s;
        QTest::newRow("a line break") << u"/a%0ab"_s << u"ab"_s;
        QTest::newRow("none") << u"/"_s << u"Kestle"_s;
        QTest::newRow("only dots") << u"/..."_s << u"Kestle"_s;
        QTest::newRow("a dot where it is cut off")
            << u"/begin%1.x%2"_s.arg(QString(20, u'.'), QString(198, u'a'))
            << u"x"_s + QString(198, u'a');
        QTest::newRow("longer in bytes than in letters")
            << u"/"_s + u"%E2%82%AC"_s.repeated(100) << QString(66, u'€');
        QTest::newRow("pairs") << u"/a%F0%9F%93%B7b"_s << u"ab"_s;
    }

    void namesOfDownloadsAreHarmless()
    {
        QFETCH(const QString, path);
        QFETCH(const QString, name);
        auto version = verified({.version = "2.0"});
        version.download = m_server->url(path).toEncoded();
        m_server->answers[m_server->url(path).path(QUrl::FullyEncoded)] = {.body = m_bytes};
        serveSigned(FeedText::feed(FeedText::of(version)));

        QCOMPARE(search().kind, Kind::NewVersion);

        QCOMPARE(m_result.fileName, name);
    }

    void theUsualBuildHasNoFeed() { QVERIFY(!UpdateFeed::builtIn()); }

    void aFeedMustBeSignedUnlessTheBuildIsToldOtherwise()
    {
        QVERIFY(UpdateFeed({.address = {}, .key = {}}).mustBeSigned);
    }

private:
    static void trust(const QList<QSslCertificate> &certificates)
    {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(certificates);
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    [[nodiscard]] QString downloads() const { return m_folder->filePath(u"cache/updates"_s); }

    /// @p version with a download that is what its signature says.
    FeedText::Version verified(FeedText::Version version)
    {
        const auto path = u"/Kestle-2.0.tar.xz"_s;
        version.download = m_server->url(path).toEncoded();
        version.length = m_bytes.size();
        version.signature = m_signer->signatureOf(m_bytes);
        m_server->answers[path] = {.body = m_bytes};
        return version;
    }

    void serve(const QByteArray &feed)
    {
        m_feed = feed;
        m_server->answers[u"/feed.xml"_s] = {.body = feed};
    }

    void serveSigned(const QByteArray &feed) { serve(m_signer->signedFeed(feed)); }

    void offer(const FeedText::Version &version)
    {
        serveSigned(FeedText::feed(FeedText::of(verified(version))));
    }

    void begin(const QUrl &address)
    {
        m_result = {};
        const auto key = PublicKey::fromBase64(m_signer->publicKey());
        m_updater = std::make_unique<Updater>(
            UpdateFeed{.address = address, .key = *key, .mustBeSigned = m_mustBeSigned},
            Appcast::Host{.version = u"1.0"_s, .systemVersion = u"6.1"_s}, m_options);
    }

    const UpdateResult &search(const QUrl &address = {}, const QStringList &known = {})
    {
        begin(address.isEmpty() ? m_server->url(u"/feed.xml"_s) : address);
        QSignalSpy finished(m_updater.get(), &UpdateSearch::finished);
        m_updater->start(known);
        if (finished.wait(20'000)) {
            m_result = finished.first().first().value<UpdateResult>();
        } else {
            qWarning("The search does not end");
            m_result.kind = Kind(-1);
        }
        return m_result;
    }

    TestCertificate m_certificate;
    std::unique_ptr<FeedServer> m_server;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Signer> m_signer;
    std::unique_ptr<Signer> m_stranger;
    bool m_mustBeSigned = true;
    Updater::Options m_options;
    std::unique_ptr<Updater> m_updater;
    UpdateResult m_result;
    QByteArray m_feed;
    const QByteArray m_bytes = QByteArray("the new version ").repeated(50'000);
};

QTEST_GUILESS_MAIN(UpdaterTest)
#include "UpdaterTest.moc"
