// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/updates/Appcast.h"
#include "platform/updates/BoundedDownload.h"
#include "platform/updates/SignedFeed.h"
#include "platform/updates/UpdateFeed.h"
#include "platform/updates/UpdateSearch.h"

#include <QBuffer>
#include <QCoroTask>
#include <QThreadPool>

#include <filesystem>

class QTemporaryFile;

/// Asks a feed for a newer version, and believes nothing that is not signed by the feed's key. What
/// the key signs is the download's bytes (sparkle:edSignature), and the feed's too where its maker
/// signs it; so a version is told of only when its download was fetched and is what was signed, and
/// a page only when the feed was signed. Replaces nothing. Main thread only; files are judged on a
/// thread of their own.
class Updater final : public UpdateSearch {
    Q_OBJECT

public:
    struct Options {
        BoundedDownload::Limits feed = {.size = 1024 * 1024};
        /// The size is the feed's word, but never more than this.
        BoundedDownload::Limits download = {.size = qint64(1024) * 1024 * 1024,
                                            .duration = std::chrono::hours(1)};
        /// Where downloads lie, without a name; made when it is needed, for this user alone.
        std::filesystem::path folder;
    };

    Updater(UpdateFeed feed, Appcast::Host host, Options options, QObject *parent = nullptr);
    ~Updater() override;

    /// This system, for the version that runs.
    [[nodiscard]] static Appcast::Host thisHost(const QString &version);

    void start(const QString &known = {}) override;
    void stop() override;

private:
    void takeFeed(BoundedDownload::Outcome outcome);
    void fetch();
    void takeDownload(BoundedDownload::Outcome outcome);
    QCoro::Task<> judge(std::shared_ptr<QTemporaryFile> file, AppcastItem item);
    [[nodiscard]] UpdateResult offer() const;
    void finish(const UpdateResult &result);

    UpdateFeed m_feed;
    Appcast::Host m_host;
    Options m_options;
    QString m_known;
    QBuffer m_feedBytes;
    SignedFeed::Trust m_trust = SignedFeed::Trust::Unsigned;
    AppcastItem m_item;
    std::shared_ptr<QTemporaryFile> m_file;
    qint64 m_search = 0; ///< counts searches and their ends
    BoundedDownload m_feedDownload;
    BoundedDownload m_fileDownload;
    QThreadPool m_pool{this};
};
