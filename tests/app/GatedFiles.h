// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/support/ForwardingFiles.h"

#include <QThread>

#include <atomic>
#include <mutex>
#include <set>

/// A file manager whose scan and removals wait at a gate while it is closed.
class GatedFiles final : public ForwardingFiles {
public:
    std::vector<std::filesystem::path>
    regularFilesBelow(const std::filesystem::path &folder) const override
    {
        waitWhile(scanIsHeld);
        ++heldScans;
        while (isScanHeld(folder)) {
            QThread::msleep(1);
        }
        --heldScans;
        return ForwardingFiles::regularFilesBelow(folder);
    }

    /// Scans of the card at @p root do not end until letScansGo().
    void holdScanOf(const std::filesystem::path &root)
    {
        const std::scoped_lock lock(m_mutex);
        m_heldScans.insert(root);
    }

    void letScanGo(const std::filesystem::path &root)
    {
        const std::scoped_lock lock(m_mutex);
        m_heldScans.erase(root);
    }

    void letScansGo()
    {
        const std::scoped_lock lock(m_mutex);
        m_heldScans.clear();
    }

    bool isReadOnly(const std::filesystem::path &folder) const override
    {
        const std::scoped_lock lock(m_mutex);
        return m_readOnly.contains(folder);
    }

    std::optional<qint64> fileSize(const std::filesystem::path &url) const override
    {
        waitWhile(sizesAreHeld);
        return ForwardingFiles::fileSize(url);
    }

    /// The card at @p folder is mounted read-only.
    void makeReadOnly(const std::filesystem::path &folder)
    {
        const std::scoped_lock lock(m_mutex);
        m_readOnly.insert(folder);
    }

    mutable std::atomic_bool scanIsHeld = false;
    mutable std::atomic_bool removalIsHeld = false;
    mutable std::atomic_bool sizesAreHeld = false;
    /// Holds the removals from cards that are held while this is the gate, also later ones.
    std::shared_ptr<std::atomic_bool> cardGate = std::make_shared<std::atomic_bool>(false);
    mutable std::atomic_int heldScans = 0; ///< how many wait
    mutable std::atomic_int removals = 0;  ///< how many have been begun
    std::atomic_bool removalsFail = false;
    /// Names of files that cannot be removed. Not to be changed while a run may go on.
    std::set<std::filesystem::path> stubborn;

protected:
    std::unique_ptr<HeldCard> wrap(std::unique_ptr<HeldCard> card) const override
    {
        return std::make_unique<GatedCard>(std::move(card), *this);
    }

private:
    class GatedCard final : public ForwardingHeldCard {
    public:
        GatedCard(std::unique_ptr<HeldCard> real, const GatedFiles &gates)
            : ForwardingHeldCard(std::move(real))
            , m_gates(gates)
            , m_gate(gates.cardGate)
        {
        }

        std::error_code remove(const Path &folder, const Path &name) override
        {
            ++m_gates.removals;
            waitWhile(m_gates.removalIsHeld);
            waitWhile(*m_gate);
            const bool fails = m_gates.removalsFail || m_gates.stubborn.contains(name);
            return fails ? std::make_error_code(std::errc::io_error)
                         : ForwardingHeldCard::remove(folder, name);
        }

    private:
        const GatedFiles &m_gates;
        std::shared_ptr<std::atomic_bool> m_gate;
    };

    static void waitWhile(const std::atomic_bool &held)
    {
        while (held) {
            QThread::msleep(1);
        }
    }

    bool isScanHeld(const std::filesystem::path &folder) const
    {
        const std::scoped_lock lock(m_mutex);
        return m_heldScans.contains(folder.parent_path());
    }

    mutable std::mutex m_mutex;
    std::set<std::filesystem::path> m_heldScans;
    std::set<std::filesystem::path> m_readOnly;
};
