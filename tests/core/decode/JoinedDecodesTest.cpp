// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/decode/JoinedDecodes.h"

#include <QFuture>
#include <QSemaphore>
#include <QTest>
#include <QThreadPool>
#include <QtConcurrent/qtconcurrentrun.h>

#include <atomic>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

/// Numbers its pictures, by their colour, and waits at a gate where it is told to.
struct CountingDecoder {
    [[nodiscard]] JoinedDecodes::Decode decode()
    {
        return [this](const fs::path &url, std::optional<int> maxPixel) {
            const int number = ++begun;
            if (isGated) {
                gate.acquire();
            }
            if (url == "/card/BAD.JPG") {
                return QImage();
            }
            if (url == "/card/WORSE.JPG") {
                throw std::runtime_error("worse");
            }
            QImage image(maxPixel.value_or(1000), 10, QImage::Format_RGB32);
            image.fill(static_cast<uint>(number));
            return image;
        };
    }

    std::atomic_int begun = 0;
    std::atomic_bool isGated = false;
    QSemaphore gate;
};

int numberOf(const QImage &image)
{
    return static_cast<int>(image.pixel(0, 0) & 0xffffff);
}

} // namespace

class JoinedDecodesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoWhoAskAtOnceGetOneDecode()
    {
        CountingDecoder decoder;
        decoder.isGated = true;
        JoinedDecodes joined(decoder.decode());
        const auto ask = [&] { return joined.picture("/card/A.JPG", 300); };
        auto first = QtConcurrent::run(&m_pool, ask);
        QTRY_COMPARE(decoder.begun.load(), 1);
        auto second = QtConcurrent::run(&m_pool, ask);
        QTest::qWait(20);
        QCOMPARE(decoder.begun.load(), 1);

        decoder.gate.release(2);

        QCOMPARE(first.result().width(), 300);
        QCOMPARE(second.result().cacheKey(), first.result().cacheKey());
        QCOMPARE(decoder.begun.load(), 1);
    }

    void oneWhoAsksRightAfterwardsGetsItToo()
    {
        CountingDecoder decoder;
        JoinedDecodes joined(decoder.decode());

        const auto first = joined.picture("/card/A.JPG", 300);

        QCOMPARE(joined.picture("/card/A.JPG", 300).cacheKey(), first.cacheKey());
        QCOMPARE(decoder.begun.load(), 1);
    }

    void anotherFileAndAnotherSizeAreDecoded()
    {
        CountingDecoder decoder;
        JoinedDecodes joined(decoder.decode());

        QCOMPARE(joined.picture("/card/A.JPG", 300).width(), 300);
        QCOMPARE(joined.picture("/card/A.JPG", 256).width(), 256);
        QCOMPARE(numberOf(joined.picture("/card/B.JPG", 300)), 3);
        QCOMPARE(joined.picture("/card/A.JPG", std::nullopt).width(), 1000);
        QCOMPARE(decoder.begun.load(), 4);
    }

    void onlyTheLastTwoAreKept()
    {
        CountingDecoder decoder;
        JoinedDecodes joined(decoder.decode());
        for (const auto *const name : {"/card/A.JPG", "/card/B.JPG", "/card/C.JPG"}) {
            QVERIFY(!joined.picture(name, 300).isNull());
        }

        QCOMPARE(numberOf(joined.picture("/card/C.JPG", 300)), 3);
        QCOMPARE(numberOf(joined.picture("/card/B.JPG", 300)), 2);
        QCOMPARE(numberOf(joined.picture("/card/A.JPG", 300)), 4);
    }

    void wholePicturesAreNotKept()
    {
        CountingDecoder decoder;
        JoinedDecodes joined(decoder.decode());

        QCOMPARE(numberOf(joined.picture("/card/A.JPG", std::nullopt)), 1);
        QCOMPARE(numberOf(joined.picture("/card/A.JPG", std::nullopt)), 2);
    }

    void aFailureIsTriedAgain()
    {
        CountingDecoder decoder;
        JoinedDecodes joined(decoder.decode());

        QVERIFY(joined.picture("/card/BAD.JPG", 300).isNull());
        QVERIFY(joined.picture("/card/BAD.JPG", 300).isNull());
        QCOMPARE(decoder.begun.load(), 2);
    }

    void aDecoderThatThrowsLeavesNobodyWaiting()
    {
        CountingDecoder decoder;
        JoinedDecodes joined(decoder.decode());

        QVERIFY_THROWS_EXCEPTION(std::runtime_error, (void)joined.picture("/card/WORSE.JPG", 300));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, (void)joined.picture("/card/WORSE.JPG", 300));
        QCOMPARE(decoder.begun.load(), 2);
    }

    void afterForgettingNothingOlderIsUsed()
    {
        CountingDecoder decoder;
        JoinedDecodes joined(decoder.decode());
        QVERIFY(!joined.picture("/card/A.JPG", 300).isNull());
        decoder.isGated = true;
        const auto ask = [&] { return joined.picture("/card/B.JPG", 300); };
        auto older = QtConcurrent::run(&m_pool, ask);
        QTRY_COMPARE(decoder.begun.load(), 2);

        joined.forget();

        auto newer = QtConcurrent::run(&m_pool, ask);
        QTRY_COMPARE(decoder.begun.load(), 3); // does not wait for the older one
        decoder.gate.release(2);
        QVERIFY(numberOf(older.result()) != numberOf(newer.result()));
        decoder.isGated = false;
        QCOMPARE(numberOf(joined.picture("/card/A.JPG", 300)), 4);
        QCOMPARE(numberOf(joined.picture("/card/B.JPG", 300)), numberOf(newer.result()));
    }

    void cleanup() { m_pool.waitForDone(); }

private:
    QThreadPool m_pool;
};

QTEST_GUILESS_MAIN(JoinedDecodesTest)
#include "JoinedDecodesTest.moc"
