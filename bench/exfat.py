# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

"""A card as cameras format them, in a file: needs root, loop devices and exfat-fuse."""

import contextlib
import os
import shutil
import subprocess
import time

SIZE = 512 * 1024 * 1024


def is_possible():
    return (os.geteuid() == 0 and os.path.exists("/dev/fuse") and os.path.isdir("/dev/shm")
            and all(map(shutil.which, ("losetup", "mkfs.exfat", "mount.exfat-fuse", "umount")))
            and subprocess.run(["losetup", "-f"], capture_output=True).returncode == 0)


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


@contextlib.contextmanager
def mounted(folder):
    """The folder of a mounted exFAT card; the image lies in the folder given."""
    image, place = os.path.join(folder, "card.img"), os.path.join(folder, "card")
    with open(image, "wb") as file:
        file.truncate(SIZE)
    os.mkdir(place)
    device = run("losetup", "-f", "--show", image)
    try:
        run("mkfs.exfat", device)
        run("mount.exfat-fuse", device, place)
        try:
            yield place
        finally:
            unmount(place)
    finally:
        run("losetup", "-d", device)
        os.unlink(image)


def unmount(place):
    """The system may still be reading the card."""
    for _ in range(50):
        if subprocess.run(["umount", place], capture_output=True).returncode == 0:
            return
        time.sleep(0.1)
    run("umount", "-l", place)
