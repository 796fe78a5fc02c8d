// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// The way from the card to the review: where one is, and back and forth by a click.
Item {
    id: root

    required property AppState appState

    readonly property int kind: root.appState.phase.kind
    readonly property int currentStep: root.stepOf(root.kind)

    implicitWidth: capsule.width + 10
    implicitHeight: capsule.height + 6
    enabled: root.kind !== Phase.Deleting && root.kind !== Phase.Summary

    Rectangle {
        id: capsule

        y: 6
        // 10 beside and 5 above and below the texts, of which the steps themselves have a part.
        width: steps.width + 14
        height: steps.height
        radius: height / 2
        color: Qt.rgba(0, 0, 0, 0.55)

        // A press beside a step is not meant for what lies below.
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            preventStealing: true
        }

        Row {
            id: steps

            anchors.centerIn: parent
            spacing: 2

            ProcessStep {
                objectName: "cardStep"
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Card")
                place: 0 - root.currentStep
                // It ends a scan; a card that cannot be culled it would call ready.
                enabled: place !== 0 || root.kind === Phase.Scanning
                onClicked: root.appState.backToCardScreen()
            }

            Separator {}

            ProcessStep {
                objectName: "cullStep"
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Cull")
                place: 1 - root.currentStep
                onClicked: root.appState.backToCulling()
            }

            Separator {}

            ProcessStep {
                objectName: "reviewStep"
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Review")
                place: 2 - root.currentStep
                onClicked: root.appState.goToReview()
            }
        }
    }

    component Separator: Text {
        anchors.verticalCenter: parent.verticalCenter
        text: "›"
        color: Qt.rgba(1, 1, 1, 0.25)
        font.pixelSize: Look.pixels(11)
        font.weight: Font.Medium
    }

    function stepOf(kind: int): int {
        switch (kind) {
        case Phase.Culling:
            return 1;
        case Phase.Review:
        case Phase.Deleting:
        case Phase.Summary:
            return 2;
        default:
            return 0;
        }
    }
}
