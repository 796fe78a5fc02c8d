// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// One reject over the whole window.
Rectangle {
    id: root

    required property AppState appState
    required property mediaItem item
    required property string displayName
    required property bool isVideo

    readonly property bool showsZoom: !root.isVideo && root.appState.zoomed

    color: Qt.rgba(0, 0, 0, 0.95)

    EnlargedImageLoader {
        id: picture

        appState: root.appState
        item: root.item
    }

    // What lies below is covered, also from the mouse.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = true
    }

    Item {
        id: area

        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: hint.top

        Accessible.role: Accessible.Graphic
        Accessible.name: root.displayName
        Accessible.description: root.isVideo ? qsTr("rejected, clip") : root.showsZoom ? qsTr("rejected, zoom 100%") : qsTr("rejected")

        FitImage {
            objectName: "enlargedPicture"
            pool: ScalingPool
            anchors.fill: parent
            visible: !root.isVideo && !root.showsZoom
            image: picture.image
        }

        Spinner {
            objectName: "enlargedSpinner"
            anchors.centerIn: parent
            visible: !root.isVideo && !root.showsZoom && !picture.hasImage
        }

        When {
            active: root.showsZoom

            ZoomView {
                objectName: "enlargedZoom"
                anchors.fill: parent
                appState: root.appState
                item: root.item
            }
        }

        When {
            active: root.isVideo

            VideoPlayerView {
                objectName: "enlargedPlayer"
                anchors.fill: parent
                appState: root.appState
                item: root.item
            }
        }
    }

    Text {
        id: hint

        objectName: "enlargedHint"
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        padding: 8
        text: qsTr("Space to close · X to rescue · Z to zoom")
        color: Look.secondary
        font.pixelSize: Look.caption

        Accessible.role: Accessible.StaticText
        Accessible.name: hint.text
    }
}
