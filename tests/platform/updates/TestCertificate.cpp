// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/platform/updates/TestCertificate.h"

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

static void addExtension(X509 *certificate, int kind, const char *value)
{
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
    auto *const extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value);
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

static QByteArray bytesOf(BIO *memory)
{
    char *data = nullptr;
    const auto size = BIO_get_mem_data(memory, &data);
    return {data, qsizetype(size)};
}

TestCertificate TestCertificate::make()
{
    auto *const pair = EVP_PKEY_Q_keygen(nullptr, nullptr, "RSA", size_t(2048));
    auto *const certificate = X509_new();
    X509_set_version(certificate, 2); // which is called 3
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate), 3600);
    X509_set_pubkey(certificate, pair);
    auto *const name = X509_get_subject_name(certificate);
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char *>("127.0.0.1"), -1, -1, 0);
    X509_set_issuer_name(certificate, name);
    addExtension(certificate, NID_basic_constraints, "critical,CA:TRUE");
    addExtension(certificate, NID_subject_alt_name, "IP:127.0.0.1");
    X509_sign(certificate, pair, EVP_sha256());

    auto *const certificateText = BIO_new(BIO_s_mem());
    auto *const keyText = BIO_new(BIO_s_mem());
    PEM_write_bio_X509(certificateText, certificate);
    PEM_write_bio_PrivateKey(keyText, pair, nullptr, nullptr, 0, nullptr, nullptr);
    const TestCertificate made{.certificate = QSslCertificate(bytesOf(certificateText)),
                               .key = QSslKey(bytesOf(keyText), QSsl::Rsa)};
    BIO_free(keyText);
    BIO_free(certificateText);
    X509_free(certificate);
    EVP_PKEY_free(pair);
    return made;
}
