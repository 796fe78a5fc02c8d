// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/DocumentGrant.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;

static const auto grantKey = u"grant"_s;
static const auto documentKey = u"document"_s;
static const auto pathKey = u"path"_s;
static const auto portalGrant = u"portal"_s;

/// Documents are numbered with 32 bits and named in C's "%x".
static bool isDocument(std::string_view name)
{
    return !name.empty() && name.size() <= 8 && name.front() != '0' &&
           name.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// The names between the slashes of an absolute path; empty when one of them is no name.
static std::vector<std::string_view> namesOf(std::string_view path)
{
    std::vector<std::string_view> names;
    while (path.starts_with('/')) {
        path.remove_prefix(1);
        const auto name = path.substr(0, path.find('/'));
        if (name.empty() || name == "." || name == "..") {
            return {};
        }
        names.push_back(name);
        path.remove_prefix(name.size());
    }
    return path.empty() ? names : std::vector<std::string_view>();
}

/// What begins with the document's name in a path that holds such a grant.
static std::string_view documentAndBelow(std::string_view path)
{
    const auto names = namesOf(path);
    for (std::size_t i = 0; i + 2 < names.size(); ++i) {
        if (names[i] == "doc" && isDocument(names[i + 1])) {
            return path.substr(std::size_t(names[i + 1].data() - path.data()));
        }
    }
    return {};
}

static QJsonObject objectOf(const DocumentGrant &grant)
{
    const auto path = QByteArray::fromStdString(grant.path.native()).toPercentEncoding("/"_ba);
    return {{grantKey, portalGrant},
            {documentKey, grant.document},
            {pathKey, QString::fromLatin1(path)}};
}

std::optional<DocumentGrant> DocumentGrant::ofPath(const std::filesystem::path &path)
{
    auto bytes = path.native();
    if (bytes.ends_with('/')) {
        bytes.pop_back();
    }
    const auto found = documentAndBelow(bytes);
    if (found.empty() || bytes.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    const auto document = found.substr(0, found.find('/'));
    return DocumentGrant{.document = QString::fromLatin1(document), .path = bytes};
}

QByteArray DocumentGrant::data() const
{
    return QJsonDocument(objectOf(*this)).toJson(QJsonDocument::Compact);
}

std::optional<DocumentGrant> DocumentGrant::from(const QByteArray &data)
{
    const auto object = QJsonDocument::fromJson(data).object();
    const auto path = QByteArray::fromPercentEncoding(object.value(pathKey).toString().toLatin1());
    const auto grant = ofPath(path.toStdString());
    return grant && objectOf(*grant) == object ? grant : std::nullopt;
}

std::optional<DocumentGrant> DocumentGrant::renewed(const std::filesystem::path &mountPoint) const
{
    const auto below = documentAndBelow(path.native());
    const auto moved = mountPoint / below;
    const auto isSame = !below.empty() && documentAndBelow(moved.native()) == below;
    return isSame ? ofPath(moved) : std::nullopt;
}
