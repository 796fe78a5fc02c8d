// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QtGlobal>

/// Why a file is not deleted, as far as it is not the system that says so. Translated where they
/// are shown.
namespace DeletionReasons {

[[nodiscard]] inline QString outsideCardVolume()
{
    return QStringLiteral(QT_TRANSLATE_NOOP("DeletionReasons", "outside card volume"));
}

/// A file that was already gone: it does not occupy the card any more.
[[nodiscard]] inline QString fileNotFound()
{
    return QStringLiteral(QT_TRANSLATE_NOOP("DeletionReasons", "file not found"));
}

[[nodiscard]] inline QString notARegularFile()
{
    return QStringLiteral(QT_TRANSLATE_NOOP("DeletionReasons", "not a regular file"));
}

} // namespace DeletionReasons
