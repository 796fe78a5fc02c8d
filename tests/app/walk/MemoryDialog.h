// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/access/FolderDialog.h"
#include "tests/app/walk/SharedWorld.h"

/// A dialog whose user thinks about it while the dialog's gate is closed.
class MemoryDialog final : public FolderDialog {
public:
    explicit MemoryDialog(SharedWorld &world)
        : m_world(world)
    {
    }

    void open(const Question &question) override { m_question = question; }

    void close() override { m_question.reset(); }

    /// True when there was something to answer.
    bool answer()
    {
        const auto facts = m_world.facts();
        if (!m_question || facts.isClosed(WalkGate::dialog())) {
            return false;
        }
        const auto directory = m_question->directory;
        m_question.reset();
        if (!facts.userRefuses) {
            m_world.beginAccess(directory.native());
        }
        Q_EMIT answered(facts.userRefuses ? std::nullopt : std::optional(directory));
        return true;
    }

private:
    SharedWorld &m_world;
    std::optional<Question> m_question;
};
