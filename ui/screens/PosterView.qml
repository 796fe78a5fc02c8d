// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// A clip as a still picture: its first frame.
Item {
    id: root

    required property AppState appState
    required property mediaItem item

    ThumbnailLoader {
        id: poster

        appState: root.appState
        item: root.item
        lookedAt: true
    }

    FitImage {
        pool: ScalingPool
        anchors.fill: parent
        image: poster.image
    }

    Rectangle {
        anchors.centerIn: parent
        width: 88
        height: 88
        radius: 44
        color: Qt.rgba(0, 0, 0, 0.45)

        Symbol {
            anchors.centerIn: parent
            anchors.horizontalCenterOffset: 3
            width: 44
            height: 44
            kind: Symbol.Play
            color: Qt.rgba(1, 1, 1, 0.85)
        }
    }
}
