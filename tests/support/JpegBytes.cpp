// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/JpegBytes.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <jpeglib.h>

namespace {

using JpegBytes::Colors;
using JpegBytes::Process;

std::vector<JSAMPLE> samples(const QImage &image, int y, const JpegBytes::Shape &shape)
{
    std::vector<JSAMPLE> row;
    const auto put = [&](int value) { row.push_back(static_cast<JSAMPLE>(value)); };
    for (int x = 0; x < image.width(); ++x) {
        const auto pixel = image.pixel(x, y);
        if (shape.colors == Colors::Grey) {
            put(qGray(pixel));
            continue;
        }
        const bool isLess = shape.colors == Colors::Cmyk || shape.colors == Colors::Ycck;
        for (const int value : {qRed(pixel), qGreen(pixel), qBlue(pixel)}) {
            put(isLess && !shape.isInverted ? 255 - value : value);
        }
        if (isLess) {
            put(shape.isInverted ? 255 : 0);
        }
    }
    return row;
}

} // namespace

QByteArray JpegBytes::jpeg(const QImage &image, const Shape &shape)
{
    jpeg_compress_struct compress = {};
    jpeg_error_mgr errors = {};
    compress.err = jpeg_std_error(&errors); // ends the test when it cannot
    jpeg_create_compress(&compress);
    unsigned char *bytes = nullptr;
    unsigned long length = 0;
    jpeg_mem_dest(&compress, &bytes, &length);

    const bool inks = shape.colors == Colors::Cmyk || shape.colors == Colors::Ycck;
    compress.image_width = static_cast<JDIMENSION>(image.width());
    compress.image_height = static_cast<JDIMENSION>(image.height());
    compress.input_components = inks ? 4 : shape.colors == Colors::Grey ? 1 : 3;
    compress.in_color_space = inks                           ? JCS_CMYK
                              : shape.colors == Colors::Grey ? JCS_GRAYSCALE
                                                             : JCS_RGB;
    jpeg_set_defaults(&compress);
    if (shape.colors == Colors::Rgb) {
        jpeg_set_colorspace(&compress, JCS_RGB);
    } else if (shape.colors == Colors::Ycck) {
        jpeg_set_colorspace(&compress, JCS_YCCK);
    }
    if (inks) {
        // Its presence says that the samples are inverted.
        compress.write_Adobe_marker = shape.isInverted ? TRUE : FALSE;
    }
    const bool extended = shape.process == Process::Extended;
    jpeg_set_quality(&compress, shape.quality, extended ? FALSE : TRUE);
    if (extended) {
        compress.quant_tbl_ptrs[0]->quantval[63] = 300; // more than baseline may have
    }
    compress.comp_info[0].h_samp_factor = shape.sampling.width();
    compress.comp_info[0].v_samp_factor = shape.sampling.height();
    if (shape.colors == Colors::Ycck) {
        compress.comp_info[3].h_samp_factor = shape.sampling.width();
        compress.comp_info[3].v_samp_factor = shape.sampling.height();
    }
    compress.restart_interval = static_cast<unsigned int>(shape.restartInterval);
    compress.arith_code =
        shape.process == Process::Arithmetic || shape.process == Process::ProgressiveArithmetic
            ? TRUE
            : FALSE;
    if (shape.process == Process::Progressive || shape.process == Process::ProgressiveArithmetic) {
        jpeg_simple_progression(&compress);
    }
    jpeg_start_compress(&compress, TRUE);
    for (int y = 0; y < image.height(); ++y) {
        auto row = samples(image, y, shape);
        JSAMPROW pointer = row.data();
        jpeg_write_scanlines(&compress, &pointer, 1);
    }
    jpeg_finish_compress(&compress);
    jpeg_destroy_compress(&compress);
    const QByteArray result(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(length));
    std::free(bytes);
    return result;
}
