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
    // Of all items.
    required property int total

    // By other means than a click.
    signal activated
    signal tapped(place: point)

    // Kept by the strip for another item; what it showed must not be seen with that one.
    property bool pooled: false

    implicitWidth: 56
    implicitHeight: 56

    ListView.onPooled: root.pooled = true
    ListView.onReused: root.pooled = false

    Accessible.role: Accessible.ListItem
    Accessible.name: root.spokenName()
    Accessible.description: qsTr("%1 of %2").arg(root.index + 1).arg(root.total)
    Accessible.selectable: true
    Accessible.selected: root.current
    Accessible.onPressAction: root.activated()

    ThumbnailLoader {
        id: thumb

        appState: root.pooled ? null : root.appState
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
        objectName: "thumbnail"
        pool: ScalingPool
        anchors.fill: parent
        fillMode: FitImage.Crop
        radius: 4
        image: thumb.image
    }

    Rectangle {
        objectName: "layer"
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
        onTapped: eventPoint => root.tapped(eventPoint.scenePosition)
    }

    function spokenName(): string {
        const kind = root.isVideo ? ", " + qsTr("clip") : "";
        const decision = root.rejected ? ", " + qsTr("rejected") : "";
        const place = root.current ? ", " + qsTr("current") : "";
        return root.displayName + kind + decision + place;
    }
}
