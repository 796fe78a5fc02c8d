// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tools/kestle-probe/ScannedCard.h"

#include "core/card/CardScanner.h"
#include "core/metadata/ExifReader.h"
#include "platform/files/PosixFileManager.h"

#include <QCoroTask>
#include <QThreadPool>

QList<MediaItem> scannedCard(const std::filesystem::path &root)
{
    QThreadPool pool;
    const auto scan = QCoro::waitFor(CardScanner::scanDetached(
        &pool, root, std::make_shared<PosixFileManager>(), std::make_shared<ExifReader>()));
    return scan.items;
}
