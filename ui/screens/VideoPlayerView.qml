// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kestle

// A clip that plays, and its timeline while the pointer is over it.
Item {
    id: root

    required property AppState appState
    required property mediaItem item

    ClipStarter {
        appState: root.appState
        item: root.item
        shown: root.Window.window !== null
    }

    Rectangle {
        anchors.fill: parent
        visible: root.appState.videoPlayer !== null
        color: Look.black
    }

    VideoSurface {
        objectName: "video"
        anchors.fill: parent
        player: root.appState.videoPlayer

        Accessible.role: Accessible.Animation
        Accessible.name: qsTr("Clip")
    }

    HoverHandler {
        id: hover
    }

    When {
        active: hover.hovered && root.appState.videoPlayer !== null

        VideoTimeline {
            objectName: "timeline"
            anchors.left: parent?.left
            anchors.right: parent?.right
            anchors.bottom: parent?.bottom
            anchors.leftMargin: 24
            anchors.rightMargin: 24
            anchors.bottomMargin: 70
            player: root.appState.videoPlayer
        }
    }
}
