#include "test_support.h"

#include "core/status_line.h"
#include "files/new_document.h"

#include <QLabel>
#include <QMdiArea>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>

using namespace pw;

class TestDocumentSlots : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void closedUntitledNumbersAreReused()
    {
        frmDoc *one = program->newDocument();
        frmDoc *two = program->newDocument();
        QCOMPARE(program->captions(), (QStringList{"Untitled: 1", "Untitled: 2"}));
        one->close();
        two->close();
        QTRY_VERIFY(program->main().mdiArea->subWindowList().isEmpty());
        QVERIFY(!program->main().slots().AnyDocumentOpen());
        program->newDocument();
        QCOMPARE(program->captions(), QStringList{"Untitled: 1"});
        QCOMPARE(program->main().slots().count(), 2); // the bound never shrinks
    }

    void newDocumentTakesTheLowestFreeSlot()
    {
        program->newDocument();
        frmDoc *two = program->newDocument();
        program->newDocument();
        two->close();
        QTRY_COMPARE(program->main().slots().openSlots(), (QList<int>{1, 3}));
        frmDoc *again = program->newDocument();
        QCOMPARE(again->Tag, QString("2"));
        QCOMPARE(again->Caption(), QString("Untitled: 2"));
    }

    void abandonedOpenLeavesSlotFreeAndClean()
    {
        DocumentSlots &slots = program->main().slots();
        const int slot = slots.FindFreeSlot();
        frmDoc *doc = slots.CreateDocumentWindow(slot, "C:/missing.htm");
        doc->Text->setText("partial");
        slots.state(slot).Dirty = True;
        slots.abandon(slot);
        QCOMPARE(slots.state(slot).Free, True);
        QCOMPARE(slots.state(slot).Dirty, False);
        QTRY_VERIFY(program->main().mdiArea->subWindowList().isEmpty());
        QCOMPARE(slots.FindFreeSlot(), slot);
    }

    void cascadeGivesBackOnlyTheLastPlacedOffset()
    {
        DocumentSlots &slots = program->main().slots();
        program->main().resize(1200, 900);
        frmDoc *first = program->newDocument();
        frmDoc *second = program->newDocument();
        QCOMPARE(slots.CascadeOffset, 800);
        first->close();
        QTRY_COMPARE(slots.openSlots(), QList<int>{2});
        QCOMPARE(slots.CascadeOffset, 800); // not the last placed: nothing given back
        frmDoc *third = program->newDocument();
        QCOMPARE(third->pos(), QPoint(53, 53));
        third->close();
        QTRY_COMPARE(slots.openSlots(), QList<int>{2});
        QCOMPARE(slots.CascadeOffset, 800); // the last placed gives its offset back
        Q_UNUSED(second);
    }

    void lastCloseResetsPanelsAndHidesMarkupTools()
    {
        frmDoc *doc = program->newDocument();
        doc->close();
        QTRY_VERIFY(program->main().mdiArea->subWindowList().isEmpty());
        QCOMPARE(program->main().Panel3->text(), QString("Size: 0"));
        QCOMPARE(program->main().Panel2->text(), QString("Line: 0 "));
        QVERIFY(program->main().markupToolsHidden());
        QVERIFY(program->main().Toolbar2->isHidden());
        QStringList visible;
        for (QAction *a : program->main().Toolbar1->actions())
            if (a->isVisible() && !a->isSeparator())
                visible << a->objectName();
        QCOMPARE(visible, (QStringList{"imgFileNew", "imgFileOpen", "imgFileSave", "imgHelp", "imgExit"}));
        program->newDocument();
        QVERIFY(!program->main().markupToolsHidden());
        QVERIFY(!program->main().Toolbar2->isHidden());
    }

    void closeAllWalksEverySlotAndSkipsRefusals()
    {
        frmDoc *one = program->newDocument();
        program->newDocument();
        program->newDocument();
        connect(one, &frmDoc::QueryUnload, this, [](bool *cancel, int) { *cancel = true; });
        QVERIFY(program->trigger(one, "mnuFileCloseAll"));
        QTRY_COMPARE(program->main().slots().openSlots(), QList<int>{1});
    }

    void menusFollowTheActiveDocument()
    {
        QMenuBar *bar = program->main().menuBar();
        auto titles = [bar] {
            QStringList t;
            for (QAction *a : bar->actions())
                t << a->objectName();
            return t;
        };
        QCOMPARE(titles(), (QStringList{"mnuFile", "mnuOption", "mnuHelp"}));
        frmDoc *doc = program->newDocument();
        QTRY_COMPARE(titles().size(), 13);
        QCOMPARE(titles().first(), QString("mnuFile"));
        doc->close();
        QTRY_COMPARE(titles(), (QStringList{"mnuFile", "mnuOption", "mnuHelp"}));
    }

    void statusTextAndHelpers()
    {
        SetStatusText("Working");
        QCOMPARE(program->main().Panel1->text(), QString(" Working"));
        ClearStatusText();
        QCOMPARE(program->main().Panel1->text(), QString());
        QCOMPARE(TrimTrailing(QString("ab  ") + QChar(0) + " "), QString("ab"));
        QCOMPARE(TrimTrailing("   "), QString());
        QCOMPARE(SizeText(0), QString("Size: "));
        QCOMPARE(SizeText(1234567), QString("Size: 1,234,567"));
        QCOMPARE(LineText(12), QString("Line: 12 "));
        QCOMPARE(AppTitle(), QString("Tessaline Pagewright  Version 1.00.0"));
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

QTEST_MAIN(TestDocumentSlots)
#include "tst_document_slots.moc"
