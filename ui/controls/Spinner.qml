// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// Something is under way, for how long is not known.
Item {
    id: root

    property string name: qsTr("Working")
    property int step: 0

    implicitWidth: 32
    implicitHeight: 32

    Accessible.role: Accessible.Indicator
    Accessible.name: root.name

    Symbol {
        anchors.fill: parent
        kind: Symbol.Spokes
        color: Qt.rgba(1, 1, 1, 0.75)
        rotation: root.step * 30
    }

    Timer {
        interval: 80
        repeat: true
        running: root.visible
        onTriggered: root.step = (root.step + 1) % 12
    }
}
