// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// The strip of all items, the current one in the middle, and a line that counts.
Rectangle {
    id: root

    required property AppState appState
    required property SessionModel session
    required property real thumbSize

    // The id of the item in the middle.
    property string centeredID: ""

    readonly property real step: root.thumbSize + strip.spacing
    readonly property real sidePadding: 8

    implicitHeight: column.height
    color: Qt.rgba(0, 0, 0, 0.9)

    Column {
        id: column

        width: parent.width
        spacing: 4

        ListView {
            id: strip

            objectName: "strip"
            width: parent.width
            height: root.thumbSize + 8
            orientation: ListView.Horizontal
            spacing: 4
            leftMargin: root.sidePadding
            rightMargin: root.sidePadding
            boundsBehavior: Flickable.StopAtBounds
            keyNavigationEnabled: false
            // A view with a current item of its own would scroll when the model changes.
            currentIndex: -1
            model: root.session
            clip: true

            delegate: FilmstripThumb {
                appState: root.appState
                current: index === root.session.currentIndex
                y: 4
                width: root.thumbSize
                height: root.thumbSize
                onActivated: root.appState.selectItem(index)
            }

            onMovementStarted: glide.stop()
            onMovementEnded: root.noteCentre()
            onWidthChanged: root.centreCurrent(false)

            NumberAnimation {
                id: glide

                target: strip
                property: "contentX"
                duration: 120
                easing.type: Easing.OutQuad
            }

            // The strip has one direction; every wheel moves along it.
            WheelHandler {
                acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
                orientation: Qt.Vertical
                target: null
                onWheel: event => root.scrollBy(-(event.pixelDelta.y || event.angleDelta.y))
            }
        }

        Item {
            width: parent.width
            height: position.height + 6

            Text {
                id: position

                objectName: "position"
                x: 12
                text: qsTr("%1 / %2").arg(Numbers.plain(root.session.count > 0 ? root.session.currentIndex + 1 : 0)).arg(Numbers.plain(root.session.count))
                color: Look.primary
                font.pixelSize: Look.pixels(11)
                font.family: Look.monospaced
            }

            Text {
                objectName: "rejectCount"
                x: parent.width - width - 12
                text: qsTr("%1 rejected").arg(Numbers.plain(root.session.rejectedCount))
                color: root.session.rejectedCount > 0 ? Look.red : Look.secondary
                font.pixelSize: Look.pixels(11)
                font.family: Look.monospaced
            }
        }
    }

    Connections {
        target: root.session

        function onCurrentIndexChanged(): void {
            root.centreCurrent(true);
        }

        function onModelReset(): void {
            root.centreCurrent(false);
        }
    }

    Component.onCompleted: root.centreCurrent(false)

    function furthest(): real {
        const content = root.session.count * root.step - strip.spacing;
        return Math.max(-root.sidePadding, content + root.sidePadding - strip.width);
    }

    function within(x: real): real {
        return Math.min(Math.max(x, -root.sidePadding), root.furthest());
    }

    function centreCurrent(animated: bool): void {
        const index = root.session.currentIndex;
        const x = root.within(index * root.step + root.thumbSize / 2 - strip.width / 2);
        root.centeredID = root.session.currentItemId;
        glide.stop();
        if (animated) {
            glide.to = x;
            glide.start();
        } else {
            strip.contentX = x;
        }
    }

    function scrollBy(points: real): void {
        glide.stop();
        strip.contentX = root.within(strip.contentX + points);
        root.noteCentre();
    }

    function noteCentre(): void {
        const index = Math.round((strip.contentX + strip.width / 2 - root.thumbSize / 2) / root.step);
        root.centeredID = root.session.itemIdAt(Math.min(Math.max(index, 0), root.session.count - 1));
    }
}
