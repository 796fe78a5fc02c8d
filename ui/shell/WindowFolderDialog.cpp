// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/WindowFolderDialog.h"

#include "core/text/FileNameText.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QUrl>

using namespace Qt::StringLiterals;

WindowFolderDialog::WindowFolderDialog() = default;

WindowFolderDialog::~WindowFolderDialog() = default;

void WindowFolderDialog::setHome(QQmlEngine *engine, QQuickWindow *window)
{
    if (m_popup) {
        m_popup->disconnect(this);
        m_popup.reset(); // before its engine
    }
    m_engine = engine;
    m_window = window;
}

void WindowFolderDialog::open(const Question &question)
{
    close();
    if (!m_engine) {
        Q_EMIT answered(std::nullopt);
        return;
    }
    QQmlComponent component(m_engine, QUrl(u"qrc:/Kestle/shell/FolderQuestion.qml"_s));
    m_popup.reset(component.createWithInitialProperties({
        {u"parent"_s, QVariant::fromValue(m_window->contentItem())},
        {u"title"_s, question.title},
        {u"acceptLabel"_s, question.acceptLabel},
        {u"folder"_s, displayText(question.directory)},
    }));
    if (!m_popup) {
        Q_EMIT answered(std::nullopt);
        return;
    }
    m_folder = question.directory;
    connect(m_popup.get(), SIGNAL(accepted()), this, SLOT(accept()));
    connect(m_popup.get(), SIGNAL(rejected()), this, SLOT(refuse()));
    QMetaObject::invokeMethod(m_popup.get(), "open");
}

void WindowFolderDialog::close()
{
    if (m_popup) {
        m_popup->disconnect(this);
        QMetaObject::invokeMethod(m_popup.get(), "close");
        m_popup.release()->deleteLater(); // it may be what is calling
    }
}

void WindowFolderDialog::accept()
{
    finish(m_folder);
}

void WindowFolderDialog::refuse()
{
    finish(std::nullopt);
}

void WindowFolderDialog::finish(const std::optional<std::filesystem::path> &folder)
{
    close();
    Q_EMIT answered(folder);
}
