// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// What came of looking for a newer version. No button is pressed by Return until somebody went to it:
// the window may come by itself.
FocusScope {
    id: root

    required property UpdateController updates
    readonly property real usualWidth: 440

    signal closed

    focus: true
    implicitWidth: Math.max(root.usualWidth, buttons.implicitWidth + 2 * column.x)
    implicitHeight: column.implicitHeight + 2 * column.y

    Accessible.role: Accessible.Pane
    Accessible.name: root.updates.headline

    Column {
        id: column

        x: 24
        y: 24
        width: root.width - 2 * x
        spacing: 12

        Row {
            width: parent.width
            spacing: 10

            When {
                active: root.updates.searching

                Spinner {
                    width: Look.pixels(16)
                    height: width
                }
            }

            Text {
                objectName: "updateHeadline"
                width: parent.width - (root.updates.searching ? Look.pixels(16) + parent.spacing : 0)
                text: root.updates.headline
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                maximumLineCount: 3
                elide: Text.ElideRight
                color: Look.white
                font.pixelSize: Look.title3
                font.weight: Font.DemiBold

                Accessible.role: Accessible.StaticText
                Accessible.name: root.updates.headline
            }
        }

        Text {
            objectName: "updateDetail"
            visible: text !== ""
            width: parent.width
            text: root.updates.detail
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Look.primary
            font.pixelSize: Look.body

            Accessible.role: Accessible.StaticText
            Accessible.name: root.updates.detail
        }

        ProgressLine {
            objectName: "updateProgress"
            visible: root.updates.toFetch > 0
            width: parent.width
            name: root.updates.detail
            done: Number(root.updates.fetched)
            total: Number(root.updates.toFetch)
        }

        UpdateNotes {
            visible: root.updates.notes !== ""
            focus: true
            width: parent.width
            text: root.updates.notes
        }

        UpdateButtons {
            id: buttons

            anchors.right: parent.right
            room: root.usualWidth - 2 * column.x
            updates: root.updates
            onClosed: root.closed()
        }
    }
}
