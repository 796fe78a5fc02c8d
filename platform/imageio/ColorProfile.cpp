// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ColorProfile.h"

#include <QColorSpace>
#include <QLoggingCategory>

#include <lcms2.h>

#include <memory>
#include <optional>
#include <type_traits>

namespace {

template<auto close>
struct Closer {
    template<typename T>
    void operator()(T *handle) const
    {
        close(handle);
    }
};

using Context = std::unique_ptr<std::remove_pointer_t<cmsContext>, Closer<cmsDeleteContext>>;
using Profile = std::unique_ptr<void, Closer<cmsCloseProfile>>;
using Transform = std::unique_ptr<void, Closer<cmsDeleteTransform>>;

/// The colour space of the data stands at byte 16 of the header.
bool isForRgb(const QByteArray &icc)
{
    return icc.size() >= 128 && QByteArrayView(icc).sliced(16, 4) == "RGB ";
}

/// Qt writes a line about every damaged profile, which is nobody's business on a terminal.
void silenceQt()
{
    static QLoggingCategory::CategoryFilter others = nullptr;
    [[maybe_unused]] static const bool silenced = [] {
        others = QLoggingCategory::installFilter(nullptr); // tells which one was there
        QLoggingCategory::installFilter([](QLoggingCategory *category) {
            others(category);
            if (qstrcmp(category->categoryName(), "qt.gui.icc") == 0) {
                category->setEnabled(QtWarningMsg, false);
            }
        });
        return true;
    }();
}

/// For profiles with tables, which QColorSpace does not take.
void convertByTables(QImage &image, const QByteArray &icc)
{
    const Context context(cmsCreateContext(nullptr, nullptr)); // says nothing on errors
    const Profile source(cmsOpenProfileFromMemTHR(context.get(), icc.constData(),
                                                  static_cast<cmsUInt32Number>(icc.size())));
    const Profile target(cmsCreate_sRGBProfileTHR(context.get()));
    if (!source || !target) {
        return;
    }
    const Transform transform(cmsCreateTransformTHR(context.get(), source.get(), TYPE_BGRA_8,
                                                    target.get(), TYPE_BGRA_8, INTENT_PERCEPTUAL,
                                                    cmsFLAGS_COPY_ALPHA | cmsFLAGS_HIGHRESPRECALC));
    if (!transform) {
        return;
    }
    for (int row = 0; row < image.height(); ++row) {
        auto *line = image.scanLine(row);
        cmsDoTransform(transform.get(), line, line, static_cast<cmsUInt32Number>(image.width()));
    }
}

/// H.273, table 2. Nothing where they are sRGB's or unknown.
std::optional<QColorSpace> primariesOf(int number, QColorSpace::TransferFunction transfer,
                                       float gamma)
{
    const QPointF d65(0.3127, 0.3290);
    const auto space = [&](QPointF red, QPointF green, QPointF blue, QPointF white) {
        return QColorSpace(white, red, green, blue, transfer, gamma);
    };
    switch (number) {
    case 5:
        return space({0.64, 0.33}, {0.29, 0.60}, {0.15, 0.06}, d65);
    case 6:
    case 7:
        return space({0.630, 0.340}, {0.310, 0.595}, {0.155, 0.070}, d65);
    case 9:
        return space({0.708, 0.292}, {0.170, 0.797}, {0.131, 0.046}, d65);
    case 11:
        return space({0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}, {0.314, 0.351});
    case 12:
        return space({0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}, d65);
    default:
        if (transfer == QColorSpace::TransferFunction::SRgb) {
            return std::nullopt;
        }
        return space({0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}, d65);
    }
}

} // namespace

QImage ColorProfile::toSrgb(QImage image, const QByteArray &icc)
{
    if (image.isNull() || !isForRgb(icc)) {
        return image;
    }
    silenceQt();
    const auto space = QColorSpace::fromIccProfile(icc);
    if (!space.isValid()) {
        convertByTables(image, icc);
    } else if (space != QColorSpace(QColorSpace::SRgb)) {
        image.setColorSpace(space);
        image.convertToColorSpace(QColorSpace::SRgb);
    }
    image.setColorSpace({}); // whatever is shown is sRGB; a tag would be converted once more
    return image;
}

QImage ColorProfile::toSrgb(QImage image, const CodedColor &color)
{
    using Transfer = QColorSpace::TransferFunction;
    const auto transfer = color.transfer == 4 || color.transfer == 5 ? Transfer::Gamma
                          : color.transfer == 8                      ? Transfer::Linear
                                                                     : Transfer::SRgb;
    const auto gamma = color.transfer == 4 ? 2.2F : color.transfer == 5 ? 2.8F : 0.0F;
    const auto space = primariesOf(color.primaries, transfer, gamma);
    if (image.isNull() || !space || !space->isValid()) {
        return image;
    }
    image.setColorSpace(*space);
    image.convertToColorSpace(QColorSpace::SRgb);
    image.setColorSpace({});
    return image;
}

QByteArray ColorProfile::adobeRgb()
{
    return QColorSpace(QColorSpace::AdobeRgb).iccProfile();
}
