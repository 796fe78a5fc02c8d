// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/DeleteEngine.h"
#include "platform/files/PosixFileManager.h"

#include <cstdio>
#include <cstdlib>
#include <string>

/// Deletes files from a card as the application does and tells what it says of each: for tests that
/// break a real card meanwhile.
///
/// usage: delete-from-card CARD FILE...      with files relative to the card
/// The command in BREAK_BY is run after BREAK_AFTER files have been dealt with.
int main(int argc, char **argv)
{
    if (argc < 2) {
        return 2;
    }
    const std::filesystem::path card = argv[1];
    std::vector<std::filesystem::path> urls;
    for (int index = 2; index < argc; ++index) {
        urls.push_back(card / argv[index]);
    }
    const auto *command = std::getenv("BREAK_BY");
    const auto *after = std::getenv("BREAK_AFTER");
    const auto breakAfter = after ? std::strtoll(after, nullptr, 10) : -1;
    bool commandFailed = false;
    const auto progress = [&](qint64 done, qint64) {
        if (command && done == breakAfter) {
            commandFailed = std::system(command) != 0;
        }
    };

    const auto result = DeleteEngine::deleteFiles(urls, card, PosixFileManager(), progress);

    for (const auto &url : result.deleted) {
        std::printf("deleted\t%s\n", url.lexically_relative(card).c_str());
    }
    for (const auto &failure : result.failures) {
        std::printf("failed\t%s\t%s\n", failure.url.lexically_relative(card).c_str(),
                    qPrintable(failure.reason));
    }
    return commandFailed ? 3 : 0;
}
