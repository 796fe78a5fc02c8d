// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/SessionSnapshot.h"
#include "tests/core/store/MadeUpSnapshots.h"
#include "tests/support/GermanNumbers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

static SessionSnapshot sample()
{
    return {.volumeUUID = u"1234-ABCD"_s,
            .inventoryHash = QString(64, u'a'),
            .rejectedIDs = {u"100_FUJI/DSCF0001"_s, u"100_FUJI/caf\u00E9"_s, u"\U0010FE80\n\""_s},
            .currentIndex = 7,
            .savedAt = QDateTime(QDate(2026, 11, 15), QTime(20, 51, 2), Qt::UTC)};
}

/// A snapshot's JSON with the value of @p key replaced, or left out when @p value is empty.
static QByteArray jsonWith(const QByteArray &key, const QByteArray &value)
{
    static const QList<std::pair<QByteArray, QByteArray>> fields = {
        {"volumeUUID", "\"ABC\""},
        {"inventoryHash", "\"00ff\""},
        {"rejectedIDs", "[\"a\"]"},
        {"currentIndex", "3"},
        {"savedAt", "\"2026-11-15T20:51:02Z\""},
    };
    QByteArrayList members;
    for (const auto &[name, usual] : fields) {
        const auto &text = name == key ? value : usual;
        if (!text.isEmpty()) {
            members.append('"' + name + "\":" + text);
        }
    }
    return '{' + members.join(',') + '}';
}

class SessionSnapshotTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comparesMemberByMember()
    {
        const auto differs = [](auto change) {
            auto changed = sample();
            change(changed);
            return changed != sample();
        };

        QVERIFY(sample() == sample());
        QVERIFY(differs([](SessionSnapshot &s) { s.volumeUUID += u'x'; }));
        QVERIFY(differs([](SessionSnapshot &s) { s.inventoryHash += u'x'; }));
        QVERIFY(differs([](SessionSnapshot &s) { s.rejectedIDs.insert(u"x"_s); }));
        QVERIFY(differs([](SessionSnapshot &s) { s.currentIndex += 1; }));
        QVERIFY(differs([](SessionSnapshot &s) { s.savedAt = s.savedAt.addSecs(1); }));
    }

    void writesCompactJsonWithExactlyTheFields()
    {
        auto snapshot = sample();
        snapshot.rejectedIDs = {u"100_FUJI/DSCF0001"_s};
        snapshot.savedAt = snapshot.savedAt.addMSecs(999);

        QCOMPARE(snapshot.toJson(), "{\"volumeUUID\":\"1234-ABCD\",\"inventoryHash\":\"" +
                                        QByteArray(64, 'a') +
                                        "\",\"rejectedIDs\":[\"100_FUJI/DSCF0001\"],"
                                        "\"currentIndex\":7,\"savedAt\":\"2026-11-15T20:51:02Z\"}");
    }

    void writesNoRejectsAsAnEmptyArray()
    {
        auto snapshot = sample();
        snapshot.rejectedIDs.clear();

        QVERIFY(snapshot.toJson().contains("\"rejectedIDs\":[],"));
    }

    void whatItWritesIsJsonForOthersToo()
    {
        // Qt's reader takes U+FEFF at the beginning of a text for a byte order mark, unless the
        // text has an escape: with or without is the same here.
        const auto markless = [](const QString &text) {
            const auto first = std::ranges::find_if(text, [](QChar c) { return c != u'\uFEFF'; });
            return text.sliced(first - text.begin());
        };
        const auto isRead = [&](const SessionSnapshot &snapshot) {
            const auto document = QJsonDocument::fromJson(snapshot.toJson());
            const auto object = document.object();
            QSet<QString> ids;
            for (const auto &id : object[u"rejectedIDs"].toArray()) {
                ids.insert(markless(id.toString()));
            }
            QSet<QString> expected;
            for (const auto &id : snapshot.rejectedIDs) {
                expected.insert(markless(id));
            }
            return object.size() == 5 &&
                   markless(object[u"volumeUUID"].toString()) == markless(snapshot.volumeUUID) &&
                   markless(object[u"inventoryHash"].toString()) ==
                       markless(snapshot.inventoryHash) &&
                   ids == expected &&
                   object[u"currentIndex"].toInteger() == snapshot.currentIndex &&
                   QDateTime::fromString(object[u"savedAt"].toString(), Qt::ISODate) ==
                       inWholeSeconds(snapshot).savedAt;
        };

        QVERIFY(isRead(sample()));
        QVERIFY(rc::check("another reader finds the same", [&] {
            const auto snapshot = *anySnapshot();
            RC_ASSERT(isRead(snapshot));
        }));
    }

    void comesBackAsItWasButForTheFraction()
    {
        auto snapshot = sample();
        snapshot.savedAt = snapshot.savedAt.addMSecs(123);

        QCOMPARE(SessionSnapshot::fromJson(snapshot.toJson()), std::optional(sample()));
        QVERIFY(rc::check("every snapshot comes back", [] {
            const auto any = *anySnapshot();
            RC_ASSERT(SessionSnapshot::fromJson(any.toJson()) ==
                      std::optional(inWholeSeconds(any)));
        }));
    }

    void textsThatBeginLikeAByteOrderMarkComeBack()
    {
        auto snapshot = sample();
        snapshot.volumeUUID = u"\uFEFFABC"_s;
        snapshot.rejectedIDs = {u"\uFEFF\uFEFF"_s, u"\uFEFF"_s, u""_s};

        QVERIFY(SessionSnapshot::fromJson(snapshot.toJson()) == snapshot);
    }

    void extremeIndicesComeBack()
    {
        auto snapshot = sample();
        for (const auto index :
             {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max(), qint64(-1)}) {
            snapshot.currentIndex = index;
            QCOMPARE(SessionSnapshot::fromJson(snapshot.toJson())->currentIndex, index);
        }
    }

    void numbersDoNotDependOnTheLocale()
    {
        const GermanNumbers german;

        QCOMPARE(SessionSnapshot::fromJson(jsonWith("currentIndex", "3.0"))->currentIndex, 3);
        QVERIFY(!SessionSnapshot::fromJson(jsonWith("currentIndex", "3.5")));
        QVERIFY(!SessionSnapshot::fromJson(jsonWith("currentIndex", "3,0")));
    }

    void readsWhatOthersMayWrite_data()
    {
        QTest::addColumn<QByteArray>("json");
        const auto usual = jsonWith({}, {});
        const auto row = [](const char *name, const QByteArray &json) {
            QTest::newRow(name) << json;
        };
        row("as written", usual);
        row("pretty", QJsonDocument::fromJson(usual).toJson(QJsonDocument::Indented));
        row("spaces around", "\r\n\t " + usual + " \t\r\n");
        row("byte order mark", "\xEF\xBB\xBF" + usual);
        row("reject twice", jsonWith("rejectedIDs", "[\"a\",\"a\"]"));
        row("escaped reject", jsonWith("rejectedIDs", "[\"\\u0061\"]"));
        row("index 3.0", jsonWith("currentIndex", "3.0"));
        row("index 30e-1", jsonWith("currentIndex", "30e-1"));
        row("date with offset", jsonWith("savedAt", "\"2026-11-15T22:51:02+02:00\""));
        row("another key", withMore("\"undo\":[1,null,{\"volumeUUID\":3}]"));
        row("another key named in another case", withMore("\"CurrentIndex\":null"));
        row("another key that only begins alike", withMore("\"savedAt\\u0000\":null"));
        row("another key twice", withMore("\"x\":1,\"x\":2"));
        row("another key, empty", withMore("\"\":0"));
        row("another key, nested as deep as may be",
            withMore("\"x\":" + QByteArray(511, '[') + QByteArray(511, ']')));
        row("fields inside another key",
            withMore("\"x\":{\"currentIndex\":9,\"rejectedIDs\":[\"z\"]}"));
        row("other strings inside another key", withMore("\"x\":[\"z\",[\"z\"]]"));
        row("the last of two counts",
            "{\"currentIndex\":9,\"rejectedIDs\":[\"z\"]," + usual.mid(1));
        row("the last of two counts, whatever the first is",
            "{\"currentIndex\":true,\"rejectedIDs\":[1],\"savedAt\":\"\",\"volumeUUID\":{}," +
                usual.mid(1));
    }

    void readsWhatOthersMayWrite()
    {
        QFETCH(const QByteArray, json);
        const SessionSnapshot expected = {
            .volumeUUID = u"ABC"_s,
            .inventoryHash = u"00ff"_s,
            .rejectedIDs = {u"a"_s},
            .currentIndex = 3,
            .savedAt = QDateTime(QDate(2026, 11, 15), QTime(20, 51, 2), Qt::UTC)};

        QVERIFY(SessionSnapshot::fromJson(json) == std::optional(expected));
    }

    void noRejectsAreAnEmptySet()
    {
        const auto snapshot = SessionSnapshot::fromJson(jsonWith("rejectedIDs", "[]"));

        QVERIFY(snapshot);
        QVERIFY(snapshot->rejectedIDs.isEmpty());
    }

    void anythingElseIsUndecodable_data()
    {
        QTest::addColumn<QByteArray>("json");
        const auto usual = jsonWith({}, {});
        const auto row = [](const QByteArray &name, const QByteArray &json) {
            QTest::newRow(name.constData()) << json;
        };
        for (const QByteArray key :
             {"volumeUUID", "inventoryHash", "rejectedIDs", "currentIndex", "savedAt"}) {
            row(key + " missing", jsonWith(key, ""));
            for (const QByteArray value : {"null", "true", "{}", "{\"a\":\"b\"}", "[3]", "1e300"}) {
                row(key + " is " + value, jsonWith(key, value));
            }
            row(key + " spoiled by its last value", withMore('"' + key + "\":null"));
            row(key + " in another case",
                jsonWith(key, "").replace('}', ",\"" + key.toUpper() + "\":\"\"}"));
        }
        for (const QByteArray key : {"volumeUUID", "inventoryHash", "savedAt"}) {
            row(key + " is a number", jsonWith(key, "3"));
            row(key + " is a list", jsonWith(key, "[\"2026-11-15T20:51:02Z\"]"));
        }
        for (const QByteArray index :
             {"\"3\"", "3.5", "9223372036854775808", "18446744073709551615", "1e19",
              "-9223372036854775809", "0.99999999999999999999999", "1e999", "NaN", "Infinity",
              "0x3", "03", "+3", ".5", "3.", "-"}) {
            row("index " + index, jsonWith("currentIndex", index));
        }
        for (const QByteArray ids :
             {"\"a\"", "3", "[\"a\",1]", "[\"a\",null]", "[\"a\",[\"b\"]]", "[[\"a\"],\"b\"]",
              "[\"a\",{}]", "{\"a\":\"b\"}", "[\"a\",]", "[,\"a\"]", "[\"a\" \"b\"]", "[\"a\""}) {
            row("rejects " + ids, jsonWith("rejectedIDs", ids));
        }
        for (const QByteArray date : {"\"\"", "\"2026-11-15\"", "\"2026-02-30T00:00:00Z\"",
                                      "\"2026-11-15T20:51:02.5Z\"", "815863862", "1763239862.0"}) {
            row("date " + date, jsonWith("savedAt", date));
        }
        row("no bytes", "");
        row("spaces", "  \n");
        row("zeros", QByteArray(4096, '\0'));
        row("byte order mark alone", "\xEF\xBB\xBF");
        row("null", "null");
        row("a number", "3");
        row("a text", "\"volumeUUID\"");
        row("an empty object", "{}");
        row("a list", "[]");
        row("a list of it", '[' + usual + ']');
        row("inside another object", "{\"x\":" + usual + '}');
        row("trailing comma", withMore(""));
        row("trailing garbage", usual + 'x');
        row("trailing zero", usual + '\0');
        row("trailing zero and garbage", usual + '\0' + "x");
        row("zero in a text", jsonWith("volumeUUID", QByteArray("\"a\0b\"", 5)));
        row("twice", usual + usual);
        row("comment", "/* */" + usual);
        row("single quotes", QByteArray(usual).replace('"', '\''));
        row("UTF-16", QByteArray(reinterpret_cast<const char *>(u"{}"), 4));
        row("invalid UTF-8 in a reject", jsonWith("rejectedIDs", "[\"a\xFF\"]"));
        row("overlong UTF-8", jsonWith("volumeUUID", "\"\xC0\x80\""));
        row("surrogate in UTF-8", jsonWith("volumeUUID", "\"\xED\xA0\x80\""));
        row("beyond Unicode", jsonWith("volumeUUID", "\"\xF4\x90\x80\x80\""));
        row("half a surrogate pair", jsonWith("volumeUUID", "\"\\ud800\""));
        row("invalid UTF-8 in another key", withMore("\"\xFF\":0"));
        row("raw control character", jsonWith("volumeUUID", "\"\n\""));
        row("unknown escape", jsonWith("volumeUUID", "\"\\x41\""));
        row("nested too deep", withMore("\"x\":" + QByteArray(512, '[') + QByteArray(512, ']')));
        row("nested far too deep",
            withMore("\"x\":" + QByteArray(100'000, '[') + QByteArray(100'000, ']')));
        row("rejects nested far too deep",
            jsonWith("rejectedIDs", QByteArray(100'000, '[') + QByteArray(100'000, ']')));
    }

    void anythingElseIsUndecodable()
    {
        QFETCH(const QByteArray, json);

        QVERIFY(!SessionSnapshot::fromJson(json));
    }

    void everyTruncationIsUndecodable()
    {
        const auto json = sample().toJson();

        for (qsizetype length = 0; length < json.size(); ++length) {
            QVERIFY2(!SessionSnapshot::fromJson(json.left(length)), json.left(length).constData());
        }
    }

    /// A flipped byte may give another valid snapshot, "DSCF0002" for "DSCF0001"; what must not
    /// happen is a crash, or a snapshot that could not be saved again.
    void damagedBytesAreBorne()
    {
        QVERIFY(rc::check("damage is borne", [] {
            auto json = anySnapshotJson();
            for (const auto &[place, byte] :
                 *rc::gen::container<std::vector<std::pair<unsigned, char>>>(
                     rc::gen::arbitrary<std::pair<unsigned, char>>())) {
                json[place % static_cast<std::size_t>(json.size())] = byte;
            }
            if (const auto snapshot = SessionSnapshot::fromJson(json)) {
                RC_ASSERT(SessionSnapshot::fromJson(snapshot->toJson()) == snapshot);
            }
        }));
        const auto json = sample().toJson();
        for (qsizetype place = 0; place < json.size(); ++place) {
            for (int bit = 0; bit < 8; ++bit) {
                auto damaged = json;
                damaged[place] = static_cast<char>(damaged[place] ^ (1 << bit));
                if (const auto snapshot = SessionSnapshot::fromJson(damaged)) {
                    QCOMPARE(SessionSnapshot::fromJson(snapshot->toJson()), snapshot);
                }
            }
        }
    }

private:
    static QByteArray withMore(const QByteArray &members)
    {
        return jsonWith({}, {}).chopped(1) + ',' + members + '}';
    }

    static QByteArray anySnapshotJson() { return (*anySnapshot()).toJson(); }
};

QTEST_GUILESS_MAIN(SessionSnapshotTest)
#include "SessionSnapshotTest.moc"
