// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/decode/DecodePipeline.h"
#include "platform/imageio/ImageSource.h"

#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>

#include <random>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

constexpr int itemCount = 20;
constexpr int rounds = 30;
constexpr std::array colors = {qRgb(250, 0, 0), qRgb(0, 250, 0)};

std::string nameOf(int number)
{
    return "DSCF" + std::to_string(1000 + number) + ".JPG";
}

/// Everything that came of the requests made while one card was there.
struct Received {
    QRgb color; ///< of that card's pictures
    qint64 pictures = 0;
    qint64 foreign = 0; ///< pixels of another card

    void take(const QImage &image)
    {
        if (image.isNull()) {
            return;
        }
        ++pictures;
        for (int row = 0; row < image.height(); ++row) {
            for (int column = 0; column < image.width(); ++column) {
                foreign += !isLike(image.pixel(column, row), color);
            }
        }
    }

    /// JPEG does not keep colours to the last bit.
    static bool isLike(QRgb one, QRgb other)
    {
        constexpr int tolerance = 30;
        return std::abs(qRed(one) - qRed(other)) < tolerance &&
               std::abs(qGreen(one) - qGreen(other)) < tolerance &&
               std::abs(qBlue(one) - qBlue(other)) < tolerance;
    }
};

QCoro::Task<> collect(QCoro::Task<QImage> task, std::shared_ptr<Received> received)
{
    received->take(co_await task);
}

} // namespace

/// Two cards with the same names and different pictures take turns at one place, while their
/// pictures are being decoded.
class SwappedCardsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_place = fs::path(m_folder.path().toStdString()) / "CARD";
        for (size_t card = 0; card < colors.size(); ++card) {
            fs::create_directory(away(card));
            QImage image(640, 480, QImage::Format_RGB32);
            image.fill(colors[card]);
            for (int number = 0; number < itemCount; ++number) {
                const auto file = QString::fromStdString(away(card) / nameOf(number));
                QVERIFY(image.save(file, "JPG"));
            }
        }
        for (int number = 0; number < itemCount; ++number) {
            m_items.append({.id = QString::number(number), .previewURL = m_place / nameOf(number)});
        }
    }

    void noPixelOfTheFirstCardIsSeenOnTheSecond()
    {
        DecodePipeline pipeline({.picture =
                                     [](const fs::path &url, std::optional<int> maxPixel) {
                                         const auto source = ImageSource::open(url);
                                         return source ? source->image(maxPixel) : QImage();
                                     },
                                 .videoFrame = [](const fs::path &) { return QImage(); }});
        std::minstd_rand random(2026);
        std::vector<std::shared_ptr<Received>> all;
        for (int round = 0; round < rounds; ++round) {
            const auto card = static_cast<size_t>(round) % colors.size();
            fs::rename(away(card), m_place);
            pipeline.beginSelection(round + 1);
            all.push_back(std::make_shared<Received>(Received{.color = colors[card]}));
            for (int request = 0; request < 40; ++request) {
                ask(pipeline, random, all.back());
            }
            const auto wanted = static_cast<qint64>(random() % 8);
            QTRY_VERIFY(all.back()->pictures >= wanted); // then the others are under way
            for (const auto &item : m_items) {
                all.back()->take(pipeline.cachedScreenImage(item));
            }
            fs::rename(m_place, away(card)); // in the middle of decoding
            if (random() % 2 == 0) {
                QTest::qWait(static_cast<int>(random() % 3));
            }
        }
        pipeline.beginSelection(rounds + 1);
        QTest::qWait(50);

        qint64 pictures = 0;
        for (const auto &received : all) {
            pictures += received->pictures;
            QCOMPARE(received->foreign, 0);
        }
        QVERIFY(pictures > rounds);
    }

    /// What was asked of the first card brings nothing once the second is there.
    void whatWasBegunOnTheFirstCardBringsNothing()
    {
        QSemaphore begun;
        QSemaphore gate;
        DecodePipeline pipeline({.picture =
                                     [&](const fs::path &url, std::optional<int> maxPixel) {
                                         const auto source =
                                             ImageSource::open(url); // and holds its file
                                         begun.release();
                                         gate.acquire();
                                         return source ? source->image(maxPixel) : QImage();
                                     },
                                 .videoFrame = [](const fs::path &) { return QImage(); }});
        fs::rename(away(0), m_place);
        pipeline.beginSelection(1);
        const auto first = std::make_shared<Received>(Received{.color = colors[0]});
        collect(pipeline.screenImage(m_items.first(), 300), first);
        begun.acquire();
        fs::rename(m_place, away(0));
        fs::rename(away(1), m_place);
        pipeline.beginSelection(2);
        const auto second = std::make_shared<Received>(Received{.color = colors[1]});
        collect(pipeline.screenImage(m_items.first(), 300), second);

        gate.release(1000);

        QTRY_COMPARE(second->pictures, 1);
        QCOMPARE(second->foreign, 0);
        QCOMPARE(first->pictures, 0);
        second->take(pipeline.cachedScreenImage(m_items.first()));
        QCOMPARE(second->pictures, 2);
        QCOMPARE(second->foreign, 0);
        fs::rename(m_place, away(1));
    }

private:
    [[nodiscard]] fs::path away(size_t card) const
    {
        return fs::path(m_folder.path().toStdString()) / std::to_string(card);
    }

    void ask(DecodePipeline &pipeline, std::minstd_rand &random,
             const std::shared_ptr<Received> &received) const
    {
        const auto &item = m_items.at(static_cast<qsizetype>(random() % itemCount));
        switch (random() % 4) {
        case 0:
            collect(pipeline.screenImage(item, 300), received);
            break;
        case 1:
            collect(pipeline.thumbnail(item), received);
            break;
        case 2:
            collect(pipeline.fullImage(item), received);
            break;
        default:
            pipeline.prefetch(m_items, static_cast<qint64>(random() % itemCount), 300);
        }
    }

    QTemporaryDir m_folder;
    fs::path m_place;
    QList<MediaItem> m_items;
};

QTEST_GUILESS_MAIN(SwappedCardsTest)
#include "SwappedCardsTest.moc"
