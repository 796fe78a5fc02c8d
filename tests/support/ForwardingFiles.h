// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/PosixFileManager.h"

/// A held card that does all that the real one does; a test changes what it is about.
class ForwardingHeldCard : public HeldCard {
public:
    using Path = std::filesystem::path;

    explicit ForwardingHeldCard(std::unique_ptr<HeldCard> real)
        : m_real(std::move(real))
    {
    }

    bool isAt(const Path &path) const override { return m_real->isAt(path); }

    std::shared_ptr<const CardMark> mark() const override { return m_real->mark(); }

    bool bears(const CardMark &mark) const override { return m_real->bears(mark); }

    Lookup lookUp(const Path &path) const override { return m_real->lookUp(path); }

    void chooseWitness(const PathBytes &doomed) override { m_real->chooseWitness(doomed); }

    std::error_code proveAlive() override { return m_real->proveAlive(); }

    std::error_code openFolder(const Path &folder) override { return m_real->openFolder(folder); }

    std::error_code remove(const Path &folder, const Path &name) override
    {
        return m_real->remove(folder, name);
    }

    std::error_code syncFolder(const Path &folder) override { return m_real->syncFolder(folder); }

    void closeFolders() override { m_real->closeFolders(); }

    std::error_code syncAll() override { return m_real->syncAll(); }

private:
    std::unique_ptr<HeldCard> m_real;
};

/// The same for the file manager; wrap() puts a test's card around the real one.
class ForwardingFiles : public FileManager {
public:
    using Path = std::filesystem::path;

    std::vector<Path> regularFilesBelow(const Path &folder) const override
    {
        return m_real.regularFilesBelow(folder);
    }

    std::optional<EntryKind> kindOf(const Path &path) const override { return m_real.kindOf(path); }

    bool isListable(const Path &folder) const override { return m_real.isListable(folder); }

    Path resolvingSymlinks(const Path &path) const override
    {
        return m_real.resolvingSymlinks(path);
    }

    bool isLink(const Path &path) const override { return m_real.isLink(path); }

    std::optional<qint64> fileSize(const Path &path) const override
    {
        return m_real.fileSize(path);
    }

    bool isReadOnly(const Path &folder) const override { return m_real.isReadOnly(folder); }

    std::unique_ptr<HeldCard> hold(const Path &root, std::error_code &error) const override
    {
        auto card = m_real.hold(root, error);
        return card ? wrap(std::move(card)) : nullptr;
    }

protected:
    virtual std::unique_ptr<HeldCard> wrap(std::unique_ptr<HeldCard> card) const { return card; }

private:
    PosixFileManager m_real;
};
