// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

class UserDefaults;

/// The settings that the user sees, bound to the user defaults. Main thread only.
class Preferences : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool autoAdvance READ autoAdvance WRITE setAutoAdvance NOTIFY autoAdvanceChanged)

public:
    explicit Preferences(UserDefaults &defaults, QObject *parent = nullptr);

    /// Whether a reject is followed by the next frame; "autoAdvanceOnReject" in the defaults.
    [[nodiscard]] bool autoAdvance() const;
    void setAutoAdvance(bool autoAdvance);

Q_SIGNALS:
    void autoAdvanceChanged();

private:
    UserDefaults &m_defaults;
};
