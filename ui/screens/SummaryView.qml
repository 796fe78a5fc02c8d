// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// What became of the deletion.
Item {
    id: root

    required property AppState appState
    required property real deleted
    required property real failed
    required property real kept

    Column {
        anchors.centerIn: parent
        spacing: 16

        Symbol {
            objectName: "outcome"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 56
            height: 56
            kind: root.failed === 0 ? Symbol.CheckInCircle : Symbol.WarningTriangle
            color: root.failed === 0 ? Look.green : Look.yellow
        }

        Text {
            objectName: "counts"
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, root.width - 80)
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Deleted %1, kept %2.").arg(Numbers.files(root.deleted)).arg(Numbers.items(root.kept))
            color: Look.primary
            font.pixelSize: Look.title3
            font.bold: true

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            objectName: "failures"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.failed !== 0
            width: Math.min(implicitWidth, root.width - 80)
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("%n could not be deleted.", "files", root.failed)
            color: Look.primary
            font.pixelSize: Look.body

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            objectName: "advice"
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, root.width - 80)
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            text: root.failed === 0 ? qsTr("Card ready to import in Photos or Lightroom.") : qsTr("Re-run the cull on this card to retry the remainder.")
            color: Look.secondary
            font.pixelSize: Look.body

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        FailureList {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.failed !== 0
            width: Math.min(640, root.width - 80)
            appState: root.appState
        }

        PushButton {
            objectName: "doneButton"
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Done")
            highlighted: true
            onClicked: root.appState.closeSummary()
        }
    }
}
