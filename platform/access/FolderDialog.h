// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QString>

#include <filesystem>
#include <optional>

/// Asks the user for a folder, without blocking. One question at a time. Main thread only.
class FolderDialog : public QObject {
    Q_OBJECT

public:
    struct Question {
        QString title = {};
        QString acceptLabel = {};             ///< on the button that chooses
        std::filesystem::path directory = {}; ///< where to begin
        QString parentWindow = {}; ///< as XDG Desktop Portal names windows ("x11:1a"); may be empty
    };

    using QObject::QObject;

    /// Ends a question that is open, without an answer.
    virtual void open(const Question &question) = 0;

    /// Without an answer. Nothing happens when no question is open.
    virtual void close() = 0;

Q_SIGNALS:
    /// The folder chosen; absent when the user refused, or could not be asked.
    void answered(const std::optional<std::filesystem::path> &folder);
};
