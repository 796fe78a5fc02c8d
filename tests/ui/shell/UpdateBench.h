// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/app/FakeSearch.h"
#include "tests/ui/shell/ShellBench.h"

#include <QPointer>

/// The program in a build with a feed, whose searches end as the test says.
class UpdateBench : protected ShellBench {
protected:
    UpdateBench()
    {
        m_makeSearch = [this] {
            auto search = std::make_unique<FakeSearch>();
            m_search = search.get();
            return search;
        };
    }

    [[nodiscard]] static QQuickWindow *updateWindow()
    {
        return sideWindow(QStringLiteral("updateWindow"));
    }

    void findUnasked() { findUnasked(newVersion()); }

    void findUnasked(const UpdateResult &result)
    {
        const auto daysAgo = QDateTime::currentDateTimeUtc().addDays(-2).toString(Qt::ISODate);
        UserDefaults(UserDefaults::standardFile())
            .setBytes(QStringLiteral("lastUpdateSearch"), daysAgo.toLatin1());
        m_app->updateController().searchIfDue();
        QVERIFY(m_search && m_search->isGoingOn);
        m_search->end(result);
    }

    UpdateResult newVersion()
    {
        const auto file = m_home->filePath(QStringLiteral("fetched")).toStdString();
        std::ofstream(file) << "the new version";
        return {.kind = UpdateResult::Kind::NewVersion,
                .version = QStringLiteral("2.0"),
                .shownVersion = QStringLiteral("2.0"),
                .isFeedSigned = true,
                .notes = QStringLiteral("Faster\nand smaller"),
                .page = QUrl(QStringLiteral("https://kestle.test/2")),
                .fileName = QStringLiteral("Kestle-2.0.tar.xz"),
                .download = std::make_shared<const std::filesystem::path>(file)};
    }

    QPointer<FakeSearch> m_search; ///< once one was begun
};
