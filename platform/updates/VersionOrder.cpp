// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/VersionOrder.h"

#include <QList>

#include <algorithm>

namespace {

struct Part {
    enum class Kind { Number, Letters, Period, Separator };

    Kind kind;
    QStringView text;
};

} // namespace

static Part::Kind kindOf(QChar character)
{
    if (character == u'.') {
        return Part::Kind::Period;
    }
    if (character.isDigit()) {
        return Part::Kind::Number;
    }
    if (character.isSpace() || character.isPunct()) {
        return Part::Kind::Separator;
    }
    return Part::Kind::Letters;
}

/// Separators are parts of one character each.
static QList<Part> partsOf(QStringView version)
{
    QList<Part> parts;
    for (qsizetype at = 0; at < version.size() && (at == 0 || version[at] != u'-'); ++at) {
        const auto kind = kindOf(version[at]);
        const bool mayGoOn = kind == Part::Kind::Number || kind == Part::Kind::Letters;
        if (mayGoOn && !parts.isEmpty() && parts.last().kind == kind) {
            auto &text = parts.last().text;
            text = {text.data(), text.size() + 1};
        } else {
            parts.append({.kind = kind, .text = version.sliced(at, 1)});
        }
    }
    return parts;
}

static qsizetype leadingNumbers(const QList<Part> &parts)
{
    const auto end = std::ranges::find_if(parts, [](const Part &part) {
        return part.kind != Part::Kind::Number && part.kind != Part::Kind::Period;
    });
    return end - parts.begin();
}

/// Adds the zeros that @p parts lacks at the end of its numbers, where @p longer has numbers.
static void addZeros(QList<Part> &parts, const QList<Part> &longer)
{
    const auto end = leadingNumbers(longer);
    for (auto at = leadingNumbers(parts); at < end; ++at) {
        const bool isPeriod = longer[at].kind == Part::Kind::Period;
        parts.insert(at, {.kind = longer[at].kind, .text = isPeriod ? u"." : u"0"});
    }
}

/// By value, whatever the number of digits.
static std::weak_ordering compareNumbers(QStringView one, QStringView other)
{
    const auto significant = [](QStringView digits) {
        while (digits.size() > 1 && digits.first().digitValue() == 0) {
            digits = digits.sliced(1);
        }
        return digits;
    };
    one = significant(one);
    other = significant(other);
    if (one.size() != other.size()) {
        return one.size() <=> other.size();
    }
    for (qsizetype at = 0; at < one.size(); ++at) {
        if (const auto order = one[at].digitValue() <=> other[at].digitValue(); order != 0) {
            return order;
        }
    }
    return std::weak_ordering::equivalent;
}

static std::weak_ordering compareParts(const Part &one, const Part &other)
{
    using Kind = Part::Kind;
    if (one.kind == Kind::Number && other.kind == Kind::Number) {
        return compareNumbers(one.text, other.text);
    }
    if (one.kind == Kind::Letters && other.kind == Kind::Letters) {
        return one.text.compare(other.text) <=> 0;
    }
    // Letters announce what is not finished; then a number is more than a separator.
    const auto rank = [](Kind kind) {
        return kind == Kind::Letters ? 0 : kind == Kind::Number ? 2 : 1;
    };
    return rank(one.kind) <=> rank(other.kind);
}

std::weak_ordering compareVersions(QStringView one, QStringView other)
{
    auto ours = partsOf(one);
    auto theirs = partsOf(other);
    addZeros(ours, theirs);
    addZeros(theirs, ours);
    const auto common = std::min(ours.size(), theirs.size());
    for (qsizetype at = 0; at < common; ++at) {
        if (const auto order = compareParts(ours[at], theirs[at]); order != 0) {
            return order;
        }
    }
    if (ours.size() == theirs.size()) {
        return std::weak_ordering::equivalent;
    }
    const bool oursIsLonger = ours.size() > theirs.size();
    const auto &surplus = oursIsLonger ? ours[common] : theirs[common];
    const bool surplusIsLess = surplus.kind == Part::Kind::Letters;
    return oursIsLonger == surplusIsLess ? std::weak_ordering::less : std::weak_ordering::greater;
}

bool isPrerelease(QStringView version)
{
    const auto suffix = std::ranges::find_if(
        version, [](QChar character) { return character != u'.' && !character.isDigit(); });
    const bool isName = suffix == version.begin();
    const bool isBuild = suffix != version.end() && *suffix == u'+'; // of the same version
    if (isName || isBuild) {
        return false;
    }
    const auto word = std::find_if(suffix, version.end(),
                                   [](QChar character) { return character.isLetterOrNumber(); });
    return word != version.end() && word->isLetter();
}
