// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/PublicKey.h"

#include <openssl/evp.h>

#include <algorithm>
#include <memory>

constexpr qsizetype signatureSize = 64;

static std::optional<QByteArray> decoded(const QByteArray &text, qsizetype size)
{
    const auto result =
        QByteArray::fromBase64Encoding(text.trimmed(), QByteArray::AbortOnBase64DecodingErrors);
    if (!result || result.decoded.size() != size) {
        return std::nullopt;
    }
    return result.decoded;
}

std::optional<PublicKey> PublicKey::fromBase64(const QByteArray &text)
{
    PublicKey key;
    const auto bytes = decoded(text, qsizetype(key.m_bytes.size()));
    if (!bytes) {
        return std::nullopt;
    }
    std::ranges::copy(*bytes, key.m_bytes.begin());
    return key;
}

bool PublicKey::verifies(QByteArrayView message, const QByteArray &signature) const
{
    const auto bytes = decoded(signature, signatureSize);
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(
        EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, m_bytes.data(), m_bytes.size()),
        &EVP_PKEY_free);
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                          &EVP_MD_CTX_free);
    if (!bytes || !key || !context ||
        EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) != 1) {
        return false;
    }
    const auto at = [](const char *data) { return reinterpret_cast<const unsigned char *>(data); };
    return EVP_DigestVerify(context.get(), at(bytes->constData()), size_t(bytes->size()),
                            at(message.data()), size_t(message.size())) == 1;
}
