// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/Pairing.h"

#include "core/text/FileNameText.h"
#include "core/text/UnicodeOrder.h"

#include <QHash>

#include <algorithm>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

using Location = std::optional<std::filesystem::path>;

/// The files of one key while they are being grouped.
struct Slot {
    Location raw;
    Location preview;
    Location video;
};

using Slots = QHash<QString, Slot>;

/// What a path consists of. The path's own operations make new paths, whose cost adds up.
struct Parts {
    explicit Parts(const std::filesystem::path &file)
    {
        const std::string_view path = file.native();
        const auto slash = path.rfind('/');
        folder = path.substr(0, slash == path.npos ? 0 : slash);
        folderName = folder.substr(folder.rfind('/') + 1);
        stem = path.substr(slash + 1);
        const auto dot = stem.rfind('.');
        if (dot != stem.npos && dot > 0 && stem != "..") {
            extension = stem.substr(dot + 1);
            stem = stem.substr(0, dot);
        }
    }

    std::string_view folder;
    std::string_view folderName;
    std::string_view stem;
    std::string_view extension; ///< without the dot
};

QString upperText(std::string_view name)
{
    return upperCased(keyText(name));
}

QString normalised(const QString &key)
{
    return key.normalized(QString::NormalizationForm_C);
}

/// Folder and stem. Only the finished key is normalised, so that files which another system named
/// with decomposed letters meet those named with composed ones.
QString stemKey(const Parts &file)
{
    return normalised(upperText(file.folderName) + u'/' + upperText(file.stem));
}

QString duplicateKey(const Slots &slots, const QString &key, const QString &extension)
{
    for (qint64 number = 1;; ++number) {
        const auto candidate = normalised(u"%1.%2#dup%3"_s.arg(key, extension).arg(number));
        if (!slots.contains(candidate)) {
            return candidate;
        }
    }
}

/// Whether @p slot's files lie in @p folder: folders of the same name may stand in several places.
bool liesIn(const Slot &slot, std::string_view folder)
{
    const auto elsewhere = [folder](const Location &file) {
        return file && Parts(*file).folder != folder;
    };
    return !elsewhere(slot.raw) && !elsewhere(slot.preview) && !elsewhere(slot.video);
}

/// Puts @p file into the place @p member of its key's slot, or into a slot of its own when that
/// place is taken.
void addStill(Slots &slots, const std::filesystem::path &file, const QString &extension,
              Location Slot::*member)
{
    const Parts parts(file);
    const auto key = stemKey(parts);
    const auto slot = slots.constFind(key);
    const bool taken =
        slot != slots.constEnd() && ((*slot).*member || !liesIn(*slot, parts.folder));
    slots[taken ? duplicateKey(slots, key, extension) : key].*member = file;
}

void addVideo(Slots &slots, const std::filesystem::path &file, const QString &extension)
{
    const Parts parts(file);
    const auto key = stemKey(parts) + u'.' + extension;
    const auto videoKey = normalised(key + u"#video"_s);
    const auto slot = slots.constFind(videoKey);
    const bool elsewhere = slot != slots.constEnd() && !liesIn(*slot, parts.folder);
    slots[elsewhere ? duplicateKey(slots, stemKey(parts), extension) : videoKey].video = file;
}

} // namespace

const QSet<QString> &Pairing::rawExtensions()
{
    static const QSet<QString> extensions = {
        u"RAF"_s, u"CR2"_s, u"CR3"_s, u"CRW"_s, u"NEF"_s, u"NRW"_s, u"ARW"_s,
        u"SR2"_s, u"SRF"_s, u"ORF"_s, u"RW2"_s, u"PEF"_s, u"RWL"_s, u"IIQ"_s,
        u"3FR"_s, u"FFF"_s, u"X3F"_s, u"DNG"_s, u"RAW"_s,
    };
    return extensions;
}

const QSet<QString> &Pairing::previewExtensions()
{
    static const QSet<QString> extensions = {
        u"JPG"_s, u"JPEG"_s, u"HIF"_s, u"HEIF"_s, u"HEIC"_s, u"TIF"_s, u"TIFF"_s,
    };
    return extensions;
}

const QSet<QString> &Pairing::videoExtensions()
{
    static const QSet<QString> extensions = {
        u"MOV"_s, u"MP4"_s, u"M4V"_s, u"AVI"_s, u"MTS"_s, u"M2TS"_s, u"3GP"_s,
    };
    return extensions;
}

QString Pairing::extensionOf(const std::filesystem::path &file)
{
    return upperText(Parts(file).extension);
}

QList<MediaItem> Pairing::pair(const std::vector<std::filesystem::path> &files)
{
    Slots slots;
    slots.reserve(static_cast<qsizetype>(files.size()));
    for (const auto &file : files) {
        const auto extension = extensionOf(file);
        if (rawExtensions().contains(extension)) {
            addStill(slots, file, extension, &Slot::raw);
        } else if (previewExtensions().contains(extension)) {
            addStill(slots, file, extension, &Slot::preview);
        } else if (videoExtensions().contains(extension)) {
            addVideo(slots, file, extension);
        }
    }

    QList<MediaItem> items;
    items.reserve(slots.size());
    for (auto slot = slots.begin(); slot != slots.end(); ++slot) {
        const auto kind = slot->video ? MediaKind::video : MediaKind::photo;
        items.append({slot.key(), kind, std::move(slot->raw), std::move(slot->preview),
                      std::move(slot->video), std::nullopt});
    }
    std::ranges::sort(items, precedesInUnicodeOrder, &MediaItem::id);
    return items;
}
