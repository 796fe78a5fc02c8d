// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/Workbench.h"

#include <QMutex>

#include <atomic>
#include <map>
#include <thread>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// Gives the same sensitivity for every file, and counts how often each file was opened for it.
class OneSpeed final : public MetadataReading {
public:
    std::optional<ImageMetadata> read(const fs::path &url) const override
    {
        const qint64 speed = iso;
        ++begun;
        while (heldSpeed == speed) {
            std::this_thread::yield();
        }
        const QMutexLocker lock(&m_mutex);
        ++m_reads[url.filename().string()];
        return isReadable ? std::optional(ImageMetadata{.iso = speed}) : std::nullopt;
    }

    [[nodiscard]] int readsOf(const std::string &name) const
    {
        const QMutexLocker lock(&m_mutex);
        return m_reads[name];
    }

    std::atomic<qint64> iso = 100;
    std::atomic<qint64> heldSpeed = 0; ///< reads that began at this speed do not end
    std::atomic_bool isReadable = true;
    mutable std::atomic_int begun = 0;

private:
    mutable QMutex m_mutex;
    mutable std::map<std::string, int> m_reads;
};

} // namespace

/// A file that was read for its date is not opened again for the information bar.
class RememberedSettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_reader = std::make_shared<OneSpeed>();
        m_bench = std::make_unique<Workbench>();
        m_cardReads = std::make_unique<CardReads>(m_reader, m_bench->files);
        m_bench->services.reader = m_reader;
        m_bench->services.cardReads = m_cardReads.get();
        m_bench->begin();
    }

    void cleanup()
    {
        m_reader->heldSpeed = 0;
        m_bench.reset();
        m_cardReads.reset();
    }

    void whatTheScanReadIsNotReadAgain()
    {
        m_bench->cull(2);

        QCOMPARE(speedOf(0), 100);
        QCOMPARE(speedOf(1), 100);

        QCOMPARE(m_reader->readsOf("DSCF0001.JPG"), 1);
        QCOMPARE(m_reader->readsOf("DSCF0002.JPG"), 1);
    }

    void aFileThatChangedIsReadAgain()
    {
        m_bench->cull(2);
        m_reader->iso = 200;
        std::ofstream(shot(0)) << "something longer";

        QCOMPARE(speedOf(0), 200);
        QCOMPARE(speedOf(1), 100);
    }

    void whatTheScanCouldNotReadIsReadAgain()
    {
        m_reader->isReadable = false;
        m_bench->cull(1);
        m_reader->isReadable = true;

        QCOMPARE(speedOf(0), 100);
    }

    void anotherCardOfTheSamePathsHasItsOwnSettings()
    {
        m_bench->cull(1);
        QCOMPARE(speedOf(0), 100);
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_VERIFY(!app().hasSession());
        m_reader->iso = 200; // the files are the same by size, time and number

        m_bench->cullCard(1);

        QCOMPARE(speedOf(0), 200);
    }

    void settingsGoWithTheCard()
    {
        m_bench->cull(1);
        const auto url = shot(0);

        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_VERIFY(!app().hasSession());
        m_reader->iso = 200;

        QCOMPARE(speedOf(url), 200);
    }

    void aScanOfAnOlderCardThatHangsAddsNothing()
    {
        m_reader->heldSpeed = 100;
        app().start();
        m_bench->cardRoot = m_bench->mountCard("CARD", Workbench::shots(1));
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        app().startCulling();
        QTRY_COMPARE(m_reader->begun.load(), 1);
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        m_reader->iso = 200;
        m_bench->cullCard(1);

        m_reader->heldSpeed = 0;
        QTRY_COMPARE(m_reader->readsOf("DSCF0001.JPG"), 2);

        QCOMPARE(speedOf(0), 200);
        QCOMPARE(m_reader->readsOf("DSCF0001.JPG"), 2);
    }

private:
    [[nodiscard]] AppState &app() const { return *m_bench->appState; }

    [[nodiscard]] fs::path shot(qsizetype index) const
    {
        return app().session()->items().at(index).displayURL();
    }

    [[nodiscard]] qint64 speedOf(const fs::path &url) const
    {
        const auto read = m_cardReads->metadata(url, {});
        return QTest::qWaitFor([&read] { return read.isFinished(); }) && read.result()
                   ? read.result()->iso.value_or(0)
                   : 0;
    }

    [[nodiscard]] qint64 speedOf(qsizetype index) const { return speedOf(shot(index)); }

    std::shared_ptr<OneSpeed> m_reader;
    std::unique_ptr<CardReads> m_cardReads;
    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(RememberedSettingsTest)
#include "RememberedSettingsTest.moc"
