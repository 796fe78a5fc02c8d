// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/Stopwatch.h"
#include "core/card/CardScanner.h"
#include "core/card/DeleteEngine.h"
#include "core/metadata/ExifReader.h"
#include "platform/files/PosixFileManager.h"

#include <QDirIterator>

#include <array>
#include <cstdio>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace {

using Location = std::filesystem::path;

/// Each does its work once and tells whether anything came of it.
bool list(const Location &card, Stopwatch &watch)
{
    const PosixFileManager files;
    watch.start();
    const auto listed = CardScanner::listFiles(card, files);
    watch.stop();
    return !listed.empty();
}

/// A peer of list.
bool listWithQt(const Location &card, Stopwatch &watch)
{
    watch.start();
    QStringList listed;
    QDirIterator files(QString::fromStdString((card / "DCIM").native()),
                       QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        listed.append(files.next());
    }
    watch.stop();
    return !listed.empty();
}

bool metadata(const Location &card, Stopwatch &watch)
{
    const auto listed = CardScanner::listFiles(card, PosixFileManager());
    const ExifReader reader;
    size_t dated = 0;
    watch.start();
    for (const auto &file : listed) {
        const auto found = reader.read(file);
        dated += found && found->captureDate;
    }
    watch.stop();
    return dated == listed.size();
}

/// The least that reading metadata can cost.
bool readFourKibibytes(const Location &card, Stopwatch &watch)
{
    const auto listed = CardScanner::listFiles(card, PosixFileManager());
    std::array<char, 4096> block;
    ssize_t count = 0;
    watch.start();
    for (const auto &file : listed) {
        const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
        count += ::pread(descriptor, block.data(), block.size(), 0);
        ::close(descriptor);
    }
    watch.stop();
    return count > 0;
}

bool deleteFiles(const Location &card, Stopwatch &watch)
{
    const PosixFileManager files;
    const auto listed = CardScanner::listFiles(card, files);
    watch.start();
    const auto result = DeleteEngine::deleteFiles(listed, card, files);
    watch.stop();
    return result.failures.empty() && result.deleted.size() == listed.size();
}

struct Work {
    std::string_view name;
    bool (*run)(const Location &card, Stopwatch &watch);
};

constexpr std::array works = {
    Work{"list", list},          Work{"list-with-qt", listWithQt},
    Work{"metadata", metadata},  Work{"read-4-kib", readFourKibibytes},
    Work{"delete", deleteFiles},
};

} // namespace

/// One piece of work on the card CARD, done once; what it took without the start of the program is
/// printed.
int main(int argc, char **argv)
{
    for (const auto &work : works) {
        if (argc == 3 && work.name == argv[1]) {
            Stopwatch watch;
            const bool succeeded = work.run(argv[2], watch);
            watch.print();
            return succeeded ? 0 : 1;
        }
    }
    std::fputs("usage: card-work WORK CARD\n", stderr);
    return 2;
}
