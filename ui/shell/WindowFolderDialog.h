// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/access/FolderDialog.h"

#include <memory>

class QQmlEngine;
class QQuickWindow;

/// For desktops without a folder dialog: asks in the window whether the folder that the question
/// begins with may be used. Without a sandbox there is nothing else to choose.
class WindowFolderDialog final : public FolderDialog {
    Q_OBJECT

public:
    WindowFolderDialog();
    ~WindowFolderDialog() override;

    /// Where the question is shown; both outlive the dialog or its next home. Without a home nobody
    /// can be asked.
    void setHome(QQmlEngine *engine, QQuickWindow *window);

    void open(const Question &question) override;
    void close() override;

private Q_SLOTS:
    void accept();
    void refuse();

private:
    void finish(const std::optional<std::filesystem::path> &folder);

    QQmlEngine *m_engine = nullptr;
    QQuickWindow *m_window = nullptr;
    std::unique_ptr<QObject> m_popup; ///< of the question that is open
    std::filesystem::path m_folder;
};
