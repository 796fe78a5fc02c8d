// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// main-thread-gap CARD...: how long the main thread was ever held up while the cards were opened,
// the first usable one scanned and its first rejects deleted. Prints milliseconds.

#include "app/AppState.h"
#include "app/DirectAccess.h"
#include "app/KeyHandler.h"
#include "bench/Pulse.h"
#include "core/metadata/ExifReader.h"
#include "platform/files/PosixFileManager.h"
#include "platform/settings/UserDefaults.h"
#include "platform/volumes/MountedVolumes.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

using namespace std::chrono_literals;
using Kind = Phase::Kind;

namespace {

class GivenVolumes final : public MountedVolumes {
public:
    explicit GivenVolumes(const QStringList &mountPoints)
        : MountedVolumes(nullptr)
    {
        for (const auto &mountPoint : mountPoints) {
            m_volumes.append(
                {.mountPoint = mountPoint.toStdString(), .uuid = mountPoint, .isRemovable = true});
        }
    }

    QList<MountedVolume> volumes() const override { return m_volumes; }

private:
    QList<MountedVolume> m_volumes;
};

/// What a quick user does: one thing as soon as the one before is through.
void goOn(AppState &app, KeyHandler &keys)
{
    switch (app.phase().kind) {
    case Kind::CardReady:
        (void)keys.handleKey({.keyCode = KeyPress::Return});
        break;
    case Kind::Culling:
        (void)keys.handleKey({.chars = QStringLiteral("x")});
        if (app.session() && app.session()->rejectedCount() >= 5) {
            app.goToReview();
        }
        break;
    case Kind::Review:
        app.performDelete();
        break;
    case Kind::Summary:
        QCoreApplication::quit();
        break;
    default:
        break;
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir home;
    const std::filesystem::path folder = home.path().toStdString();
    GivenVolumes volumes(QCoreApplication::arguments().mid(1));
    UserDefaults defaults(folder / "defaults.ini");
    DecodePipeline pipeline({.picture = [](const auto &, auto) { return QImage(); },
                             .videoFrame = [](const auto &) { return QImage(); }});
    const auto files = std::make_shared<PosixFileManager>();
    AppState app({.volumes = &volumes,
                  .access = std::make_shared<DirectAccess>(files, defaults),
                  .fileManager = files,
                  .reader = std::make_shared<ExifReader>(),
                  .defaults = &defaults,
                  .pipeline = &pipeline,
                  .screenMaxPixel = [] { return 2160; },
                  .sessionFolder = folder / "sessions"});
    KeyHandler keys(app);
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] { goOn(app, keys); });
    user.start(20ms);
    QTimer::singleShot(30s, &application, [] { QCoreApplication::exit(1); });
    const Pulse pulse;
    app.start();
    const int status = QCoreApplication::exec();
    std::printf("%.1f\n", pulse.longest());
    std::fflush(stdout);
    app.finish();
    std::_Exit(status); // a card that hangs would be waited for
}
