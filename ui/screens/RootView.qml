// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// The content of the main window: the screen of the phase, and the step indicator over it.
Rectangle {
    id: root

    required property AppState appState

    // Height at the top that the screens leave to the title strip.
    property real topInset: 0

    readonly property int kind: root.appState.phase.kind
    readonly property bool isBeforeCulling: root.kind !== Phase.Culling && root.kind !== Phase.Review && root.kind !== Phase.Deleting && root.kind !== Phase.Summary

    color: Look.black

    When {
        active: root.isBeforeCulling

        CardScreen {
            anchors.fill: parent
            appState: root.appState
        }
    }

    When {
        active: root.kind === Phase.Culling

        CullScreen {
            anchors.fill: parent
            appState: root.appState
            topInset: root.topInset
            rightInset: nav.width
        }
    }

    When {
        active: root.kind === Phase.Review

        ReviewScreen {
            anchors.fill: parent
            appState: root.appState
            topInset: root.topInset
        }
    }

    When {
        active: root.kind === Phase.Deleting

        DeleteProgressView {
            anchors.fill: parent
            done: Number(root.appState.phase.done)
            total: Number(root.appState.phase.total)
        }
    }

    When {
        active: root.kind === Phase.Summary

        SummaryView {
            anchors.fill: parent
            appState: root.appState
            deleted: Number(root.appState.phase.deleted)
            failed: Number(root.appState.phase.failed)
            kept: Number(root.appState.phase.kept)
        }
    }

    ProcessNav {
        id: nav

        objectName: "processNav"
        anchors.top: parent.top
        anchors.topMargin: root.topInset
        anchors.right: parent.right
        appState: root.appState
    }

    SpokenStatus {
        appState: root.appState
    }
}
