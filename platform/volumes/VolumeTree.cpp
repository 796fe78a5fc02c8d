// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/volumes/VolumeTree.h"

#include <QByteArrayList>
#include <QFile>
#include <QHash>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

const auto blockInterface = u"org.freedesktop.UDisks2.Block"_s;
const auto driveInterface = u"org.freedesktop.UDisks2.Drive"_s;
const auto loopInterface = u"org.freedesktop.UDisks2.Loop"_s;
const auto partitionInterface = u"org.freedesktop.UDisks2.Partition"_s;

/// The value of a property if it has just this type, else the type's empty value.
template<typename T>
T property(const QVariantMap &properties, const QString &name)
{
    const auto value = properties.value(name);
    return value.metaType() == QMetaType::fromType<T>() ? value.value<T>() : T();
}

/// Paths and device names end with a NUL.
QByteArray untilNul(const QByteArray &bytes)
{
    return bytes.first(qstrnlen(bytes.constData(), size_t(bytes.size())));
}

struct Candidate {
    qsizetype order;
    bool isOnTop;
    MountedVolume volume;
};

/// The kernel's mounts by their mount point; a later one lies on top of an earlier one.
class TopMounts {
public:
    explicit TopMounts(const QList<Mount> &mounts)
        : m_mounts(mounts)
    {
        for (qsizetype i = 0; i < mounts.size(); ++i) {
            m_places.insert(QByteArray::fromStdString(mounts[i].mountPoint.native()), i);
        }
    }

    /// Says where @p volume stands among the mounts, and whether it may be written.
    [[nodiscard]] Candidate place(MountedVolume volume, quint64 device) const
    {
        const auto place =
            m_places.value(QByteArray::fromStdString(volume.mountPoint.native()), m_mounts.size());
        const bool isKnown = place < m_mounts.size();
        volume.isReadOnly = volume.isReadOnly || (isKnown && m_mounts[place].isReadOnly);
        return {place, isKnown && device != 0 && m_mounts[place].device == device,
                std::move(volume)};
    }

private:
    const QList<Mount> &m_mounts;
    QHash<QByteArray, qsizetype> m_places;
};

/// Sorts by mount order and leaves one entry at each mount point.
QList<MountedVolume> arranged(std::vector<Candidate> candidates)
{
    std::ranges::stable_sort(candidates, [](const Candidate &a, const Candidate &b) {
        return std::tuple(a.order, a.volume.mountPoint.native(), !a.isOnTop) <
               std::tuple(b.order, b.volume.mountPoint.native(), !b.isOnTop);
    });
    const auto isCovered = [](const Candidate &above, const Candidate &below) {
        return above.volume.mountPoint.native() == below.volume.mountPoint.native();
    };
    candidates.erase(std::unique(candidates.begin(), candidates.end(), isCovered),
                     candidates.end());

    QList<MountedVolume> volumes;
    for (auto &candidate : candidates) {
        volumes.append(std::move(candidate.volume));
    }
    return volumes;
}

/// The object of the whole medium: the partition's table, else the object itself.
VolumeTree::Interfaces wholeMedium(const VolumeTree &tree, const VolumeTree::Interfaces &object)
{
    const auto table = property<QString>(object.value(partitionInterface), u"Table"_s);
    const auto whole = tree.objects.value(table);
    return whole.isEmpty() ? object : whole;
}

QVariantMap driveOf(const VolumeTree &tree, const VolumeTree::Interfaces &object)
{
    const auto path = property<QString>(object.value(blockInterface), u"Drive"_s);
    return tree.objects.value(path).value(driveInterface);
}

bool isHidden(const QVariantMap &block, bool isLoop)
{
    const bool isSnap = isLoop && property<QString>(block, u"IdType"_s) == "squashfs"_L1;
    return isSnap || property<bool>(block, u"HintIgnore"_s);
}

QString deviceName(const QVariantMap &block)
{
    const auto device = untilNul(property<QByteArray>(block, u"Device"_s));
    return QFile::decodeName(
        device.isEmpty() ? untilNul(property<QByteArray>(block, u"PreferredDevice"_s)) : device);
}

} // namespace

std::vector<std::filesystem::path> VolumeTree::mountPoints(const QVariantMap &properties)
{
    std::vector<std::filesystem::path> mountPoints;
    for (const auto &bytes : property<QByteArrayList>(properties, mountPointsProperty)) {
        if (bytes.startsWith('/')) {
            mountPoints.emplace_back(untilNul(bytes).toStdString());
        }
    }
    return mountPoints;
}

std::vector<std::filesystem::path> VolumeTree::mountPointsOf(const QString &objectPath) const
{
    return mountPoints(objects.value(objectPath).value(filesystemInterface));
}

QList<MountedVolume> VolumeTree::mountedVolumes(const QList<Mount> &mounts) const
{
    const TopMounts topMounts(mounts);
    std::vector<Candidate> candidates;
    for (const auto &[path, object] : objects.asKeyValueRange()) {
        const auto block = object.value(blockInterface);
        const auto whole = wholeMedium(*this, object);
        const bool isLoop = object.contains(loopInterface) || whole.contains(loopInterface);
        if (isHidden(block, isLoop)) {
            continue;
        }
        const auto ownDrive = driveOf(*this, object);
        const auto drive = ownDrive.isEmpty() ? driveOf(*this, whole) : ownDrive;

        for (const auto &mountPoint : mountPointsOf(path)) {
            const MountedVolume volume = {.mountPoint = mountPoint,
                                          .uuid = property<QString>(block, u"IdUUID"_s),
                                          .label = property<QString>(block, u"IdLabel"_s),
                                          .device = deviceName(block),
                                          .isRemovable = property<bool>(drive, u"Removable"_s) ||
                                                         property<bool>(drive, u"MediaRemovable"_s),
                                          .isEjectable =
                                              property<bool>(drive, u"Ejectable"_s) || isLoop,
                                          .isReadOnly = property<bool>(block, u"ReadOnly"_s)};
            candidates.push_back(
                topMounts.place(volume, property<quint64>(block, u"DeviceNumber"_s)));
        }
    }
    return arranged(std::move(candidates));
}
