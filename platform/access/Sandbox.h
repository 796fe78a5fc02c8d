// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <filesystem>

/// Whether the desktop keeps this program from what the user did not grant it: inside Flatpak,
/// which puts a file at @p flatpakInfo, or Snap, which sets the environment variable SNAP, whose
/// value is @p snap. A program that is started by a snap but belongs to none may inherit that
/// variable and counts as sandboxed.
[[nodiscard]] bool isSandboxed(const QByteArray &snap,
                               const std::filesystem::path &flatpakInfo = "/.flatpak-info");
