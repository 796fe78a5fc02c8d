// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

#include <compare>

/// The order of versions by the rules of Sparkle's standard version comparator (Sparkle 2): runs of
/// digits, letters and separators are compared one by one, numbers by their value; missing ".0" are
/// added, so that "1.0" is "1.0.0"; letters come before the end, so that "1.0b1" is older than
/// "1.0"; everything from a dash on says nothing. Digits of any length are compared exactly.
[[nodiscard]] std::weak_ordering compareVersions(QStringView one, QStringView other);

/// Whether @p version names something that comes before a release: letters after the numbers, as in
/// "1.1b2", "1.1 rc" or "1.1-beta.3".
[[nodiscard]] bool isPrerelease(QStringView version);
