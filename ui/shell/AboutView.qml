// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// What this program is, under which licence, and what it is made with.
FocusScope {
    id: root

    focus: true
    implicitWidth: 460
    implicitHeight: 480

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("About Kestle")

    Column {
        id: head

        x: 24
        y: 24
        width: root.width - 2 * x
        spacing: 8

        Text {
            text: "Kestle"
            color: Look.white
            font.pixelSize: Look.title
            font.weight: Font.DemiBold
        }

        Text {
            objectName: "aboutVersion"
            text: qsTr("Version %1").arg(Application.version)
            textFormat: Text.PlainText
            color: Look.secondary
            font.pixelSize: Look.body

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            objectName: "aboutLicence"
            width: parent.width
            text: qsTr("Free software under the GNU General Public License, version 3 or later. It comes without any warranty.")
            wrapMode: Text.WordWrap
            color: Look.primary
            font.pixelSize: Look.body

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            topPadding: 8
            text: qsTr("Made with")
            color: Look.white
            font.pixelSize: Look.headline
            font.weight: Font.DemiBold
        }
    }

    Rectangle {
        anchors.top: head.bottom
        anchors.topMargin: 8
        anchors.left: head.left
        anchors.right: head.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24
        radius: 6
        color: Look.control

        LibraryList {
            anchors.fill: parent
            anchors.margins: 12
            focus: true
        }
    }
}
