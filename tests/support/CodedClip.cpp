// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/CodedClip.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLockFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTransform>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int bits = 10;
constexpr int patience = 60'000; // milliseconds
constexpr uchar black = 16;
constexpr uchar white = 235;

/// The rows of bars: the mark that tells which corner it is, the number, and the number with black
/// and white exchanged. As parts of the height.
constexpr double markRow = 1.0 / 8;
constexpr double numberRow = 3.0 / 8;
constexpr double oppositeRow = 5.0 / 8;

/// One frame as YUV 4:2:0.
QByteArray frame(int number)
{
    const auto size = CodedClip::size;
    QByteArray bytes(size.width() * size.height() * 3 / 2, char(128));
    for (int y = 0; y < size.height(); ++y) {
        const int row = y * 4 / size.height();
        for (int x = 0; x < size.width(); ++x) {
            const bool bit = (number >> (x * bits / size.width()) & 1) != 0;
            const bool isMark = x < size.width() / bits;
            const bool isWhite = row == 0 ? isMark : row == 1 ? bit : row == 2 ? !bit : false;
            bytes[y * size.width() + x] = char(isWhite ? white : black);
        }
    }
    return bytes;
}

QString command()
{
    return QStandardPaths::findExecutable(u"ffmpeg"_s);
}

bool hasSucceeded(QProcess &ffmpeg)
{
    const bool hasEnded = ffmpeg.waitForFinished(patience);
    if (!hasEnded || ffmpeg.exitCode() != 0) {
        qWarning("%s", ffmpeg.readAllStandardError().constData());
        ffmpeg.kill();
        ffmpeg.waitForFinished();
        return false;
    }
    return true;
}

} // namespace

bool CodedClip::canBeMade()
{
    return !command().isEmpty();
}

CodedClip CodedClip::h264(const QString &name, int frames)
{
    return {.name = name,
            .coding = {u"-c:v"_s, u"libx264"_s, u"-preset"_s, u"veryfast"_s, u"-crf"_s, u"23"_s,
                       u"-g"_s, u"250"_s, u"-keyint_min"_s, u"250"_s, u"-sc_threshold"_s, u"0"_s,
                       u"-bf"_s, u"3"_s, u"-pix_fmt"_s, u"yuv420p"_s},
            .times = std::vector<double>(size_t(frames)),
            .rate = {}};
}

CodedClip CodedClip::hevc(const QString &name, int frames)
{
    return {.name = name,
            .coding = {u"-c:v"_s, u"libx265"_s, u"-preset"_s, u"ultrafast"_s, u"-crf"_s, u"23"_s,
                       u"-x265-params"_s,
                       u"log-level=none:keyint=250:min-keyint=250:scenecut=0:bframes=3:"
                       "open-gop=1:b-pyramid=1"_s,
                       u"-tag:v"_s, u"hvc1"_s, u"-pix_fmt"_s, u"yuv420p10le"_s},
            .times = std::vector<double>(size_t(frames)),
            .rate = {}};
}

CodedClip &CodedClip::at(int numerator, int denominator)
{
    rate = u"%1/%2"_s.arg(numerator).arg(denominator);
    for (size_t number = 0; number < times.size(); ++number) {
        times[number] = double(number) * denominator / numerator;
    }
    return *this;
}

CodedClip &CodedClip::irregular()
{
    rate = u"50"_s;
    timing = u"'(floor(N/3)*8+eq(mod(N,3),1)+eq(mod(N,3),2)*3)/50/TB'"_s;
    for (size_t number = 0; number < times.size(); ++number) {
        constexpr int within[] = {0, 1, 3};
        times[number] = double(number / 3 * 8 + size_t(within[number % 3])) / 50;
    }
    return *this;
}

QSize CodedClip::shownSize() const
{
    return turn % 180 == 0 ? size : size.transposed();
}

int CodedClip::frameAt(double time) const
{
    const auto next = std::ranges::upper_bound(times, time);
    return std::max(0, int(next - times.begin()) - 1);
}

