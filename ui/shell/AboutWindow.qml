// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// The window about the program.
SideWindow {
    objectName: "aboutWindow"
    title: qsTr("About Kestle")

    AboutView {
        anchors.fill: parent
    }
}
