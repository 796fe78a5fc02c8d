// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// The settings: one switch.
FocusScope {
    id: root

    required property Preferences preferences

    readonly property bool autoAdvance: root.preferences.autoAdvance

    focus: true
    implicitWidth: 360
    implicitHeight: toggle.implicitHeight + 2 * toggle.x

    Accessible.role: Accessible.Form
    Accessible.name: qsTr("Settings")

    Toggle {
        id: toggle

        objectName: "autoAdvance"
        x: 20
        y: 20
        width: root.width - 2 * x
        focus: true
        text: qsTr("X auto-advances to the next frame")
        checked: root.autoAdvance
        onToggled: root.preferences.autoAdvance = toggle.checked
    }
}