double CodedClip::end() const
{
    return 2 * times.back() - times[times.size() - 2];
}

std::filesystem::path CodedClip::file() const
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    const auto arguments =
        coding + QStringList{rate, timing, QString::number(turn), QString::number(times.size()),
                             hasSound ? u"sound"_s : u"silence"_s};
    hash.addData(arguments.join(u'\n').toUtf8());
    const QDir folder(QStringLiteral(KESTLE_CODED_CLIPS));
    folder.mkpath(u"."_s);
    const auto path =
        folder.filePath(QString::fromLatin1(hash.result().toHex().left(12)) + u'-' + name);
    QLockFile lock(path + u".lock"_s);
    lock.lock(); // another test may be making it
    if (!QFile::exists(path) && !make(path)) {
        qFatal("%s cannot be made", qPrintable(name));
    }
    return path.toStdString();
}

bool CodedClip::make(const QString &path) const
{
    const QTemporaryDir work(QDir(QStringLiteral(KESTLE_CODED_CLIPS)).filePath(u"making-XXXXXX"_s));
    const auto finished = work.filePath(name);
    QStringList arguments{
        u"-v"_s,       u"error"_s,   u"-f"_s, u"rawvideo"_s,
        u"-pix_fmt"_s, u"yuv420p"_s, u"-s"_s, u"%1x%2"_s.arg(size.width()).arg(size.height()),
        u"-r"_s,       rate,         u"-i"_s, u"-"_s};
    if (hasSound) {
        arguments += {u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=f=440:d=%1"_s.arg(end())};
    }
    if (!timing.isEmpty()) {
        arguments += {u"-vf"_s,
                      u"settb=1/90000,setpts="_s + timing,
                      u"-fps_mode"_s,
                      u"passthrough"_s,
                      u"-enc_time_base"_s,
                      u"1/90000"_s};
    }
    const auto coded = turn == 0 ? finished : work.filePath(u"straight-"_s + name);
    QProcess ffmpeg;
    ffmpeg.start(command(), arguments + coding + QStringList{u"-y"_s, coded});
    for (int number = 0; number < int(times.size()); ++number) {
        ffmpeg.write(frame(number));
    }
    ffmpeg.closeWriteChannel();
    if (!hasSucceeded(ffmpeg)) {
        return false;
    }
    if (turn != 0) { // kept only where nothing is coded
        QProcess wrap;
        wrap.start(command(),
                   {u"-v"_s, u"error"_s, u"-i"_s, coded, u"-c"_s, u"copy"_s, u"-metadata:s:v:0"_s,
                    u"rotate=%1"_s.arg(360 - turn), u"-y"_s, finished});
        if (!hasSucceeded(wrap)) {
            return false;
        }
    }
    return QFile::rename(finished, path);
}

int CodedClip::frameIn(const QImage &picture) const
{
    if (picture.isNull()) {
        return -1;
    }
    const QImage coded = turn == 0 ? picture : picture.transformed(QTransform().rotate(-turn));
    const QSizeF fitted = QSizeF(size).scaled(coded.size(), Qt::KeepAspectRatio);
    const QPointF corner((coded.width() - fitted.width()) / 2,
                         (coded.height() - fitted.height()) / 2);
    const auto grey = [&](double across, double down) {
        const QPointF at(corner.x() + across * fitted.width(), corner.y() + down * fitted.height());
        return qGray(coded.pixel(at.toPoint()));
    };
    const auto isWhite = [&](double column, double row) {
        return grey((column + 0.5) / bits, row) > 128;
    };
    int number = 0;
    for (int bit = 0; bit < bits; ++bit) {
        const bool isSet = isWhite(bit, numberRow);
        if (isSet == isWhite(bit, oppositeRow)) {
            return -1;
        }
        number |= isSet ? 1 << bit : 0;
    }
    const bool isUpright = isWhite(0, markRow) && !isWhite(bits - 1, markRow) &&
                           !isWhite(0, 7.0 / 8) && !isWhite(bits - 1, 7.0 / 8);
    return isUpright ? number : -2;
}
