// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// The files that are still on the card, and why; folded away until somebody asks.
Column {
    id: root

    required property AppState appState

    property bool unfolded: false

    spacing: 10

    FailuresModel {
        id: failures

        appState: root.appState
    }

    T.AbstractButton {
        id: fold

        objectName: "failuresButton"
        anchors.horizontalCenter: parent.horizontalCenter
        implicitWidth: implicitContentWidth + 16
        implicitHeight: implicitContentHeight + 8
        padding: 4
        focusPolicy: Qt.TabFocus
        text: root.unfolded ? qsTr("Hide the files") : qsTr("Show the files")
        onClicked: root.unfolded = !root.unfolded

        Accessible.role: Accessible.Button
        Accessible.name: fold.text
        Accessible.onPressAction: fold.clicked()

        Keys.onDownPressed: list.contentY = Math.min(list.contentY + list.rowHeight, Math.max(0, list.contentHeight - list.height))
        Keys.onUpPressed: list.contentY = Math.max(list.contentY - list.rowHeight, 0)

        contentItem: Text {
            text: fold.text
            horizontalAlignment: Text.AlignHCenter
            color: fold.hovered || fold.activeFocus ? Look.primary : Look.secondary
            font.pixelSize: Look.callout
            font.underline: true
        }

        background: Rectangle {
            visible: fold.activeFocus
            color: "transparent"
            radius: 6
            border.width: 2
            border.color: Qt.rgba(1, 1, 1, 0.75)
        }
    }

    Rectangle {
        visible: root.unfolded
        width: root.width
        height: list.height + 16
        radius: 6
        color: Look.raised

        ListView {
            id: list

            readonly property real rowHeight: Look.pixels(20)

            objectName: "failureList"
            x: 12
            y: 8
            width: parent.width - 24
            height: Math.min(list.count, 8) * list.rowHeight
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            keyNavigationEnabled: false
            currentIndex: -1
            model: root.unfolded ? failures : null

            Accessible.role: Accessible.List
            Accessible.name: qsTr("Files that could not be deleted")

            delegate: Item {
                id: line

                required property string name
                required property string reason

                width: list.width
                height: list.rowHeight

                Accessible.role: Accessible.ListItem
                Accessible.name: qsTr("%1: %2").arg(line.name).arg(line.reason)

                Text {
                    objectName: "failedName"
                    anchors.verticalCenter: parent.verticalCenter
                    width: parent.width - why.width - 16
                    text: line.name
                    elide: Text.ElideMiddle
                    textFormat: Text.PlainText
                    color: Look.primary
                    font.pixelSize: Look.callout
                    font.family: Look.monospaced
                }

                Text {
                    id: why

                    objectName: "failureReason"
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, parent.width / 2)
                    text: line.reason
                    elide: Text.ElideRight
                    textFormat: Text.PlainText
                    color: Look.secondary
                    font.pixelSize: Look.callout
                }
            }
        }
    }
}
