// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/RawDevelopment.h"

#include "platform/imageio/FittedPicture.h"
#include "platform/imageio/JpegDecoder.h"
#include "platform/imageio/LibRawStream.h"
#include "platform/imageio/SrgbCurve.h"

#include <libraw/libraw.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <vector>

using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr qint64 mostPixels = 200'000'000;
/// Sensor data of 100 megapixels and what is made of it; no less would show it whole.
constexpr qint64 mostMemory = qint64{1536} * 1024 * 1024;
/// No camera packs them more tightly; a file that claims it lacks its sensor data.
constexpr qint64 mostPixelsPerByte = 16;
/// Several times what the largest sensor takes on a slow machine.
constexpr auto mostTime = 20s;

/// Places in a file of LibRaw's data that are read again and again.
qint64 mostBytesOf(const InputFile &file)
{
    return 2 * file.size() + qint64{64} * 1024 * 1024;
}

/// For every amount of light in sRGB's primaries its code. Meters place middle grey at 12.7 % of
/// the sensor's range (ISO 12232), and a picture has it at 18 % of white: the curve goes through
/// both and bends to white, so that no highlight is lost on the way.
const std::vector<quint8> &tones()
{
    static const auto table = [] {
        constexpr int white = 65535;
        constexpr double bend = 0.5;
        std::vector<quint8> result(white + 1);
        for (int value = 0; value <= white; ++value) {
            const double light = double(value) / white;
            const double shown = light * (1 + bend) / (1 + bend * light);
            result[static_cast<size_t>(value)] =
                static_cast<quint8>(std::lround(255 * SrgbCurve::code(shown)));
        }
        return result;
    }();
    return table;
}

/// LibRaw's turns as codes of EXIF.
int codeOf(int flip)
{
    return flip == 3 ? 3 : flip == 5 ? 8 : flip == 6 ? 6 : 1;
}

class Developer {
public:
    explicit Developer(const InputFile &file)
        : m_file(file)
        , m_stream(file, mostBytesOf(file))
    {
        m_raw->set_progress_handler(
            [](void *self, LibRaw_progress, int, int) {
                return Clock::now() > static_cast<Developer *>(self)->m_end ? 1 : 0;
            },
            this);
    }

    /// False where there is nothing to develop or too much.
    [[nodiscard]] bool open(std::optional<int> maxPixel)
    {
        if (m_raw->open_datastream(&m_stream) != LIBRAW_SUCCESS) {
            return false;
        }
        const auto &sizes = m_raw->imgdata.sizes;
        const auto stored = qint64{sizes.raw_width} * sizes.raw_height;
        const auto shown = qint64{sizes.width} * sizes.height;
        if (shown == 0 || std::max(stored, shown) > mostPixels ||
            std::max(stored, shown) / mostPixelsPerByte > m_file.size()) {
            return false;
        }
        m_half = maxPixel && std::max(sizes.width, sizes.height) / 2 >= *maxPixel;
        m_code = codeOf(sizes.flip);
        constexpr qint64 storedBytes = 2;
        constexpr qint64 developedBytes = 8;
        constexpr qint64 shownBytes = 4;
        const auto developed = m_half ? shown / 4 : shown;
        const auto target = JpegDecoder::fitted({sizes.width, sizes.height}, maxPixel);
        return stored * storedBytes + developed * developedBytes +
                   qint64{target.width()} * target.height() * shownBytes <=
               mostMemory;
    }

    [[nodiscard]] bool develop()
    {
        auto &parameters = m_raw->imgdata.params;
        parameters.half_size = m_half ? 1 : 0;
        parameters.use_camera_wb = 1;
        parameters.no_auto_bright = 1;
        parameters.output_color = 1; // sRGB
        parameters.output_bps = 16;
        parameters.max_raw_memory_mb = mostMemory / 1024 / 1024;
        if (m_raw->unpack() != LIBRAW_SUCCESS) {
            return false;
        }
        // For 26 megapixels of X-Trans the plain interpolation takes a second, the next better
        // five, and those made for it ten and more. For Bayer's pattern the better one takes half
        // a second longer than the plain one, its best two and a half.
        constexpr int plain = 0;
        constexpr int patterned = 2;
        parameters.user_qual = m_raw->imgdata.idata.filters == LIBRAW_XTRANS ? plain : patterned;
        return m_raw->dcraw_process() == LIBRAW_SUCCESS && m_raw->imgdata.image != nullptr;
    }

    [[nodiscard]] QImage picture(std::optional<int> maxPixel,
                                 const RawDevelopment::Orientation &orientation) const
    {
        const auto &data = m_raw->imgdata;
        const QSize size(data.sizes.width, data.sizes.height);
        const auto &tone = tones();
        // Of half the size there is a pixel less where the whole is odd.
        FittedPicture result(size, JpegDecoder::fitted(size, maxPixel), orientation(size, m_code));
        if (!result.isValid()) {
            return {};
        }
        const size_t green = data.idata.colors == 1 ? 0 : 1;
        const size_t blue = data.idata.colors == 1 ? 0 : 2;
        std::vector<QRgb> row(static_cast<size_t>(size.width()));
        const auto *source = data.image;
        for (int y = 0; y < size.height(); ++y) {
            for (auto &pixel : row) {
                pixel = qRgb(tone[(*source)[0]], tone[(*source)[green]], tone[(*source)[blue]]);
                ++source;
            }
            result.addRow(row.data());
        }
        return result.take();
    }

private:
    const InputFile &m_file;
    Clock::time_point m_end = Clock::now() + mostTime;
    LibRawStream m_stream; // the developer refers to it to its end
    // Without the handlers that print.
    std::unique_ptr<LibRaw> m_raw = std::make_unique<LibRaw>(LIBRAW_OPIONS_NO_MEMERR_CALLBACK |
                                                             LIBRAW_OPIONS_NO_DATAERR_CALLBACK);
    bool m_half = false;
    int m_code = 1;
};

} // namespace

QImage RawDevelopment::develop(const InputFile &file, std::optional<int> maxPixel,
                               const Orientation &orientation)
{
    try {
        Developer developer(file);
        if (developer.open(maxPixel) && developer.develop()) {
            return developer.picture(maxPixel, orientation);
        }
    } catch (const std::exception &) {
        return {}; // LibRaw lets out what its memory and its streams throw
    }
    return {};
}
