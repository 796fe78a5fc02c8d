// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/updates/UpdateSearch.h"

/// A search that ends when the test says so.
class FakeSearch final : public UpdateSearch {
    Q_OBJECT

public:
    void start(const QStringList &known = {}) override
    {
        ++starts;
        isGoingOn = true;
        knownVersions = known;
    }

    void stop() override { isGoingOn = false; }

    void progress(qint64 fetched, qint64 whole) { Q_EMIT progressed(fetched, whole); }

    void end(const UpdateResult &result)
    {
        isGoingOn = false;
        Q_EMIT finished(result);
    }

    int starts = 0;
    bool isGoingOn = false;
    QStringList knownVersions;
};
