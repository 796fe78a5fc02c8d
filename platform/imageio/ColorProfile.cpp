// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ColorProfile.h"

#include <QColorSpace>
#include <QLoggingCategory>

#include <lcms2.h>

#include <memory>
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

QByteArray ColorProfile::adobeRgb()
{
    return QColorSpace(QColorSpace::AdobeRgb).iccProfile();
}
