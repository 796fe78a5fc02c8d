// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QFile>
#include <QtEndian>

#include <array>
#include <filesystem>

/// Changes numbers in a MOV or MP4 file, where its boxes have them.
class ClipBytes {
public:
    explicit ClipBytes(const std::filesystem::path &path)
    {
        QFile file(QString::fromStdString(path.string()));
        if (file.open(QIODevice::ReadOnly)) {
            m_bytes = file.readAll();
        }
    }

    /// Of the first box of a type, so many bytes behind its type.
    void set(QByteArrayView type, qsizetype offset, quint32 number)
    {
        const auto at = m_bytes.indexOf(type);
        Q_ASSERT(at >= 4 && at + 4 + offset + 4 <= m_bytes.size());
        qToBigEndian(number, m_bytes.data() + at + 4 + offset);
    }

    /// Of a track's header or of the whole film's: its first two rows turn and mirror.
    void setMatrix(QByteArrayView type, const std::array<int, 4> &corner)
    {
        const qsizetype at = type == "tkhd" ? 40 : 36;
        constexpr int one = 1 << 16;
        set(type, at, quint32(corner[0] * one));
        set(type, at + 4, quint32(corner[1] * one));
        set(type, at + 12, quint32(corner[2] * one));
        set(type, at + 16, quint32(corner[3] * one));
    }

    /// Puts the first box of a type into one of another type.
    void wrap(QByteArrayView type, QByteArrayView outer)
    {
        const auto at = m_bytes.indexOf(type) - 4;
        const auto size = qFromBigEndian<quint32>(m_bytes.constData() + at);
        QByteArray head(4, 0);
        qToBigEndian(size + 8, head.data());
        m_bytes.insert(at, head + outer.toByteArray());
    }

    /// Shows the stretch of the first track that its edit list begins with so many times.
    void repeatStretch(int times)
    {
        constexpr qsizetype entrySize = 12;
        const auto entry = m_bytes.indexOf("elst") + 12;
        m_bytes.insert(entry, m_bytes.mid(entry, entrySize).repeated(times - 1));
        set("elst", 4, quint32(times));
        for (const auto *type : {"moov", "trak", "edts", "elst"}) {
            auto *size = m_bytes.data() + m_bytes.indexOf(type) - 4;
            const auto grown = qFromBigEndian<quint32>(size) + quint32(entrySize * (times - 1));
            qToBigEndian(grown, size);
        }
    }

    [[nodiscard]] qsizetype size() const { return m_bytes.size(); }

    void write(const std::filesystem::path &path) const { writeFirst(size(), path); }

    /// Cut behind so many bytes.
    void writeFirst(qsizetype length, const std::filesystem::path &path) const
    {
        QFile file(QString::fromStdString(path.string()));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(m_bytes.left(length));
        }
    }

private:
    QByteArray m_bytes;
};
