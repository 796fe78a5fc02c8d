// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/Stopwatch.h"
#include "platform/imageio/ImageSource.h"
#include "platform/media/PosterFrame.h"

#include <QFile>
#include <QImageReader>

#include <array>
#include <cstdio>
#include <string_view>
#include <vector>

#include <jpeglib.h>

namespace {

struct Task {
    std::filesystem::path file;
    std::optional<int> edge; ///< the longest in pixels; whole without
};

QImage kestle(const Task &task)
{
    const auto source = ImageSource::open(task.file);
    return source ? source->image(task.edge) : QImage();
}

QImage poster(const Task &task)
{
    return posterFrame(task.file, task.edge.value_or(posterPixel));
}

/// A peer: quick and soft.
QImage qt(const Task &task)
{
    QImageReader::setAllocationLimit(0);
    QImageReader reader(QFile::decodeName(task.file.c_str()));
    reader.setAutoTransform(true);
    if (task.edge) {
        reader.setScaledSize(reader.size().scaled(*task.edge, *task.edge, Qt::KeepAspectRatio));
    }
    return reader.read();
}

/// A peer: what libjpeg-turbo takes without anything around it, into rows of three bytes.
QImage libjpeg(const Task &task, unsigned int eighths)
{
    QFile file(QFile::decodeName(task.file.c_str()));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const auto bytes = file.readAll();
    jpeg_decompress_struct info = {};
    jpeg_error_mgr errors = {};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char *>(bytes.constData()),
                 static_cast<unsigned long>(bytes.size()));
    jpeg_read_header(&info, TRUE);
    info.scale_num = eighths;
    info.scale_denom = 8;
    jpeg_start_decompress(&info);
    QImage image(static_cast<int>(info.output_width), static_cast<int>(info.output_height),
                 QImage::Format_RGB888);
    while (info.output_scanline < info.output_height) {
        JSAMPROW row = image.scanLine(static_cast<int>(info.output_scanline));
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    return image;
}

struct Work {
    std::string_view name;
    QImage (*run)(const Task &task);
};

constexpr std::array works = {
    Work{"kestle", kestle},
    Work{"poster", poster},
    Work{"qt", qt},
    Work{"libjpeg-whole", [](const Task &task) { return libjpeg(task, 8); }},
    Work{"libjpeg-eighth", [](const Task &task) { return libjpeg(task, 1); }},
};

} // namespace

/// Decodes FILE once, its longest edge at most EDGE pixels, 0 for all of it; prints what that took
/// without the start of the program, and writes the picture where OUT is given.
int main(int argc, char **argv)
{
    for (const auto &work : works) {
        if ((argc != 4 && argc != 5) || work.name != argv[1]) {
            continue;
        }
        Task task = {argv[2], std::atoi(argv[3])};
        if (task.edge == 0) {
            task.edge.reset();
        }
        Stopwatch watch;
        watch.start();
        const auto image = work.run(task);
        watch.stop();
        watch.print();
        const bool written = argc == 4 || image.save(QString::fromLocal8Bit(argv[4]), "PPM");
        return !image.isNull() && written ? 0 : 1;
    }
    std::fputs("usage: decode-work WORK FILE EDGE [OUT.ppm]\n", stderr);
    return 2;
}
