// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/WindowFolderDialog.h"
#include "tests/ui/WindowBench.h"

using namespace Qt::StringLiterals;

class WindowFolderDialogTest : public QObject {
    Q_OBJECT

    using Answer = std::optional<std::filesystem::path>;

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<WindowBench>();
        m_dialog = std::make_unique<WindowFolderDialog>();
        m_dialog->setHome(&m_bench->engine, m_bench->window);
        m_answers.clear();
        connect(m_dialog.get(), &FolderDialog::answered, this,
                [this](const Answer &answer) { m_answers.append(answer); });
    }

    void cleanup()
    {
        m_dialog.reset();
        QVERIFY(m_bench->warnings.isEmpty());
        m_bench.reset();
    }

    void returnAcceptsTheFolder()
    {
        open();
        QCOMPARE(m_bench->text(u"questionFolder"_s), u"/media/user/CARD"_s);
        QCOMPARE(m_bench->text(u"acceptFolder"_s), u"Grant Access"_s);

        m_bench->key(Qt::Key_Return);

        QCOMPARE(m_answers, QList<Answer>{Answer("/media/user/CARD")});
        QTRY_VERIFY(!m_bench->window->property("popupOpen").toBool());
    }

    void escapeRefuses()
    {
        open();

        m_bench->key(Qt::Key_Escape);

        QTRY_COMPARE(m_answers, QList<Answer>{Answer()});
        QTRY_VERIFY(!m_bench->window->property("popupOpen").toBool());
    }

    void theButtonsDoWhatTheySay()
    {
        open();
        m_bench->click(u"refuseFolder"_s);
        QCOMPARE(m_answers, QList<Answer>{Answer()});
        QTRY_VERIFY(!m_bench->find(u"refuseFolder"_s));

        open();
        m_bench->click(u"acceptFolder"_s);
        QCOMPARE(m_answers.size(), 2);
        QCOMPARE(m_answers.last(), Answer("/media/user/CARD"));
    }

    void aPressThatIsHeldWhileTheQuestionIsRefusedAcceptsNothing()
    {
        open();
        m_bench->waitForFrames();
        const auto place = WindowBench::rectOf(m_bench->find(u"acceptFolder"_s)).center().toPoint();
        QTest::mousePress(m_bench->window, Qt::LeftButton, {}, place);

        m_bench->key(Qt::Key_Escape);
        QTRY_COMPARE(m_answers, QList<Answer>{Answer()});
        QTest::mouseRelease(m_bench->window, Qt::LeftButton, {}, place);
        QTest::qWait(50);

        QCOMPARE(m_answers, QList<Answer>{Answer()});
    }

    void tabGoesToCancel()
    {
        open();

        m_bench->key(Qt::Key_Tab);
        m_bench->key(Qt::Key_Return);

        QCOMPARE(m_answers, QList<Answer>{Answer()});
    }

    void closingAnswersNothing()
    {
        open();

        m_dialog->close();

        QTRY_VERIFY(!m_bench->window->property("popupOpen").toBool());
        QVERIFY(m_answers.isEmpty());
    }

    void aSecondQuestionTakesThePlaceOfTheFirst()
    {
        open();
        open("/media/user/OTHER");

        m_bench->key(Qt::Key_Return);

        QCOMPARE(m_answers, QList<Answer>{Answer("/media/user/OTHER")});
    }

    void withoutAHomeNobodyIsAsked()
    {
        m_dialog->setHome(nullptr, nullptr);

        m_dialog->open({});

        QCOMPARE(m_answers, QList<Answer>{Answer()});
    }

private:
    void open(const std::filesystem::path &folder = "/media/user/CARD")
    {
        m_dialog->open(
            {.title = u"Grant Access"_s, .acceptLabel = u"Grant Access"_s, .directory = folder});
        QTRY_VERIFY(m_bench->window->property("popupOpen").toBool());
        QTRY_VERIFY(m_bench->find(u"acceptFolder"_s));
        QTRY_VERIFY(m_bench->find(u"acceptFolder"_s)->hasActiveFocus());
    }

    std::unique_ptr<WindowBench> m_bench;
    std::unique_ptr<WindowFolderDialog> m_dialog;
    QList<Answer> m_answers;
};

QTEST_MAIN(WindowFolderDialogTest)
#include "WindowFolderDialogTest.moc"
