// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/Preferences.h"

#include "platform/settings/UserDefaults.h"

using namespace Qt::StringLiterals;

Preferences::Preferences(UserDefaults &defaults, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
{
}

bool Preferences::autoAdvance() const
{
    return m_defaults.boolean(u"autoAdvanceOnReject"_s);
}

void Preferences::setAutoAdvance(bool autoAdvance)
{
    if (autoAdvance == this->autoAdvance()) {
        return;
    }
    m_defaults.setBoolean(u"autoAdvanceOnReject"_s, autoAdvance);
    Q_EMIT autoAdvanceChanged();
}
