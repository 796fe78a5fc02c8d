// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/Stopwatch.h"

#include <exiv2/exiv2.hpp>

#include <cstdio>
#include <filesystem>
#include <vector>

/// A peer: Exiv2 reads what Kestle wants to know of the files below the folder.
static bool read(const std::filesystem::path &file)
{
    try {
        const auto image = Exiv2::ImageFactory::open(file.native());
        image->readMetadata();
        const auto &exif = image->exifData();
        size_t length = 0;
        for (const auto *key :
             {"Exif.Photo.ExposureTime", "Exif.Photo.FNumber", "Exif.Photo.ISOSpeedRatings",
              "Exif.Photo.LensModel", "Exif.Photo.DateTimeOriginal", "Exif.Fujifilm.FilmMode"}) {
            const auto found = exif.findKey(Exiv2::ExifKey(key));
            length += found != exif.end() ? found->toString().size() : 0;
        }
        return length > 0;
    } catch (const std::exception &) {
        return false;
    }
}

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: exiv2-metadata FOLDER\n", stderr);
        return 2;
    }
    Exiv2::XmpParser::initialize();
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    Exiv2::enableBMFF(true);
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(argv[1])) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    size_t succeeded = 0;
    Stopwatch watch;
    watch.start();
    for (const auto &file : files) {
        succeeded += read(file);
    }
    watch.stop();
    watch.print();
    return succeeded == files.size() ? 0 : 1;
}
