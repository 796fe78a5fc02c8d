// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/SampleCard.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QJsonDocument>

#include <cstdio>

using namespace Qt::StringLiterals;

// Makes a sample card in a folder and prints what lies on it as JSON.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Makes a sample memory card and prints its contents as JSON."_s);
    parser.addHelpOption();
    parser.addOption(
        {u"edge"_s, u"Long edge of the pictures in pixels."_s, u"pixels"_s, u"3000"_s});
    parser.addOption({u"seed"_s, u"Another number makes other pictures."_s, u"number"_s, u"1"_s});
    parser.addOption({u"no-clips"_s, u"Leave the clips out."_s});
    parser.addPositionalArgument(u"folder"_s, u"Where the card's content goes."_s);
    parser.process(application);

    bool edgeValid = false;
    bool seedValid = false;
    SampleCard::Options options;
    options.longEdge = parser.value(u"edge"_s).toInt(&edgeValid);
    options.seed = parser.value(u"seed"_s).toUInt(&seedValid);
    options.clips = !parser.isSet(u"no-clips"_s);
    constexpr int smallest = 150;
    constexpr int largest = 12'000;
    if (parser.positionalArguments().size() != 1 || !edgeValid || !seedValid ||
        options.longEdge < smallest || options.longEdge > largest) {
        parser.showHelp(2);
    }
    const auto manifest =
        SampleCard::make(parser.positionalArguments().constFirst().toStdString(), options);
    if (!manifest) {
        std::fputs("The card could not be written.\n", stderr);
        return 1;
    }
    for (const auto &note : manifest->notes) {
        std::fprintf(stderr, "%s\n", qPrintable(note));
    }
    std::fputs(QJsonDocument(manifest->toJson()).toJson(QJsonDocument::Indented).constData(),
               stdout);
    return 0;
}
