// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/ClipFile.h"

#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <fstream>

/// What a clip's reader is told where there is nothing to read.
class ClipFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_path = std::filesystem::path(m_folder.path().toStdString()) / "clip.mov";
        std::ofstream(m_path) << "0123456789";
    }

    void itIsReadUpToItsEnd()
    {
        const ClipFile file(m_path);

        QCOMPARE(read(file, 0, 4), Count(4));
        QCOMPARE(m_buffer[3], '3');
        QCOMPARE(read(file, 8, 4), Count(2));
        QCOMPARE(read(file, 10, 4), Count(0));
        QCOMPARE(read(file, 99, 4), Count(0));
    }

    void whatIsMissingBeforeTheEndIsAnError()
    {
        const ClipFile file(m_path);
        std::filesystem::resize_file(m_path, 6); // as if the rest could not be read any more

        QCOMPARE(read(file, 4, 4), Count(2));
        QCOMPARE(read(file, 6, 4), Count());
        QCOMPARE(read(file, 10, 4), Count(0));
    }

    void aClosedOneOrNoneGivesNothing()
    {
        ClipFile file(m_path);
        file.close();
        QCOMPARE(read(file, 0, 4), Count());

        const ClipFile none(m_path.parent_path());
        QCOMPARE(read(none, 0, 4), Count());
    }

private:
    using Count = std::optional<qint64>;

    Count read(const ClipFile &file, qint64 position, qint64 length)
    {
        return file.read(position, m_buffer.data(), length);
    }

    QTemporaryDir m_folder;
    std::filesystem::path m_path;
    std::array<char, 16> m_buffer = {};
};

QTEST_APPLESS_MAIN(ClipFileTest)
#include "ClipFileTest.moc"
