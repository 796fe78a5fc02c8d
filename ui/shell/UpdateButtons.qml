// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// What can be done about a newer version: side by side where there is room, else one below the other.
// Tab leads through the buttons.
Grid {
    id: root

    required property UpdateController updates
    required property real room

    readonly property int shownOnes: Number(centre.visible) + Number(page.visible) + Number(save.visible) + Number(close.visible)
    readonly property real inOneRow: root.widthOf(centre) + root.widthOf(page) + root.widthOf(save) + root.widthOf(close) - root.spacing

    signal closed

    spacing: 10
    // Not more than there are: an empty one would take its space too.
    columns: root.inOneRow > root.room ? 1 : Math.max(1, root.shownOnes)
    horizontalItemAlignment: Grid.AlignRight

    PushButton {
        id: centre

        objectName: "softwareCentre"
        visible: root.updates.hasSoftwareCentre
        focusPolicy: Qt.TabFocus
        highlighted: true
        text: qsTr("Open Software Centre")
        onClicked: root.updates.openSoftwareCentre()
    }

    PushButton {
        id: page

        objectName: "updatePage"
        visible: root.updates.hasPage
        focusPolicy: Qt.TabFocus
        highlighted: !root.updates.hasDownload
        text: qsTr("Open Page")
        onClicked: root.updates.openPage()
    }

    PushButton {
        id: save

        objectName: "saveUpdate"
        visible: root.updates.hasDownload
        enabled: root.updates.canSave
        focusPolicy: Qt.TabFocus
        highlighted: true
        text: qsTr("Save to Downloads")
        onClicked: root.updates.saveDownload()
    }

    PushButton {
        id: close

        objectName: "closeUpdates"
        focusPolicy: Qt.TabFocus
        text: root.updates.searching ? qsTr("Cancel") : qsTr("Close")
        onClicked: root.closed()
    }

    function widthOf(button: PushButton): real {
        return button.visible ? button.implicitWidth + root.spacing : 0;
    }
}
