// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/CardPacedFileManager.h"
#include "demo/SampleVolumes.h"
#include "demo/card/SampleCard.h"
#include "ui/shell/KestleApp.h"
#include "ui/shell/QuitGuard.h"

#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QThreadPool>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Says beside the card what lies on it, for whoever checks afterwards.
bool describe(const CardManifest &manifest, const QString &folder)
{
    QFile file(folder + u".json"_s);
    return file.open(QIODevice::WriteOnly) &&
           file.write(QJsonDocument(manifest.toJson()).toJson()) >= 0;
}

/// Draws the card and puts it in when it is ready. Blocks.
void makeCard(const QString &folder, bool isKept, const QString &secondFolder,
              SampleVolumes *volumes)
{
    const auto manifest = SampleCard::make(folder.toStdString());
    if (!manifest || (isKept && !describe(*manifest, folder))) {
        std::fputs("The sample card could not be written.\n", stderr);
        QMetaObject::invokeMethod(
            qApp, [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
        return;
    }
    for (const auto &note : manifest->notes) {
        std::fprintf(stderr, "%s\n", qPrintable(note));
    }
    QMetaObject::invokeMethod(volumes, [volumes, folder, secondFolder] {
        volumes->mount(folder.toStdString(), secondFolder.toStdString());
    });
}

} // namespace

/// Kestle with a sample card beside the real ones. The card is made in a temporary folder that goes
/// with the program, or in the folder given, where it stays.
int main(int argc, char **argv)
{
    QuitGuard quitGuard;
    QGuiApplication application(argc, argv);
    KestleApp::introduce();
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Starts Kestle with a sample card."_s);
    parser.addHelpOption();
    parser.addOption(
        {u"card"_s, u"Make the card in this folder and leave it there."_s, u"folder"_s});
    parser.addOption({u"second-card"_s, u"Offer this folder as a second card."_s, u"folder"_s});
    parser.addOption({u"card-pace"_s, u"List and remove no faster than a slow card."_s});
    parser.process(application);

    const QTemporaryDir temporary;
    const bool isKept = parser.isSet(u"card"_s);
    const QString folder = isKept ? parser.value(u"card"_s) : temporary.filePath(u"card"_s);

    auto samples = std::make_unique<SampleVolumes>();
    auto *const volumes = samples.get();
    KestleApp::Extras extras;
    extras.moreVolumes.push_back(std::move(samples));
    if (parser.isSet(u"card-pace"_s)) {
        extras.fileManager = std::make_shared<CardPacedFileManager>();
    }
    KestleApp kestle(std::move(extras));
    if (!kestle.show()) {
        return 1;
    }
    QThreadPool maker; // waited for before the card's folder and the volume go
    maker.start([folder, isKept, secondFolder = parser.value(u"second-card"_s), volumes] {
        makeCard(folder, isKept, secondFolder, volumes);
    });
    const int status = QGuiApplication::exec();
    quitGuard.arm(KestleApp::patienceWithWork, status);
    kestle.finish();
    maker.waitForDone();
    quitGuard.arm(KestleApp::patienceAtTheEnd, status);
    return status;
}
