# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

"""Runs commands by turns and prints medians and their ratios to the first one.

Machines drift: only ratios of runs beside each other mean anything, so the commands take turns and
each run is compared with the first command's run of the same turn.

A program that was started only to be measured says "measured CPU-SECONDS WALL-SECONDS" on its
standard output: what its work took, which a program that runs already would do without being loaded.
"""

import os
import statistics
import tempfile
import time


def run_once(command):
    """CPU and wall seconds, peak memory in MiB: of the work where it is told, else of the process."""
    null = os.open(os.devnull, os.O_RDWR)
    with tempfile.TemporaryFile() as output:
        streams = [(os.POSIX_SPAWN_DUP2, null, 0), (os.POSIX_SPAWN_DUP2, output.fileno(), 1),
                   (os.POSIX_SPAWN_DUP2, null, 2)]
        start = time.monotonic()
        pid = os.posix_spawnp(command[0], command, os.environ, file_actions=streams)
        _, status, usage = os.wait4(pid, 0)
        wall = time.monotonic() - start
        output.seek(0)
        said = output.read(100).split()
    os.close(null)
    if os.waitstatus_to_exitcode(status) != 0:
        raise SystemExit(f"{' '.join(command)}: exit status {os.waitstatus_to_exitcode(status)}")
    cpu = usage.ru_utime + usage.ru_stime
    if said[:1] == [b"measured"]:
        cpu, wall = map(float, said[1:])
    return cpu, wall, usage.ru_maxrss / 1024


def compare(title, commands, runs=9, prepare=None):
    """commands: (name, argument list); prepare() is called, untimed, before every run."""
    results = {name: [] for name, _ in commands}
    for turn in range(runs + 1):
        for name, command in commands:
            if prepare:
                prepare()
            result = run_once(command)
            if turn > 0:  # the first turn warms the caches
                results[name].append(result)
    base = results[commands[0][0]]
    print(f"\n{title} ({runs} runs)")
    print(f"{'':24}{'cpu ms':>9}{'wall ms':>9}{'peak MB':>9}{'cpu x':>8}{'wall x':>8}")
    for name, rows in results.items():
        cpu, wall, peak = (statistics.median(column) for column in zip(*rows))
        cpu_ratio = statistics.median(a[0] / max(b[0], 1e-4) for a, b in zip(rows, base))
        wall_ratio = statistics.median(a[1] / b[1] for a, b in zip(rows, base))
        print(f"{name:24}{cpu * 1e3:9.1f}{wall * 1e3:9.1f}{peak:9.1f}"
              f"{cpu_ratio:8.2f}{wall_ratio:8.2f}", flush=True)
