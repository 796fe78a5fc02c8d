// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// Hands what happens to screen readers, as a notification that appears: of all that Qt 6.4 can tell
// them, that is what they read out wherever the focus is. There is nothing to see.
Item {
    id: root

    required property AppState appState

    property string text: ""

    objectName: "spokenStatus"
    width: 1
    height: 1
    visible: false

    Accessible.role: Accessible.Notification
    Accessible.name: root.text

    Announcer {
        appState: root.appState
        onAnnounced: text => {
            root.visible = false;
            root.text = text;
            root.visible = true;
        }
    }
}
