// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// One item at a time, as large as the window allows, over the strip of all of them.
Item {
    id: root

    required property AppState appState

    property real topInset: 0
    property real rightInset: 0

    readonly property bool showsPhoto: !session.currentIsVideo
    readonly property bool showsZoom: root.showsPhoto && root.appState.zoomed && session.hasCurrent

    SessionModel {
        id: session

        appState: root.appState
    }

    ScreenImageLoader {
        id: picture

        appState: root.appState
    }

    Rectangle {
        id: imageArea

        objectName: "imageArea"
        anchors.top: parent.top
        anchors.topMargin: root.topInset
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: strip.top
        clip: true
        color: Look.black

        // Whatever it is shown by: as a whole, at 100 % or playing.
        Accessible.role: Accessible.Graphic
        Accessible.name: session.currentName
        Accessible.description: root.spokenDescription()
        Accessible.ignored: !session.hasCurrent

        FitImage {
            objectName: "picture"
            pool: ScalingPool
            anchors.fill: parent
            visible: root.showsPhoto && !root.showsZoom
            image: picture.image
            smoothScaling: !picture.isStale
        }

        // What is shown is the picture before: nobody must take it for this item's.
        Rectangle {
            anchors.fill: parent
            visible: broken.visible
            color: Qt.rgba(0, 0, 0, 0.75)
        }

        Symbol {
            id: broken

            objectName: "brokenPicture"
            anchors.centerIn: parent
            visible: root.showsPhoto && !root.showsZoom && picture.failed && picture.hasImage
            width: 56
            height: 56
            kind: Symbol.BrokenPicture
            color: Look.grey
        }

        Spinner {
            objectName: "spinner"
            anchors.centerIn: parent
            width: 48
            height: 48
            visible: root.showsPhoto && !root.showsZoom && !picture.hasImage
        }

        When {
            active: root.showsZoom

            ZoomView {
                objectName: "zoom"
                anchors.fill: parent
                appState: root.appState
                item: session.currentItem
            }
        }

        When {
            active: session.currentIsVideo

            VideoPlayerView {
                objectName: "player"
                anchors.fill: parent
                appState: root.appState
                item: session.currentItem
            }
        }

        RejectedBadge {
            objectName: "badge"
            anchors.left: parent.left
            anchors.bottom: parent.bottom
            anchors.margins: 16
            visible: session.currentRejected
        }

        When {
            active: root.appState.showExifBar && session.hasCurrent

            ExifBar {
                objectName: "exifBar"
                anchors.top: imageArea.top
                anchors.left: imageArea.left
                anchors.right: imageArea.right
                appState: root.appState
                item: session.currentItem
                displayName: session.currentName
                rightInset: root.rightInset + 6
            }
        }
    }

    FilmstripView {
        id: strip

        objectName: "filmstrip"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        appState: root.appState
        session: session
        thumbSize: 56
    }

    function spokenDescription(): string {
        const place = qsTr("%1 of %2").arg(Numbers.plain(session.currentIndex + 1)).arg(Numbers.plain(session.count));
        const kind = session.currentIsVideo ? ", " + qsTr("clip") : "";
        const decision = session.currentRejected ? ", " + qsTr("rejected") : "";
        const zoom = root.showsZoom ? ", " + qsTr("zoom 100%") : "";
        const fault = root.showsPhoto && picture.failed ? ", " + qsTr("cannot be shown") : "";
        return place + kind + decision + zoom + fault;
    }
}
