// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// Says that the picture has been rejected.
Rectangle {
    id: root

    implicitWidth: label.implicitWidth + 24
    implicitHeight: label.implicitHeight + 12
    radius: height / 2
    color: Qt.rgba(Look.red.r, Look.red.g, Look.red.b, 0.85)

    Accessible.role: Accessible.StaticText
    Accessible.name: text.text

    Row {
        id: label

        anchors.centerIn: parent
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            width: Look.pixels(15)
            height: Look.pixels(15)
            kind: Symbol.CrossInCircle
        }

        Text {
            id: text

            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Rejected")
            color: Look.white
            font.pixelSize: Look.headline
            font.weight: Font.DemiBold
        }
    }
}
