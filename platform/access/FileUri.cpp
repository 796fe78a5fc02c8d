// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/FileUri.h"

#include <QByteArray>

#include <string_view>

static bool isHexDigit(char digit)
{
    return std::string_view("0123456789abcdefABCDEF").find(digit) != std::string_view::npos;
}

/// Qt's own decoding guesses at sequences that are damaged; a guess would be another folder.
static std::optional<std::string> percentDecoded(QByteArrayView text)
{
    std::string bytes;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes.push_back(text[i]);
            continue;
        }
        if (text.size() - i < 3 || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2])) {
            return std::nullopt;
        }
        const auto byte = QByteArray::fromHex(text.sliced(i + 1, 2).toByteArray()).front();
        if (byte == '\0' || byte == '/') {
            return std::nullopt; // no name holds these
        }
        bytes.push_back(byte);
        i += 2;
    }
    return bytes;
}

std::optional<std::filesystem::path> FileUri::localPath(const QString &uri)
{
    const auto text = uri.toUtf8();
    constexpr QByteArrayView scheme("file://");
    if (text.size() < scheme.size() || text.first(scheme.size()).toLower() != scheme) {
        return std::nullopt;
    }
    const auto authorityAndPath = text.sliced(scheme.size());
    const auto pathStart = authorityAndPath.indexOf('/');
    if (pathStart < 0) {
        return std::nullopt;
    }
    const auto host = authorityAndPath.first(pathStart).toLower();
    const auto encoded = authorityAndPath.sliced(pathStart);
    // A bare '?' or '#' begins something that is no part of the path.
    if ((!host.isEmpty() && host != "localhost") || encoded.contains('?') ||
        encoded.contains('#') || encoded.contains('\0')) {
        return std::nullopt;
    }
    auto bytes = percentDecoded(encoded);
    while (bytes && bytes->size() > 1 && bytes->ends_with('/')) {
        bytes->pop_back();
    }
    return bytes;
}
