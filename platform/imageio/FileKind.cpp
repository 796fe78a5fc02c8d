// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/FileKind.h"

#include "platform/imageio/TiffReader.h"

FileKind fileKind(PagedReader &reader)
{
    const auto head = reader.view(0, 16);
    if (head.startsWith("\xff\xd8\xff")) {
        return FileKind::Jpeg;
    }
    if (head.startsWith("FUJIFILMCCD-RAW")) {
        return FileKind::Raf;
    }
    if (head.sliced(head.isEmpty() ? 0 : 4).startsWith("ftyp")) {
        return head.sliced(8).startsWith("crx ") ? FileKind::Cr3 : FileKind::Media;
    }
    if (head.sliced(head.isEmpty() ? 0 : 6).startsWith("HEAPCCDR")) {
        return FileKind::Ciff;
    }
    if (head.startsWith("FOVb")) {
        return FileKind::X3f;
    }
    if (head.startsWith(QByteArrayView("\0MRM", 4)) || head.startsWith("\x89PNG\r\n\x1a\n")) {
        return FileKind::Other;
    }
    return TiffReader::open(reader, {0, reader.size()}) ? FileKind::Tiff : FileKind::Unknown;
}
