// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

// Its content exists only while it is active. (A Loader of Qt 6.4 refuses bound components.)
Repeater {
    id: root

    property bool active: false

    model: root.active ? 1 : 0
}
