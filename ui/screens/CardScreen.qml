// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// Every phase before culling: asks for a card or for access to it, and shows that it is ready,
// being scanned, or empty.
Item {
    id: root

    required property AppState appState

    readonly property int kind: root.appState.phase.kind
    readonly property string cardName: root.appState.cardName !== "" ? root.appState.cardName : qsTr("Card")

    // No folder dialog has room for a sentence of ours; one in the window covers the middle.
    Text {
        objectName: "question"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 76
        width: Math.min(implicitWidth, root.width - 80)
        visible: root.appState.requestingAccess
        text: qsTr("Kestle needs permission to read and delete files on “%1”. Click Grant Access to allow it.").arg(root.cardName)
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        textFormat: Text.PlainText
        color: Look.primary
        font.pixelSize: Look.body

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Column {
        anchors.centerIn: parent
        spacing: 24

        Symbol {
            objectName: "cardSymbol"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 56
            height: 56
            kind: Symbol.Card
            color: Look.secondary
        }

        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 10

            Text {
                objectName: "title"
                anchors.horizontalCenter: parent.horizontalCenter
                text: root.kind === Phase.WaitingForCard ? qsTr("Insert an SD card") : root.cardName
                width: Math.min(implicitWidth, root.width - 80)
                elide: Text.ElideMiddle
                textFormat: Text.PlainText
                color: Look.primary
                font.pixelSize: Look.title
                font.bold: true

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Text {
                objectName: "message"
                anchors.horizontalCenter: parent.horizontalCenter
                visible: text !== ""
                width: Math.min(implicitWidth, root.width - 80)
                text: root.messageFor(root.kind)
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                textFormat: Text.PlainText
                color: Look.secondary
                font.pixelSize: Look.body

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Text {
                objectName: "formats"
                anchors.horizontalCenter: parent.horizontalCenter
                visible: root.kind === Phase.NoMedia
                width: Math.min(380, implicitWidth)
                text: qsTr("Kestle reads RAW, JPEG, HEIF, TIFF, and common video from any camera's DCIM folder.")
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                color: Look.tertiary
                font.pixelSize: Look.callout

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Column {
                objectName: "scanning"
                anchors.horizontalCenter: parent.horizontalCenter
                visible: root.kind === Phase.Scanning
                spacing: 10
                topPadding: 6

                Spinner {
                    anchors.horizontalCenter: parent.horizontalCenter
                    name: qsTr("Scanning…")
                }

                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("Scanning…")
                    color: Look.secondary
                    font.pixelSize: Look.body
                }
            }

            ReadOnlyNote {
                anchors.horizontalCenter: parent.horizontalCenter
                visible: root.appState.cardIsReadOnly
            }
        }

        PushButton {
            objectName: "startButton"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.kind === Phase.CardReady
            text: root.appState.phase.resumable ? qsTr("Resume") : qsTr("Start")
            highlighted: true
            onClicked: root.appState.startCulling()
        }

        PushButton {
            objectName: "grantButton"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.kind === Phase.NeedsAccess
            text: qsTr("Grant Access…")
            highlighted: true
            onClicked: root.appState.grantAccess()
        }

        CardPicker {
            objectName: "picker"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.appState.canSwitchCards
            appState: root.appState
        }
    }

    function messageFor(kind: int): string {
        switch (kind) {
        case Phase.CardReady:
            return root.appState.phase.resumable ? qsTr("Session found — press ⏎ to resume") : qsTr("Press ⏎ to start culling");
        case Phase.NeedsAccess:
            return qsTr("macOS requires a one-time permission to read this card.");
        case Phase.NoMedia:
            return qsTr("No photos or videos found on this card.");
        case Phase.WaitingForCard:
            return qsTr("Kestle is waiting for a volume with a DCIM folder.");
        default:
            return "";
        }
    }
}
