// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/LatinKey.h"

#include <QStringView>

#include <array>

namespace {

struct Row {
    quint32 firstCode;
    QStringView letters;
};

} // namespace

/// The letter rows of a keyboard, by the key codes "evdev" of xkeyboard-config.
static constexpr std::array rows{
    Row{24, u"qwertyuiop"},
    Row{38, u"asdfghjkl"},
    Row{52, u"zxcvbnm"},
};

static QChar letterAt(quint32 scanCode)
{
    for (const auto &row : rows) {
        if (scanCode >= row.firstCode && scanCode - row.firstCode < quint32(row.letters.size())) {
            return row.letters.at(scanCode - row.firstCode);
        }
    }
    return {};
}

QChar latinKey(int key, quint32 scanCode)
{
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
        return QChar(u'a' + (key - Qt::Key_A));
    }
    // Qt names the keys of other scripts by their code points; its own names lie above those.
    const bool isCodePoint = key > 0 && key < Qt::Key_Escape;
    const auto codePoint = char32_t(isCodePoint ? key : 0);
    // Some scripts have marks on keys of their own, where others have letters.
    const bool isLetter = QChar::isLetter(codePoint) || QChar::isMark(codePoint);
    if (!isLetter || QChar::script(char32_t(key)) == QChar::Script_Latin) {
        return {};
    }
    return letterAt(scanCode);
}
