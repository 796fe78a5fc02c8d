// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/PlainNotes.h"

#include <QStringList>

using namespace Qt::StringLiterals;

constexpr qsizetype longestNotes = 20'000;
constexpr qsizetype longestReference = 10;

/// The name in a tag such as "</p " or "br/", in lower case.
static QString nameOf(QStringView tag)
{
    qsizetype end = 0;
    while (end < tag.size() && tag[end].isLetterOrNumber()) {
        ++end;
    }
    return tag.first(end).toString().toLower();
}

/// Just behind the end tag of @p element, or the end of @p html when there is none.
static qsizetype behindElement(QStringView html, const QString &element, qsizetype from)
{
    const auto end = html.indexOf(QString(u"</"_s + element), from, Qt::CaseInsensitive);
    const auto close = end < 0 ? -1 : html.indexOf(u'>', end);
    return close < 0 ? html.size() : close + 1;
}

/// Of one reference between "&" and ";"; empty when it is none.
static QString characterOf(QStringView reference)
{
    if (reference.startsWith(u'#')) {
        const bool isHex = reference.size() > 1 && reference[1].toLower() == u'x';
        bool isNumber = false;
        const auto code = reference.sliced(isHex ? 2 : 1).toUInt(&isNumber, isHex ? 16 : 10);
        const bool isCharacter =
            isNumber && code > 0 && code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code);
        const auto character = char32_t(code);
        return isCharacter ? QString::fromUcs4(&character, 1) : QString();
    }
    struct Named {
        QLatin1StringView name;
        char16_t character;
    };
    for (const auto &named :
         {Named{"amp"_L1, u'&'}, Named{"lt"_L1, u'<'}, Named{"gt"_L1, u'>'}, Named{"quot"_L1, u'"'},
          Named{"apos"_L1, u'\''}, Named{"nbsp"_L1, u' '}, Named{"ndash"_L1, u'–'},
          Named{"mdash"_L1, u'—'}, Named{"hellip"_L1, u'…'}}) {
        if (reference == named.name) {
            return QString(QChar(named.character));
        }
    }
    return {};
}

/// What a tag becomes.
static QString breakFor(const QString &element, bool isEnd)
{
    static const QStringList blocks{u"p"_s,  u"div"_s, u"ul"_s, u"ol"_s, u"table"_s, u"h1"_s,
                                    u"h2"_s, u"h3"_s,  u"h4"_s, u"h5"_s, u"h6"_s,    u"pre"_s};
    if (element == "li"_L1 && !isEnd) {
        return u"\n• "_s;
    }
    if (element == "br"_L1 || element == "tr"_L1) {
        return u"\n"_s;
    }
    return blocks.contains(element) ? u"\n\n"_s : QString();
}

/// Looks at every character at most twice, whatever it is.
static QString withoutMarkup(QStringView html)
{
    QString text;
    qsizetype at = 0;
    while (at < html.size() && text.size() < 2 * longestNotes) {
        const QChar character = html[at];
        if (character == u'<' && html.sliced(at).startsWith("<!--"_L1)) {
            const auto end = html.indexOf("-->"_L1, at);
            at = end < 0 ? html.size() : end + 3;
        } else if (character == u'<') {
            const auto end = html.indexOf(u'>', at);
            const bool isEnd = html.sliced(at).startsWith("</"_L1);
            const auto element = nameOf(html.sliced(at + (isEnd ? 2 : 1)));
            const bool isUnseen = element == "script"_L1 || element == "style"_L1 ||
                                  element == "head"_L1 || element == "title"_L1;
            text += breakFor(element, isEnd);
            at = end < 0 ? html.size()
                         : (isUnseen && !isEnd ? behindElement(html, element, end) : end + 1);
        } else if (character == u'&') {
            const auto reference = html.mid(at + 1, longestReference);
            const auto end = reference.indexOf(u';');
            const auto replacement = end > 0 ? characterOf(reference.first(end)) : QString();
            text += replacement.isEmpty() ? QString(character) : replacement;
            at += replacement.isEmpty() ? 1 : end + 2;
        } else {
            text += character.isSpace() ? u' ' : character; // lines are made by elements
            ++at;
        }
    }
    return text;
}

/// Nothing that could hide or turn around other text.
static bool isShown(char32_t character)
{
    const auto category = QChar::category(character);
    return character == u'\n' ||
           (category != QChar::Other_Control && category != QChar::Other_Format &&
            category != QChar::Other_PrivateUse && category != QChar::Separator_Line &&
            category != QChar::Separator_Paragraph);
}

static QString shownOf(const QString &text)
{
    QString shown;
    for (const auto character : text.toUcs4()) {
        if (isShown(character)) {
            shown += QChar::fromUcs4(character);
        }
    }
    return shown;
}

/// Lines trimmed, never more than one empty line, none at the ends.
static QString tidied(const QString &text)
{
    QStringList lines;
    for (const auto &line : text.split(u'\n')) {
        const auto trimmed = line.simplified();
        if (!trimmed.isEmpty() || (!lines.isEmpty() && !lines.last().isEmpty())) {
            lines.append(trimmed);
        }
    }
    return lines.join(u'\n').trimmed();
}

QString plainNotes(const QString &notes, NotesFormat format)
{
    QString text = format == NotesFormat::Html ? withoutMarkup(notes) : notes;
    text.replace(u'\t', u' ');
    text = tidied(shownOf(text));
    if (text.size() <= longestNotes) {
        return text;
    }
    const bool cutsAPair = text[longestNotes - 1].isHighSurrogate();
    return text.first(cutsAPair ? longestNotes - 1 : longestNotes) + u'…';
}

QString plainLine(const QString &text)
{
    return plainNotes(text, NotesFormat::Plain).simplified();
}
