// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import Kestle

// Where a clip is, and a way to other places in it.
Item {
    id: root

    required property VideoPlayer player

    implicitHeight: slider.implicitHeight

    PlayerClock {
        id: clock

        player: root.player
    }

    TimeSlider {
        id: slider

        objectName: "timelineSlider"
        anchors.fill: parent
        name: qsTr("Position in the clip")
        to: clock.range
        value: clock.position
        onMoved: clock.seek(slider.value)
    }
}
