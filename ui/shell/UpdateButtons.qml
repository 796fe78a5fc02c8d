// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// What can be done about a newer version. Tab leads through the buttons.
Row {
    id: root

    required property UpdateController updates

    signal closed

    spacing: 10

    PushButton {
        objectName: "softwareCentre"
        visible: root.updates.hasSoftwareCentre
        focusPolicy: Qt.TabFocus
        highlighted: true
        text: qsTr("Open Software Centre")
        onClicked: root.updates.openSoftwareCentre()
    }

    PushButton {
        objectName: "updatePage"
        visible: root.updates.hasPage
        focusPolicy: Qt.TabFocus
        highlighted: !root.updates.hasDownload
        text: qsTr("Open Page")
        onClicked: root.updates.openPage()
    }

    PushButton {
        objectName: "saveUpdate"
        visible: root.updates.hasDownload
        focusPolicy: Qt.TabFocus
        highlighted: true
        text: qsTr("Save to Downloads")
        onClicked: root.updates.saveDownload()
    }

    PushButton {
        objectName: "closeUpdates"
        focusPolicy: Qt.TabFocus
        text: root.updates.searching ? qsTr("Cancel") : qsTr("Close")
        onClicked: root.closed()
    }
}
