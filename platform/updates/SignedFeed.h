// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

class PublicKey;

/// A feed's bytes, with the signature that may stand in a comment at its end (signed feeds of
/// Sparkle 2.9): "<!-- sparkle-signatures:", then lines "edSignature: Base64" and "length: bytes".
struct SignedFeed {
    enum class Trust {
        Unsigned, ///< no signature: only the connection vouches for what it says
        Signed,   ///< every byte of the content is the key's
        Forged,   ///< a signature that does not fit
    };

    /// Takes @p bytes apart and judges them by @p key.
    [[nodiscard]] static SignedFeed judged(const QByteArray &bytes, const PublicKey &key);

    QByteArray content;
    Trust trust = Trust::Unsigned;
};
