// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/access/FolderDialog.h"

#include <memory>

class QQmlEngine;
class QQuickWindow;

/// The folder dialog for desktops without a portal: the platform's own where Qt knows one, else one
/// in the window.
class QuickFolderDialog final : public FolderDialog {
    Q_OBJECT

public:
    QuickFolderDialog() = default;
    ~QuickFolderDialog() override;

    /// Where the dialog belongs, both outliving it or its next home; before that nobody can be
    /// asked.
    void setHome(QQmlEngine *engine, QQuickWindow *window);

    void open(const Question &question) override;
    void close() override;

private Q_SLOTS:
    void takeAccepted();
    void takeRejected();

private:
    [[nodiscard]] bool make();
    void finish(const std::optional<std::filesystem::path> &folder);

    QQmlEngine *m_engine = nullptr;
    QQuickWindow *m_window = nullptr;
    std::unique_ptr<QObject> m_dialog;
    bool m_isOpen = false;
};
