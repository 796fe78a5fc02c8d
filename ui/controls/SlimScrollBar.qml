// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// Where in a long list or text one is; not there when all of it is seen.
T.ScrollBar {
    id: root

    implicitWidth: 8
    padding: 1

    contentItem: Rectangle {
        implicitWidth: 6
        radius: 3
        visible: root.size < 1
        color: root.pressed ? Look.primary : Look.tertiary
    }
}
