// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>
#include <QSize>
#include <QStringList>

#include <filesystem>
#include <functional>
#include <vector>

/// A clip whose frames bear their numbers, as black and white bars that survive coding and scaling.
struct CodedClip {
    QString name;              ///< of the file; the extension chooses the container
    QStringList coding;        ///< as the ffmpeg command has it
    std::vector<double> times; ///< when each frame is shown, in seconds
    QString rate;              ///< frames per second as the command has it
    QString timing = {}; ///< the command's expression for the time of frame N, if not by the rate
    int turn = 0;        ///< degrees clockwise until it is upright
    bool hasSound = false;

    static constexpr QSize size = {120, 64}; ///< as it is coded

    /// Without the ffmpeg command there are none.
    [[nodiscard]] static bool canBeMade();

    /// A group of 250 pictures, with some that refer to later ones.
    [[nodiscard]] static CodedClip h264(const QString &name, int frames);
    [[nodiscard]] static CodedClip hevc(const QString &name, int frames);

    /// Shown regularly.
    CodedClip &at(int numerator, int denominator);
    /// Shown for one, two and five fiftieths of a second in turn.
    CodedClip &irregular();

    /// As large as it is shown, upright.
    [[nodiscard]] QSize shownSize() const;

    /// The number of the last frame that is shown at @p time or before.
    [[nodiscard]] int frameAt(double time) const;

    /// Behind the last frame, if it is shown as long as the one before.
    [[nodiscard]] double end() const;

    /// The file, made when it is asked for first, and kept for other tests and runs.
    [[nodiscard]] std::filesystem::path file() const;

    /// The number of the frame that is seen in @p picture, fitted into it with black around; -1
    /// when it is none, -2 when it is not upright.
    [[nodiscard]] int frameIn(const QImage &picture) const;

private:
    [[nodiscard]] bool make(const QString &path) const;
};
