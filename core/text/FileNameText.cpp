// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/FileNameText.h"

#include <QList>
#include <QStringDecoder>

#include <algorithm>

static constexpr char32_t firstEscape = 0x10FE00;
static constexpr char32_t lastEscape = firstEscape + 0xFF;

/// How many bytes at the start of @p bytes form one UTF-8 sequence by its lead byte.
static qsizetype sequenceLength(std::string_view bytes)
{
    const auto lead = static_cast<unsigned char>(bytes.front());
    const qsizetype length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    return std::min(length, static_cast<qsizetype>(bytes.size()));
}

/// The character at the start of @p bytes, empty when they are no valid UTF-8.
static QString decoded(std::string_view bytes, qsizetype length)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(QByteArrayView(bytes.data(), length));
    if (decoder.hasError() || text.isEmpty()) {
        return {};
    }
    const auto codePoint = text.toUcs4().constFirst();
    return codePoint >= firstEscape && codePoint <= lastEscape ? QString() : text;
}

QString keyText(std::string_view fileName)
{
    if (std::ranges::all_of(fileName,
                            [](char byte) { return static_cast<signed char>(byte) >= 0; })) {
        return QString::fromLatin1(fileName.data(), static_cast<qsizetype>(fileName.size()));
    }
    QString text;
    while (!fileName.empty()) {
        auto length = sequenceLength(fileName);
        const auto character = decoded(fileName, length);
        if (character.isEmpty()) {
            const auto byte = static_cast<unsigned char>(fileName.front());
            const char32_t escape = firstEscape + byte;
            text += QString::fromUcs4(&escape, 1);
            length = 1;
        } else {
            text += character;
        }
        fileName.remove_prefix(static_cast<size_t>(length));
    }
    return text;
}

QString displayText(const std::filesystem::path &fileName)
{
    return QString::fromStdString(fileName.native());
}
