# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

"""Small JPEG and TIFF structures made by hand, for tests that need no camera's files."""

import struct

# One table each of quantisation and of Huffman codes: every coefficient is 1 bit of value zero.
TABLES = (
    b"\xff\xdb\x00\x43\x00" + b"\x01" * 64
    + b"\xff\xc4\x00\x14\x00\x01" + b"\x00" * 15 + b"\x00"
    + b"\xff\xc4\x00\x14\x10\x01" + b"\x00" * 15 + b"\x00"
)
BASELINE, PROGRESSIVE = 0xC0, 0xC2


def empty_blocks(width, height):
    """The blocks of a grey baseline picture whose coefficients are all zero, two bits each."""
    return b"\x00" * -(-(-(-width // 8) * -(-height // 8) * 2) // 8)


def scan(data, first=0, last=63):
    """A scan of one component over the coefficients from first to last."""
    return b"\xff\xda\x00\x08\x01\x01\x00" + bytes([first, last, 0]) + data


def grey_jpeg(width, height, scans=None, frame=BASELINE, segments=b""):
    scans = scan(empty_blocks(width, height)) if scans is None else scans
    size = struct.pack(">BHH", 8, height, width)
    return (b"\xff\xd8" + segments + b"\xff" + bytes([frame]) + b"\x00\x0b" + size
            + b"\x01\x01\x11\x00" + TABLES + scans + b"\xff\xd9")


def jpeg_segment(marker, content):
    return b"\xff" + bytes([marker]) + struct.pack(">H", len(content) + 2) + content


def tiff_field(tag, kind, count, value):
    """value: the four bytes of the value or of its offset."""
    return struct.pack("<HHI", tag, kind, count) + value


def tiff_directory(fields, following=0):
    return struct.pack("<H", len(fields)) + b"".join(fields) + struct.pack("<I", following)
