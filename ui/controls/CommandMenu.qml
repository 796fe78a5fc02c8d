// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// A menu of commands, as wide as the widest of them.
T.Menu {
    id: root

    implicitWidth: Math.max(240, root.widest() + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 5
    overlap: 2
    margins: 4
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    delegate: CommandItem {}

    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: false
        currentIndex: root.currentIndex
    }

    background: Rectangle {
        radius: 8
        color: Look.raised
        border.color: Look.line
    }

    function widest(): real {
        let width = 0;
        for (let place = 0; place < root.count; ++place) {
            width = Math.max(width, root.itemAt(place).implicitWidth);
        }
        return width;
    }
}
