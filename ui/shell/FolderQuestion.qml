// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// Asks whether a folder may be used, where the desktop has no folder dialog of its own.
T.Popup {
    id: root

    required property string title
    required property string acceptLabel
    required property string folder

    signal accepted
    signal rejected

    objectName: "folderQuestion"
    anchors.centerIn: parent
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 24

    onClosed: root.rejected()

    background: Rectangle {
        radius: 12
        color: Look.raised
        border.color: Look.line
    }

    // What the window says meanwhile stays readable.
    T.Overlay.modal: Item {}

    contentItem: FolderQuestionContent {
        focus: true
        title: root.title
        acceptLabel: root.acceptLabel
        folder: root.folder
        // A button that was held while the question was refused is still let go afterwards.
        onAccepted: {
            if (root.visible) {
                root.accepted();
            }
        }
        onRejected: root.rejected()
    }
}
