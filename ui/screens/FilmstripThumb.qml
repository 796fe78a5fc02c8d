// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// One item of the strip.
Item {
    id: root

    required property AppState appState
    required property int index
    required property mediaItem item
    required property string displayName
    required property bool rejected
    required property bool isVideo
    required property bool current

    signal activated

    implicitWidth: 56
    implicitHeight: 56

    Accessible.role: Accessible.Button
    Accessible.name: root.displayName
    Accessible.onPressAction: root.activated()

    ThumbnailLoader {
        id: thumb

        appState: root.appState
        item: root.item
    }

    Rectangle {
        anchors.fill: parent
        visible: !thumb.hasImage
        radius: 4
        color: Qt.rgba(Look.grey.r, Look.grey.g, Look.grey.b, 0.2)
    }

    Symbol {
        objectName: "broken"
        anchors.centerIn: parent
        visible: thumb.failed
        width: 22
        height: 22
        kind: Symbol.BrokenPicture
        color: Look.grey
    }

    FitImage {
        id: picture

        pool: ScalingPool
        anchors.fill: parent
        fillMode: FitImage.Crop
        radius: 4
        image: thumb.image
    }

    Rectangle {
        anchors.fill: parent
        visible: root.rejected
        radius: 4
        color: Qt.rgba(0, 0, 0, 0.55)

        Symbol {
            objectName: "cross"
            anchors.centerIn: parent
            width: 18
            height: 18
            kind: Symbol.Cross
            color: Look.red
        }
    }

    Symbol {
        objectName: "play"
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 4
        visible: root.isVideo
        width: 12
        height: 12
        kind: Symbol.Play
        color: Qt.rgba(1, 1, 1, 0.8)
    }

    Rectangle {
        objectName: "border"
        anchors.fill: parent
        visible: root.current
        radius: 4
        color: "transparent"
        border.width: 2
        border.color: Look.white
    }

    TapHandler {
        onTapped: root.activated()
    }
}
