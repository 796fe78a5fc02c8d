// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <sys/stat.h>

/// While it lives, new files and folders of this process lose the permissions @p mask.
class Umask {
public:
    explicit Umask(mode_t mask)
        : m_before(::umask(mask))
    {
    }

    ~Umask() { ::umask(m_before); }

    Q_DISABLE_COPY_MOVE(Umask)

private:
    mode_t m_before;
};
