// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// A command of a menu, or the name of a menu within a menu.
T.MenuItem {
    id: root

    property string shortcutText: ""

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(26, Look.pixels(18) + 8)
    leftPadding: 12
    rightPadding: 12
    focusPolicy: Qt.TabFocus // or arrows pass it over
    width: ListView.view ? ListView.view.width : implicitWidth

    Accessible.role: Accessible.MenuItem
    Accessible.name: root.text
    // Qt Quick 6.4 tells nobody that something is disabled.
    Accessible.description: root.enabled ? root.shortcutText : qsTr("not available")
    Accessible.onPressAction: {
        if (root.action) {
            root.action.trigger();
        } else if (root.enabled) {
            root.clicked();
        }
    }

    contentItem: Label {
        name: root.text
        shortcutText: root.shortcutText
        opacity: root.enabled ? 1 : 0.4
    }

    arrow: Symbol {
        x: root.width - width - 10
        anchors.verticalCenter: parent.verticalCenter
        visible: root.subMenu !== null
        width: 11
        height: 11
        rotation: -90
        kind: Symbol.Chevron
        color: Look.secondary
    }

    background: Rectangle {
        radius: 5
        color: root.highlighted && root.enabled ? Look.blue : "transparent"
    }

    component Label: Item {
        id: content

        property string name: ""
        property string shortcutText: ""

        implicitWidth: label.implicitWidth + 40 + shortcut.implicitWidth
        implicitHeight: label.implicitHeight

        Text {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            text: content.name
            color: Look.white
            font.pixelSize: Look.body
        }

        Text {
            id: shortcut

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: content.shortcutText
            color: Qt.rgba(1, 1, 1, 0.7)
            font.pixelSize: Look.body
        }
    }
}
