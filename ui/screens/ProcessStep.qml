// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// One step of the step indicator.
T.AbstractButton {
    id: root

    // Its place relative to the current step: before it below zero, after it above.
    required property int place

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    // What lies around the text is pressed as well.
    horizontalPadding: 3
    verticalPadding: 5
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.Button
    Accessible.name: root.text
    Accessible.description: root.place === 0 ? qsTr("current step") : root.enabled ? "" : qsTr("not available")
    // The templates of Qt Quick 6.4 do not do what a screen reader asks of them.
    Accessible.onPressAction: {
        if (root.enabled) {
            root.clicked();
        }
    }

    contentItem: Text {
        text: root.text
        color: root.place === 0 ? Look.green : Look.white
        opacity: root.place < 0 ? 0.7 : root.place > 0 ? 0.3 : 1
        font.pixelSize: Look.pixels(11)
        font.weight: Font.Medium
    }
}
