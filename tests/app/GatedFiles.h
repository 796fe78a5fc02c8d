// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/PosixFileManager.h"

#include <QThread>

#include <atomic>

/// A file manager whose scan and removals wait at a gate while it is closed.
class GatedFiles final : public FileManager {
public:
    std::vector<std::filesystem::path>
    regularFilesBelow(const std::filesystem::path &folder) const override
    {
        waitWhile(scanIsHeld);
        return m_real.regularFilesBelow(folder);
    }

    std::optional<EntryKind> kindOf(const std::filesystem::path &path) const override
    {
        return m_real.kindOf(path);
    }

    bool isListable(const std::filesystem::path &folder) const override
    {
        return m_real.isListable(folder);
    }

    std::filesystem::path resolvingSymlinks(const std::filesystem::path &path) const override
    {
        return m_real.resolvingSymlinks(path);
    }

    std::optional<qint64> fileSize(const std::filesystem::path &path) const override
    {
        return m_real.fileSize(path);
    }

    std::error_code remove(const std::filesystem::path &path) override
    {
        waitWhile(removalIsHeld);
        return removalsFail ? std::make_error_code(std::errc::io_error) : m_real.remove(path);
    }

    std::error_code syncFolder(const std::filesystem::path &folder) override
    {
        return m_real.syncFolder(folder);
    }

    mutable std::atomic_bool scanIsHeld = false;
    mutable std::atomic_bool removalIsHeld = false;
    std::atomic_bool removalsFail = false;

private:
    static void waitWhile(const std::atomic_bool &held)
    {
        while (held) {
            QThread::msleep(1);
        }
    }

    PosixFileManager m_real;
};
