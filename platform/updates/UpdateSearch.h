// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/updates/UpdateResult.h"

#include <QObject>
#include <QStringList>

/// Finds out whether there is a newer version. Main thread only.
class UpdateSearch : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Begins a search, which ends with finished(), later. If the newest version is one of @p
    /// known, it is not looked at again. One search at a time.
    virtual void start(const QStringList &known = {}) = 0;

    /// Breaks the search off without a word.
    virtual void stop() = 0;

Q_SIGNALS:
    /// Of the download that has to be verified, in bytes.
    void progressed(qint64 fetched, qint64 whole);
    void finished(const UpdateResult &result);
};
