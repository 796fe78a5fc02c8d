// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/CardScanner.h"
#include "core/card/DeleteEngine.h"
#include "core/metadata/ExifReader.h"
#include "platform/files/PosixFileManager.h"

#include <cstdio>
#include <string_view>

/// One piece of work on the card CARD, done once, for timing from outside.
int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: card-work list|dates|delete CARD\n");
        return 2;
    }
    const std::string_view work = argv[1];
    const std::filesystem::path card = argv[2];
    PosixFileManager files;
    const auto listed = CardScanner::listFiles(card, files);
    if (work == "list") {
        return listed.empty();
    }
    if (work == "dates") {
        const ExifReader reader;
        size_t dated = 0;
        for (const auto &file : listed) {
            const auto metadata = reader.read(file);
            dated += metadata && metadata->captureDate;
        }
        return dated == 0;
    }
    if (work == "delete") {
        return !DeleteEngine::deleteFiles(listed, card, files).failures.empty();
    }
    return 2;
}
