// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window

// Edges and corners by which a window without a frame is resized.
Item {
    id: root

    required property Window window

    readonly property real grip: 5

    Edge {
        edges: Qt.TopEdge
        cursor: Qt.SizeVerCursor
        x: root.grip
        width: root.width - 2 * root.grip
    }

    Edge {
        edges: Qt.BottomEdge
        cursor: Qt.SizeVerCursor
        x: root.grip
        y: root.height - root.grip
        width: root.width - 2 * root.grip
    }

    Edge {
        edges: Qt.LeftEdge
        cursor: Qt.SizeHorCursor
        y: root.grip
        height: root.height - 2 * root.grip
    }

    Edge {
        edges: Qt.RightEdge
        cursor: Qt.SizeHorCursor
        x: root.width - root.grip
        y: root.grip
        height: root.height - 2 * root.grip
    }

    Edge {
        edges: Qt.TopEdge | Qt.LeftEdge
        cursor: Qt.SizeFDiagCursor
    }

    Edge {
        edges: Qt.TopEdge | Qt.RightEdge
        cursor: Qt.SizeBDiagCursor
        x: root.width - root.grip
    }

    Edge {
        edges: Qt.BottomEdge | Qt.LeftEdge
        cursor: Qt.SizeBDiagCursor
        y: root.height - root.grip
    }

    Edge {
        edges: Qt.BottomEdge | Qt.RightEdge
        cursor: Qt.SizeFDiagCursor
        x: root.width - root.grip
        y: root.height - root.grip
    }

    component Edge: Item {
        id: edge

        required property int edges
        required property int cursor

        width: root.grip
        height: root.grip

        // By the press itself: see the title strip.
        MouseArea {
            anchors.fill: parent
            cursorShape: edge.cursor
            onPressed: root.window.startSystemResize(edge.edges)
        }
    }
}
