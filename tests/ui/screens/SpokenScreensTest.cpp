// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

#include <QAccessible>

#include <functional>

using namespace Qt::StringLiterals;

/// The screens as screen readers see them.
class SpokenScreensTest : public QObject {
    Q_OBJECT

    using Road = std::function<void(WindowBench &)>;

private Q_SLOTS:
    /// A reader finds every text, and every control by its role and its name.
    void nothingOnScreenIsSilent_data()
    {
        QTest::addColumn<Road>("road");
        const auto row = [](const char *name, const Road &road) { QTest::newRow(name) << road; };
        row("waiting", [](WindowBench &) {});
        row("ready, of two cards", [](WindowBench &bench) {
            bench.appState.start();
            bench.mountCard("ONE", {"A.JPG"});
            bench.mountCard("TWO", {"A.JPG"});
            QTRY_VERIFY(bench.find(u"cardPicker"_s));
        });
        row("the open picker", [](WindowBench &bench) {
            bench.appState.start();
            bench.mountCard("ONE", {"A.JPG"});
            bench.mountCard("TWO", {"A.JPG"});
            QTRY_VERIFY(bench.find(u"cardPicker"_s));
            bench.waitForFrames();
            bench.click(u"cardPicker"_s);
            QTRY_VERIFY(bench.window->property("popupOpen").toBool());
        });
        row("permission needed", [](WindowBench &bench) {
            bench.appState.start();
            bench.access->closed.insert(bench.mountLater("CARD", {"A.JPG"}));
            bench.mountCard("CARD", {});
            QTRY_COMPARE(bench.appState.phase(), Phase::needsAccess());
        });
        row("asked for permission", [](WindowBench &bench) {
            bench.appState.start();
            bench.access->closed.insert(bench.mountLater("CARD", {"A.JPG"}));
            bench.mountCard("CARD", {});
            QTRY_COMPARE(bench.appState.phase(), Phase::needsAccess());
            bench.dialog.user = FakeDialog::User::Waits;
            bench.appState.grantAccess();
            QTRY_VERIFY(bench.find(u"question"_s));
        });
        row("scanning", [](WindowBench &bench) {
            bench.appState.start();
            bench.mountCard("CARD", {"A.JPG"});
            bench.files->scanIsHeld = true;
            QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
            bench.key(Qt::Key_Return);
            QTRY_COMPARE(bench.appState.phase(), Phase::scanning());
        });
        row("no media", [](WindowBench &bench) {
            bench.appState.start();
            bench.mountCard("CARD", {"A.TXT"});
            QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
            bench.key(Qt::Key_Return);
            QTRY_COMPARE(bench.appState.phase(), Phase::noMedia());
        });
        row("culling", [](WindowBench &bench) {
            ImageMetadata meta{.aperture = 2.8, .iso = 400};
            meta.lensModel = u"XF35mmF1.4 R"_s;
            meta.fuji = FujiSettings{.filmSimulation = u"Velvia"_s};
            bench.metadata->otherwise = meta;
            bench.cull({"A.JPG", "B.MOV", "C.JPG"});
            bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
            bench.key(Qt::Key_X);
            QTRY_VERIFY(bench.texts().contains(u"Velvia"_s));
        });
        row("a clip", [](WindowBench &bench) {
            bench.cull({"A.JPG", "B.MOV", "C.JPG"});
            bench.key(Qt::Key_Right);
        });
        row("the review", [](WindowBench &bench) { review(bench, 3); });
        row("the review of a locked card", [](WindowBench &bench) {
            bench.files->makeReadOnly(bench.mountLater("CARD", {}));
            review(bench, 3);
            QVERIFY(bench.find(u"readOnlyNote"_s));
        });
        row("the review without rejects", [](WindowBench &bench) { review(bench, 0); });
        row("an enlarged reject", [](WindowBench &bench) {
            review(bench, 3);
            bench.key(Qt::Key_Space);
            QTRY_VERIFY(bench.find(u"enlarged"_s));
        });
        row("the question", [](WindowBench &bench) {
            review(bench, 3);
            bench.key(Qt::Key_Return);
            QTRY_VERIFY(bench.find(u"confirmTitle"_s));
        });
        row("deleting", [](WindowBench &bench) {
            review(bench, 3);
            bench.files->removalIsHeld = true;
            bench.appState.performDelete();
            QTRY_VERIFY(bench.find(u"progress"_s));
        });
        row("the summary with its list", [](WindowBench &bench) {
            review(bench, 3);
            bench.files->removalsFail = true;
            bench.appState.performDelete();
            QTRY_VERIFY(bench.find(u"failuresButton"_s));
            bench.waitForFrames();
            bench.click(u"failuresButton"_s);
            QTRY_VERIFY(bench.find(u"failureReason"_s));
        });
        row("a menu within the menu", [](WindowBench &bench) {
            bench.click(u"menuButton"_s);
            QTRY_VERIFY(!bench.itemsShowing(u"Cull"_s).isEmpty());
            bench.click(bench.itemsShowing(u"Cull"_s).last());
            QTRY_VERIFY(!bench.itemsShowing(u"Reject (X)"_s).isEmpty());
        });
    }

