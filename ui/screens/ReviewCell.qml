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
    // Of all rejects.
    required property int total

    signal activated

    Accessible.role: Accessible.ListItem
    Accessible.name: root.spokenName()
    Accessible.description: qsTr("%1 of %2").arg(root.index + 1).arg(root.total)
    Accessible.selectable: true
    Accessible.selected: root.selected
    Accessible.onPressAction: root.activated()

    ThumbnailLoader {
        id: thumb

        appState: root.appState
        item: root.item
    }

    Rectangle {
        objectName: "missingPicture"
        anchors.fill: parent
        visible: !thumb.hasImage
        radius: 6
        color: Qt.rgba(Look.grey.r, Look.grey.g, Look.grey.b, 0.2)
    }

    Symbol {
        objectName: "broken"
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

    function spokenName(): string {
        const kind = root.isVideo ? ", " + qsTr("clip") : "";
        const place = root.selected ? ", " + qsTr("selected") : "";
        const fault = thumb.failed ? ", " + qsTr("cannot be shown") : "";
        return root.displayName + kind + place + fault;
    }
}
