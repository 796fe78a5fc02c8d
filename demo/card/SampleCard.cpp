// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/SampleCard.h"

#include "demo/card/ClipMaker.h"
#include "demo/card/Companions.h"
#include "demo/card/DatedFile.h"
#include "demo/card/DngWriter.h"
#include "demo/card/ExifWriter.h"
#include "demo/card/PlannedClip.h"
#include "demo/card/PlannedShot.h"
#include "platform/files/CreationDate.h"

#include <QBuffer>
#include <QTransform>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace SampleCard {

constexpr int quality = 90;
constexpr int thumbnailWidth = 320;
constexpr int paintedEdge = 1080;    // more than this only grain can add
constexpr float burstMargin = 1.06F; // painted around the frame, for the shifts of a burst
constexpr size_t firstFolderShots = 26;

static QByteArray jpeg(const QImage &picture, int atQuality = quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "JPG", atQuality);
    return bytes;
}

static QString stem(size_t index)
{
    return u"DSCF%1"_s.arg(index + 1, 4, 10, QChar(u'0'));
}

static QString folder(size_t index)
{
    return index < firstFolderShots ? u"100_FUJI"_s : u"101_FUJI"_s;
}

static bool isHeldUpright(const PlannedShot &shot)
{
    return shot.turned == 6 || shot.turned == 8;
}

// The light of a shot's place, with a margin when several frames are cut from it.
static Canvas paint(const PlannedShot &shot, QSize frame)
{
    const float margin = shot.burst != 0 ? burstMargin : 1;
    View view;
    view.width = static_cast<int>(std::lround(static_cast<float>(frame.width()) * margin));
    view.height = static_cast<int>(std::lround(static_cast<float>(frame.height()) * margin));
    view.zoom = static_cast<float>(std::min(frame.width(), frame.height())) /
                static_cast<float>(std::min(view.width, view.height));
    view.seed = shot.place;
    view.moment = shot.moment;
    return shot.scene(view);
}

static Canvas cut(const Canvas &light, const PlannedShot &shot, QSize frame)
{
    if (light.width() == frame.width()) {
        return light;
    }
    const auto place = [](int spare, float shift, int extent) {
        const auto moved =
            static_cast<int>(std::lround(shift * 0.01F * static_cast<float>(extent)));
        return std::clamp(spare / 2 + moved, 0, spare);
    };
    const int left = place(light.width() - frame.width(), shot.shiftX, frame.width());
    const int top = place(light.height() - frame.height(), shot.shiftY, frame.width());
    Canvas result(frame.width(), frame.height());
    for (int y = 0; y < frame.height(); ++y) {
        std::copy_n(light.row(y + top) + left, frame.width(), result.row(y));
    }
    return result;
}

// Where the camera records the subject: in the pixels as stored.
static QPoint storedPoint(const PlannedShot &shot, QSize stored)
{
    const double x = shot.subjectX;
    const double y = shot.subjectY;
    const QPointF place = shot.turned == 6   ? QPointF(y, 1 - x)
                          : shot.turned == 8 ? QPointF(1 - y, x)
                                             : QPointF(x, y);
    return {static_cast<int>(place.x() * stored.width()),
            static_cast<int>(place.y() * stored.height())};
}

static QImage wholeBlocks(const QImage &picture)
{
    const auto whole = [](int extent) { return extent / HeifWriter::block * HeifWriter::block; };
    return picture.copy(0, 0, whole(picture.width()), whole(picture.height()));
}

static QString pictureExtension(const PlannedShot &shot)
{
    return shot.heif ? u".HIF"_s : u".JPG"_s;
}

// The picture's file, or why there can be none. A JPEG file is made of @p developed.
static HeifWriter::Written pictureFile(const PlannedShot &shot, const CaptureSettings &settings,
                                       const QImage &stored, const QByteArray &developed,
                                       const Options &options)
{
    if (shot.heif) {
        return options.writeHeif(stored, settings);
    }
    const QByteArray thumbnail = jpeg(
        stored.scaledToWidth(std::min(thumbnailWidth, stored.width()), Qt::SmoothTransformation),
        80);
    return {ExifWriter::withExif(developed, thumbnail, settings, stored.size())};
}

// Why the shot is not on the card, empty when it is. Absent when a file cannot be written.
static std::optional<QString> take(const fs::path &dcim, const PlannedShot &shot,
                                   const Canvas &light, size_t index, const Options &options,
                                   QSize frame)
{
    const auto longEdge =
        static_cast<int>(std::lround(shot.size * static_cast<float>(options.longEdge)));
    const QImage upright = shot.development.develop(
        cut(light, shot, frame), longEdge, options.seed * 977 + static_cast<quint32>(index));
    const int turn = shot.turned == 6 ? -90 : shot.turned == 8 ? 90 : 0;
    const QImage turned = turn == 0 ? upright : upright.transformed(QTransform().rotate(turn));
    const QImage stored = shot.heif ? wholeBlocks(turned) : turned;

    CaptureSettings settings = shot.settings;
    settings.orientation = shot.turned;
    if (shot.subjectX >= 0) {
        settings.subject = storedPoint(shot, stored.size());
    }
    const bool needsJpeg = shot.raw || !shot.heif; // the preview in a RAW file is one
    const QByteArray developed = needsJpeg ? jpeg(stored) : QByteArray();
    const auto [picture, problem] = pictureFile(shot, settings, stored, developed, options);
    if (!problem.isEmpty()) {
        return problem;
    }
    const QString base = folder(index) + u'/' + stem(index);
    const auto write = [&](const QString &extension, const QByteArray &bytes) {
        return DatedFile::write(dcim / (base + extension).toStdString(), bytes, settings.captured);
    };
    if ((shot.raw && !write(u".DNG"_s, DngWriter::bytes(stored, developed, settings))) ||
        !write(pictureExtension(shot), picture)) {
        return {};
    }
    return QString();
}

