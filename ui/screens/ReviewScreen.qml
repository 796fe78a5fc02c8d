// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// A last look at the rejects before anything is removed from the card.
Item {
    id: root

    required property AppState appState

    property real topInset: 0

    RejectsModel {
        id: rejects

        appState: root.appState
    }

    RejectTotals {
        id: totals

        appState: root.appState
    }

    Text {
        id: title

        anchors.top: parent.top
        anchors.topMargin: root.topInset + 8
        anchors.horizontalCenter: parent.horizontalCenter
        text: qsTr("Rejects — last look")
        color: Look.primary
        font.pixelSize: Look.title3
        font.bold: true

        Accessible.role: Accessible.StaticText
        Accessible.name: title.text
    }

    Text {
        objectName: "nothing"
        anchors.top: title.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        visible: rejects.count === 0
        padding: 16
        text: qsTr("Nothing rejected. Esc to keep culling.")
        color: Look.secondary
        font.pixelSize: Look.body

        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    GridView {
        id: grid

        readonly property int columns: 5
        readonly property real gap: 8

        objectName: "grid"
        anchors.top: title.bottom
        anchors.topMargin: 12
        anchors.bottom: footer.top
        // Whole points, so that no column falls off the row through rounding; what is left over
        // goes to both sides. Every cell has its gap at the right, also the last one.
        x: Math.floor((root.width - width + gap) / 2)
        width: columns * cellWidth
        visible: rejects.count > 0
        // As long as there is no width there are no cells: of a negative size, all would be made.
        cellWidth: Math.max(2 * gap, Math.floor((root.width - 32 + gap) / columns))
        cellHeight: Math.floor((cellWidth - gap) / 1.5) + gap
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: false
        currentIndex: -1
        model: cellWidth > 2 * gap ? rejects : null

        Accessible.role: Accessible.List
        Accessible.name: qsTr("Rejects")

        delegate: ReviewCell {
            appState: root.appState
            selected: index === root.appState.reviewSelection
            total: Number(rejects.count)
            width: grid.cellWidth - grid.gap
            height: grid.cellHeight - grid.gap
            onActivated: root.appState.reviewSelection = index
        }

        onMovementStarted: scroll.stop()
        onContentYChanged: lingering.restart()
        onHeightChanged: root.revealSelection(false)
        onCellHeightChanged: root.revealSelection(false)
        onCountChanged: root.revealSelection(false)

        NumberAnimation {
            id: scroll

            target: grid
            property: "contentY"
            duration: 150
            easing.type: Easing.OutQuad
        }
    }

    // Where one is among many rows, as long as they move and a moment more.
    Rectangle {
        objectName: "scrollIndicator"
        x: root.width - width - 4
        y: grid.y + Math.min(grid.visibleArea.yPosition * grid.height, grid.height - height)
        width: 4
        height: Math.min(Math.max(32, grid.visibleArea.heightRatio * grid.height), grid.height)
        radius: 2
        visible: grid.visible && grid.visibleArea.heightRatio < 1 && opacity > 0
        opacity: lingering.running ? 1 : 0
        color: Look.tertiary

        Behavior on opacity {
            NumberAnimation {
                duration: 200
            }
        }

        Timer {
            id: lingering

            interval: 900
        }
    }

    Item {
        id: footer

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: (footer.isStacked ? hints.height + 8 : 0) + deleteButton.height + 32

        // Large texts or long words need a row each.
        readonly property bool isStacked: hints.implicitWidth + deleteButton.width + 48 > footer.width

        Column {
            id: hints

            x: 16
            y: footer.isStacked ? 16 : (parent.height - height) / 2
            spacing: 4

            Text {
                objectName: "hint"
                text: qsTr("Esc back · Space enlarge · X rescue · ⏎ delete")
                color: Look.secondary
                font.pixelSize: Look.caption

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            ReadOnlyNote {
                visible: root.appState.cardIsReadOnly
            }
        }

        PushButton {
            id: deleteButton

            objectName: "deleteButton"
            x: parent.width - width - 16
            y: parent.height - height - 16
            destructive: true
            hasSymbol: true
            symbolKind: Symbol.Bin
            enabled: totals.itemCount > 0
            text: qsTr("Delete %1 — %2, %3").arg(Numbers.items(totals.itemCount)).arg(Numbers.files(totals.fileCount)).arg(totals.sizeText)
            onClicked: root.appState.confirmingDelete = true
        }
    }

    When {
        active: root.appState.reviewEnlarged && rejects.hasSelected

        EnlargedReject {
            objectName: "enlarged"
            anchors.fill: parent
            appState: root.appState
            item: rejects.selectedItem
            displayName: rejects.selectedName
            isVideo: rejects.selectedIsVideo
        }
    }

    ConfirmDelete {
        appState: root.appState
        itemCount: Number(totals.itemCount)
        fileCount: Number(totals.fileCount)
        sizeText: totals.sizeText
    }

    Connections {
        target: root.appState

        function onReviewSelectionChanged(): void {
            root.revealSelection(true);
        }
    }

    // Scrolls by the least amount that shows the whole selected cell: X must never rescue one that
    // nobody sees.
    function revealSelection(animated: bool): void {
        const top = grid.originY + Math.floor(root.appState.reviewSelection / grid.columns) * grid.cellHeight;
        const bottom = top + grid.cellHeight - grid.gap;
        // Where the view is going, not where it is on its way.
        const from = scroll.running ? scroll.to : grid.contentY;
        const to = top < from ? top : bottom > from + grid.height ? bottom - grid.height : from;
        if (to === from && !grid.flicking) {
            return;
        }
        grid.cancelFlick();
        scroll.stop();
        if (animated) {
            scroll.to = to;
            scroll.start();
        } else {
            grid.contentY = to;
        }
    }
}
