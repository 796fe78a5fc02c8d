// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QUrl>

#include <filesystem>
#include <memory>

/// How a search for a newer version ended.
struct UpdateResult {
    enum class Kind {
        UpToDate,
        KnownAlready, ///< the newest version is one that the asker named
        NewVersion,   ///< verified
        NotReached,   ///< the feed or the download
        NotAFeed,     ///< what came from the feed's address
        NotVerified,  ///< the feed or the download is not what was signed
        NotKept,      ///< no room for the download
    };

    Kind kind = Kind::UpToDate;
    /// What versions are known by; of a failure, the one whose download was at fault, if any.
    QString version = {};
    QString shownVersion = {}; ///< what people call it, in one line of plain text
    /// Else only the download was, and of which version it is, is the server's word.
    bool isFeedSigned = false;
    QString notes = {};    ///< plain text; only where the feed itself was signed
    QUrl page = {};        ///< only where the feed itself was signed
    QString fileName = {}; ///< that the download should have; no path
    /// The verified download, a file that only this process sees and that goes with the last copy;
    /// nothing when there is none.
    std::shared_ptr<const std::filesystem::path> download = {};
};
