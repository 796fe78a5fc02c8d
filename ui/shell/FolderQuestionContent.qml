// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// What the question says, and its two buttons.
FocusScope {
    id: root

    required property string title
    required property string acceptLabel
    required property string folder

    signal accepted
    signal rejected

    implicitWidth: 372
    implicitHeight: column.height

    Accessible.role: Accessible.Dialog
    Accessible.name: root.title

    Column {
        id: column

        width: parent.width
        spacing: 10

        Text {
            width: parent.width
            text: root.title
            horizontalAlignment: Text.AlignHCenter
            color: Look.white
            font.pixelSize: Look.headline
            font.weight: Font.DemiBold
        }

        Text {
            objectName: "questionFolder"
            width: parent.width
            bottomPadding: 8
            text: root.folder
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideMiddle
            color: Look.secondary
            font.pixelSize: Look.callout

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12

            PushButton {
                id: accept

                objectName: "acceptFolder"
                highlighted: true
                focus: true
                focusPolicy: Qt.TabFocus
                text: root.acceptLabel
                KeyNavigation.left: cancel
                KeyNavigation.right: cancel
                KeyNavigation.tab: cancel
                KeyNavigation.backtab: cancel
                onClicked: root.accepted()
            }

            PushButton {
                id: cancel

                objectName: "refuseFolder"
                focusPolicy: Qt.TabFocus
                text: qsTr("Cancel")
                KeyNavigation.left: accept
                KeyNavigation.right: accept
                KeyNavigation.tab: accept
                KeyNavigation.backtab: accept
                onClicked: root.rejected()
            }
        }
    }
}
