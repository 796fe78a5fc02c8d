// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/PropertyDictionary.h"

#include <QTest>

using namespace Qt::StringLiterals;

class PropertyDictionaryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aValueOfTheRightTypeIsGiven()
    {
        QCOMPARE(integerValue(m_all, u"integer"_s), std::optional<qint64>(3));
        QCOMPARE(doubleValue(m_all, u"double"_s), std::optional(3.0));
        QCOMPARE(textValue(m_all, u"text"_s), std::optional(u"3"_s));
        QCOMPARE(integerList(m_all, u"list"_s), std::optional(QList<qint64>{3, 4}));
        QVERIFY(dictionary(m_all, u"dictionary"_s).has_value());
    }

    void everyOtherTypeCountsAsMissing()
    {
        for (const auto &key : m_all.keys() + QStringList{u"nowhere"_s}) {
            QCOMPARE(integerValue(m_all, key).has_value(), key == u"integer"_s);
            QCOMPARE(doubleValue(m_all, key).has_value(), key == u"double"_s);
            QCOMPARE(textValue(m_all, key).has_value(), key == u"text"_s);
            QCOMPARE(integerList(m_all, key).has_value(), key == u"list"_s || key == u"empty"_s);
            QCOMPARE(dictionary(m_all, key).has_value(), key == u"dictionary"_s);
        }
    }

private:
    const PropertyDictionary m_all = {
        {u"integer"_s, qint64(3)},
        {u"narrow"_s, 3},
        {u"double"_s, 3.0},
        {u"text"_s, u"3"_s},
        {u"list"_s, QVariantList{qint64(3), qint64(4)}},
        {u"mixed"_s, QVariantList{qint64(3), 4.0}},
        {u"empty"_s, QVariantList()},
        {u"dictionary"_s, QVariantMap()},
    };
};

QTEST_GUILESS_MAIN(PropertyDictionaryTest)
#include "PropertyDictionaryTest.moc"
