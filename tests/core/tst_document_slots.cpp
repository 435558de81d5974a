#include "test_support.h"

#include "core/app_state.h"
#include "core/status_line.h"

#include <QLabel>
#include <QMdiArea>
#include <QMenuBar>
#include <QToolBar>

using namespace pw;

class TestDocumentSlots : public ProgramTest
{
    Q_OBJECT

    void waitForNoWindow() { QTRY_VERIFY(main().mdiArea->subWindowList().isEmpty()); }

private Q_SLOTS:
    void closedUntitledNumbersAreReused()
    {
        frmDoc *one = program->newDocument();
        frmDoc *two = program->newDocument();
        frmDoc *three = program->newDocument();
        QCOMPARE(program->captions(), (QStringList{"Untitled: 1", "Untitled: 2", "Untitled: 3"}));
        two->close();
        QTRY_COMPARE(ws().slots.openSlots(), (QList<int>{1, 3}));
        frmDoc *again = program->newDocument();
        QCOMPARE(again->Caption(), QString("Untitled: 2"));
        for (frmDoc *doc : {one, again, three})
            doc->close();
        waitForNoWindow();
        QVERIFY(!ws().AnyDocumentOpen());
        program->newDocument();
        QCOMPARE(program->captions(), QStringList{"Untitled: 1"});
        QCOMPARE(ws().slots.count(), 3); // the bound never shrinks
    }

    void abandonedOpenLeavesSlotFree()
    {
        DocumentSlots &slots = ws().slots;
        const int slot = slots.FindFreeSlot();
        slots.CreateDocumentWindow(slot, "C:/missing.htm")->state().setDirty(true);
        slots.abandon(slot);
        QVERIFY(slots.isFree(slot));
        QVERIFY(platform().messages.isEmpty()); // no question about the changes
        waitForNoWindow();
        QCOMPARE(slots.FindFreeSlot(), slot);
    }

    void cascadeGivesBackOnlyTheLastPlacedOffset()
    {
        DocumentSlots &slots = ws().slots;
        main().resize(1200, 900);
        frmDoc *first = program->newDocument();
        program->newDocument();
        QCOMPARE(slots.CascadeOffset, 800);
        first->close();
        QTRY_COMPARE(slots.openSlots(), QList<int>{2});
        QCOMPARE(slots.CascadeOffset, 800); // not the last placed: nothing given back
        frmDoc *third = program->newDocument();
        QCOMPARE(third->pos(), QPoint(53, 53));
        third->close();
        QTRY_COMPARE(slots.openSlots(), QList<int>{2});
        QCOMPARE(slots.CascadeOffset, 800); // the last placed gives its offset back
    }

    void lastCloseResetsPanelsMenusAndMarkupTools()
    {
        const auto menuTitles = [this] {
            QStringList titles;
            for (QAction *a : main().menuBar()->actions())
                titles << a->objectName();
            return titles;
        };
        const QStringList own{"mnuFile", "mnuOption", "mnuHelp"};
        QCOMPARE(menuTitles(), own);
        frmDoc *doc = program->newDocument();
        QTRY_VERIFY(menuTitles().contains("mnuEdit"));
        doc->close();
        waitForNoWindow();
        QTRY_COMPARE(menuTitles(), own);
        QCOMPARE(main().Panel3->text(), QString("Size: 0"));
        QCOMPARE(main().Panel2->text(), QString("Line: 0 "));
        QVERIFY(ws().markupToolsHidden());
        QVERIFY(main().Toolbar2->isHidden());
        QVERIFY(!program->button("imgEditCut")->isVisible());
        QVERIFY(program->button("imgFileOpen")->isVisible() && program->button("imgExit")->isVisible());
        program->newDocument();
        QVERIFY(!ws().markupToolsHidden());
        QVERIFY(!main().Toolbar2->isHidden());
    }

    void closeAllWalksEverySlotAndSkipsRefusals()
    {
        frmDoc *one = program->newDocument();
        program->newDocument();
        program->newDocument();
        connect(one, &frmDoc::QueryUnload, this, [](bool *cancel, int) { *cancel = true; });
        QVERIFY(program->trigger(one, "mnuFileCloseAll"));
        QTRY_COMPARE(ws().slots.openSlots(), QList<int>{1});
    }

    void statusTexts()
    {
        QCOMPARE(SizeText(1234567), QString("Size: 1,234,567"));
        QCOMPARE(LineText(12), QString("Line: 12 "));
    }

    void isNumeric_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("numeric");
        for (const char *yes : {"2.5", "03", " -4 ", "+7", ".5", "5."})
            QTest::newRow(yes) << yes << true;
        for (const char *no : {"", ".", "1e3", "1.2.3", "- 4", "abc"})
            QTest::newRow(*no ? no : "empty") << no << false;
    }
    void isNumeric()
    {
        QFETCH(QString, text);
        QFETCH(bool, numeric);
        QCOMPARE(IsNumeric(text), numeric);
    }
};

PW_TEST_MAIN(TestDocumentSlots)
#include "tst_document_slots.moc"
