// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// A button of the title strip.
T.AbstractButton {
    id: root

    required property int symbolKind
    required property string name
    property real symbolSize: 16
    property color hoverColor: Qt.rgba(1, 1, 1, 0.14)

    implicitWidth: 44
    implicitHeight: 32
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.Button
    Accessible.name: root.name
    // The templates of Qt Quick 6.4 do not do what a screen reader asks of them.
    Accessible.onPressAction: {
        if (root.enabled) {
            root.clicked();
        }
    }

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            width: root.symbolSize
            height: root.symbolSize
            kind: root.symbolKind
            color: root.hovered ? Look.white : Qt.rgba(1, 1, 1, 0.7)
        }
    }

    background: Rectangle {
        color: root.hovered ? root.hoverColor : "transparent"
        opacity: root.down ? 0.7 : 1
    }
}
