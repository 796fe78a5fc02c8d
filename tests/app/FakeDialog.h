// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/access/FolderDialog.h"

/// A dialog whose user does what a test says: at once, or when they are told to.
class FakeDialog final : public FolderDialog {
public:
    enum class User { Accepts, Refuses, Waits };

    void open(const Question &asked) override
    {
        question = asked;
        isOpen = true;
        ++opened;
        if (user != User::Waits) {
            answer(user == User::Accepts ? std::optional(asked.directory) : std::nullopt);
        }
    }

    void close() override { isOpen = false; }

    void answer(const std::optional<std::filesystem::path> &folder)
    {
        isOpen = false;
        Q_EMIT answered(folder);
    }

    User user = User::Accepts;
    Question question;
    bool isOpen = false;
    int opened = 0;
};
