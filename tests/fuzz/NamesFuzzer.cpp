// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/Pairing.h"
#include "core/text/FileNameText.h"
#include "platform/checks/Precondition.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>

// Names of files, each of them of another line: they have texts of their own, and no file belongs
// to two items.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    std::set<std::filesystem::path> files;
    QSet<QString> keys;
    while (!rest.empty()) {
        const auto name = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
        if (!name.empty() && name.find('\0') == name.npos && files.emplace(name).second) {
            (void)displayText(name);
            keys.insert(keyText(name));
        }
    }
    precondition(keys.size() == static_cast<qsizetype>(files.size()), "names have their own texts");

    std::set<std::filesystem::path> seen;
    QSet<QString> ids;
    for (const auto &item : Pairing::pair({files.cbegin(), files.cend()})) {
        precondition(!ids.contains(item.id), "ids are unique");
        ids.insert(item.id);
        for (const auto &file : item.allURLs()) {
            precondition(files.contains(file) && seen.insert(file).second,
                         "a file belongs to one item");
        }
    }
    return 0;
}
