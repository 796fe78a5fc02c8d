// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/RememberedMetadata.h"

#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <fstream>
#include <thread>
#include <vector>

#include <malloc.h>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// Settings as a test says, and how often they were asked for.
class CountedReader final : public MetadataReading {
public:
    std::optional<ImageMetadata> read(const fs::path &url) const override
    {
        ++reads;
        if (duringRead) {
            duringRead(url);
        }
        return answer;
    }

    std::optional<ImageMetadata> answer = ImageMetadata{.iso = 100};
    std::function<void(const fs::path &)> duringRead;
    mutable std::atomic_int reads = 0;
};

void write(const fs::path &file, const std::string &content)
{
    std::ofstream(file) << content;
}

void setChanged(const fs::path &file, int seconds)
{
    fs::last_write_time(file, fs::file_time_type(std::chrono::seconds(seconds)));
}

/// Bytes that the program has of the heap.
size_t heap()
{
    return ::mallinfo2().uordblks;
}

} // namespace

class RememberedMetadataTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_file = fs::path(m_folder->path().toStdString()) / "DSCF0001.JPG";
        write(m_file, "picture");
        m_reader = std::make_shared<CountedReader>();
    }

    void whatWasReadIsKnownWithoutAnotherRead()
    {
        const RememberedMetadata remembered(m_reader);
        const auto read = remembered.read(m_file);

        const auto known = remembered.recall(m_file);

        QVERIFY(read);
        QCOMPARE(known, read);
        QCOMPARE(m_reader->reads.load(), 1);
    }

    void nothingIsKnownOfAFileThatWasNotRead()
    {
        const RememberedMetadata remembered(m_reader);
        const auto other = m_file.parent_path() / "DSCF0002.JPG";
        write(other, "picture");

        (void)remembered.read(m_file);

        QVERIFY(!remembered.recall(other));
    }

    void allFieldsAreKept()
    {
        const auto date = QDateTime(QDate(2024, 3, 15), QTime(14, 22, 7), Qt::UTC);
        const FujiSettings fuji = {u"Velvia"_s, u"DR200"_s, u"R2 B-3"_s, u"+1"_s,
                                   u"-2"_s,     u"Weak"_s,  u"Strong"_s, u"Weak"_s};
        m_reader->answer = ImageMetadata{
            6240, 4160, 2.8, 1.0 / 250, 400, u"XF35mmF1.4 R"_s, date, QPointF(10, 20), 6, fuji};
        const RememberedMetadata remembered(m_reader);

        (void)remembered.read(m_file);

        QCOMPARE(remembered.recall(m_file), m_reader->answer);
    }

    void whatCouldNotBeReadIsNotRemembered()
    {
        const RememberedMetadata remembered(m_reader);
        m_reader->answer.reset();

        QVERIFY(!remembered.read(m_file));

        QVERIFY(!remembered.recall(m_file));
    }

    void aFileThatIsGoneIsNotKnown()
    {
        const RememberedMetadata remembered(m_reader);
        (void)remembered.read(m_file);

        fs::remove(m_file);

        QVERIFY(!remembered.recall(m_file));
    }

    void aFileOfAnotherSizeIsNotKnown()
    {
        const RememberedMetadata remembered(m_reader);
        setChanged(m_file, 1'000);
        (void)remembered.read(m_file);

        write(m_file, "larger picture");
        setChanged(m_file, 1'000);

        QVERIFY(!remembered.recall(m_file));
    }

    void aFileThatWasWrittenSinceIsNotKnown()
    {
        const RememberedMetadata remembered(m_reader);
        setChanged(m_file, 1'000);
        (void)remembered.read(m_file);

        write(m_file, "PICTURE");
        setChanged(m_file, 1'002);

        QVERIFY(!remembered.recall(m_file));
    }

    void anotherFileInItsPlaceIsNotKnown()
    {
        const RememberedMetadata remembered(m_reader);
        setChanged(m_file, 1'000);
        (void)remembered.read(m_file);

        const auto other = m_file.parent_path() / "other";
        write(other, "PICTURE");
        setChanged(other, 1'000);
        fs::rename(other, m_file);

        QVERIFY(!remembered.recall(m_file));
    }

    void whatChangesWhileItIsReadIsNotKnown()
    {
        setChanged(m_file, 1'000);
        m_reader->duringRead = [](const fs::path &url) { setChanged(url, 1'002); };
        const RememberedMetadata remembered(m_reader);

        (void)remembered.read(m_file);

        QVERIFY(!remembered.recall(m_file));
    }

    void whatIsReadAgainReplacesWhatWasKnown()
    {
        const RememberedMetadata remembered(m_reader);
        (void)remembered.read(m_file);
        m_reader->answer = ImageMetadata{.iso = 200};

        (void)remembered.read(m_file);

        QCOMPARE(remembered.recall(m_file), m_reader->answer);
    }

    void endlessTextsAreNotRemembered()
    {
        const RememberedMetadata remembered(m_reader);
        (void)remembered.read(m_file);
        m_reader->answer = ImageMetadata{.lensModel = QString(4096, u'x')};

        (void)remembered.read(m_file);

        QVERIFY(!remembered.recall(m_file));
    }

    void twentyThousandFilesTakeModestMemory()
    {
        constexpr int count = 20'000;
        const RememberedMetadata remembered(m_reader);
        const auto before = heap();

        for (int number = 0; number < count; ++number) {
            // Texts of their own, as each file that is read brings them.
            const auto lens = QString::fromLatin1("XF16-55mmF2.8 R LM WR");
            const auto range = QString::fromLatin1("DR400");
            m_reader->answer =
                ImageMetadata{.lensModel = lens, .fuji = FujiSettings{.dynamicRange = range}};
            const auto file = linked(number);
            (void)remembered.read(file);
        }

        const auto perFile = (heap() - before) / count;
        QVERIFY(remembered.recall(linked(count - 1)));
        QVERIFY2(perFile <= 1024, qPrintable(QString::number(perFile)));
    }

    void moreFilesThanThereIsRoomForAreReadAgain()
    {
        const RememberedMetadata remembered(m_reader);
        const auto most = static_cast<int>(RememberedMetadata::mostFiles);

        for (int number = 0; number <= most; ++number) {
            (void)remembered.read(linked(number));
        }

        QVERIFY(remembered.recall(linked(most - 1)));
        QVERIFY(!remembered.recall(linked(most)));
    }

    void severalThreadsReadAndRecallAtOnce()
    {
        const RememberedMetadata remembered(m_reader);
        std::atomic_int known = 0;
        std::vector<std::thread> threads;

        for (int thread = 0; thread < 8; ++thread) {
            threads.emplace_back([&, thread] {
                for (int number = 0; number < 500; ++number) {
                    const auto file = linked(number % 100);
                    if (thread % 2 == 0) {
                        (void)remembered.read(file);
                        known += remembered.recall(file).has_value() ? 1 : 0;
                    } else {
                        (void)remembered.recall(file);
                    }
                }
            });
        }
        for (auto &thread : threads) {
            thread.join();
        }

        QCOMPARE(known.load(), 4 * 500);
    }

private:
    /// The one file under as many names as are wanted: "./" counts.
    [[nodiscard]] fs::path linked(int number) const
    {
        auto folder = m_file.parent_path();
        for (int bit = 0; bit < 16; ++bit) {
            folder += (number >> bit & 1) != 0 ? "/." : "/";
        }
        return folder / m_file.filename();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    fs::path m_file;
    std::shared_ptr<CountedReader> m_reader;
};

QTEST_GUILESS_MAIN(RememberedMetadataTest)
#include "RememberedMetadataTest.moc"
