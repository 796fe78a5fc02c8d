// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kestle

// A window beside the main one, as large as what it shows. Escape closes it.
Window {
    id: root

    default property alias content: scope.data
    readonly property Item shown: scope.children[0]

    flags: Qt.Dialog
    color: Look.raised
    width: root.shown.implicitWidth
    height: root.shown.implicitHeight
    minimumWidth: root.shown.implicitWidth
    maximumWidth: root.shown.implicitWidth
    minimumHeight: root.shown.implicitHeight
    maximumHeight: root.shown.implicitHeight

    // What it shows may grow while it is open, and nobody else moves it then.
    onHeightChanged: {
        const lowest = root.Screen.virtualY + root.Screen.height - root.height;
        if (root.visible && root.y > lowest) {
            root.y = Math.max(lowest, root.Screen.virtualY);
        }
    }

    FocusScope {
        id: scope

        anchors.fill: parent
        focus: true

        Keys.onEscapePressed: root.close()
    }
}
