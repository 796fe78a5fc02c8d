// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/Companions.h"

#include "demo/card/DatedFile.h"

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace Companions {

// A second of quiet hiss: a voice memo (WAVE, 8 kHz, 8 bit, mono).
static QByteArray voiceMemo()
{
    QByteArray sound("RIFF\x64\x1f\0\0WAVEfmt "
                     "\x10\0\0\0\x01\0\x01\0\x40\x1f\0\0\x40\x1f\0\0\x01\0\x08\0data\x40\x1f\0\0",
                     44);
    quint32 state = 1;
    for (int i = 0; i < 8000; ++i) {
        state = state * 1664525U + 1013904223U;
        sound += static_cast<char>(128 + static_cast<int>(state >> 29U) - 4);
    }
    return sound;
}

bool add(const fs::path &root, const QDateTime &when, CardManifest &manifest)
{
    const QByteArray resourceFork =
        QByteArray::fromHex("00051607000200004d6163204f5320582020202020202020") +
        QByteArray(4072, '\0');
    const QByteArray rating =
        R"(<x:xmpmeta xmlns:x="adobe:ns:meta/"><rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#"><rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/" xmp:Rating="3"/></rdf:RDF></x:xmpmeta>)"_ba;
    const std::pair<const char *, QByteArray> files[] = {
        {"DCIM/100_FUJI/._DSCF0003.JPG", resourceFork},
        {"DCIM/100_FUJI/DSCF0005.XMP", rating},
        {"DCIM/100_FUJI/DSCF0007.WAV", voiceMemo()},
        {"DCIM/.thumbnails/DSCF0001.JPG", "not a picture\n"_ba},
        {"MISC/AUTPRINT.MRK", "[HDR]\r\nGEN REV = 01.10\r\n"_ba},
        {".Spotlight-V100/VolumeConfiguration.plist", "<plist version=\"1.0\"/>\n"_ba},
    };
    for (const auto &[name, bytes] : files) {
        std::error_code error;
        fs::create_directories((root / name).parent_path(), error);
        if (!DatedFile::write(root / name, bytes, when)) {
            return false;
        }
        manifest.companions.append(QString::fromLatin1(name));
    }
    return true;
}

} // namespace Companions
