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
        id: space

        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: parent.right
        anchors.rightMargin: Math.max(16, root.rightInset)
        anchors.verticalCenter: parent.verticalCenter
        height: row.height
        clip: true

        Row {
            id: row

            readonly property real gap: 14

            // What there is no room for is better left out than cut through.
            Row {
                id: capture

                anchors.verticalCenter: parent.verticalCenter
                spacing: row.gap

                Value {
                    objectName: "exifName"
                    // Room for more than a name that somebody gave by hand.
                    width: Math.min(implicitWidth, space.width / 2)
                    elide: Text.ElideMiddle
                    text: root.displayName
                    color: Look.white
                    opacity: 1
                    font.weight: Font.DemiBold
                }

                Repeater {
                    model: meta.captureTexts

                    Value {
                        required property string modelData

                        text: modelData
                        opacity: x + width <= space.width ? 0.9 : 0
                    }
                }
            }

            Value {
                objectName: "exifLens"
                visible: meta.lensText !== ""
                leftPadding: row.gap
                width: Math.min(implicitWidth, Math.max(0, space.width - capture.width - fuji.width))
                elide: Text.ElideRight
                text: meta.lensText
                opacity: width >= leftPadding + Look.pixels(24) ? 0.9 : 0
            }

            Row {
                id: fuji

                anchors.verticalCenter: parent.verticalCenter
                leftPadding: meta.fujiTexts.length > 0 ? row.gap : 0
                spacing: row.gap

                Repeater {
                    model: meta.fujiTexts

                    Value {
                        required property string modelData

                        text: modelData
                        color: Look.green
                        opacity: fuji.x + x + width <= space.width ? 1 : 0
                    }
                }
            }
        }
    }

    component Value: Text {
        id: value

        anchors.verticalCenter: parent?.verticalCenter
        color: Look.white
        opacity: 0.9
        textFormat: Text.PlainText
        font.pixelSize: Look.pixels(12)
        font.family: Look.monospaced

        Accessible.role: Accessible.StaticText
        Accessible.name: value.text
        Accessible.ignored: value.text === ""
    }
}
