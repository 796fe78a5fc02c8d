// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// Name and capture settings of an item, in one row that never wraps: the lens gives way first.
Rectangle {
    id: root

    required property AppState appState
    required property mediaItem item
    required property string displayName

    // Width at the right end that the texts leave free.
    property real rightInset: 0

    implicitHeight: row.height + 16
    color: Qt.rgba(0, 0, 0, 0.6)

    MetadataLoader {
        id: meta

        appState: root.appState
        item: root.item
    }

    Item {
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: parent.right
        anchors.rightMargin: Math.max(16, root.rightInset)
        anchors.verticalCenter: parent.verticalCenter
        height: row.height
        clip: true

        Row {
            id: row

            spacing: 14

            Value {
                id: name

                text: root.displayName
                color: Look.white
                opacity: 1
                font.weight: Font.DemiBold
            }

            Repeater {
                id: capture

                model: meta.captureTexts

                Value {
                    required property string modelData

                    text: modelData
                }
            }

            Value {
                id: lens

                visible: text !== ""
                width: Math.min(implicitWidth, Math.max(0, row.parent.width - row.width + width))
                elide: Text.ElideRight
                text: meta.lensText
            }

            Repeater {
                model: meta.fujiTexts

                Value {
                    required property string modelData

                    text: modelData
                    color: Look.green
                    opacity: 1
                }
            }
        }
    }

    component Value: Text {
        color: Look.white
        opacity: 0.9
        textFormat: Text.PlainText
        font.pixelSize: Look.pixels(12)
        font.family: Look.monospaced
    }
}
