// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// One of several texts, chosen from a list that opens below.
T.ComboBox {
    id: root

    property string name: ""

    implicitWidth: 200
    implicitHeight: Math.max(28, Look.pixels(18) + 10)
    leftPadding: 10
    rightPadding: 30
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.ComboBox
    Accessible.name: root.name
    Accessible.description: root.displayText
    Accessible.onPressAction: {
        if (root.popup.visible) {
            root.popup.close();
        } else {
            root.popup.open();
        }
    }

    contentItem: Text {
        verticalAlignment: Text.AlignVCenter
        text: root.displayText
        textFormat: Text.PlainText
        color: Look.white
        elide: Text.ElideRight
        font.pixelSize: Look.body
    }

    indicator: Symbol {
        x: root.width - width - 10
        anchors.verticalCenter: parent.verticalCenter
        width: 11
        height: 11
        kind: Symbol.Chevron
        color: Look.secondary
    }

    background: Rectangle {
        radius: 6
        color: root.hovered || root.down ? Look.controlHovered : Look.control
    }

    delegate: T.ItemDelegate {
        id: choice

        required property int index
        required property string modelData

        width: ListView.view.width
        implicitHeight: Math.max(26, Look.pixels(18) + 8)
        leftPadding: 30
        rightPadding: 10
        focusPolicy: Qt.NoFocus
        highlighted: root.highlightedIndex === choice.index

        Accessible.role: Accessible.ListItem
        Accessible.name: choice.modelData
        Accessible.onPressAction: {
            root.popup.close();
            root.activated(choice.index);
        }

        contentItem: Text {
            verticalAlignment: Text.AlignVCenter
            text: choice.modelData
            textFormat: Text.PlainText
            color: Look.white
            elide: Text.ElideRight
            font.pixelSize: Look.body
        }

        background: Rectangle {
            radius: 5
            color: choice.highlighted ? Look.blue : "transparent"

            Symbol {
                x: 10
                anchors.verticalCenter: parent.verticalCenter
                visible: choice.index === root.currentIndex
                width: 12
                height: 12
                kind: Symbol.Check
            }
        }
    }

    popup: T.Popup {
        y: root.height + 4
        width: root.width
        implicitHeight: Math.min(implicitContentHeight + 10, 300)
        padding: 5
        // The click that closes it is not meant for what lies below.
        modal: true
        dim: false
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnReleaseOutside

        // The keys are the list's as long as it is open, and nobody's afterwards.
        onOpened: root.forceActiveFocus(Qt.PopupFocusReason)
        onClosed: root.focus = false

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: root.delegateModel // qmllint disable type
            currentIndex: root.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
        }

        background: Rectangle {
            radius: 8
            color: Look.raised
            border.color: Look.line
        }
    }
}
