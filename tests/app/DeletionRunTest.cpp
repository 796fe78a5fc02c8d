// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/DeletionRun.h"

#include "tests/app/GatedFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <fstream>

using namespace Qt::StringLiterals;

class DeletionRunTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_files = std::make_shared<GatedFiles>();
        m_run = std::make_unique<DeletionRun>(m_files);
        m_told.clear();
        connect(m_run.get(), &DeletionRun::progressed, this, [this](qint64 done, qint64 total) {
            m_told.append(u"%1 of %2"_s.arg(done).arg(total));
        });
        connect(m_run.get(), &DeletionRun::finished, this,
                [this](const DeletionRun::Job &job, const DeleteResult &result) {
                    m_told.append(u"kept %1, deleted %2, failed %3"_s.arg(job.keptCount)
                                      .arg(result.deleted.size())
                                      .arg(result.failures.size()));
                });
    }

    void cleanup()
    {
        m_files->removalIsHeld = false;
        m_run.reset();
    }

    void theResultComesAfterTheLastProgress()
    {
        m_run->start(jobOf({"A", "B"}, 7));

        QTRY_COMPARE(m_told.value(m_told.size() - 1), u"kept 7, deleted 2, failed 0"_s);
        QTest::qWait(20);
        QCOMPARE(m_told.last(), u"kept 7, deleted 2, failed 0"_s);
        QCOMPARE(m_told.at(m_told.size() - 2), u"2 of 2"_s);
    }

    void progressThatCouldNotBeToldInTimeIsToldAsOne()
    {
        std::vector<std::string> names;
        for (int number = 0; number < 400; ++number) {
            names.push_back("F" + std::to_string(number));
        }
        m_run->start(jobOf(names, 0));
        while (m_files->removals < 400) {
            QThread::msleep(1); // whose events wait
        }

        QTRY_COMPARE(m_told.value(m_told.size() - 1), u"kept 0, deleted 400, failed 0"_s);

        QVERIFY(m_told.size() <= 4);
        QCOMPARE(m_told.at(m_told.size() - 2), u"400 of 400"_s);
    }

    void aStoppedRunTellsNothingAndBeginsNoOtherFile()
    {
        m_files->removalIsHeld = true;
        m_run->start(jobOf({"A", "B", "C"}, 0));
        QTRY_COMPARE(m_files->removals.load(), 1);

        m_run->stop();

        m_files->removalIsHeld = false;
        QTRY_VERIFY(!has("A"));
        QTest::qWait(50);
        QVERIFY(has("B") && has("C"));
        QVERIFY(m_told.isEmpty());
    }

    void aRunAfterAStoppedOneTellsOnlyOfItself()
    {
        m_files->removalIsHeld = true;
        m_run->start(jobOf({"A", "B"}, 1));
        QTRY_COMPARE(m_files->removals.load(), 1);
        m_run->stop();

        m_run->start(jobOf({"C"}, 2));

        m_files->removalIsHeld = false;
        QTRY_COMPARE(m_told, (QStringList{u"1 of 1"_s, u"kept 2, deleted 1, failed 0"_s}));
        QVERIFY(!has("A") && has("B") && !has("C"));
    }

private:
    [[nodiscard]] std::filesystem::path root() const
    {
        return std::filesystem::canonical(m_folder->path().toStdString());
    }

    [[nodiscard]] bool has(const std::string &name) const
    {
        return std::filesystem::exists(root() / name);
    }

    /// The deletion of files that are made for it.
    [[nodiscard]] DeletionRun::Job jobOf(const std::vector<std::string> &names, qint64 kept) const
    {
        DeletionRun::Job job{.volumeURL = root(), .keptCount = kept};
        for (const auto &name : names) {
            std::ofstream(root() / name) << "x";
            job.rejects.append({.id = QString::fromStdString(name), .previewURL = root() / name});
        }
        return job;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<GatedFiles> m_files;
    std::unique_ptr<DeletionRun> m_run;
    QStringList m_told;
};

QTEST_GUILESS_MAIN(DeletionRunTest)
#include "DeletionRunTest.moc"
