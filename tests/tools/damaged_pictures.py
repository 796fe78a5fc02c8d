# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later

"""Pictures made by hand that promise what they do not hold: a size, a count, a place."""

import os
import struct
import sys
import zlib

sys.dont_write_bytecode = True  # the folder of the sources stays clean
from made_pictures import (BASELINE, PROGRESSIVE, empty_blocks, grey_jpeg, jpeg_segment, scan,
                           tiff_directory, tiff_field)

MOST = 0xFFFFFFFF
WILD = struct.pack("<I", MOST)
NOWHERE = struct.pack("<I", 0x7FFFFFF0)


def in_exif(tiff):
    return grey_jpeg(64, 48, segments=jpeg_segment(0xE1, b"Exif\x00\x00" + tiff))


def tiff(*fields, following=0, magic=b"II*\x00"):
    return magic + struct.pack("<I", 8) + tiff_directory(fields, following)


def jpegs():
    few = scan(b"\x00" * 999)
    whole = grey_jpeg(640, 480)
    for part in (3, 20, 80, 150, 160, 180, len(whole) // 2, len(whole) - 2):
        yield f"cut-{part}.jpg", whole[:part]
    for name, frame in (("baseline", BASELINE), ("progressive", PROGRESSIVE), ("lossless", 0xC3),
                        ("arithmetic", 0xC9)):
        for width, height in ((65535, 65535), (65500, 65500), (65500, 6000), (6000, 65500),
                              (20000, 20000), (0, 0), (0, 65535), (1, 65500)):
            yield f"{name}-{width}x{height}.jpg", grey_jpeg(width, height, few, frame)
    # Each scan is a few bytes, and a walk through the whole picture.
    scans = scan(b"\x00" * 20, 0, 0) + b"".join(
        scan(b"\x00" * 20, number % 63 + 1, 63) for number in range(2000))
    yield "many-scans.jpg", grey_jpeg(20000, 20000, scans, PROGRESSIVE)
    # As much memory as a picture may take, for its rows and its coefficients, and a little more.
    for edge in (12900, 13370, 15800, 16300):
        first, rest = scan(empty_blocks(edge, edge), 0, 0), scan(b"\x00" * 20, 1, 63)
        yield f"progressive-{edge}.jpg", grey_jpeg(edge, edge, first + rest, PROGRESSIVE)
    for edge in (15300, 15860):
        yield f"baseline-{edge}.jpg", grey_jpeg(edge, edge)
    yield "many-segments.jpg", grey_jpeg(64, 48, segments=jpeg_segment(0xE2, b"") * 200_000)
    yield "fill-bytes.jpg", b"\xff\xd8" + b"\xff" * 4_000_000
    profile = b"ICC_PROFILE\x00\x01\xff" + struct.pack(">I", MOST) + b"\xff" * 60_000
    yield "profile.jpg", grey_jpeg(64, 48, segments=jpeg_segment(0xE2, profile) * 200)


def tiffs():
    for kind in (1, 2, 3, 4, 5, 7, 10, 12, 0, 99):
        main = tiff(tiff_field(0x010F, kind, MOST, WILD), tiff_field(0x0112, kind, MOST, WILD),
                    tiff_field(0x014A, kind, MOST, struct.pack("<I", 8)),
                    tiff_field(0x8769, kind, MOST, struct.pack("<I", 8)))
        yield f"count-type-{kind}.tif", main
        yield f"count-type-{kind}.jpg", in_exif(main)
    strips = [tiff_field(0x0100, 4, 1, WILD), tiff_field(0x0101, 4, 1, WILD),
              tiff_field(0x0103, 3, 1, b"\x01\x00\x00\x00"),
              tiff_field(0x0111, 4, MOST, b"\x08\x00\x00\x00"),
              tiff_field(0x0117, 4, MOST, b"\x08\x00\x00\x00")]
    yield "strips.tif", tiff(*strips)
    most_pixels = struct.pack("<I", 65535)
    sensor = [tiff_field(0x00FE, 4, 1, bytes(4)), tiff_field(0x0100, 4, 1, most_pixels),
              tiff_field(0x0101, 4, 1, most_pixels),
              tiff_field(0x0102, 3, 1, b"\x10\x00\x00\x00"),
              tiff_field(0x0103, 3, 1, b"\x07\x00\x00\x00"),
              tiff_field(0x0106, 3, 1, struct.pack("<I", 32803)),
              tiff_field(0x0111, 4, 1, NOWHERE), tiff_field(0x0117, 4, 1, WILD),
              tiff_field(0xC612, 1, 4, b"\x01\x04\x00\x00")]
    for name, magic in (("sensor.dng", b"II*\x00"), ("sensor.orf", b"IIRO"),
                        ("sensor.rw2", b"IIU\x00")):
        yield name, tiff(*sensor, magic=magic)
    loop = tiff(tiff_field(0x8769, 4, 1, b"\x08\x00\x00\x00"), following=8)
    yield "loop.tif", loop
    yield "loop.jpg", in_exif(loop)
    yield "endless-directory.tif", b"II*\x00\x08\x00\x00\x00\xff\xff" + b"\x0f\x01" * 400_000
    chain = b"".join(tiff_directory([tiff_field(0x010F, 2, 4, b"abc\x00")], 8 + 18 * (number + 1))
                     for number in range(100_000))
    yield "chain.tif", b"II*\x00\x08\x00\x00\x00" + chain
    big = struct.pack("<QQ", 16, 2**64 - 1) + struct.pack("<HHQQ", 0x10F, 2, 2**64 - 1, 2**63)
    yield "big.tif", b"II+\x00\x08\x00\x00\x00" + big
    note = b"FUJIFILM" + struct.pack("<IH", 12, 65535) + tiff_field(0x1401, 3, MOST, WILD) * 9
    yield "note.jpg", in_exif(tiff(tiff_field(0x8769, 4, 1, b"\x1a\x00\x00\x00"))
                              + tiff_directory([tiff_field(0x927C, 7, MOST, b"\x2c\x00\x00\x00")])
                              + note)


def box(kind, content, size=None):
    return struct.pack(">I", len(content) + 8 if size is None else size) + kind + content


def large_box(kind, content, size):
    return struct.pack(">I", 1) + kind + struct.pack(">Q", size) + content


def heifs():
    head = box(b"ftyp", b"heic\x00\x00\x00\x00mif1heic")
    full = bytes(4)
    for size in (0, 1, 2, 7, 8, 0x7FFFFFFF, 0x80000000, MOST):
        yield f"meta-size-{size:x}.heic", head + box(b"meta", full + bytes(100), size)
        inner = box(b"iinf", full + bytes(100), size)
        yield f"inner-size-{size:x}.heic", head + box(b"meta", full + inner)
        yield f"type-size-{size:x}.heic", box(b"ftyp", b"heic\x00\x00\x00\x00mif1heic", size)
    for size in (0, 15, 16, 2**31, 2**32, 2**63 - 1, 2**63, 2**64 - 1):
        yield f"large-size-{size:x}.heic", head + large_box(b"meta", full + bytes(100), size)
        inner = large_box(b"iloc", full + bytes(100), size)
        yield f"large-inner-{size:x}.heic", head + box(b"meta", full + inner)
    nested = b""
    for _ in range(20_000):
        nested = struct.pack(">I", len(nested) + 8) + b"iprp" + nested
    yield "nested.heic", head + box(b"meta", full + nested)
    yield "many-boxes.heic", head + box(b"free", b"") * 400_000
    # Four thousand million places of no length each, and as many properties and references.
    version2 = b"\x02\x00\x00\x00"
    counted = struct.pack(">I", MOST) + bytes(400_000)
    for kind, content in ((b"iloc", version2 + b"\x00\x00" + counted),
                          (b"iloc", version2 + b"\x88\x80" + b"\xff" * 400_000),
                          (b"iinf", b"\x01\x00\x00\x00" + counted),
                          (b"iprp", box(b"ipma", b"\x01\x00\x00\x01" + counted)),
                          (b"iprp", box(b"ipco", box(b"ispe", full + b"\xff" * 8) * 50_000)),
                          (b"iref", b"\x01\x00\x00\x00" + box(b"dimg", counted))):
        made = head + box(b"meta", full + box(b"pitm", bytes(6)) + box(kind, content))
        yield f"count-{kind.decode()}-{len(content)}-{content[4]}.heic", made
    canon = bytes.fromhex("85c0b687820f11e08111f4ce462b6a48")
    inside = box(b"CMT1", tiff(tiff_field(0x8769, 4, MOST, WILD)), MOST)
    movie = box(b"moov", box(b"uuid", canon + inside))
    yield "boxes.cr3", box(b"ftyp", b"crx \x00\x00\x00\x01crx isom") + movie


def deflated_zeros(mib):
    compressor = zlib.compressobj(9)
    piece = bytes(1024 * 1024)
    return b"".join(compressor.compress(piece) for _ in range(mib)) + compressor.flush()


def others():
    header = b"FUJIFILMCCD-RAW 0201FF129502" + b"X-T5".ljust(32, b"\x00") + b"0100" + bytes(20)
    for name, value in (("most", MOST), ("half", 0x7FFFFFFF), ("minus-one", 0x80000000)):
        yield f"places-{name}.raf", header + struct.pack(">I", value) * 20
        yield f"counts-{name}.raf", (header + struct.pack(">6I", 160, value, 108, value, 160, value)
                                     + struct.pack(">I", value) * 999)
    yield "directory.x3f", (b"FOVb" + struct.pack("<I", 0x20003) + bytes(200) + b"SECd"
                            + struct.pack("<II", 0x20000, MOST) + b"\xff" * 4000
                            + struct.pack("<I", 208))
    yield "heap.crw", (b"II\x1a\x00\x00\x00HEAPCCDR" + bytes(12)
                       + b"".join(struct.pack("<HHII", 1, 0x300A, MOST, 0) for _ in range(999))
                       + struct.pack("<I", 0))
    yield "blocks.mrw", b"\x00MRM" + struct.pack(">I", MOST) + b"\x00PRD" + b"\xff" * 999
    chunk = lambda kind, data: (struct.pack(">I", len(data)) + kind + data
                                + struct.pack(">I", zlib.crc32(kind + data)))
    size = struct.pack(">IIBBBBB", MOST, MOST, 16, 6, 0, 0, 0)
    image = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", size)
    text = b"Raw profile type exif\x00\x00" + deflated_zeros(400)
    yield "text.png", image + chunk(b"zTXt", text)
    yield "length.png", image + struct.pack(">I", MOST) + b"iTXt" + bytes(99)
    for size in (0, 1, 4, 11, 12, 15):
        yield f"short-{size}.jpg", b"\xff\xd8\xff\xe1\x00\x10Exif\x00\x00II*\x00"[:size]
    yield "zeros.raf", bytes(4_000_000)


def write_all(folder):
    """Writes them into the folder."""
    for made in (jpegs(), tiffs(), heifs(), others()):
        for name, content in made:
            path = os.path.join(folder, name)
            assert not os.path.exists(path), name
            with open(path, "wb") as file:
                file.write(content)
