// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSslCertificate>
#include <QSslKey>

/// A certificate for 127.0.0.1 that vouches for itself, made anew.
struct TestCertificate {
    [[nodiscard]] static TestCertificate make();

    QSslCertificate certificate;
    QSslKey key;
};
