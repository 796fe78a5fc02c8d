// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <chrono>
#include <cstdio>

#include <sys/resource.h>

/// What a piece of work takes of a program that has been started for it.
class Stopwatch {
public:
    void start()
    {
        m_wall = std::chrono::steady_clock::now();
        m_cpu = cpuSeconds();
    }

    void stop()
    {
        const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - m_wall;
        m_wallSeconds = wall.count();
        m_cpuSeconds = cpuSeconds() - m_cpu;
    }

    /// As ratios.py reads it.
    void print() const { std::printf("measured %.9f %.9f\n", m_cpuSeconds, m_wallSeconds); }

private:
    static double cpuSeconds()
    {
        rusage usage = {};
        ::getrusage(RUSAGE_SELF, &usage);
        const auto seconds = [](const timeval &time) {
            return double(time.tv_sec) + double(time.tv_usec) / 1e6;
        };
        return seconds(usage.ru_utime) + seconds(usage.ru_stime);
    }

    std::chrono::steady_clock::time_point m_wall;
    double m_cpu = 0;
    double m_wallSeconds = 0;
    double m_cpuSeconds = 0;
};
