#include "test_support.h"

#include "app/command_table.h"

#include <QMenu>
#include <QSet>
#include <QToolBar>

using namespace pw;

class TestCommandTable : public ProgramTest
{
    Q_OBJECT

    QAction *mainItem(const QString &name) { return program->item(nullptr, name); }

private Q_SLOTS:
    // Every handler is reached from a menu item or a button, and what has none yet is the work
    // still to come, not a command that lost its wiring.
    void handlersAndRowsMatch()
    {
        QSet<QString> commands;
        for (const QList<MenuRow> *rows : {&CommandTable::mainMenuRows(), &CommandTable::documentMenuRows()}) {
            QSet<QString> bar; // a name stands once in each menu bar
            for (qsizetype i = 0; i < rows->size(); ++i) {
                const QString &name = rows->at(i).name;
                QVERIFY2(name == QLatin1String("-") || !bar.contains(name), qPrintable(name));
                bar.insert(name);
                const bool submenu = i + 1 < rows->size() && rows->at(i + 1).depth > rows->at(i).depth;
                if (!submenu && !name.startsWith(QLatin1Char('-')))
                    commands.insert(name);
            }
        }
        for (const QList<ButtonRow> *rows : {&CommandTable::toolbar1Rows(), &CommandTable::toolbar2Rows()})
            for (const ButtonRow &row : *rows)
                commands.insert(row.key);
        commands.remove(QStringLiteral("-"));
        const QStringList handled = program->app.commands().handlerNames();
        for (const QString &name : handled)
            QVERIFY2(commands.contains(name), qPrintable(name + " has a handler but no row"));
        QStringList unhandled = (commands - QSet<QString>(handled.begin(), handled.end())).values();
        // Wizards, fonts, the browser test, resources, site map, forms and the rest.
        const QStringList later = QStringLiteral(
            "imgAnchorName imgBody imgChar imgForm imgFrame imgHyperLink imgImage imgList "
            "imgResources imgTable imgTest mnuCharMap mnuDesignFrame mnuEditPasteDate "
            "mnuEditPasteTime mnuFileResources mnuFontBaseFont mnuFontColor mnuFontFace "
            "mnuFontMinus mnuFontPlusOne mnuFontRainbow mnuFontSize(1) mnuFontSize(2) mnuFontSize(3) "
            "mnuFontSize(4) mnuFontSize(5) mnuFontSize(6) mnuFontSize(7) mnuFormCheckbox mnuFormDefine "
            "mnuFormForm mnuFormHidden mnuFormOption mnuFormPassword mnuFormRadio mnuFormReset mnuFormSelect "
            "mnuFormSubmit mnuFormText mnuFormTextarea mnuHRDefine mnuHTMLBodyBackground mnuHTMLComment "
            "mnuHTMLHREF mnuHTMLImage mnuHTMLName mnuListDesign mnuOptionComstumize mnuOptionCostumize "
            "mnuOptionFontColor mnuOptionSelectBrowser mnuOptionSiteMap mnuTableDesign").split(QLatin1Char(' '));
        unhandled.sort();
        QCOMPARE(unhandled, later);
    }

    void commandOnBothMenuBarsHasOneKey()
    {
        frmDoc *doc = program->newDocument();
        for (const MenuRow &row : CommandTable::mainMenuRows())
            if (QAction *own = mainItem(row.name); own && doc->item(row.name) && !own->menu())
                QVERIFY2(own->shortcut() == doc->item(row.name)->shortcut(), qPrintable(row.name));
    }

    void optionShowsOnEveryMenu()
    {
        frmDoc *one = program->newDocument();
        frmDoc *two = program->newDocument();
        const QString name = QStringLiteral("mnuOptionMaxDocs");
        for (frmDoc *from : {one, static_cast<frmDoc *>(nullptr)}) { // a document's menu, then the main one
            const bool on = !ws().options.isChecked(Option::MaximizeDocs);
            QVERIFY(program->trigger(from, name));
            QCOMPARE(ws().options.isChecked(Option::MaximizeDocs), on);
            for (QAction *item : {one->item(name), two->item(name), mainItem(name)})
                QCOMPARE(item->isChecked(), on);
        }
        QVERIFY(!two->isMaximized()); // windows already open stay as they are
    }

    void toolbarOptionHidesBothBars()
    {
        frmDoc *doc = program->newDocument();
        for (bool hidden : {true, false}) {
            QVERIFY(program->trigger(doc, "mnuOptionToolbar"));
            QCOMPARE(main().Toolbar1->isHidden(), hidden);
            QCOMPARE(main().Toolbar2->isHidden(), hidden);
        }
    }

    void copyAndPasteKeepColoursBetweenDocuments()
    {
        frmDoc *from = program->newDocument();
        ApplyClassFont(*from->Text, true);
        from->Text->setSelText("<B>");
        QVERIFY(program->trigger(from, "mnuEditSelectAll"));
        QVERIFY(program->trigger(from, "mnuEditCopy"));
        QCOMPARE(platform().clipText, QString("<B>"));
        frmDoc *to = program->newDocument();
        QVERIFY(program->trigger(to, "mnuEditPaste"));
        QCOMPARE(to->Text->Text(), QString("<B>"));
        QCOMPARE(fontClasses(*to->Text), QString("hhh"));
        // Text from elsewhere comes in plain, in the text font.
        platform().copyFromElsewhere("a\nb");
        QVERIFY(program->trigger(to, "mnuEditPaste"));
        QCOMPARE(to->Text->Text(), QString("<B>a\r\nb"));
        QCOMPARE(fontClasses(*to->Text), QString("hhht//t"));
    }
};

PW_TEST_MAIN(TestCommandTable)
#include "tst_command_table.moc"
