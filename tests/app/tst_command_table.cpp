#include "test_support.h"

#include "app/command_table.h"

#include <QMenu>
#include <QSet>
#include <QTest>
#include <QToolBar>

using namespace pw;

class TestCommandTable : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { program = new TestProgram; }

    void everyNameStandsOnceInEachMenuBar()
    {
        for (const QList<MenuRow> *rows : {&CommandTable::mainMenuRows(), &CommandTable::documentMenuRows()}) {
            QSet<QString> seen;
            for (const MenuRow &row : *rows) {
                if (row.name == QLatin1String("-"))
                    continue;
                QVERIFY2(!seen.contains(row.name), qPrintable(row.name));
                seen.insert(row.name);
            }
        }
    }

    void everyRowBecomesAnItemWithCaptionAndShortcut()
    {
        frmDoc *doc = program->newDocument();
        for (const MenuRow &row : CommandTable::documentMenuRows()) {
            if (row.name.startsWith(QLatin1Char('-')) && row.name.size() == 1)
                continue;
            QAction *a = doc->item(row.name.startsWith(QLatin1Char('-')) ? row.name.mid(1) : row.name);
            QVERIFY2(a, qPrintable(row.name));
            if (!row.name.startsWith(QLatin1Char('-')))
                QCOMPARE(a->text(), row.caption);
            QCOMPARE(a->shortcut(), QKeySequence(row.shortcut));
        }
        QCOMPARE(doc->item("mnuFileSaveAs")->shortcut(), QKeySequence("Ctrl+A"));
        QCOMPARE(doc->item("mnuHeadings(6)")->text(), QString("H&6  (smallest)"));
        QCOMPARE(doc->item("mnuFilePrintSelected")->text(), QString("Print &Setected Text"));
    }

    void everyHandlerBelongsToARow()
    {
        QSet<QString> names;
        for (const QList<MenuRow> *rows : {&CommandTable::mainMenuRows(), &CommandTable::documentMenuRows()})
            for (const MenuRow &row : *rows)
                names.insert(row.name);
        for (const QList<ButtonRow> *rows : {&CommandTable::toolbar1Rows(), &CommandTable::toolbar2Rows()})
            for (const ButtonRow &row : *rows)
                names.insert(row.key);
        // Every placement command of the document menu is wired.
        for (const char *item : {"mnuTextBold", "mnuHTMLHTML", "mnuHeadings(1)", "mnuCharCopy", "mnuListDD",
                                 "mnuTableHeader", "mnuFrameNoFrame", "mnuNoBR", "mnuHTMLAdress"})
            QVERIFY2(program->app.commands().hasHandler(item), item);
        for (const QString &name : names)
            if (program->app.commands().hasHandler(name))
                QVERIFY(names.contains(name));
    }

    void toolbarsHaveTheirButtons()
    {
        QCOMPARE(program->main().Toolbar1->actions().size(), 17);
        QCOMPARE(program->main().Toolbar2->actions().size(), 13);
        QAction *spell = program->main().button("imgSpell");
        QVERIFY(spell);
        QCOMPARE(spell->toolTip(), QString("Spell Checker"));
        QCOMPARE(program->main().button("imgExit")->statusTip(), QString("Exit "));
    }

    void optionToggledOnOneMenuShowsOnEvery()
    {
        frmDoc *one = program->newDocument();
        frmDoc *two = program->newDocument();
        QVERIFY(!two->item("mnuOptionMaxDocs")->isChecked());
        QVERIFY(program->trigger(one, "mnuOptionMaxDocs"));
        QVERIFY(program->main().options().isChecked(Option::MaximizeDocs));
        QVERIFY(two->item("mnuOptionMaxDocs")->isChecked());
        QVERIFY(one->item("mnuOptionMaxDocs")->isChecked());
        QVERIFY(!two->isMaximized()); // windows already open stay as they are
        QVERIFY(program->trigger(two, "mnuOptionMaxDocs"));
        QVERIFY(!one->item("mnuOptionMaxDocs")->isChecked());
    }

    void noDocumentLeavesOnlyTheFileButtons()
    {
        frmDoc *doc = program->newDocument();
        doc->close();
        QTRY_VERIFY(program->main().slots().openSlots().isEmpty());
        QStringList visible;
        for (QAction *a : program->main().Toolbar1->actions())
            if (a->isVisible())
                visible << (a->isSeparator() ? QStringLiteral("-") : a->objectName());
        QCOMPARE(visible, (QStringList{"imgFileNew", "imgFileOpen", "imgFileSave", "imgHelp", "-", "imgExit"}));
        QVERIFY(program->main().Toolbar2->isHidden());
        program->newDocument();
        QVERIFY(!program->main().Toolbar2->isHidden());
        QVERIFY(program->main().button("imgFind")->isVisible());
    }

    void optionToggledOnMainMenuShowsOnEveryDocument()
    {
        frmDoc *one = program->newDocument();
        frmDoc *two = program->newDocument();
        QAction *mainItem = program->main().findChild<QAction *>("mnuOptionBlankFile");
        QVERIFY(mainItem && mainItem->isChecked());
        mainItem->trigger();
        QVERIFY(!mainItem->isChecked());
        QVERIFY(!one->item("mnuOptionBlankFile")->isChecked());
        QVERIFY(!two->item("mnuOptionBlankFile")->isChecked());
        QVERIFY(program->newDocument()->Text->Text().isEmpty());
    }

    void toolbarOptionHidesBothBars()
    {
        frmDoc *doc = program->newDocument();
        QVERIFY(program->trigger(doc, "mnuOptionToolbar"));
        QVERIFY(program->main().Toolbar1->isHidden());
        QVERIFY(program->main().Toolbar2->isHidden());
        QVERIFY(program->trigger(doc, "mnuOptionToolbar"));
        QVERIFY(!program->main().Toolbar1->isHidden());
        QVERIFY(!program->main().Toolbar2->isHidden());
    }

    void saveItemGreyWhileCleanButtonOnWhenUntitled()
    {
        program->main().options().setChecked(Option::AddTemplate, false);
        frmDoc *doc = program->newDocument();
        Q_EMIT doc->menu("mnuFile")->aboutToShow();
        QVERIFY(!doc->item("mnuFileSave")->isEnabled());
        doc->Form_Activate();
        QVERIFY(program->main().button("imgFileSave")->isEnabled());
    }

    void copyAndPasteKeepColoursBetweenDocuments()
    {
        frmDoc *from = program->newDocument();
        from->Text->setText(QString());
        ApplyClassFont(*from->Text, true);
        from->Text->setSelText("<B>");
        from->Text->setSelStart(0);
        from->Text->setSelLength(3);
        QVERIFY(program->trigger(from, "mnuEditCopy"));
        QCOMPARE(program->platform->clipText, QString("<B>"));
        frmDoc *to = program->newDocument();
        to->Text->setText(QString());
        QVERIFY(program->trigger(to, "mnuEditPaste"));
        QCOMPARE(to->Text->Text(), QString("<B>"));
        QCOMPARE(fontClasses(*to->Text), QString("hhh"));
        // Text from elsewhere comes in plain, in the text font.
        program->platform->setClipboard("a\nb", {});
        QVERIFY(program->trigger(to, "mnuEditPaste"));
        QCOMPARE(to->Text->Text(), QString("<B>a\r\nb"));
        QCOMPARE(fontClasses(*to->Text), QString("hhht//t"));
    }
};

QTEST_MAIN(TestCommandTable)
#include "tst_command_table.moc"
