// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QTemporaryFile>

#include <cstdio>

#include <unistd.h>

/// Catches what is written to standard error, by whomever, for as long as it lives.
class StandardError {
public:
    StandardError()
    {
        (void)m_file.open();
        std::fflush(stderr);
        m_saved = ::dup(STDERR_FILENO);
        ::dup2(m_file.handle(), STDERR_FILENO);
    }
    StandardError(const StandardError &) = delete;
    StandardError &operator=(const StandardError &) = delete;
    ~StandardError()
    {
        std::fflush(stderr);
        ::dup2(m_saved, STDERR_FILENO);
        ::close(m_saved);
    }

    [[nodiscard]] QByteArray text()
    {
        std::fflush(stderr);
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    QTemporaryFile m_file;
    int m_saved = -1;
};
