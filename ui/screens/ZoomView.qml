// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// A photo at 100 %: one of its pixels on one pixel of the screen.
Rectangle {
    id: root

    required property AppState appState
    required property mediaItem item

    // Of a drag in progress.
    property size dragOffset: Qt.size(0, 0)

    clip: true
    color: Look.black

    FullImageLoader {
        id: full

        appState: root.appState
        item: root.item
        onItemChanged: root.unpan()
    }

    PixelImage {
        objectName: "pixels"
        anchors.fill: parent
        image: full.image
        anchor: full.anchor
        pan: Qt.size(root.appState.zoomPan.width + root.dragOffset.width, root.appState.zoomPan.height + root.dragOffset.height)
    }

    Spinner {
        objectName: "spinner"
        anchors.centerIn: parent
        visible: !full.hasImage
    }

    // Not a DragHandler: that one looks at each direction by itself, and begins only beyond.
    PointHandler {
        id: drag

        readonly property real threshold: 10
        property bool hasBegun: false
        // Begun on what is no longer shown as it was then.
        property bool isOver: false

        onPointChanged: {
            if (drag.active && !drag.isOver) {
                drag.follow(drag.point.position.x - drag.point.pressPosition.x, drag.point.position.y - drag.point.pressPosition.y);
            }
        }
        onActiveChanged: {
            if (drag.active) {
                drag.isOver = false;
            } else {
                root.endDrag();
            }
        }

        function follow(horizontally: real, vertically: real): void {
            drag.hasBegun = drag.hasBegun || Math.hypot(horizontally, vertically) >= drag.threshold;
            if (drag.hasBegun) {
                root.dragOffset = Qt.size(horizontally, vertically);
            }
        }
    }

    Component.onCompleted: root.unpan()

    function endDrag(): void {
        root.appState.zoomPan = Qt.size(root.appState.zoomPan.width + root.dragOffset.width, root.appState.zoomPan.height + root.dragOffset.height);
        root.dropDrag();
    }

    // The hand may still be on it; only the next press begins another.
    function dropDrag(): void {
        drag.isOver = true;
        drag.hasBegun = false;
        root.dragOffset = Qt.size(0, 0);
    }

    // Every zoom starts unpanned.
    function unpan(): void {
        root.dropDrag();
        root.appState.zoomPan = Qt.size(0, 0);
    }
}