    void nothingOnScreenIsSilent()
    {
        QFETCH(Road, road);
        WindowBench bench;
        road(bench);
        if (QTest::currentTestFailed()) {
            return;
        }
        bench.waitForFrames();

        const auto known = spokenItems(bench);

        for (const auto *item : allItems(bench)) {
            const auto text = item->property("text").toString();
            const bool isText = item->inherits("QQuickText") && hasWords(text);
            const bool isControl =
                item->inherits("QQuickAbstractButton") || item->inherits("QQuickComboBox");
            if (isControl) {
                QVERIFY2(known.contains(item), item->metaObject()->className());
                const auto *spoken = interfaceOf(item);
                QVERIFY2(!spoken->text(QAccessible::Name).isEmpty(),
                         item->metaObject()->className());
                QVERIFY(spoken->role() != QAccessible::NoRole);
                QVERIFY(spoken->role() != QAccessible::Client);
            } else if (isText) {
                QVERIFY2(isSpoken(item, text, known), qPrintable(text));
            }
        }
    }

    void thePictureIsAGraphicWithItsNameAndState()
    {
        WindowBench bench;
        bench.cull({"A.JPG", "B.MOV", "C.JPG"});
        bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        const auto *const picture = interfaceOf(bench.find(u"imageArea"_s));

        QCOMPARE(picture->role(), QAccessible::Graphic);
        QCOMPARE(picture->text(QAccessible::Name), u"A.JPG"_s);
        QCOMPARE(picture->text(QAccessible::Description), u"1 of 3"_s);
        bench.key(Qt::Key_X);
        QCOMPARE(picture->text(QAccessible::Description), u"1 of 3, rejected"_s);
        bench.key(Qt::Key_Z);
        QCOMPARE(picture->text(QAccessible::Description), u"1 of 3, rejected, zoom 100%"_s);
        bench.key(Qt::Key_Z);
        bench.key(Qt::Key_Right);
        QCOMPARE(picture->text(QAccessible::Name), u"B.MOV"_s);
        QCOMPARE(picture->text(QAccessible::Description), u"2 of 3, clip"_s);
    }

    void aPictureThatCannotBeShownSaysSo()
    {
        WindowBench bench;
        bench.cull({"A.JPG", "BROKEN.JPG"});
        QTRY_VERIFY(!bench.find(u"picture"_s)->property("image").value<QImage>().isNull());

        bench.key(Qt::Key_Right);

        const auto *const picture = interfaceOf(bench.find(u"imageArea"_s));
        QTRY_COMPARE(picture->text(QAccessible::Description), u"2 of 2, cannot be shown"_s);
    }

    void theStripIsAListAndItsItemsSayWhatTheyAre()
    {
        WindowBench bench;
        bench.cull({"A.JPG", "B.MOV", "C.JPG"});
        bench.key(Qt::Key_X);

        QCOMPARE(describe(interfaceOf(bench.find(u"strip"_s))),
                 (QStringList{u"A.JPG, rejected | 1 of 3"_s,
                              u"B.MOV, clip, current | 2 of 3 | selected"_s, u"C.JPG | 3 of 3"_s}));
        interfaceOf(bench.find(u"strip"_s))
            ->child(2)
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(bench.appState.session()->currentIndex(), 2);
    }

    void theGridIsAListAndItsItemsSayWhatTheyAre()
    {
        WindowBench bench;
        review(bench, 3);
        bench.key(Qt::Key_Right);

        QCOMPARE(describe(interfaceOf(bench.find(u"grid"_s))),
                 (QStringList{u"DSCF0001.JPG | 1 of 3"_s,
                              u"DSCF0002.JPG, selected | 2 of 3 | selected"_s,
                              u"DSCF0003.JPG | 3 of 3"_s}));
        interfaceOf(bench.find(u"grid"_s))
            ->child(2)
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(bench.appState.reviewSelection(), 2);
    }

    void theCurrentStepAndTheClosedOnesSaySo()
    {
        WindowBench bench;
        const auto spoken = [&bench](const QString &name) {
            return interfaceOf(bench.find(name))->text(QAccessible::Description);
        };
        bench.cull({"A.JPG"});
        QCOMPARE(spoken(u"cardStep"_s), QString());
        QCOMPARE(spoken(u"cullStep"_s), u"current step"_s);
        QCOMPARE(spoken(u"reviewStep"_s), QString());
        bench.key(Qt::Key_X);
        QTRY_COMPARE(spoken(u"reviewStep"_s), u"current step"_s);

        bench.files->removalIsHeld = true;
        bench.appState.performDelete();

        QTRY_COMPARE(spoken(u"cullStep"_s), u"not available"_s);
    }

    void theProgressSaysHowFarItIs()
    {
        WindowBench bench;
        review(bench, 2);
        bench.files->removalIsHeld = true;
        bench.appState.performDelete();
        QTRY_VERIFY(bench.find(u"progress"_s));

        const auto *const progress = interfaceOf(bench.find(u"progress"_s));
        QCOMPARE(progress->role(), QAccessible::ProgressBar);
        QCOMPARE(progress->text(QAccessible::Name), u"Deleting 0 of 2"_s);
    }

