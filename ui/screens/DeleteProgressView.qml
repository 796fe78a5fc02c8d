// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// How far the deletion is. It cannot be cancelled from here.
Item {
    id: root

    required property real done
    required property real total

    Column {
        anchors.centerIn: parent
        spacing: 12

        ProgressLine {
            objectName: "progress"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 320
            done: root.done
            total: Math.max(root.total, 1)
            name: progressText.text
        }

        Text {
            id: progressText

            objectName: "progressText"
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Deleting %1 of %2").arg(Numbers.plain(root.done)).arg(Numbers.plain(root.total))
            color: Look.primary
            font.pixelSize: Look.body
            font.family: Look.monospaced
        }
    }
}
