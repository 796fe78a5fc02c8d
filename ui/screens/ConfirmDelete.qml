// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// Asks before files are removed from the card for good.
T.Popup {
    id: root

    required property AppState appState
    required property real itemCount
    required property real fileCount
    required property string sizeText

    readonly property string title: qsTr("Permanently delete %1 from the card?").arg(Numbers.files(root.fileCount))

    objectName: "confirmDelete"
    parent: T.Overlay.overlay
    anchors.centerIn: parent
    visible: root.appState.confirmingDelete
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 24

    onClosed: root.appState.confirmingDelete = false

    background: Rectangle {
        radius: 12
        color: Look.raised
        border.color: Look.line
    }

    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.5)
    }

    contentItem: ConfirmDeleteContent {
        focus: true
        title: root.title
        itemCount: root.itemCount
        fileCount: root.fileCount
        sizeText: root.sizeText
        // A button that was held while the question was cancelled is still let go afterwards.
        onConfirmed: {
            if (root.appState.confirmingDelete) {
                root.appState.confirmingDelete = false;
                root.appState.performDelete();
            }
        }
        onCancelled: root.appState.confirmingDelete = false
    }
}
