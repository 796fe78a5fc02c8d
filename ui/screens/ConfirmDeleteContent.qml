// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// What the confirmation says, and its two buttons; the harmless one is focused.
FocusScope {
    id: root

    required property string title
    required property real itemCount
    required property real fileCount
    required property string sizeText

    signal confirmed
    signal cancelled

    implicitWidth: Math.max(372, buttons.implicitWidth)
    implicitHeight: column.height

    Accessible.role: Accessible.Dialog
    Accessible.name: root.title

    Column {
        id: column

        width: parent.width
        spacing: 10

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 40
            height: 40
            kind: Symbol.WarningTriangle
            color: Look.yellow
        }

        Text {
            objectName: "confirmTitle"
            width: parent.width
            text: root.title
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            color: Look.white
            font.pixelSize: Look.headline
            font.weight: Font.DemiBold
        }

        Text {
            objectName: "confirmMessage"
            width: parent.width
            bottomPadding: 8
            text: qsTr("%n rejected items (%1). SD cards have no trash — this cannot be undone.", "", root.itemCount).arg(root.sizeText)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            color: Look.secondary
            font.pixelSize: Look.callout

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Row {
            id: buttons

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12

            PushButton {
                id: confirm

                objectName: "confirmButton"
                destructive: true
                focusPolicy: Qt.TabFocus
                text: qsTr("Delete %1").arg(Numbers.files(root.fileCount))
                KeyNavigation.left: cancel
                KeyNavigation.right: cancel
                KeyNavigation.tab: cancel
                KeyNavigation.backtab: cancel
                onClicked: root.confirmed()
            }

            PushButton {
                id: cancel

                objectName: "cancelButton"
                focus: true
                focusPolicy: Qt.TabFocus
                text: qsTr("Cancel")
                KeyNavigation.left: confirm
                KeyNavigation.right: confirm
                KeyNavigation.tab: confirm
                KeyNavigation.backtab: confirm
                onClicked: root.cancelled()
            }
        }
    }

    // The content outlives its closing, and with it the focus as the user left it.
    onVisibleChanged: {
        if (root.visible) {
            cancel.focus = true;
        }
    }
}
