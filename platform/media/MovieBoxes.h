// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/BoxReader.h"

#include <functional>
#include <optional>
#include <vector>

/// What a MOV or MP4 file says of its tracks, as boxes within boxes (ISO 14496-12, 8). Of other
/// files there are none. Blocks while it reads; for one thread.
class MovieBoxes {
public:
    using Boxes = QList<BoxReader::Box>;
    /// Asked before every read of some size; once it is false, nothing more is read.
    using IsWanted = std::function<bool()>;

    /// @p file outlives this.
    explicit MovieBoxes(
        const InputFile &file, IsWanted isWanted = [] { return true; });

    [[nodiscard]] qint64 fileSize() const { return m_reader.size(); }

    /// Whether the file says that it is longer.
    [[nodiscard]] bool isCut();

    /// Those of the file itself.
    [[nodiscard]] const Boxes &file() const { return m_file; }

    [[nodiscard]] const Boxes &movie() const { return m_movie; }

    /// Those of each track.
    [[nodiscard]] const std::vector<Boxes> &tracks() const { return m_tracks; }

    /// The video track that is shown: the first that is enabled, else the first; null when there is
    /// none.
    [[nodiscard]] const Boxes *shownTrack();

    [[nodiscard]] Boxes inside(const BoxReader::Box &box);

    /// The boxes inside the first of @p boxes of a type.
    [[nodiscard]] Boxes inside(const Boxes &boxes, QByteArrayView type);

    /// The boxes of the tables of a track's samples.
    [[nodiscard]] Boxes tables(const Boxes &track);

    /// What is in the first of @p boxes of a type; empty when there is none, or too much.
    [[nodiscard]] QByteArray content(const Boxes &boxes, QByteArrayView type);

    /// Up to @p length bytes of the beginning of a box.
    [[nodiscard]] QByteArray beginning(const BoxReader::Box &box, qint64 length);

private:
    [[nodiscard]] bool isVideo(const Boxes &track);
    [[nodiscard]] bool isEnabled(const Boxes &track);

    PagedReader m_reader;
    const IsWanted m_isWanted;
    Boxes m_file;
    Boxes m_movie;
    std::vector<Boxes> m_tracks;
};
