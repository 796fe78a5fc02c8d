// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/ScanRun.h"
#include "bench/Stopwatch.h"
#include "core/decode/DecodePipeline.h"
#include "core/metadata/ExifReader.h"
#include "platform/files/PosixFileManager.h"
#include "platform/imageio/ImageSource.h"

#include <QCoreApplication>

#include <array>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// Of a usual screen's longest edge, less what surrounds the picture; pixels.
constexpr int screenMaxPixel = 2160;

QImage picture(const std::filesystem::path &file, std::optional<int> maxPixel)
{
    const auto source = ImageSource::open(file);
    return source ? source->image(maxPixel) : QImage();
}

/// What happens between Return and the first picture, on an event loop as in the program.
class FirstPicture : public QObject {
public:
    explicit FirstPicture(const std::filesystem::path &expected)
        : m_pipeline({.picture = picture, .videoFrame = [](const auto &) { return QImage(); }})
        , m_sessions(std::nullopt, std::chrono::milliseconds(300))
        , m_scan(std::make_shared<PosixFileManager>(), std::make_shared<ExifReader>(), m_sessions)
        , m_expected(expected)
    {
        QObject::connect(&m_scan, &ScanRun::finished, this,
                         [this](const ScanRun::Result &scanned) { show(scanned); });
    }

    void start(const std::filesystem::path &card)
    {
        m_watch.start();
        m_scan.start(card, QStringLiteral("card"));
    }

    [[nodiscard]] const Stopwatch &watch() const { return m_watch; }

private:
    QCoro::Task<> show(ScanRun::Result scanned)
    {
        m_pipeline.beginSelection(1);
        QImage shown;
        if (!scanned.items.isEmpty()) {
            shown = co_await m_pipeline.screenImage(scanned.items.first(), screenMaxPixel);
        }
        m_watch.stop();
        const bool isRight = !shown.isNull() && scanned.items.first().displayURL() == m_expected;
        QCoreApplication::exit(isRight ? 0 : 1);
    }

    DecodePipeline m_pipeline;
    SessionKeeper m_sessions;
    ScanRun m_scan;
    std::filesystem::path m_expected;
    Stopwatch m_watch;
};

/// Counts the entries below @p folder that are no folders.
size_t walk(const std::string &folder)
{
    size_t files = 0;
    auto *stream = ::opendir(folder.c_str());
    if (stream == nullptr) {
        return 0;
    }
    while (const auto *entry = ::readdir(stream)) {
        const std::string_view name = entry->d_name;
        if (entry->d_type == DT_DIR && name != "." && name != "..") {
            files += walk(folder + '/' + entry->d_name);
        } else if (entry->d_type == DT_REG) {
            ++files;
        }
    }
    ::closedir(stream);
    return files;
}

/// Reads the beginning of each of @p files and tells how many there were.
size_t readBeginnings(const std::vector<std::string> &files)
{
    std::atomic<size_t> next = 0;
    std::atomic<size_t> succeeded = 0;
    const auto work = [&] {
        std::array<char, 4096> block;
        for (auto index = next++; index < files.size(); index = next++) {
            const int descriptor = ::open(files[index].c_str(), O_RDONLY | O_CLOEXEC);
            ::posix_fadvise(descriptor, 0, 0, POSIX_FADV_RANDOM);
            succeeded += ::pread(descriptor, block.data(), block.size(), 0) > 0;
            ::close(descriptor);
        }
    };
    std::thread other(work);
    work();
    other.join();
    return succeeded;
}

/// The least that it can cost: the names, one short read of each shot, one picture.
int floorOf(const char *card, const char *list, const char *first)
{
    std::vector<std::string> shots;
    std::ifstream lines(list);
    for (std::string line; std::getline(lines, line);) {
        shots.push_back(line);
    }
    Stopwatch watch;
    watch.start();
    const auto files = walk(std::string(card) + "/DCIM");
    const auto read = readBeginnings(shots);
    const auto shown = picture(first, screenMaxPixel);
    watch.stop();
    watch.print();
    return files >= shots.size() && read == shots.size() && !shown.isNull() ? 0 : 1;
}

} // namespace

/// From Return to the first picture on CARD, whose first shot is FIRST and whose shots are named in
/// LIST; what it took without the start of the program is printed.
int main(int argc, char **argv)
{
    if (argc == 5 && std::string_view(argv[1]) == "floor") {
        return floorOf(argv[2], argv[3], argv[4]);
    }
    if (argc == 5 && std::string_view(argv[1]) == "kestle") {
        const QCoreApplication application(argc, argv);
        FirstPicture run(argv[4]);
        run.start(argv[2]);
        const int status = QCoreApplication::exec();
        run.watch().print();
        return status;
    }
    std::fputs("usage: first-picture-work floor|kestle CARD LIST FIRST\n", stderr);
    return 2;
}
