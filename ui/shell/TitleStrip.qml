// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kestle

// In place of the desktop's title bar: the menu, the window's buttons, and a handle to move it.
// Transparent, so that a screen may reach under it; the window behind is black.
Item {
    id: root

    required property Window window
    required property bool fillsScreen
    // Whether a menu, a list or a dialog has the keys.
    required property bool popupOpen
    // Whether a screen covers the strip and has the mouse there; the buttons stay on top.
    required property bool isCovered
    required property MenuCommands menuCommands

    objectName: "titleStrip"
    implicitHeight: 32

    // Once the desktop moves the window, it has the mouse and nobody hears of the release. So a press
    // begins one move at most: a handler that goes by what seems to be pressed would begin the next
    // one as soon as the mouse comes by.
    MouseArea {
        id: handle

        property point pressedAt
        property bool mayMove: false

        objectName: "windowHandle"
        anchors.fill: parent
        enabled: !root.isCovered
        onPressed: event => {
            handle.pressedAt = Qt.point(event.x, event.y);
            handle.mayMove = true;
        }
        onPositionChanged: event => {
            const distance = Math.max(Math.abs(event.x - handle.pressedAt.x), Math.abs(event.y - handle.pressedAt.y));
            if (handle.mayMove && distance >= Application.styleHints.startDragDistance) {
                handle.mayMove = false;
                root.window.startSystemMove();
            }
        }
        onReleased: handle.mayMove = false
        onDoubleClicked: {
            handle.mayMove = false;
            root.toggleMaximized();
        }
    }

    StripButton {
        id: menuButton

        objectName: "menuButton"
        symbolKind: Symbol.Menu
        name: qsTr("Menu")
        onClicked: root.toggleMenu(null)
    }

    MainMenu {
        id: menu

        menuCommands: root.menuCommands
        window: root.window
    }

    Row {
        anchors.right: parent.right

        StripButton {
            objectName: "minimiseButton"
            symbolKind: Symbol.Minimise
            name: qsTr("Minimise")
            onClicked: root.window.showMinimized()
        }

        StripButton {
            objectName: "maximiseButton"
            symbolKind: root.fillsScreen ? Symbol.Restore : Symbol.Maximise
            name: root.fillsScreen ? qsTr("Restore") : qsTr("Maximise")
            onClicked: root.toggleMaximized()
        }

        StripButton {
            objectName: "closeButton"
            symbolKind: Symbol.Cross
            symbolSize: 11
            name: qsTr("Close")
            hoverColor: Look.red
            onClicked: root.window.close()
        }
    }

    // With its first entry chosen, so that arrows go on from there. Not for the windows beside this one,
    // behind which it would open without the keys; while they have them, this one is active all the same.
    Shortcut {
        sequence: "F10"
        context: Qt.ApplicationShortcut
        enabled: root.window.activeFocusItem !== null
        onActivated: root.toggleMenu(menu.itemAt(0))
    }

    function toggleMenu(chosen: Item): void {
        if (menu.visible) {
            menu.close();
        } else if (!root.popupOpen) {
            menu.popup(menuButton, 4, root.height, chosen);
        }
    }

    // What is open has the keys: were nobody to have them, not even Escape would close it.
    Connections {
        target: root.window

        function onActiveFocusItemChanged(): void {
            if (menu.opened && root.window.activeFocusItem === root.window.contentItem) {
                menu.forceActiveFocus();
            }
        }
    }

    function toggleMaximized(): void {
        if (root.fillsScreen) {
            root.window.showNormal();
        } else {
            root.window.showMaximized();
        }
    }
}
