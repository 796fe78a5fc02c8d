// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// The libraries and their licences; the arrow keys and the wheel scroll.
ListView {
    id: root

    objectName: "libraries"
    clip: true
    spacing: 8
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    model: LibrariesModel {}

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Libraries and their licences")

    Keys.onDownPressed: root.scrollBy(Look.pixels(40))
    Keys.onUpPressed: root.scrollBy(-Look.pixels(40))
    Keys.onPressed: event => {
        const page = event.key === Qt.Key_PageDown ? 1 : event.key === Qt.Key_PageUp ? -1 : 0;
        root.scrollBy(page * root.height);
        event.accepted = page !== 0;
    }

    T.ScrollBar.vertical: SlimScrollBar {}

    delegate: Column {
        id: entry

        required property string name
        required property string use
        required property string licence

        width: ListView.view.width - 14
        spacing: 2

        Accessible.role: Accessible.ListItem
        Accessible.name: entry.name + ", " + entry.licence

        Text {
            width: parent.width
            text: entry.name
            color: Look.white
            elide: Text.ElideRight
            font.pixelSize: Look.body
        }

        Text {
            width: parent.width
            text: entry.use + " – " + entry.licence
            color: Look.secondary
            wrapMode: Text.WordWrap
            font.pixelSize: Look.callout
        }
    }

    function scrollBy(distance: real): void {
        const end = Math.max(0, root.contentHeight - root.height);
        root.contentY = root.originY + Math.min(Math.max(root.contentY - root.originY + distance, 0), end);
    }
}
