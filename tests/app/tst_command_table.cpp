#include "test_support.h"

#include "app/command_table.h"
#include "platform/qt_platform.h"

#include <QClipboard>
#include <QGuiApplication>
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
        // Every command of the menus and toolbars has its handler.
        QCOMPARE(unhandled, QStringList());
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

    void pasteKeepsColoursOnlyForItsOwnCopy_data()
    {
        QTest::addColumn<QString>("copied");   // typed in the first document, tags in their font
        QTest::addColumn<QString>("command");  // mnuEditCopy or mnuEditCut, after Select All
        QTest::addColumn<QString>("foreign");  // put on the clipboard by another program; "" for none
        QTest::addColumn<QString>("clipboard");
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("classes");
        QTest::newRow("colours kept across documents") << "<B>x\r\n" << "mnuEditCopy" << "" << "<B>x\n"
                                                       << "<B>x\r\n" << "hhht//";
        QTest::newRow("cut gives back its colours") << "<I>" << "mnuEditCut" << "" << "<I>" << "<I>" << "hhh";
        QTest::newRow("foreign tags take the text font") << "<B>" << "mnuEditCopy" << "<P>" << "<P>" << "<P>"
                                                         << "ttt";
        QTest::newRow("foreign LF and lone CR become CR LF") << "<B>" << "mnuEditCopy" << "a\nb\rc" << "a\nb\rc"
                                                             << "a\r\nb\r\nc" << "t//t//t";
    }
    void pasteKeepsColoursOnlyForItsOwnCopy()
    {
        QFETCH(QString, copied);
        QFETCH(QString, command);
        QFETCH(QString, foreign);
        QFETCH(QString, clipboard);
        QFETCH(QString, pasted);
        QFETCH(QString, classes);
        frmDoc *from = program->newDocument();
        const qsizetype close = copied.indexOf(QLatin1Char('>')) + 1;
        ApplyClassFont(*from->Text, true);
        from->Text->setSelText(copied.left(close));
        ApplyClassFont(*from->Text, false);
        from->Text->setSelText(copied.mid(close));
        QVERIFY(program->trigger(from, "mnuEditSelectAll"));
        QVERIFY(program->trigger(from, command));
        // Copy and Cut are off again with nothing selected.
        QCOMPARE(from->Text->SelLength() == 0, command == QLatin1String("mnuEditCut"));
        QCOMPARE(program->button(buttonKey(Button::EditCut))->isEnabled(), command != QLatin1String("mnuEditCut"));
        if (!foreign.isEmpty())
            platform().copyFromElsewhere(foreign);
        QCOMPARE(platform().clipText, clipboard);
        frmDoc *to = program->newDocument();
        QVERIFY(program->trigger(to, "mnuEditPaste"));
        QCOMPARE(to->Text->Text(), pasted);
        QCOMPARE(fontClasses(*to->Text), classes);
        QVERIFY(!program->button(buttonKey(Button::EditCopy))->isEnabled());
    }

    void realClipboardKeepsTheFragmentOnlyWithItsText_data()
    {
        QTest::addColumn<QString>("elsewhere"); // what another program puts there after our copy
        QTest::addColumn<bool>("fragment");
        QTest::newRow("our copy") << QString() << true;
        QTest::newRow("text of the same length from elsewhere") << "a\nb" << false;
        QTest::newRow("longer text from elsewhere") << "other text" << false;
    }
    void realClipboardKeepsTheFragmentOnlyWithItsText()
    {
        QFETCH(QString, elsewhere);
        QFETCH(bool, fragment);
        QtPlatform real;
        real.setClipboard(QStringLiteral("a\nb"), "fragment");
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("a\nb")); // LF, as others expect
        if (!elsewhere.isNull())
            QGuiApplication::clipboard()->setText(elsewhere);
        QCOMPARE(real.clipboardFragment(), fragment ? QByteArray("fragment") : QByteArray());
        QCOMPARE(real.clipboardText(), elsewhere.isNull() ? QStringLiteral("a\nb") : elsewhere);
    }
};

PW_TEST_MAIN(TestCommandTable)
#include "tst_command_table.moc"
