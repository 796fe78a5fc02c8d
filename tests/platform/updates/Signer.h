// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <memory>

/// Who may sign for a feed: a key pair of Ed25519 of the test's own.
class Signer {
public:
    Signer();
    ~Signer();
    Q_DISABLE_COPY_MOVE(Signer)

    /// In Base64.
    [[nodiscard]] QByteArray publicKey() const;
    [[nodiscard]] QByteArray signatureOf(const QByteArray &message) const;

    /// @p content with its signature in a comment at the end.
    [[nodiscard]] QByteArray signedFeed(const QByteArray &content) const;

private:
    struct Key;
    std::unique_ptr<Key> m_key;
};
