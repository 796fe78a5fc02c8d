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

    // A drag in progress.
    readonly property size dragOffset: drag.active ? Qt.size(drag.activeTranslation.x, drag.activeTranslation.y) : Qt.size(0, 0)

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

    DragHandler {
        id: drag

        property size last: Qt.size(0, 0)

        target: null
        dragThreshold: 10
        onActiveTranslationChanged: {
            if (drag.active) {
                drag.last = Qt.size(drag.activeTranslation.x, drag.activeTranslation.y);
            }
        }
        onActiveChanged: {
            if (drag.active) {
                drag.last = Qt.size(0, 0);
            } else {
                root.appState.zoomPan = Qt.size(root.appState.zoomPan.width + drag.last.width, root.appState.zoomPan.height + drag.last.height);
            }
        }
    }

    Component.onCompleted: root.unpan()

    // Every zoom starts unpanned.
    function unpan(): void {
        root.appState.zoomPan = Qt.size(0, 0);
    }
}
