// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardInfo.h"

#include <QMetaObject>
#include <QObject>

#include <functional>
#include <optional>

class FolderDialog;

/// Asks the user for access to a card, with the folder dialog of the desktop; one card at a time.
/// Main thread only.
class AccessRequest : public QObject {
    Q_OBJECT

public:
    /// @p dialog outlives the request; without one nobody is asked, and nothing granted.
    /// @p parentWindow names the window that the dialog belongs to, as FolderDialog::Question does.
    AccessRequest(FolderDialog *dialog, std::function<QString()> parentWindow,
                  QObject *parent = nullptr);
    ~AccessRequest() override;

    /// Nothing happens while @p card is being asked for; another one is asked for no more.
    void ask(const CardInfo &card);

    /// Closes the dialog; there will be no answer.
    void cancel();

    [[nodiscard]] bool isOpen() const { return m_card.has_value(); }

Q_SIGNALS:
    /// The dialog is closed; @p folder was chosen, or nothing was.
    void answered(const CardInfo &card, const std::optional<std::filesystem::path> &folder);

private:
    void tell(const std::optional<std::filesystem::path> &folder);

    FolderDialog *m_dialog;
    std::function<QString()> m_parentWindow;
    std::optional<CardInfo> m_card; ///< that is being asked for
};
