// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// How far something is. Its name says so too: the values of Qt Quick 6.4's own progress bar reach
// no screen reader.
Rectangle {
    id: root

    required property string name
    required property real done
    required property real total

    // From 0 to 1.
    readonly property real position: root.total > 0 ? Math.min(Math.max(root.done / root.total, 0), 1) : 0

    implicitWidth: 320
    implicitHeight: 6
    radius: 3
    color: Look.control

    Accessible.role: Accessible.ProgressBar
    Accessible.name: root.name

    Rectangle {
        objectName: "progressDone"
        width: root.position * root.width
        height: root.height
        radius: 3
        color: Look.blue
    }
}
