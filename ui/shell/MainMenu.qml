// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Kestle

// The application's menus.
CommandMenu {
    id: root

    required property MenuCommands menuCommands
    required property Window window

    objectName: "mainMenu"
    // The click that closes it is not meant for what lies below, which is to hear neither of the
    // press nor of the release. Those within it would keep the mouse from this one.
    modal: true
    dim: false
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnReleaseOutside

    CommandMenu {
        title: qsTr("Kestle")

        CommandItem {
            text: qsTr("About Kestle")
            onTriggered: root.menuCommands.aboutWanted()
        }

        CommandItem {
            text: qsTr("Check for Updates…")
            onTriggered: root.menuCommands.updatesWanted()
        }

        CommandSeparator {}

        CommandItem {
            shortcutText: qsTr("Ctrl+,")
            action: T.Action {
                text: qsTr("Settings…")
                shortcut: "Ctrl+,"
                onTriggered: root.menuCommands.settingsWanted()
            }
        }

        CommandSeparator {}

        CommandItem {
            shortcutText: qsTr("Ctrl+Q")
            action: T.Action {
                text: qsTr("Quit")
                shortcut: "Ctrl+Q"
                onTriggered: root.window.close()
            }
        }
    }

    CommandMenu {
        title: qsTr("Edit")

        CommandItem {
            shortcutText: qsTr("Ctrl+Z")
            action: T.Action {
                text: qsTr("Undo Decision")
                shortcut: "Ctrl+Z"
                enabled: root.menuCommands.canUndo
                onTriggered: root.menuCommands.undoDecision()
            }
        }
    }

    CommandMenu {
        title: qsTr("Cull")

        CommandItem {
            text: qsTr("Reject (X)")
            onTriggered: root.menuCommands.sendKey("x")
        }

        CommandItem {
            text: qsTr("Zoom 100% (Z)")
            onTriggered: root.menuCommands.sendKey("z")
        }

        CommandItem {
            text: qsTr("Toggle Info (I)")
            onTriggered: root.menuCommands.sendKey("i")
        }

        CommandSeparator {}

        CommandItem {
            text: qsTr("Finish Culling → Review")
            enabled: root.menuCommands.canFinish
            onTriggered: root.menuCommands.finishCulling()
        }

        CommandItem {
            text: qsTr("Back to Card Screen")
            enabled: root.menuCommands.canGoBack
            onTriggered: root.menuCommands.backToCardScreen()
        }
    }
}