    void aReaderCanPressWhatCanBeClicked()
    {
        WindowBench bench;
        bench.appState.start();
        bench.mountCard("ONE", {"A.JPG"});
        bench.mountCard("TWO", {"A.JPG"});
        QTRY_VERIFY(bench.find(u"cardPicker"_s));
        press(bench.find(u"cardPicker"_s));
        QTRY_VERIFY(!bench.itemsShowing(u"TWO"_s).isEmpty());
        press(bench.itemsShowing(u"TWO"_s).last()->parentItem());
        QTRY_COMPARE(bench.appState.cardName(), u"TWO"_s);
        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());

        press(bench.find(u"startButton"_s));
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
        press(bench.find(u"reviewStep"_s));
        QTRY_COMPARE(bench.appState.phase(), Phase::review());
        QTRY_VERIFY(bench.find(u"deleteButton"_s));
        press(bench.find(u"deleteButton"_s)); // disabled
        QVERIFY(!bench.appState.confirmingDelete());
        press(bench.find(u"cullStep"_s));
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
        press(bench.find(u"menuButton"_s));
        QTRY_VERIFY(!bench.itemsShowing(u"Cull"_s).isEmpty());
        QTRY_VERIFY(!bench.itemsShowing(u"Edit"_s).isEmpty());
        press(bench.itemsShowing(u"Cull"_s).last()->parentItem()->parentItem());
        QTRY_VERIFY(!bench.itemsShowing(u"Reject (X)"_s).isEmpty());
        press(bench.itemsShowing(u"Reject (X)"_s).last()->parentItem()->parentItem());
        QTRY_COMPARE(bench.appState.session()->rejectedCount(), 1);
        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
    }

private:
    static void review(WindowBench &bench, int rejects)
    {
        bench.cull(ScreenBench::shots(rejects + 1));
        for (int reject = 0; reject < rejects; ++reject) {
            bench.key(Qt::Key_X);
        }
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::review());
        QTRY_VERIFY(bench.find(rejects > 0 ? u"grid"_s : u"nothing"_s));
        bench.waitForFrames();
    }

    static QAccessibleInterface *interfaceOf(const QQuickItem *item)
    {
        return QAccessible::queryAccessibleInterface(const_cast<QQuickItem *>(item));
    }

    static void press(const QQuickItem *item)
    {
        QVERIFY(item);
        interfaceOf(item)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }

    static bool hasWords(const QString &text)
    {
        return std::ranges::any_of(text, [](QChar c) { return c.isLetterOrNumber(); });
    }

    static QList<const QQuickItem *> allItems(const WindowBench &bench)
    {
        QList<const QQuickItem *> items{bench.window->contentItem()};
        for (qsizetype next = 0; next < items.size(); ++next) {
            for (const auto *child : items.at(next)->childItems()) {
                if (child->isVisible() && child->opacity() > 0) {
                    items.append(child);
                }
            }
        }
        return items;
    }

    /// What a reader comes upon that begins at the window.
    static QSet<const QObject *> spokenItems(const WindowBench &bench)
    {
        QList<QAccessibleInterface *> found{QAccessible::queryAccessibleInterface(bench.window)};
        QSet<const QObject *> items;
        for (qsizetype next = 0; next < found.size(); ++next) {
            items.insert(found.at(next)->object());
            for (int child = 0; child < found.at(next)->childCount(); ++child) {
                found.append(found.at(next)->child(child));
            }
        }
        return items;
    }

    /// By itself, with the control that it lies in, or as the name of another.
    static bool isSpoken(const QQuickItem *item, const QString &text,
                         const QSet<const QObject *> &known)
    {
        for (; item; item = item->parentItem()) {
            if (!known.contains(item)) {
                continue;
            }
            const auto *const spoken = interfaceOf(item);
            if (spoken->text(QAccessible::Name).contains(text) ||
                spoken->text(QAccessible::Description).contains(text)) {
                return true;
            }
        }
        return std::ranges::any_of(known, [&text](const QObject *object) {
            const auto *const other =
                QAccessible::queryAccessibleInterface(const_cast<QObject *>(object));
            return other->text(QAccessible::Name) == text;
        });
    }

    static QStringList describe(const QAccessibleInterface *list)
    {
        QStringList texts;
        if (list->role() != QAccessible::List) {
            return texts;
        }
        for (int index = 0; index < list->childCount(); ++index) {
            const auto *const item = list->child(index);
            if (item->role() == QAccessible::ListItem) {
                texts.append(item->text(QAccessible::Name) + u" | "_s +
                             item->text(QAccessible::Description) +
                             (item->state().selected ? u" | selected"_s : QString()));
            }
        }
        return texts;
    }
};

Q_DECLARE_METATYPE(std::function<void(WindowBench &)>)

QTEST_MAIN(SpokenScreensTest)
#include "SpokenScreensTest.moc"
