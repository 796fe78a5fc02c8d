// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDir>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <string>

/// A card in a temporary folder: files of small made-up content below its root.
class TemporaryCard {
public:
    TemporaryCard()
        : TemporaryCard(QDir::tempPath())
    {
    }

    explicit TemporaryCard(const QString &parentFolder)
        : m_folder(parentFolder + QStringLiteral("/card-XXXXXX"))
        , m_root(std::filesystem::canonical(m_folder.path().toStdString()) / "CARD")
    {
        std::filesystem::create_directory(m_root);
    }

    [[nodiscard]] const std::filesystem::path &root() const { return m_root; }

    [[nodiscard]] std::filesystem::path path(const std::filesystem::path &relative) const
    {
        return m_root / relative;
    }

    /// Makes the file @p relative to the root, and the folders above it.
    std::filesystem::path add(const std::filesystem::path &relative,
                              const std::string &content = "x") const
    {
        std::filesystem::create_directories(path(relative).parent_path());
        std::ofstream(path(relative), std::ios::binary) << content;
        return path(relative);
    }

    [[nodiscard]] bool has(const std::filesystem::path &relative) const
    {
        return std::filesystem::exists(std::filesystem::symlink_status(path(relative)));
    }

private:
    QTemporaryDir m_folder;
    std::filesystem::path m_root;
};
