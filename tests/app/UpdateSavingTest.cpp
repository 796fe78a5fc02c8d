// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/UpdateControllerBench.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What becomes of the download of a newer version.
class UpdateSavingTest : public QObject, private UpdateControllerBench {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }

    void cleanup() { m_controller.reset(); }

    void theDownloadIsSavedBesideWhatIsThere()
    {
        const auto folder = m_root / "Downloads";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "Kestle-2.0.tar.xz") << "mine";
        m_controller->checkForUpdates();
        m_search->end(newVersion());
        QVERIFY(m_controller->hasDownload());

        m_controller->saveDownload();

        QTRY_COMPARE(m_opened, QList{QUrl::fromLocalFile(QString::fromStdString(folder))});
        QCOMPARE(contentOf(folder / "Kestle-2.0.tar.xz"), "mine");
        QCOMPARE(contentOf(folder / "Kestle-2.0 (2).tar.xz"), "the new version");
        QVERIFY(m_controller->detail().startsWith(u"Saved as "_s));
    }

    void aDownloadIsSavedOnceHoweverOftenItIsAsked()
    {
        m_controller->checkForUpdates();
        m_search->end(newVersion());
        QVERIFY(m_controller->canSave());

        m_controller->saveDownload();
        QVERIFY(!m_controller->canSave());
        m_controller->saveDownload();
        QTRY_VERIFY(!m_opened.isEmpty());
        m_controller->saveDownload(); // the second half of a slow double click

        QVERIFY(!m_controller->canSave());
        QVERIFY(m_controller->detail().startsWith(u"Saved as Kestle-2.0.tar.xz in "_s));
        restart(); // waits for what is saved
        QCOMPARE(filesIn(m_root / "Downloads"), 1);
        QCOMPARE(m_opened.size(), 1);
    }

    void aResultThatWasClosedWhileItIsSavedLeavesTheNextOneAlone()
    {
        m_controller->checkForUpdates();
        m_search->end(newVersion());
        m_controller->saveDownload();

        m_controller->dismiss();
        m_controller->checkForUpdates();
        auto next = newVersion();
        next.fileName = u"Next.tar.xz"_s;
        m_search->end(next);

        QTRY_VERIFY(m_controller->canSave());
        QVERIFY(m_controller->detail().startsWith(u"You have "_s));
    }

    void aDownloadThatCannotBeSavedIsTold()
    {
        std::ofstream(m_root / "Downloads") << "no folder";
        m_controller->checkForUpdates();
        m_search->end(newVersion());

        m_controller->saveDownload();

        QTRY_VERIFY(m_controller->detail().startsWith(u"It could not be saved to "_s));
        QVERIFY(m_opened.isEmpty());
        QVERIFY(m_controller->canSave()); // when there is room
    }

private:
    static qint64 filesIn(const std::filesystem::path &folder)
    {
        const std::filesystem::directory_iterator files(folder);
        return std::distance(files, std::filesystem::directory_iterator());
    }

    static std::string contentOf(const std::filesystem::path &path)
    {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

QTEST_GUILESS_MAIN(UpdateSavingTest)
#include "UpdateSavingTest.moc"
