// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <array>
#include <optional>

/// A public key of Ed25519 (RFC 8032), as Sparkle writes it: 32 bytes in Base64.
class PublicKey {
public:
    /// Nothing when @p text is not exactly one key.
    [[nodiscard]] static std::optional<PublicKey> fromBase64(const QByteArray &text);

    /// Whether @p signature, 64 bytes in Base64, was made over exactly @p message by who holds the
    /// private key. Takes about a second for 300 MB. Any thread.
    [[nodiscard]] bool verifies(QByteArrayView message, const QByteArray &signature) const;

private:
    std::array<unsigned char, 32> m_bytes = {};
};
