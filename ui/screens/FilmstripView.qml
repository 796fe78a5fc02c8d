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

    readonly property real step: root.thumbSize + strip.spacing
    readonly property real sidePadding: 8

    property bool ready: false
    // Whether the user has scrolled, and is left where he is until the next change.
    property bool byHand: false
    property real lastStep: 0
    property real lastTap: 0
    property point lastTapPlace

    // Right from the beginning: a positioner would place its children a frame later.
    implicitHeight: caption.y + caption.height
    color: Qt.rgba(0, 0, 0, 0.9)

    ListView {
        id: strip

        property real widthBefore: 0

        objectName: "strip"
        width: parent.width
        height: root.thumbSize + 8
        orientation: ListView.Horizontal
        spacing: 4
        leftMargin: root.sidePadding
        rightMargin: root.sidePadding
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: false
        reuseItems: true
        // A view with a current item of its own would scroll when the model changes.
        currentIndex: -1
        model: root.session
        clip: true

        Accessible.role: Accessible.List
        Accessible.name: qsTr("Filmstrip")

        delegate: FilmstripThumb {
            appState: root.appState
            current: index === root.session.currentIndex
            total: Number(root.session.count)
            y: 4
            width: root.thumbSize
            height: root.thumbSize
            onActivated: root.appState.selectItem(index)
            onTapped: place => root.selectTapped(index, place)
        }

        onMovementStarted: {
            glide.stop();
            root.byHand = true;
        }
        onMovementEnded: contentX = root.within(contentX)
        onWidthChanged: {
            if (!root.ready) {
                return;
            }
            if (root.byHand) {
                contentX = root.within(contentX + (widthBefore - width) / 2);
            } else {
                root.centreCurrent(false);
            }
            widthBefore = width;
        }

        NumberAnimation {
            id: glide

            readonly property int longest: 120

            objectName: "glide"
            target: strip
            property: "contentX"
            easing.type: Easing.OutQuad
        }

        // The strip has one direction; every wheel and every swipe moves along it.
        WheelHandler {
            id: upright

            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            orientation: Qt.Vertical
            target: null
            onWheel: event => root.scrollAlong(event)
        }

        // For what the other one does not take: it has all that are not quite level, and for a
        // moment after those every one.
        WheelHandler {
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            orientation: Qt.Horizontal
            target: null
            onWheel: event => {
                if (event.angleDelta.y === 0 && !upright.active) {
                    root.scrollAlong(event);
                }
            }
        }

        PointHandler {
            id: hand

            onActiveChanged: {
                if (!active) {
                    strip.interactive = true;
                }
            }
        }
    }

    Item {
        id: caption

        y: strip.height + 4
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

            Accessible.role: Accessible.StaticText
            Accessible.name: position.text
        }

        Text {
            objectName: "rejectCount"
            x: parent.width - width - 12
            text: qsTr("%n rejected", "", root.session.rejectedCount)
            color: root.session.rejectedCount > 0 ? Look.red : Look.secondary
            font.pixelSize: Look.pixels(11)
            font.family: Look.monospaced

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    Connections {
        target: root.session

        // Also after one that moves nothing: what is acted on is to be seen.
        function onChangeFollowed(): void {
            root.centreCurrent(true);
        }

        function onModelReset(): void {
            root.begin();
        }
    }

    Component.onCompleted: root.begin()

    // From the beginning, for a list without any thumbnail makes all those before the first that is
    // seen; from one that it has it jumps.
    function begin(): void {
        root.ready = true;
        strip.contentX = -root.sidePadding;
        strip.forceLayout();
        strip.widthBefore = strip.width;
        root.centreCurrent(false);
    }

    // The nearest place there is, on whole pixels of the screen.
    function within(x: real): real {
        const content = root.session.count * root.step - strip.spacing;
        const furthest = Math.max(-root.sidePadding, content + root.sidePadding - strip.width);
        const ratio = Screen.devicePixelRatio;
        return Math.round(Math.min(Math.max(x, -root.sidePadding), furthest) * ratio) / ratio;
    }

    function centreCurrent(animated: bool): void {
        const middle = root.session.currentIndex * root.step + root.thumbSize / 2;
        const x = root.within(middle - strip.width / 2);
        root.takeFromHand();
        if (!animated) {
            strip.contentX = x;
            return;
        }
        // While a key is held, each move ends as the next one begins: the strip never lags behind.
        const now = Date.now();
        const held = now - root.lastStep;
        root.lastStep = now;
        if (x === strip.contentX) {
            return;
        }
        // Nobody follows a longer way with his eyes, and its thumbnails would all be asked for.
        const way = x - strip.contentX;
        if (Math.abs(way) > 2 * strip.width) {
            strip.contentX = x - Math.sign(way) * strip.width;
        }
        glide.duration = held > 0 ? Math.min(held, glide.longest) : glide.longest;
        glide.easing.type = glide.duration < glide.longest ? Easing.Linear : Easing.OutQuad;
        glide.to = x;
        glide.start();
    }

    // Ends what moves the strip, also a drag that goes on.
    function takeFromHand(): void {
        glide.stop();
        strip.cancelFlick();
        if (hand.active) {
            strip.interactive = false; // until he lets go
        }
        root.byHand = false;
    }

    function scrollAlong(event: WheelEvent): void {
        const moved = event.pixelDelta.x || event.pixelDelta.y ? event.pixelDelta : event.angleDelta;
        glide.stop();
        strip.cancelFlick();
        root.byHand = true;
        const points = Math.abs(moved.x) > Math.abs(moved.y) ? moved.x : moved.y;
        strip.contentX = root.within(strip.contentX - points);
    }

    // The second click of a double click falls on the item that has come there meanwhile, and does
    // not mean it.
    function selectTapped(index: int, place: point): void {
        const now = Date.now();
        const hints = Application.styleHints;
        const isSecond = now - root.lastTap < hints.mouseDoubleClickInterval
            && Math.abs(place.x - root.lastTapPlace.x) < hints.startDragDistance
            && Math.abs(place.y - root.lastTapPlace.y) < hints.startDragDistance;
        root.lastTap = now;
        root.lastTapPlace = place;
        if (!isSecond) {
            root.appState.selectItem(index);
        }
    }
}
