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

/// Asks a feed for a newer version, and tells of one only when its download was fetched and is what
/// the feed's key signed (sparkle:edSignature). Of which version a download is, its signature does
/// not say: for that the feed must be signed too. Where a build does not insist on that, only the
/// version's number is taken from a feed that is not signed. Replaces nothing. Main thread only;
/// files are judged on a thread of their own.
class Updater final : public UpdateSearch {
    Q_OBJECT

public:
    struct Options {
        BoundedDownload::Limits feed = {.size = 1024 * 1024};
        /// The size is the feed's word, but never more than this: several times what Kestle needs
        /// with all its libraries.
        BoundedDownload::Limits download = {.size = qint64(256) * 1024 * 1024,
                                            .duration = std::chrono::hours(1)};
        /// Where downloads lie, without a name; made when it is needed, for this user alone.
        std::filesystem::path folder;
    };

    Updater(UpdateFeed feed, Appcast::Host host, Options options, QObject *parent = nullptr);
    ~Updater() override;

    /// This system, for the version that runs.
    [[nodiscard]] static Appcast::Host thisHost(const QString &version);

    void start(const QStringList &known = {}) override;
    void stop() override;

private:
    void takeFeed(BoundedDownload::Outcome outcome);
    void fetch();
    void takeDownload(BoundedDownload::Outcome outcome);
    QCoro::Task<> judge(std::shared_ptr<QTemporaryFile> file, AppcastItem item);
    [[nodiscard]] UpdateResult offer() const;
    void fail(UpdateResult::Kind kind);
    void finish(const UpdateResult &result);

    UpdateFeed m_feed;
    Appcast::Host m_host;
    Options m_options;
    QStringList m_known;
    QBuffer m_feedBytes;
    SignedFeed::Trust m_trust = SignedFeed::Trust::Unsigned;
    AppcastItem m_item;
    std::shared_ptr<QTemporaryFile> m_file;
    qint64 m_search = 0; ///< counts searches and their ends
    BoundedDownload m_feedDownload;
    BoundedDownload m_fileDownload;
    QThreadPool m_pool{this};
};
