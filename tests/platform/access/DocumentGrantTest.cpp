// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/DocumentGrant.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

class DocumentGrantTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPathOfTheDocumentsPortalTellsItsDocument_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QString>("document");

        QTest::newRow("outside the sandbox")
            << "/run/user/1000/doc/8f2bc301/CARD"_ba << u"8f2bc301"_s;
        QTest::newRow("inside Flatpak") << "/run/flatpak/doc/8f2bc301/CARD"_ba << u"8f2bc301"_s;
        QTest::newRow("below the folder") << "/run/flatpak/doc/1/CARD/DCIM"_ba << u"1"_s;
        QTest::newRow("a folder that looks like a document")
            << "/run/flatpak/doc/a/doc/b/c"_ba << u"a"_s;
        QTest::newRow("spaces, percent, umlauts")
            << "/run/flatpak/doc/ffffffff/MY CARD %2F \xC3\xBC"_ba << u"ffffffff"_s;
        QTest::newRow("not UTF-8") << "/run/flatpak/doc/a/caf\xE9"_ba << u"a"_s;
    }

    void aPathOfTheDocumentsPortalTellsItsDocument()
    {
        QFETCH(const QByteArray, path);
        QFETCH(const QString, document);

        const auto grant = DocumentGrant::ofPath(path.toStdString());

        QVERIFY(grant);
        QCOMPARE(grant->document, document);
        QCOMPARE(QByteArray::fromStdString(grant->path.native()), path);
    }

    void aSlashAtTheEndIsNoPartOfTheFolder()
    {
        QCOMPARE(DocumentGrant::ofPath("/run/flatpak/doc/a/CARD/"),
                 DocumentGrant::ofPath("/run/flatpak/doc/a/CARD"));
    }

    void otherPathsAreNoGrants_data()
    {
        QTest::addColumn<QByteArray>("path");

        QTest::newRow("empty") << ""_ba;
        QTest::newRow("root") << "/"_ba;
        QTest::newRow("a card") << "/media/u/CARD"_ba;
        QTest::newRow("relative") << "run/flatpak/doc/a/CARD"_ba;
        QTest::newRow("the mount point") << "/run/flatpak/doc"_ba;
        QTest::newRow("a document without its folder") << "/run/flatpak/doc/a"_ba;
        QTest::newRow("a document without its folder, slash") << "/run/flatpak/doc/a/"_ba;
        QTest::newRow("another program's view") << "/run/user/1/doc/by-app/org.x/a/CARD"_ba;
        QTest::newRow("capitals") << "/run/flatpak/doc/8F/CARD"_ba;
        QTest::newRow("no hexadecimal digit") << "/run/flatpak/doc/8g/CARD"_ba;
        QTest::newRow("too long") << "/run/flatpak/doc/123456789/CARD"_ba;
        QTest::newRow("leading zero") << "/run/flatpak/doc/08/CARD"_ba;
        QTest::newRow("empty document") << "/run/flatpak/doc//CARD"_ba;
        QTest::newRow("folder that only begins so") << "/run/flatpak/docs/a/CARD"_ba;
        QTest::newRow("up again") << "/run/flatpak/doc/a/.."_ba;
        QTest::newRow("up again, deeper") << "/run/flatpak/doc/a/CARD/../../b/CARD"_ba;
        QTest::newRow("not lexically normal") << "/run/flatpak/doc/a/./CARD"_ba;
        QTest::newRow("doubled slash") << "/run/flatpak/doc/a/CARD//DCIM"_ba;
        QTest::newRow("doubled slash at the end") << "/run/flatpak/doc/a/CARD//"_ba;
        QTest::newRow("NUL") << QByteArray("/run/flatpak/doc/a/CA\0RD", 24);
    }

    void otherPathsAreNoGrants()
    {
        QFETCH(const QByteArray, path);

        QVERIFY(!DocumentGrant::ofPath(path.toStdString()));
    }

    void aGrantIsWrittenAsOneObject()
    {
        const auto grant = DocumentGrant::ofPath("/run/flatpak/doc/8f/MY CARD %\xE9");

        QVERIFY(grant);
        QCOMPARE(
            grant->data(),
            R"({"document":"8f","grant":"portal","path":"/run/flatpak/doc/8f/MY%20CARD%20%25%E9"})"_ba);
    }

    void onlyWhatWasWrittenIsRead_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<bool>("isGrant");

        const auto object = [](const char *document, const char *path, const char *rest = "") {
            return R"({"grant":"portal","document":"#","path":"@" rest})"_ba.replace("#", document)
                .replace("@", path)
                .replace(" rest", rest);
        };
        QTest::newRow("another order") << object("8f", "/run/flatpak/doc/8f/CARD") << true;
        QTest::newRow("white space") << object("8f", "/run/flatpak/doc/8f/CARD", "\n ") << true;
        QTest::newRow("empty") << ""_ba << false;
        QTest::newRow("no JSON") << "\x01\xFF"_ba << false;
        QTest::newRow("JSON of another shape") << "[1,2]"_ba << false;
        QTest::newRow("direct grant")
            << R"({"grant":"direct","path":"/run/flatpak/doc/8f/CARD","volumeUUID":"1"})"_ba
            << false;
        QTest::newRow("no form") << R"({"document":"8f","path":"/run/flatpak/doc/8f/CARD"})"_ba
                                 << false;
        QTest::newRow("no document")
            << R"({"grant":"portal","path":"/run/flatpak/doc/8f/CARD"})"_ba << false;
        QTest::newRow("no path") << R"({"grant":"portal","document":"8f"})"_ba << false;
        QTest::newRow("document that is a number")
            << R"({"grant":"portal","document":8,"path":"/run/flatpak/doc/8/CARD"})"_ba << false;
        QTest::newRow("another document") << object("8e", "/run/flatpak/doc/8f/CARD") << false;
        QTest::newRow("a card's path") << object("8f", "/media/u/CARD") << false;
        QTest::newRow("relative") << object("8f", "run/flatpak/doc/8f/CARD") << false;
        QTest::newRow("up again") << object("8f", "/run/flatpak/doc/8f/..") << false;
        QTest::newRow("NUL") << object("8f", "/run/flatpak/doc/8f/a%00") << false;
        QTest::newRow("encoded slash") << object("8f", "/run/flatpak/doc/8f%2FCARD") << false;
        QTest::newRow("lower-case code") << object("8f", "/run/flatpak/doc/8f/a%e9") << false;
        QTest::newRow("needless code") << object("8f", "/run/flatpak/doc/8f/%41") << false;
        QTest::newRow("damaged code") << object("8f", "/run/flatpak/doc/8f/a%G0") << false;
        QTest::newRow("not encoded") << object("8f", "/run/flatpak/doc/8f/a b") << false;
        QTest::newRow("beyond Latin-1") << object("8f", "/run/flatpak/doc/8f/\\u0141") << false;
        QTest::newRow("slash at the end") << object("8f", "/run/flatpak/doc/8f/CARD/") << false;
        QTest::newRow("more than that")
            << object("8f", "/run/flatpak/doc/8f/CARD", R"(,"volumeUUID":"1")") << false;
    }

    void onlyWhatWasWrittenIsRead()
    {
        QFETCH(const QByteArray, data);
        QFETCH(const bool, isGrant);

        QCOMPARE(DocumentGrant::from(data).has_value(), isGrant);
    }

    void everyGrantSurvivesItsBytesAndAnotherMountPoint()
    {
        QRandomGenerator random(11);
        for (int round = 0; round < 5000; ++round) {
            const auto path = fs::path("/run/user/1000/doc") / anyDocument(random) /
                              anyName(random) / anyName(random);
            const auto grant = DocumentGrant::ofPath(path);
            QVERIFY(grant);

            QCOMPARE(DocumentGrant::from(grant->data()), grant);
            const auto renewed = grant->renewed("/run/flatpak/doc");
            QVERIFY(renewed);
            QCOMPARE(renewed->document, grant->document);
            QCOMPARE(renewed->renewed("/run/user/1000/doc"), grant);
        }
    }

    void damagedBytesAreNoGrantOrOneOfTheSameForm()
    {
        QRandomGenerator random(13);
        const auto whole = DocumentGrant::ofPath("/run/flatpak/doc/8f2b/CARD %\xE9")->data();
        int read = 0;
        for (int round = 0; round < 20'000; ++round) {
            auto data = whole;
            for (auto left = random.bounded(1, 4); left > 0; --left) {
                const auto place = random.bounded(int(data.size()));
                switch (random.bounded(3)) {
                case 0:
                    data[place] = char(random.bounded(256));
                    break;
                case 1:
                    data.remove(place, 1);
                    break;
                default:
                    data.insert(place, data.mid(random.bounded(int(data.size())), 3));
                    break;
                }
            }

            const auto grant = DocumentGrant::from(data);

            if (grant) {
                ++read;
                QCOMPARE(DocumentGrant::ofPath(grant->path), grant);
                QCOMPARE(QJsonDocument::fromJson(grant->data()), QJsonDocument::fromJson(data));
            }
        }
        QVERIFY(read > 0);
    }

    void theSameDocumentIsFoundUnderAnotherMountPoint()
    {
        const auto grant = DocumentGrant::ofPath("/run/user/1000/doc/8f/caf\xE9/DCIM");
        QVERIFY(grant);

        const auto renewed = grant->renewed("/run/user/1001/doc/");

        QVERIFY(renewed);
        QCOMPARE(renewed->document, u"8f"_s);
        QCOMPARE(renewed->path, fs::path("/run/user/1001/doc/8f/caf\xE9/DCIM"));
        QCOMPARE(grant->renewed("/run/user/1000/doc"), grant);
    }

    void otherPlacesAreNoMountPoints_data()
    {
        QTest::addColumn<QByteArray>("mountPoint");

        QTest::newRow("empty") << ""_ba;
        QTest::newRow("relative") << "run/flatpak/doc"_ba;
        QTest::newRow("another folder") << "/media/u"_ba;
        QTest::newRow("a document of its own") << "/run/flatpak/doc/8f/doc"_ba;
        QTest::newRow("up again") << "/run/flatpak/x/../doc"_ba;
        QTest::newRow("NUL") << QByteArray("/run/\0/doc", 10);
    }

    void otherPlacesAreNoMountPoints()
    {
        QFETCH(const QByteArray, mountPoint);
        const auto grant = DocumentGrant::ofPath("/run/user/1000/doc/8f/doc/8f/CARD");
        QVERIFY(grant);

        QVERIFY(!grant->renewed(mountPoint.toStdString()));
    }

    void whatIsNoGrantIsNotRenewed()
    {
        QVERIFY(!DocumentGrant().renewed("/run/flatpak/doc"));
        QVERIFY(!DocumentGrant().renewed("/run/flatpak/doc/8f/CARD"));
    }

private:
    static std::string anyDocument(QRandomGenerator &random)
    {
        return QByteArray::number(random.bounded(1U, 0xFFFFFFFFU), 16).toStdString();
    }

    /// Any bytes that a file may be called, a letter first so that it is never "." or "..".
    static std::string anyName(QRandomGenerator &random)
    {
        std::string name("x");
        for (auto left = random.bounded(12); left > 0; --left) {
            const auto byte = char(random.bounded(1, 256));
            name.push_back(byte == '/' ? '%' : byte);
        }
        return name;
    }
};

QTEST_GUILESS_MAIN(DocumentGrantTest)
#include "DocumentGrantTest.moc"
