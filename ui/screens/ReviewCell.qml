// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// One reject of the grid.
Item {
    id: root

    required property AppState appState
    required property int index
    required property mediaItem item
    required property string displayName
    required property bool isVideo
    required property bool selected

    signal activated

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
        radius: 6
        color: Qt.rgba(Look.grey.r, Look.grey.g, Look.grey.b, 0.2)
    }

    Symbol {
        anchors.centerIn: parent
        visible: thumb.failed
        width: 32
        height: 32
        kind: Symbol.BrokenPicture
        color: Look.grey
    }

    FitImage {
        pool: ScalingPool
        anchors.fill: parent
        fillMode: FitImage.Crop
        radius: 6
        image: thumb.image
    }

    Symbol {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 8
        visible: root.isVideo
        width: 14
        height: 14
        kind: Symbol.Play
        color: Qt.rgba(1, 1, 1, 0.8)
    }

    Rectangle {
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        anchors.margins: 4
        width: Math.min(name.implicitWidth, root.width - 8)
        height: name.height
        radius: 3
        color: Qt.rgba(0, 0, 0, 0.6)

        Text {
            id: name

            objectName: "name"
            width: parent.width
            padding: 4
            text: root.displayName
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
            color: Look.primary
            font.pixelSize: Look.pixels(10)
            font.family: Look.monospaced
        }
    }

    Rectangle {
        objectName: "border"
        anchors.fill: parent
        visible: root.selected
        radius: 6
        color: "transparent"
        border.width: 3
        border.color: Look.white
    }

    TapHandler {
        onTapped: root.activated()
    }
}
