// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/AccessRequest.h"

#include "platform/access/FolderDialog.h"

#include <utility>

AccessRequest::AccessRequest(FolderDialog *dialog, std::function<QString()> parentWindow,
                             QObject *parent)
    : QObject(parent)
    , m_dialog(dialog)
    , m_parentWindow(std::move(parentWindow))
{
    if (m_dialog) {
        connect(m_dialog, &FolderDialog::answered, this, &AccessRequest::tell);
    }
}

AccessRequest::~AccessRequest()
{
    cancel();
}

void AccessRequest::ask(const CardInfo &card)
{
    if (m_card && isSameVolume(*m_card, card)) {
        return;
    }
    m_card = card;
    if (!m_dialog) {
        tell(std::nullopt);
        return;
    }
    m_dialog->open({.title = tr("Grant Access"),
                    .acceptLabel = tr("Grant Access"),
                    .directory = card.volumeURL,
                    .parentWindow = m_parentWindow ? m_parentWindow() : QString()});
}

void AccessRequest::cancel()
{
    if (m_card) {
        m_card.reset();
        m_dialog->close();
    }
}

void AccessRequest::tell(const std::optional<std::filesystem::path> &folder)
{
    if (const auto card = std::exchange(m_card, std::nullopt)) {
        Q_EMIT answered(*card, folder);
    }
}
