// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

/// Include paths start at the root, so a floor could reach above itself through a header alone,
/// which no linker would notice.
class ArchitectureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void floorsIncludeOnlyWhatStandsBelow_data()
    {
        QTest::addColumn<QString>("floor");
        QTest::addColumn<QStringList>("allowed");
        QTest::newRow("platform") << u"platform"_s << QStringList{u"platform"_s};
        QTest::newRow("core") << u"core"_s << QStringList{u"platform"_s, u"core"_s};
        QTest::newRow("app") << u"app"_s << QStringList{u"platform"_s, u"core"_s, u"app"_s};
        QTest::newRow("ui") << u"ui"_s << QStringList{u"platform"_s, u"core"_s, u"app"_s, u"ui"_s};
    }

    void floorsIncludeOnlyWhatStandsBelow()
    {
        QFETCH(const QString, floor);
        QFETCH(const QStringList, allowed);

        int filesSeen = 0;
        forEachFile(floor, [&](const QString &file, const QString &text) {
            ++filesSeen;
            static const QRegularExpression include(u"#include \"([a-z]+)/[^\"]+\""_s);
            for (const auto &match : include.globalMatch(text)) {
                QVERIFY2(allowed.contains(match.captured(1)),
                         qPrintable(file + u" includes "_s + match.captured(0)));
            }
        });
        QVERIFY(filesSeen > 0);
    }

    /// One foreign library, one folder that knows it; the message bus leads to several services,
    /// and FFmpeg is both a decoder of stills and a reader of clips.
    void foreignHeadersStayInTheirFolder_data()
    {
        QTest::addColumn<QString>("header");
        QTest::addColumn<QStringList>("folders");
        QTest::newRow("Exiv2") << u"<exiv2/"_s << QStringList{u"platform/imageio/"_s};
        QTest::newRow("LibRaw") << u"<libraw/"_s << QStringList{u"platform/imageio/"_s};
        QTest::newRow("libjpeg") << u"<jpeglib.h>"_s << QStringList{u"platform/imageio/"_s};
        QTest::newRow("libtiff") << u"<tiffio.h>"_s << QStringList{u"platform/imageio/"_s};
        QTest::newRow("lcms2") << u"<lcms2.h>"_s << QStringList{u"platform/imageio/"_s};
        QTest::newRow("FFmpeg") << u"<libav"_s
                                << QStringList{u"platform/hevc/"_s, u"platform/libav/"_s,
                                               u"platform/media/"_s};
        QTest::newRow("libmpv") << u"<mpv/"_s
                                << QStringList{u"platform/media/"_s, u"platform/mpv/"_s};
        QTest::newRow("nlohmann") << u"<nlohmann/"_s << QStringList{u"core/store/"_s};
        QTest::newRow("OpenSSL") << u"<openssl/"_s << QStringList{u"platform/updates/"_s};
        QTest::newRow("Qt Network") << u"<QNetwork"_s << QStringList{u"platform/updates/"_s};
        QTest::newRow("Qt D-Bus") << u"<QDBus"_s
                                  << QStringList{u"platform/access/"_s, u"platform/instance/"_s,
                                                 u"platform/volumes/"_s};
        QTest::newRow("QML") << u"<QQml"_s << QStringList{u"ui/"_s};
        QTest::newRow("Qt Quick") << u"<QQuick"_s << QStringList{u"ui/"_s};
    }

    void foreignHeadersStayInTheirFolder()
    {
        QFETCH(const QString, header);
        QFETCH(const QStringList, folders);

        for (const auto &floor : {u"platform"_s, u"core"_s, u"app"_s, u"ui"_s}) {
            forEachFile(floor, [&](const QString &file, const QString &text) {
                const auto isOwner = std::ranges::any_of(
                    folders, [&file](const QString &folder) { return file.startsWith(folder); });
                QVERIFY2(isOwner || !text.contains(u"#include "_s + header),
                         qPrintable(file + u" includes "_s + header));
            });
        }
    }

    void everySourceFileBearsItsLicence()
    {
        for (const auto &folder : {u"platform"_s, u"core"_s, u"app"_s, u"ui"_s, u"tests"_s,
                                   u"demo"_s, u"tools"_s, u"cmake"_s}) {
            forEachFile(folder, [&](const QString &file, const QString &text) {
                QVERIFY2(text.left(300).contains(u"SPDX-License-Identifier: GPL-3.0-or-later"),
                         qPrintable(file));
            });
        }
    }

private:
    template<typename Visit>
    static void forEachFile(const QString &folder, Visit visit)
    {
        const QDir root(QStringLiteral(KESTLE_SOURCE_DIR));
        QDirIterator files(root.filePath(folder), {u"*.h"_s, u"*.cpp"_s, u"*.qml"_s, u"*.cmake"_s},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            visit(root.relativeFilePath(file.fileName()), QString::fromUtf8(file.readAll()));
        }
    }
};

QTEST_GUILESS_MAIN(ArchitectureTest)
#include "ArchitectureTest.moc"
