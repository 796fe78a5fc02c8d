// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/settings/UserDefaults.h"

#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <fstream>
#include <thread>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

class UserDefaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_file = fs::path(m_folder->path().toStdString()) / "made/later/Kestle.conf";
    }

    void nothingIsStoredAtFirst()
    {
        const UserDefaults defaults(m_file);

        QVERIFY(!defaults.boolean(u"autoAdvanceOnReject"_s));
        QVERIFY(!defaults.bytes(u"cardBookmark.ABCD-0001"_s));
        QVERIFY(!fs::exists(m_file.parent_path()));
    }

    void aRegisteredDefaultHoldsUntilSomethingIsStoredAndIsNeverWritten()
    {
        UserDefaults defaults(m_file);
        defaults.registerDefaults({{u"autoAdvanceOnReject"_s, true}});

        QVERIFY(defaults.boolean(u"autoAdvanceOnReject"_s));
        QVERIFY(!fs::exists(m_file));
        defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        QVERIFY(!defaults.boolean(u"autoAdvanceOnReject"_s));
        defaults.remove(u"autoAdvanceOnReject"_s);
        QVERIFY(defaults.boolean(u"autoAdvanceOnReject"_s));
    }

    void whatIsStoredIsThereNextTime()
    {
        {
            UserDefaults defaults(m_file);
            defaults.setBoolean(u"autoAdvanceOnReject"_s, true);
            defaults.setBytes(u"cardBookmark.ABCD-0001"_s, "by\0tes\xFF\n;="_ba);
        }

        const UserDefaults defaults(m_file);

        QVERIFY(defaults.boolean(u"autoAdvanceOnReject"_s));
        QCOMPARE(defaults.bytes(u"cardBookmark.ABCD-0001"_s), "by\0tes\xFF\n;="_ba);
    }

    void bytesAreReplacedOnlyWhereTheyAreAsExpected()
    {
        UserDefaults defaults(m_file);
        defaults.replace(u"key"_s, "old"_ba, "new"_ba);
        QVERIFY(!defaults.bytes(u"key"_s));
        defaults.setBytes(u"key"_s, "old"_ba);

        defaults.replace(u"key"_s, "other"_ba, "new"_ba);
        QCOMPARE(defaults.bytes(u"key"_s), "old"_ba);
        defaults.replace(u"key"_s, "other"_ba, std::nullopt);
        QCOMPARE(defaults.bytes(u"key"_s), "old"_ba);
        defaults.replace(u"key"_s, "old"_ba, "new"_ba);
        QCOMPARE(defaults.bytes(u"key"_s), "new"_ba);
        defaults.replace(u"key"_s, "new"_ba, std::nullopt);
        QVERIFY(!defaults.bytes(u"key"_s));
    }

    void emptyBytesAreNotNoBytes()
    {
        UserDefaults defaults(m_file);
        defaults.setBytes(u"key"_s, ""_ba);

        const auto bytes = UserDefaults(m_file).bytes(u"key"_s);

        QVERIFY(bytes.has_value());
        QVERIFY(bytes->isEmpty());
    }

    void differentKeysStayDifferent()
    {
        const QStringList keys = {u""_s,
                                  u" "_s,
                                  u"a"_s,
                                  u"A"_s,
                                  u"a "_s,
                                  u" a"_s,
                                  u"a/b"_s,
                                  u"a//b"_s,
                                  u"a/"_s,
                                  u"/a"_s,
                                  u"/"_s,
                                  u"a\\b"_s,
                                  u"a%2Fb"_s,
                                  u"%2F"_s,
                                  u"%"_s,
                                  u"%25"_s,
                                  u"a=b"_s,
                                  u"[a]"_s,
                                  u";a"_s,
                                  u"#a"_s,
                                  u"General/a"_s,
                                  u"%General/a"_s,
                                  u"a\nb"_s,
                                  u"ä"_s,
                                  u"a\u0308"_s,
                                  u"\U0010FEFF"_s,
                                  u"日本"_s,
                                  QString(u'\0'),
                                  QString(3000, u'x')};
        {
            UserDefaults defaults(m_file);
            for (const auto &key : keys) {
                defaults.setBytes(u"cardBookmark."_s + key, key.toUtf8());
            }
            defaults.setBytes({}, "empty key"_ba);
        }

        const UserDefaults defaults(m_file);

        for (const auto &key : keys) {
            QCOMPARE(defaults.bytes(u"cardBookmark."_s + key), key.toUtf8());
        }
        QCOMPARE(defaults.bytes({}), "empty key"_ba);
    }

    void removingOneKeyLeavesTheOthers()
    {
        UserDefaults defaults(m_file);
        defaults.setBytes(u"cardBookmark.a"_s, "1"_ba);
        defaults.setBytes(u"cardBookmark.a/b"_s, "2"_ba);

        defaults.remove(u"cardBookmark.a"_s);

        QVERIFY(!defaults.bytes(u"cardBookmark.a"_s));
        QCOMPARE(defaults.bytes(u"cardBookmark.a/b"_s), "2"_ba);
    }

    void whatIsOfAnotherKindCountsAsAbsent()
    {
        UserDefaults defaults(m_file);
        defaults.registerDefaults({{u"bytes"_s, true}, {u"text"_s, true}});
        defaults.setBytes(u"bytes"_s, "x"_ba);
        defaults.setBoolean(u"bool"_s, true);
        std::ofstream(m_file, std::ios::app) << "text=perhaps\n";

        QVERIFY(!defaults.bytes(u"bool"_s));
        QVERIFY(!defaults.bytes(u"text"_s));
        QVERIFY(defaults.boolean(u"bytes"_s));
        QVERIFY(defaults.boolean(u"text"_s));
    }

    void aDamagedFileCountsAsEmptyAndIsWrittenAnew()
    {
        fs::create_directories(m_file.parent_path());
        std::ofstream(m_file) << "]]]\0%%%=\n[[\n=\xFF\xFE@Variant(\n";
        UserDefaults defaults(m_file);

        QVERIFY(!defaults.boolean(u"a"_s));
        defaults.setBoolean(u"a"_s, true);

        QVERIFY(UserDefaults(m_file).boolean(u"a"_s));
    }

    void aPlaceThatCannotBeWrittenIsBorne()
    {
        const fs::path blocked = m_folder->filePath(u"file"_s).toStdString();
        std::ofstream(blocked) << "not a folder";
        UserDefaults defaults(blocked / "Kestle.conf");
        QTest::failOnWarning(QRegularExpression(u".*"_s));

        defaults.setBoolean(u"a"_s, true);
        defaults.remove(u"b"_s);

        QVERIFY(!defaults.bytes(u"a"_s));
    }

    void severalThreadsMayWriteAtOnce()
    {
        UserDefaults defaults(m_file);
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&defaults, thread] {
                for (int i = 0; i < 10; ++i) {
                    defaults.setBytes(u"%1.%2"_s.arg(thread).arg(i), QByteArray::number(i));
                }
            });
        }
        for (auto &thread : threads) {
            thread.join();
        }

        for (int thread = 0; thread < 4; ++thread) {
            for (int i = 0; i < 10; ++i) {
                QCOMPARE(defaults.bytes(u"%1.%2"_s.arg(thread).arg(i)), QByteArray::number(i));
            }
        }
    }

    void theStandardFileIsInTheUsersConfiguration()
    {
        const auto config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);

        QCOMPARE(QString::fromStdString(UserDefaults::standardFile().string()),
                 config + u"/Kestle/Kestle.conf"_s);
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    fs::path m_file;
};

QTEST_GUILESS_MAIN(UserDefaultsTest)
#include "UserDefaultsTest.moc"
