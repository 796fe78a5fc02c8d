// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tools/kestle-probe/DecodeCommand.h"

#include "platform/imageio/ImageSource.h"

#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int thumbnailPixel = 256;

ExitStatus decode(const QStringList &files, std::optional<int> maxPixel)
{
    if (files.isEmpty() || files.size() > 2) {
        return BadUsage;
    }
    const auto path = QFile::encodeName(files.first());
    const auto source = ImageSource::open(path.toStdString());
    const auto image = source ? source->image(maxPixel) : QImage();
    if (image.isNull()) {
        std::fprintf(stderr, "kestle-probe: no picture in %s\n", path.constData());
        return Failure;
    }
    std::printf("%d x %d\n", image.width(), image.height());
    if (files.size() == 2 && !image.save(files.last(), "PNG")) {
        std::fprintf(stderr, "kestle-probe: cannot write %s\n", qUtf8Printable(files.last()));
        return Failure;
    }
    return Success;
}

} // namespace

ExitStatus decodeCommand(const QStringList &arguments)
{
    if (arguments.value(0) != u"--max-pixel"_s) {
        return decode(arguments, std::nullopt);
    }
    bool isNumber = false;
    const int maxPixel = arguments.value(1).toInt(&isNumber);
    return isNumber && maxPixel > 0 ? decode(arguments.mid(2), maxPixel) : BadUsage;
}

ExitStatus thumbnailCommand(const QStringList &arguments)
{
    return decode(arguments, thumbnailPixel);
}
