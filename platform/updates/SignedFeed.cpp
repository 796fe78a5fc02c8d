// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/SignedFeed.h"

#include "platform/updates/PublicKey.h"

#include <QList>

using namespace Qt::StringLiterals;

/// What stands behind @p name at the beginning of a line.
static QByteArray valueOf(const QByteArray &block, const QByteArray &name)
{
    for (const auto &line : block.split('\n')) {
        if (line.startsWith(name)) {
            return line.sliced(name.size()).trimmed();
        }
    }
    return {};
}

SignedFeed SignedFeed::judged(const QByteArray &bytes, const PublicKey &key)
{
    const auto opening = "<!-- sparkle-signatures:\n"_ba;
    const auto begin = bytes.lastIndexOf(opening);
    if (begin < 0) {
        return {.content = bytes, .trust = Trust::Unsigned};
    }
    const auto content = bytes.first(begin);
    const auto block = bytes.sliced(begin + opening.size());
    const auto end = block.indexOf("-->");
    const bool isWhole = end >= 0 && block.sliced(end + 3).trimmed().isEmpty();
    const auto fields = block.first(std::max<qsizetype>(end, 0));
    const bool fits = isWhole && valueOf(fields, "length:"_ba).toLongLong() == content.size() &&
                      key.verifies(content, valueOf(fields, "edSignature:"_ba));
    return {.content = content, .trust = fits ? Trust::Signed : Trust::Forged};
}
