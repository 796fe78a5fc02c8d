// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/CardScanner.h"

#include "core/model/Pairing.h"
#include "core/text/UnicodeOrder.h"

#include <QCoroFuture>
#include <QThreadPool>
#include <QtConcurrent/qtconcurrentrun.h>

#include <algorithm>
#include <atomic>
#include <span>

static std::filesystem::path dcim(const std::filesystem::path &volumeURL)
{
    return volumeURL / "DCIM";
}

static std::optional<QDateTime> captureDate(const MediaItem &item, const MetadataReading &reader)
{
    const auto metadata = reader.read(item.displayURL());
    return metadata ? metadata->captureDate : std::nullopt;
}

namespace {

/// A card that is held while it is read: one that was pulled lists as empty without an error, or
/// answers from memory.
class WatchedCard {
public:
    WatchedCard(const std::filesystem::path &volumeURL, const FileManager &fileManager)
    {
        std::error_code error;
        m_card = fileManager.hold(volumeURL, error);
        if (m_card) {
            m_mark = m_card->mark();
            m_card->chooseWitness({});
        }
    }

    /// @p items when the card is still there, else none.
    [[nodiscard]] QList<MediaItem> believed(QList<MediaItem> items)
    {
        return m_card && !m_card->proveAlive() ? items : QList<MediaItem>();
    }

    [[nodiscard]] std::shared_ptr<const CardMark> mark() const { return m_mark; }

private:
    std::unique_ptr<HeldCard> m_card;
    std::shared_ptr<const CardMark> m_mark;
};

} // namespace

static QList<MediaItem> inShootingOrder(QList<MediaItem> items)
{
    std::ranges::sort(items, CardScanner::captureOrder);
    return items;
}

/// Blocks its thread; the dates are read on threads of its own.
static CardScan scanConcurrently(const std::filesystem::path &volumeURL,
                                 const FileManager &fileManager, const MetadataReading &reader,
                                 const std::stop_token &stop)
{
    WatchedCard card(volumeURL, fileManager);
    auto items = Pairing::pair(CardScanner::listFiles(volumeURL, fileManager));
    const std::span all(items.data(), static_cast<size_t>(items.size()));
    std::atomic<size_t> next = 0;
    const auto readDates = [&] {
        for (auto index = next++; index < all.size() && !stop.stop_requested(); index = next++) {
            all[index].captureDate = captureDate(all[index], reader);
        }
    };
    QThreadPool readers;
    readers.setMaxThreadCount(CardScanner::maxConcurrentReads);
    for (int number = 0; number < CardScanner::maxConcurrentReads; ++number) {
        readers.start(readDates);
    }
    readers.waitForDone();
    return {.items = card.believed(inShootingOrder(std::move(items))), .mark = card.mark()};
}

bool CardScanner::dcimExists(const std::filesystem::path &volumeURL, const FileManager &fileManager)
{
    return fileManager.kindOf(dcim(volumeURL)) == FileManager::EntryKind::Directory;
}

std::vector<std::filesystem::path> CardScanner::listFiles(const std::filesystem::path &volumeURL,
                                                          const FileManager &fileManager)
{
    return fileManager.regularFilesBelow(dcim(volumeURL));
}

QList<MediaItem> CardScanner::scan(const std::filesystem::path &volumeURL,
                                   const FileManager &fileManager, const MetadataReading &reader)
{
    WatchedCard card(volumeURL, fileManager);
    auto items = Pairing::pair(listFiles(volumeURL, fileManager));
    for (auto &item : items) {
        item.captureDate = captureDate(item, reader);
    }
    return card.believed(inShootingOrder(std::move(items)));
}

QCoro::Task<CardScan> CardScanner::scanDetached(QThreadPool *pool, std::filesystem::path volumeURL,
                                                std::shared_ptr<const FileManager> fileManager,
                                                std::shared_ptr<const MetadataReading> reader,
                                                std::stop_token stop)
{
    const auto scanCard = [volumeURL, fileManager, reader, stop] {
        return scanConcurrently(volumeURL, *fileManager, *reader, stop);
    };
    co_return co_await QtConcurrent::run(pool, scanCard);
}

bool CardScanner::captureOrder(const MediaItem &a, const MediaItem &b)
{
    static const QDateTime distantPast(QDate(1, 1, 1), QTime(0, 0), Qt::UTC);
    const auto dateOfA = a.captureDate.value_or(distantPast);
    const auto dateOfB = b.captureDate.value_or(distantPast);
    if (dateOfA != dateOfB) {
        return dateOfA < dateOfB;
    }
    const auto byName = compareInUnicodeOrder(a.displayName(), b.displayName());
    return byName != 0 ? byName < 0 : precedesInUnicodeOrder(a.id, b.id);
}