static void addNote(const QString &note, CardManifest &manifest)
{
    if (!manifest.notes.contains(note)) {
        manifest.notes.append(note);
    }
}

static QString clipFile(size_t index, const PlannedClip &clip)
{
    return u"DCIM/%1/%2.%3"_s.arg(folder(index), stem(index), QLatin1String(clip.extension));
}

// Why each clip is not on the card, empty where it is.
static std::vector<QString> film(const fs::path &root, const std::vector<PlannedClip> &clips,
                                 size_t firstIndex)
{
    std::vector<QString> problems;
    for (const auto &clip : clips) {
        const QString file = clipFile(firstIndex + problems.size(), clip);
        problems.push_back(ClipMaker::make(root / file.toStdString(), clip));
    }
    return problems;
}

static bool addClips(const fs::path &root, const std::vector<PlannedClip> &clips, size_t firstIndex,
                     const std::vector<QString> &problems, CardManifest &manifest)
{
    qsizetype undated = 0;
    for (size_t i = 0; i < clips.size(); ++i) {
        if (!problems[i].isEmpty()) {
            addNote(u"Clips are left out: "_s + problems[i], manifest);
            continue;
        }
        const QString name = clipFile(firstIndex + i, clips[i]);
        const fs::path file = root / name.toStdString();
        if (!DatedFile::date(file, clips[i].captured)) {
            return false;
        }
        // A clip is dated by its file's birth, today; without one it comes before everything.
        const auto birth = creationDate(file);
        const CardManifest::Item item{name.section(u'/', 1) + u"#video"_s,
                                      {name},
                                      birth ? birth->toString(Qt::ISODate) : QString()};
        manifest.items.insert(birth ? manifest.items.size() : undated++, item);
    }
    return true;
}

std::optional<CardManifest> make(const fs::path &root, const Options &options)
{
    const fs::path dcim = root / "DCIM";
    std::error_code error;
    fs::create_directories(dcim / "100_FUJI", error);
    fs::create_directories(dcim / "101_FUJI", error);
    if (error) {
        return {};
    }
    const auto shots = PlannedShot::all(options.seed);
    const int edge = std::min(paintedEdge, options.longEdge);

    // A burst is one piece of work: its place is painted once.
    std::vector<std::vector<size_t>> work;
    for (size_t i = 0; i < shots.size(); ++i) {
        if (shots[i].burst != 0 && i > 0 && shots[i - 1].burst == shots[i].burst) {
            work.back().push_back(i);
        } else {
            work.push_back({i});
        }
    }
    std::atomic_size_t next = 0;
    std::atomic_bool failed = false;
    std::vector<QString> problems(shots.size()); // each worker writes those of its own shots
    const auto worker = [&] {
        for (size_t piece = next++; piece < work.size() && !failed; piece = next++) {
            const auto &first = shots[work[piece].front()];
            const int across = edge * 2 / 3;
            const QSize frame = isHeldUpright(first) ? QSize(across, edge) : QSize(edge, across);
            const Canvas light = paint(first, frame);
            for (const size_t index : work[piece]) {
                const auto problem = take(dcim, shots[index], light, index, options, frame);
                if (!problem) {
                    failed = true;
                    return;
                }
                problems[index] = *problem;
            }
        }
    };
    const auto clips = options.clips ? PlannedClip::all(options.seed) : std::vector<PlannedClip>();
    std::vector<QString> clipProblems;
    {
        std::vector<std::jthread> workers;
        workers.emplace_back([&] { clipProblems = film(root, clips, shots.size()); });
        for (unsigned i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i) {
            workers.emplace_back(worker);
        }
    }
    if (failed) {
        return {};
    }

    CardManifest manifest;
    for (size_t i = 0; i < shots.size(); ++i) {
        if (!problems[i].isEmpty()) {
            addNote(u"HEIF pictures are left out: "_s + problems[i], manifest);
            continue;
        }
        const QString base = u"DCIM/%1/%2"_s.arg(folder(i), stem(i));
        QStringList files;
        if (shots[i].raw) {
            files.append(base + u".DNG"_s);
        }
        files.append(base + pictureExtension(shots[i]));
        manifest.items.append({u"%1/%2"_s.arg(folder(i), stem(i)), files,
                               shots[i].settings.captured.toString(Qt::ISODate)});
    }
    const QDateTime last = shots.back().settings.captured;
    if (!Companions::add(root, last, manifest)) {
        return {};
    }
    if (!addClips(root, clips, shots.size(), clipProblems, manifest)) {
        return {};
    }
    return manifest;
}

} // namespace SampleCard
