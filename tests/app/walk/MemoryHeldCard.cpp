// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/MemoryHeldCard.h"

#include <algorithm>

namespace {

struct LifeMark final : CardMark {
    explicit LifeMark(int number)
        : life(number)
    {
    }

    int life;
};

} // namespace

static std::error_code inputOutputError()
{
    return std::make_error_code(std::errc::io_error);
}

static std::string belowDcim(const std::filesystem::path &path)
{
    return path.lexically_relative("DCIM").native();
}

bool MemoryHeldCard::isAt(const Path &path) const
{
    return m_world.read([&](const WalkWorld &facts) {
        const auto *mount = facts.mountAt(path.native());
        return mount && mount->life == m_life;
    });
}

std::shared_ptr<const CardMark> MemoryHeldCard::mark() const
{
    return std::make_shared<LifeMark>(m_life);
}

bool MemoryHeldCard::bears(const CardMark &mark) const
{
    return dynamic_cast<const LifeMark &>(mark).life == m_life;
}

HeldCard::Lookup MemoryHeldCard::lookUp(const Path &path) const
{
    return m_world.read([&](const WalkWorld &facts) -> Lookup {
        const auto mount = std::ranges::find(facts.mounts, m_life, &WalkWorld::Mount::life);
        if (mount == facts.mounts.end()) {
            return {.kind = {}, .error = inputOutputError()};
        }
        if (!facts.cards[mount->card].files.contains(belowDcim(path))) {
            return {.kind = {},
                    .error = std::make_error_code(std::errc::no_such_file_or_directory)};
        }
        return {.kind = EntryKind::Other, .error = {}};
    });
}

void MemoryHeldCard::chooseWitness(const PathBytes & /*doomed*/) {}

std::error_code MemoryHeldCard::proveAlive()
{
    const bool isAlive =
        m_world.read([this](const WalkWorld &facts) { return facts.isAlive(m_life); });
    return isAlive ? std::error_code() : inputOutputError();
}

std::error_code MemoryHeldCard::openFolder(const Path & /*folder*/)
{
    return proveAlive();
}

std::error_code MemoryHeldCard::remove(const Path &folder, const Path &name)
{
    const auto file = belowDcim(folder / name);
    m_world.beginRemoval(m_life, file);
    m_world.pass(WalkGate::removal(m_root));
    const auto error = removeNow(file);
    m_world.endRemoval(m_life);
    return error;
}

std::error_code MemoryHeldCard::removeNow(const std::string &file)
{
    return m_world.change([&](WalkWorld &facts) -> std::error_code {
        const auto mount = std::ranges::find(facts.mounts, m_life, &WalkWorld::Mount::life);
        if (mount == facts.mounts.end()) {
            return inputOutputError();
        }
        auto &card = facts.cards[mount->card];
        if (card.isReadOnly) {
            return std::make_error_code(std::errc::read_only_file_system);
        }
        if (card.stuckFiles.contains(file)) {
            return std::make_error_code(std::errc::operation_not_permitted);
        }
        card.files.erase(file);
        return {};
    });
}

std::error_code MemoryHeldCard::syncFolder(const Path & /*folder*/)
{
    return m_world.read([this](const WalkWorld &facts) {
        const auto mount = std::ranges::find(facts.mounts, m_life, &WalkWorld::Mount::life);
        const bool works = mount != facts.mounts.end() && !facts.cards[mount->card].syncFails;
        return works ? std::error_code() : inputOutputError();
    });
}

void MemoryHeldCard::closeFolders() {}

std::error_code MemoryHeldCard::syncAll()
{
    return proveAlive();
}
