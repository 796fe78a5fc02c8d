// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/FailedFile.h"

#include "core/text/FileNameText.h"

QList<FailedFile> failedFiles(const DeleteResult &result, const std::filesystem::path &root)
{
    QList<FailedFile> files;
    for (const auto &failure : result.failures) {
        files.append({displayText(failure.url.lexically_relative(root)), failure.reason});
    }
    return files;
}
