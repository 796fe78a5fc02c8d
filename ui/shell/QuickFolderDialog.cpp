// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/QuickFolderDialog.h"

#include "platform/access/FileUri.h"

#include <QFile>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

QuickFolderDialog::~QuickFolderDialog() = default;

void QuickFolderDialog::setHome(QQmlEngine *engine, QQuickWindow *window)
{
    m_dialog.reset();
    m_engine = engine;
    m_window = window;
}

bool QuickFolderDialog::make()
{
    if (m_dialog || !m_engine) {
        return m_dialog != nullptr;
    }
    QQmlComponent component(m_engine, QUrl(u"qrc:/Kestle/shell/ChooseFolder.qml"_s));
    m_dialog.reset(component.createWithInitialProperties(
        {{u"parentWindow"_s, QVariant::fromValue<QObject *>(m_window)}}));
    if (!m_dialog) {
        return false; // the module is not installed
    }
    QObject::connect(m_dialog.get(), SIGNAL(accepted()), this, SLOT(takeAccepted()));
    QObject::connect(m_dialog.get(), SIGNAL(rejected()), this, SLOT(takeRejected()));
    return true;
}

void QuickFolderDialog::open(const Question &question)
{
    close();
    if (!make()) {
        Q_EMIT answered(std::nullopt);
        return;
    }
    const auto folder = QFile::decodeName(question.directory.c_str());
    m_dialog->setProperty("title", question.title);
    m_dialog->setProperty("acceptLabel", question.acceptLabel);
    m_dialog->setProperty("currentFolder", QUrl::fromLocalFile(folder));
    m_isOpen = true;
    QMetaObject::invokeMethod(m_dialog.get(), "open");
}

void QuickFolderDialog::close()
{
    if (std::exchange(m_isOpen, false)) {
        QMetaObject::invokeMethod(m_dialog.get(), "close");
    }
}

void QuickFolderDialog::takeAccepted()
{
    const auto chosen = m_dialog->property("selectedFolder").toUrl();
    finish(FileUri::localPath(chosen.toString(QUrl::FullyEncoded)));
}

void QuickFolderDialog::takeRejected()
{
    finish(std::nullopt);
}

void QuickFolderDialog::finish(const std::optional<std::filesystem::path> &folder)
{
    if (std::exchange(m_isOpen, false)) {
        Q_EMIT answered(folder);
    }
}
