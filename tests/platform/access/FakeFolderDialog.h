// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/access/FolderDialog.h"

#include <QList>

/// A dialog whose user is the test.
class FakeFolderDialog final : public FolderDialog {
    Q_OBJECT

public:
    QList<Question> opened;
    int closed = 0;

    void open(const Question &question) override { opened.append(question); }
    void close() override { ++closed; }

    void answer(const std::optional<std::filesystem::path> &folder) { Q_EMIT answered(folder); }
};
