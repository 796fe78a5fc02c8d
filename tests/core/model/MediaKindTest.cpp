// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/MediaKind.h"

#include <QTest>

using namespace Qt::StringLiterals;

class MediaKindTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rawValuesGoThereAndBack()
    {
        QCOMPARE(rawValue(MediaKind::photo), u"photo"_s);
        QCOMPARE(rawValue(MediaKind::video), u"video"_s);
        QCOMPARE(mediaKind(u"photo"_s), MediaKind::photo);
        QCOMPARE(mediaKind(u"video"_s), MediaKind::video);
    }

    void anyOtherTextIsNoKind()
    {
        QVERIFY(!mediaKind(u""_s));
        QVERIFY(!mediaKind(u"Photo"_s));
        QVERIFY(!mediaKind(u"audio"_s));
    }
};

QTEST_GUILESS_MAIN(MediaKindTest)
#include "MediaKindTest.moc"
