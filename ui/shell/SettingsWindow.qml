// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// The window of the settings.
SideWindow {
    id: root

    required property Preferences preferences

    objectName: "settingsWindow"
    title: qsTr("Settings")

    SettingsView {
        anchors.fill: parent
        preferences: root.preferences
    }
}
