// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "app/MenuCommands.h"
#include "app/Preferences.h"
#include "app/UpdateController.h"
#include "ui/announcements/Announcer.h"
#include "ui/items/FitImage.h"
#include "ui/items/PixelImage.h"
#include "ui/items/Symbol.h"
#include "ui/items/VideoSurface.h"
#include "ui/loaders/ClipStarter.h"
#include "ui/loaders/EnlargedImageLoader.h"
#include "ui/loaders/FullImageLoader.h"
#include "ui/loaders/MetadataLoader.h"
#include "ui/loaders/PlayerClock.h"
#include "ui/loaders/RejectTotals.h"
#include "ui/loaders/ScreenImageLoader.h"
#include "ui/loaders/ThumbnailLoader.h"
#include "ui/models/FailuresModel.h"
#include "ui/models/LibrariesModel.h"
#include "ui/models/RejectsModel.h"
#include "ui/models/SessionModel.h"

#include <QQmlEngine>

// What QML knows of our C++ types. The types themselves know nothing of QML.

struct AppStateForQml {
    Q_GADGET
    QML_FOREIGN(AppState)
    QML_NAMED_ELEMENT(AppState)
    QML_UNCREATABLE("The shell hands over the only one.")
};

struct MenuCommandsForQml {
    Q_GADGET
    QML_FOREIGN(MenuCommands)
    QML_NAMED_ELEMENT(MenuCommands)
    QML_UNCREATABLE("The shell hands over the only one.")
};

struct PreferencesForQml {
    Q_GADGET
    QML_FOREIGN(Preferences)
    QML_NAMED_ELEMENT(Preferences)
    QML_UNCREATABLE("The shell hands over the only one.")
};

struct UpdateControllerForQml {
    Q_GADGET
    QML_FOREIGN(UpdateController)
    QML_NAMED_ELEMENT(UpdateController)
    QML_UNCREATABLE("The shell hands over the only one.")
};

struct PhaseForQml {
    Q_GADGET
    QML_FOREIGN(Phase)
    QML_ANONYMOUS
};

/// The kinds of phases, as in Phase.CardReady.
class PhaseKindsForQml : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Phase)
    QML_EXTENDED_NAMESPACE(Phase)
    QML_UNCREATABLE("It has nothing but the kinds.")
};

struct ImageForQml {
    Q_GADGET
    QML_FOREIGN(QImage)
    QML_VALUE_TYPE(image)
};

/// Counts are of 64 bits, which QML of Qt 6.4 has no name for: without one, qmllint takes every
/// property of that type for unknown.
struct IntegerForQml {
    Q_GADGET
    QML_FOREIGN(qlonglong)
    QML_VALUE_TYPE(integer)
};

/// Lies over the value itself; QML needs a meta-object for the type of a property.
struct MediaItemForQml {
    MediaItem item;

    Q_GADGET
    QML_FOREIGN(MediaItem)
    QML_VALUE_TYPE(mediaItem)
    QML_EXTENDED(MediaItemForQml)
};

struct ItemModelForQml {
    Q_GADGET
    QML_FOREIGN(QAbstractItemModel)
    QML_ANONYMOUS
};

struct ListModelForQml {
    Q_GADGET
    QML_FOREIGN(QAbstractListModel)
    QML_ANONYMOUS
};

struct AnnouncerForQml {
    Q_GADGET
    QML_FOREIGN(Announcer)
    QML_NAMED_ELEMENT(Announcer)
};

struct FitImageForQml {
    Q_GADGET
    QML_FOREIGN(FitImage)
    QML_NAMED_ELEMENT(FitImage)
};

struct PixelImageForQml {
    Q_GADGET
    QML_FOREIGN(PixelImage)
    QML_NAMED_ELEMENT(PixelImage)
};

/// One for each engine, which ends it after the items.
struct ScalingPoolForQml {
    Q_GADGET
    QML_FOREIGN(ScalingPool)
    QML_NAMED_ELEMENT(ScalingPool)
    QML_SINGLETON
};

struct SymbolForQml {
    Q_GADGET
    QML_FOREIGN(Symbol)
    QML_NAMED_ELEMENT(Symbol)
};

struct VideoPlayerForQml {
    Q_GADGET
    QML_FOREIGN(VideoPlayer)
    QML_NAMED_ELEMENT(VideoPlayer)
    QML_UNCREATABLE("The controller owns the only one.")
};

struct VideoSurfaceForQml {
    Q_GADGET
    QML_FOREIGN(VideoSurface)
    QML_NAMED_ELEMENT(VideoSurface)
};

struct ItemLoaderForQml {
    Q_GADGET
    QML_FOREIGN(ItemLoader)
    QML_ANONYMOUS
};

struct ClipStarterForQml {
    Q_GADGET
    QML_FOREIGN(ClipStarter)
    QML_NAMED_ELEMENT(ClipStarter)
};

struct EnlargedImageLoaderForQml {
    Q_GADGET
    QML_FOREIGN(EnlargedImageLoader)
    QML_NAMED_ELEMENT(EnlargedImageLoader)
};

struct FullImageLoaderForQml {
    Q_GADGET
    QML_FOREIGN(FullImageLoader)
    QML_NAMED_ELEMENT(FullImageLoader)
};

struct MetadataLoaderForQml {
    Q_GADGET
    QML_FOREIGN(MetadataLoader)
    QML_NAMED_ELEMENT(MetadataLoader)
};

struct PlayerClockForQml {
    Q_GADGET
    QML_FOREIGN(PlayerClock)
    QML_NAMED_ELEMENT(PlayerClock)
};

struct RejectTotalsForQml {
    Q_GADGET
    QML_FOREIGN(RejectTotals)
    QML_NAMED_ELEMENT(RejectTotals)
};

struct ScreenImageLoaderForQml {
    Q_GADGET
    QML_FOREIGN(ScreenImageLoader)
    QML_NAMED_ELEMENT(ScreenImageLoader)
};

struct ThumbnailLoaderForQml {
    Q_GADGET
    QML_FOREIGN(ThumbnailLoader)
    QML_NAMED_ELEMENT(ThumbnailLoader)
};

struct FailuresModelForQml {
    Q_GADGET
    QML_FOREIGN(FailuresModel)
    QML_NAMED_ELEMENT(FailuresModel)
};

struct LibrariesModelForQml {
    Q_GADGET
    QML_FOREIGN(LibrariesModel)
    QML_NAMED_ELEMENT(LibrariesModel)
};

struct RejectsModelForQml {
    Q_GADGET
    QML_FOREIGN(RejectsModel)
    QML_NAMED_ELEMENT(RejectsModel)
};

struct SessionModelForQml {
    Q_GADGET
    QML_FOREIGN(SessionModel)
    QML_NAMED_ELEMENT(SessionModel)
};
