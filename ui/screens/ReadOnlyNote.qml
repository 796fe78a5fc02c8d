// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// Says beforehand that deleting will fail.
Text {
    id: root

    objectName: "readOnlyNote"
    text: qsTr("This card is write-protected. Kestle cannot delete from it.")
    color: Look.tertiary
    font.pixelSize: Look.caption

    Accessible.role: Accessible.StaticText
    Accessible.name: root.text
}
