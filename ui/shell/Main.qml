// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// The main window: the screens, and our own title strip over them.
T.ApplicationWindow {
    id: root

    required property AppState appState
    required property MenuCommands menuCommands

    // Whether a menu, a list or a dialog is open; the keys are then its own.
    readonly property bool popupOpen: T.Overlay.overlay.visible
    readonly property bool isFullScreen: root.visibility === Window.FullScreen
    readonly property bool fillsScreen: root.visibility === Window.Maximized || root.isFullScreen

    property int visibilityBefore: Window.Windowed

    width: 1200
    height: 800
    minimumWidth: 1000
    minimumHeight: 700
    visible: true
    title: "Kestle"
    flags: Qt.Window | Qt.FramelessWindowHint
    color: Look.black

    palette {
        window: Look.black
        windowText: Look.primary
        base: Look.raised
        text: Look.primary
        button: Look.control
        buttonText: Look.white
        highlight: Look.blue
        highlightedText: Look.white
    }

    // Here and not in the look, which belongs to no window.
    Binding {
        target: Look
        property: "dotsPerMillimetre"
        value: view.Screen.logicalPixelDensity
    }

    RootView {
        id: view

        anchors.fill: parent
        focus: true
        appState: root.appState
        topInset: strip.visible ? strip.height : 0
    }

    TitleStrip {
        id: strip

        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        visible: !root.isFullScreen
        window: root
        fillsScreen: root.fillsScreen
        popupOpen: root.popupOpen
        isCovered: root.appState.reviewEnlarged && root.appState.phase.kind === Phase.Review
        menuCommands: root.menuCommands
    }

    ResizeEdges {
        anchors.fill: parent
        visible: !root.fillsScreen
        window: root
    }

    Shortcut {
        sequence: "F11"
        onActivated: root.toggleFullScreen()
    }

    // The whole screen, without the strip; back to what it was before.
    function toggleFullScreen(): void {
        if (root.isFullScreen) {
            root.visibility = root.visibilityBefore;
        } else {
            root.visibilityBefore = root.fillsScreen ? Window.Maximized : Window.Windowed;
            root.visibility = Window.FullScreen;
        }
    }
}
