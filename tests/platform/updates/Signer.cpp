// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/platform/updates/Signer.h"

#include <openssl/evp.h>

struct Signer::Key {
    EVP_PKEY *pair = EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519");
};

Signer::Signer()
    : m_key(std::make_unique<Key>())
{
}

Signer::~Signer()
{
    EVP_PKEY_free(m_key->pair);
}

QByteArray Signer::publicKey() const
{
    QByteArray bytes(32, '\0');
    size_t size = 32;
    EVP_PKEY_get_raw_public_key(m_key->pair, reinterpret_cast<unsigned char *>(bytes.data()),
                                &size);
    return bytes.toBase64();
}

QByteArray Signer::signatureOf(const QByteArray &message) const
{
    QByteArray bytes(64, '\0');
    size_t size = 64;
    auto *const context = EVP_MD_CTX_new();
    EVP_DigestSignInit(context, nullptr, nullptr, nullptr, m_key->pair);
    EVP_DigestSign(context, reinterpret_cast<unsigned char *>(bytes.data()), &size,
                   reinterpret_cast<const unsigned char *>(message.constData()),
                   size_t(message.size()));
    EVP_MD_CTX_free(context);
    return bytes.toBase64();
}

QByteArray Signer::signedFeed(const QByteArray &content) const
{
    return content + "<!-- sparkle-signatures:\nedSignature: " + signatureOf(content) +
           "\nlength: " + QByteArray::number(content.size()) + "\n-->\n";
}
