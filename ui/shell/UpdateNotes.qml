// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// What is new in a version; the arrow keys, Page Up, Page Down, Home, End and the wheel scroll.
FocusScope {
    id: root

    required property string text
    readonly property real tallest: 240

    implicitHeight: Math.min(notes.contentHeight, root.tallest) + 24

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: Look.control
        border.width: notes.activeFocus ? 1 : 0
        border.color: Look.tertiary
    }

    Flickable {
        id: notes

        readonly property real end: Math.max(0, notes.contentHeight - notes.height)

        objectName: "updateNotes"
        anchors.fill: parent
        anchors.margins: 12
        focus: true
        activeFocusOnTab: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: notesText.implicitHeight

        Accessible.role: Accessible.StaticText
        Accessible.name: root.text
        Accessible.focusable: true

        T.ScrollBar.vertical: SlimScrollBar {}

        Keys.onDownPressed: notes.scrollBy(Look.pixels(40))
        Keys.onUpPressed: notes.scrollBy(-Look.pixels(40))
        Keys.onPressed: event => {
            event.accepted = true;
            switch (event.key) {
            case Qt.Key_PageDown:
                notes.scrollBy(notes.height);
                break;
            case Qt.Key_PageUp:
                notes.scrollBy(-notes.height);
                break;
            case Qt.Key_Home:
                notes.contentY = 0;
                break;
            case Qt.Key_End:
                notes.contentY = notes.end;
                break;
            default:
                event.accepted = false;
            }
        }

        Text {
            id: notesText

            width: notes.width - 10
            text: root.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Look.primary
            font.pixelSize: Look.callout
        }

        function scrollBy(distance: real): void {
            notes.contentY = Math.min(Math.max(notes.contentY + distance, 0), notes.end);
        }
    }
}
