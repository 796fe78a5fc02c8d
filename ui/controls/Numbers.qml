// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma Singleton

import QtQuick

// Numbers as texts.
QtObject {
    // Decimal digits, no grouping. A text's arg() would write a count of 64 bits as a double, and
    // a million as 1e+06.
    function plain(count: real): string {
        return Number(count).toFixed(0);
    }

    // In English the same word for one as for many; other languages have forms of their own.
    function files(count: real): string {
        return qsTr("%n files", "", count);
    }

    function items(count: real): string {
        return qsTr("%n items", "photographs and clips", count);
    }
}
