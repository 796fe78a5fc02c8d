// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// A button with a text, and a symbol before it where it has one.
T.Button {
    id: root

    property bool destructive: false
    property bool hasSymbol: false
    property int symbolKind: Symbol.Bin

    readonly property color fill: root.destructive ? Look.red : root.highlighted ? Look.blue : Look.control

    implicitWidth: Math.max(72, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(28, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: 16
    rightPadding: 16
    topPadding: 5
    bottomPadding: 5
    focusPolicy: Qt.NoFocus
    opacity: root.enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: root.text
    Accessible.description: root.enabled ? "" : qsTr("not available")
    // The templates of Qt Quick 6.4 do not do what a screen reader asks of them.
    Accessible.onPressAction: {
        if (root.enabled) {
            root.clicked();
        }
    }

    contentItem: Label {
        text: root.text
        hasSymbol: root.hasSymbol
        symbolKind: root.symbolKind
        strong: root.destructive || root.highlighted
    }

    background: Rectangle {
        radius: 6
        color: root.down ? Qt.darker(root.fill, 1.25) : root.hovered && root.enabled ? Qt.lighter(root.fill, 1.12) : root.fill

        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            visible: root.activeFocus
            color: "transparent"
            radius: 9
            border.width: 2
            border.color: Qt.rgba(1, 1, 1, 0.75)
        }
    }

    // A dialog's focused button is pressed by Return too; Space is the template's own.
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    component Label: Item {
        id: label

        property string text: ""
        property bool hasSymbol: false
        property int symbolKind: Symbol.Bin
        property bool strong: false

        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight

        Row {
            id: row

            anchors.centerIn: parent
            spacing: 6

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: label.hasSymbol
                width: Look.pixels(14)
                height: Look.pixels(14)
                kind: label.symbolKind
            }

            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: label.text
                color: Look.white
                font.pixelSize: Look.body
                font.weight: label.strong ? Font.DemiBold : Font.Normal
            }
        }
    }
}
