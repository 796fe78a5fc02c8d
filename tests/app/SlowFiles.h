// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/support/ForwardingFiles.h"

#include <functional>

/// Something happens while a folder is looked at, which then cannot be listed.
class SlowFiles final : public ForwardingFiles {
public:
    bool isListable(const Path &) const override
    {
        meanwhile();
        return false;
    }

    std::function<void()> meanwhile;
};
