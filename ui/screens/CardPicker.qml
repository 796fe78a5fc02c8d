// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// Chooses one of several mounted cards.
Column {
    id: root

    required property AppState appState

    spacing: 8
    topPadding: 16

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 10

        Text {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Card")
            color: Look.secondary
            font.pixelSize: Look.body
        }

        Picker {
            id: picker

            objectName: "cardPicker"
            width: Math.max(120, 260 - label.width - parent.spacing)
            name: qsTr("Card")
            model: root.appState.availableCardNames
            onActivated: index => {
                root.appState.switchToCardAt(index);
                root.showCurrent();
            }
            onModelChanged: root.showCurrent()
            Component.onCompleted: root.showCurrent()
        }
    }

    Text {
        objectName: "pickerHint"
        anchors.horizontalCenter: parent.horizontalCenter
        text: qsTr("⇥ Tab to switch card")
        color: Look.tertiary
        font.pixelSize: Look.caption

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Connections {
        target: root.appState

        function onCurrentCardIndexChanged(): void {
            root.showCurrent();
        }
    }

    // The card decides what is shown: a choice may be refused, or take effect only later.
    function showCurrent(): void {
        picker.currentIndex = root.appState.currentCardIndex;
    }
}
