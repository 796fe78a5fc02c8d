// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// A line between groups of commands.
T.MenuSeparator {
    id: root

    implicitWidth: 1
    implicitHeight: 11
    width: ListView.view ? ListView.view.width : implicitWidth

    contentItem: Item {
        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            x: 12
            width: root.width - 24
            height: 1
            color: Look.line
        }
    }
}
