// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// What a mounted card is known again by after it was let go: unlike a HeldCard it lets the card be
/// unmounted. Made by HeldCard::mark() and judged by HeldCard::bears(). Immutable to the outside;
/// one thread at a time.
class CardMark {
public:
    CardMark() = default;
    CardMark(const CardMark &) = delete;
    CardMark &operator=(const CardMark &) = delete;
    virtual ~CardMark() = default;
};
