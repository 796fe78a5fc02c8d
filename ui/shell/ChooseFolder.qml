// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick.Dialogs

// The folder dialog of a desktop without a portal.
FolderDialog {}
