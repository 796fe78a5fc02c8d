// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <thread>

class ActivationCalls;

/// One program of a kind in a session. The first one holds a name on the session bus; a later one
/// asks it to come to the front, by the interface org.freedesktop.Application of the Desktop Entry
/// Specification, and is to end. Where there is no session bus, or none that answers, everyone is
/// the first. Lives on the main thread, which never waits for the bus longer than it wants to.
///
/// A first one that is told but does not answer may be about to end, with work left to do: a later
/// one waits until it has, and goes on in its place, or ends when it stays.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    enum class Role { First, Second };

    /// With a program that has the name.
    struct Patience {
        std::chrono::milliseconds answer = std::chrono::seconds(5);
        std::chrono::milliseconds end = std::chrono::seconds(40); ///< from then on
    };

    /// Asks for @p name, such as "org.example.Program", on a thread of its own.
    explicit SingleInstance(const QString &name, QObject *parent = nullptr);
    SingleInstance(const QString &name, Patience patience, QObject *parent = nullptr);
    ~SingleInstance() override;

    /// What this program is; the first, when the bus has not answered within @p patience. Where the
    /// bus has said that there is another, it waits for that one.
    [[nodiscard]] Role role(std::chrono::milliseconds patience);

Q_SIGNALS:
    /// A later program was started. @p token is what its desktop allows to come to the front with,
    /// by the protocol XDG Activation; it may be empty.
    void activationWanted(const QString &token);

private:
    std::unique_ptr<ActivationCalls> m_calls;
    std::shared_ptr<std::atomic_bool> m_isTaken = std::make_shared<std::atomic_bool>(false);
    std::future<Role> m_answer;
    std::thread m_thread;
};
