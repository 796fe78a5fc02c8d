// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// The window about newer versions.
SideWindow {
    id: root

    required property UpdateController updates

    objectName: "updateWindow"
    title: qsTr("Software Update")

    onClosing: root.updates.dismiss()

    UpdateView {
        anchors.fill: parent
        updates: root.updates
        onClosed: root.close()
    }
}
