// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/models/LibrariesModel.h"

#include <array>

namespace {

struct Library {
    const char *name;
    const char *use;     ///< translated where it is shown
    const char *licence; ///< by the SPDX licence list; never translated
};

} // namespace

static constexpr std::array libraries{
    Library{"Qt", QT_TRANSLATE_NOOP("LibrariesModel", "windows, drawing, D-Bus and network"),
            "LGPL-3.0-only"},
    Library{"Exiv2", QT_TRANSLATE_NOOP("LibrariesModel", "capture settings of some formats"),
            "GPL-2.0-or-later"},
    Library{"LibRaw", QT_TRANSLATE_NOOP("LibrariesModel", "RAW pictures"),
            "LGPL-2.1-only OR CDDL-1.0"},
    Library{"libjpeg-turbo", QT_TRANSLATE_NOOP("LibrariesModel", "JPEG pictures"),
            "IJG AND BSD-3-Clause AND Zlib"},
    Library{"LibTIFF", QT_TRANSLATE_NOOP("LibrariesModel", "TIFF pictures"), "libtiff"},
    Library{"Little CMS", QT_TRANSLATE_NOOP("LibrariesModel", "colour profiles"), "MIT"},
    Library{"FFmpeg", QT_TRANSLATE_NOOP("LibrariesModel", "HEIF pictures and frames of clips"),
            "GPL-2.0-or-later"},
    Library{"libmpv", QT_TRANSLATE_NOOP("LibrariesModel", "clips that play"), "GPL-2.0-or-later"},
    Library{"QCoro", QT_TRANSLATE_NOOP("LibrariesModel", "work in the background"), "MIT"},
    Library{"JSON for Modern C++", QT_TRANSLATE_NOOP("LibrariesModel", "sessions that are resumed"),
            "MIT"},
    Library{"OpenSSL", QT_TRANSLATE_NOOP("LibrariesModel", "signatures of newer versions"),
            "Apache-2.0"},
};

int LibrariesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(libraries.size());
}

QVariant LibrariesModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const auto &library = libraries[size_t(index.row())];
    switch (role) {
    case NameRole:
        return QString::fromLatin1(library.name);
    case UseRole:
        return tr(library.use);
    case LicenceRole:
        return QString::fromLatin1(library.licence);
    default:
        return {};
    }
}

QHash<int, QByteArray> LibrariesModel::roleNames() const
{
    return {{NameRole, "name"}, {UseRole, "use"}, {LicenceRole, "licence"}};
}
