#include "test_support.h"

#include "platform/message_box.h"
#include "wizards/form_wizard.h"
#include "wizards/list_wizard.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabWidget>

using namespace pw;

// The Form and List Wizards opened from their menu items and buttons and used as a user would:
// fields set by name, buttons clicked, the document read back.
class TestFormListWizards : public ProgramTest
{
    Q_OBJECT

    frmDoc *doc = nullptr;

    WizardForm *wizard()
    {
        WizardForm *form = main().findChild<WizardForm *>();
        return form && form->isVisible() ? form : nullptr;
    }
    template<typename W = QWidget>
    W *field(const QString &name)
    {
        WizardForm *form = wizard();
        W *widget = form ? form->findChild<W *>(name) : nullptr;
        if (!widget)
            qWarning("no control %s", qPrintable(name));
        return widget;
    }
    void click(const QString &button) { field<QPushButton>(button)->click(); }
    QString focused()
    {
        QWidget *focus = wizard() ? wizard()->focusWidget() : nullptr;
        return focus ? focus->objectName() : QString();
    }
    // The class of each character of the first place where text stands in the document.
    QString classesOf(const QString &text)
    {
        const qsizetype at = doc->Text->Text().indexOf(text);
        return at < 0 ? QStringLiteral("<missing>") : fontClasses(*doc->Text).mid(at, text.size());
    }
    bool open(const QString &command)
    {
        const bool opened = command.startsWith(QLatin1String("img")) ? (program->button(command)->trigger(), true)
                                                                      : program->trigger(doc, command);
        return opened && wizard() && QTest::qWaitForWindowActive(wizard());
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        doc = program->newDocument();
        doc->Text->setText(QStringLiteral("<BODY>\r\n\r\n</BODY>"));
        doc->Text->setSelStart(8);
    }

    // The first empty required field is named and gets the focus; nothing is placed and no field
    // changes.
    void refusedPlace_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("fault");
        QTest::newRow("a name") << "mnuFormText" << QStringList{"tbTextValue=v", "tbTextSize=5"} << "Command24"
                                << "You must specify a Name!" << "tbTextName";
        QTest::newRow("a value after the name") << "mnuFormCheckbox" << QStringList{"tbCheckboxName=a", "tbCheckboxText=t"}
                                                << "Command5" << "You must specify a Value!" << "tbCheckboxValue";
        QTest::newRow("an action") << "imgForm" << QStringList{"tbName=f", "tbEncType=e"} << "Command3"
                                   << "You must specify an Action!" << "tbAction";
        QTest::newRow("a numeric start") << "mnuListDesign" << QStringList{"tbOrderedStart=x1", "tbOrderedText=later"}
                                         << "Command6" << "Start not numeric!" << "tbOrderedStart";
    }
    void refusedPlace()
    {
        QFETCH(QStringList, fields);
        QFETCH(QString, button);
        QFETCH(QString, message);
        QFETCH(QString, fault);
        QFETCH(QString, command);
        QVERIFY(open(command));
        for (const QString &f : fields)
            field<QLineEdit>(f.section(QLatin1Char('='), 0, 0))->setText(f.section(QLatin1Char('='), 1));
        click(button);
        verifyMessage(message, MsgStyle::Exclamation);
        QVERIFY(wizard());
        QCOMPARE(focused(), fault);
        for (const QString &f : fields)
            QCOMPARE(field<QLineEdit>(f.section(QLatin1Char('='), 0, 0))->text(), f.section(QLatin1Char('='), 1));
        QCOMPARE(doc->Text->Text(), QStringLiteral("<BODY>\r\n\r\n</BODY>"));
    }

    // A form, a text field, a select of three options (one selected), a textarea and a submit
    // button, each landing inside the form below the one before, tags and texts in their fonts.
    void formBuiltTopDown()
    {
        QVERIFY(open("imgForm"));
        auto *form = qobject_cast<frmForm *>(wizard());
        QVERIFY(form);
        QCOMPARE(form->windowTitle(), QStringLiteral("Form Wizard"));
        QCOMPARE(form->TabStrip1->count(), 11);
        QCOMPARE(focused(), QStringLiteral("tbAction"));
        QTest::keyClicks(form->tbAction, QStringLiteral("/cgi-bin/order"));
        click("Command3");
        QCOMPARE(doc->Text->SelStart(), 8 + 46); // on the empty line between the form's tags
        QCOMPARE(focused(), QStringLiteral("tbAction"));

        form->TabStrip1->setCurrentWidget(form->Picture1[int(FormKind::Text) - 1]);
        QCOMPARE(focused(), QStringLiteral("tbTextName"));
        QTest::keyClicks(form->tbTextName, QStringLiteral("who"));
        click("Command24");

        form->TabStrip1->setCurrentWidget(form->Picture1[int(FormKind::Select) - 1]);
        QCOMPARE(form->tbSelectSize->text(), QStringLiteral("1"));
        form->tbSelectName->setText(QStringLiteral("colour"));
        for (const char *option : {"Red", "Green", "Blue"}) {
            if (QLatin1String(option) == QLatin1String("Green"))
                form->ckbSelectOptionSelected->click();
            QTest::keyClicks(form->tbSelectOptionText, QLatin1String(option));
            QTest::keyClick(form->tbSelectOptionText, Qt::Key_Return); // Enter adds on this tab
        }
        QCOMPARE(form->lstSelectionOptions->count(), 3);
        click("Command17");
        QCOMPARE(form->lstSelectionOptions->count(), 0);

        form->TabStrip1->setCurrentWidget(form->Picture1[int(FormKind::Textarea) - 1]);
        form->tbTextAreaName->setText(QStringLiteral("note"));
        form->tbTextAreaValue->setPlainText(QStringLiteral("Hello\nthere"));
        click("Command25");
        QCOMPARE(form->tbTextAreaRows->text(), QString()); // unset after the clear

        form->TabStrip1->setCurrentWidget(form->Picture1[int(FormKind::Submit) - 1]);
        form->tbSubmitValue->setText(QStringLiteral("Send"));
        click("Command22");

        QCOMPARE(doc->Text->Text(), QStringLiteral("<BODY>\r\n"
                                                   "<FORM ACTION=\"/cgi-bin/order\" METHOD=\"POST\">\r\n"
                                                   "    <INPUT TYPE=\"TEXT\" NAME=\"who\" VALUE=\"\">\r\n"
                                                   "    <SELECT NAME=\"colour\" SIZE=\"1\">\r\n"
                                                   "        <OPTION>Red\r\n"
                                                   "        <OPTION SELECTED>Green\r\n"
                                                   "        <OPTION>Blue\r\n"
                                                   "    </SELECT>\r\n"
                                                   "    <TEXTAREA NAME=\"note\" ROWS=\"10\" COLS=\"10\">\r\n"
                                                   "Hello\r\nthere\r\n"
                                                   "</TEXTAREA>\r\n"
                                                   "    <INPUT TYPE=\"SUBMIT\" VALUE=\"Send\">\r\n"
                                                   "\r\n"
                                                   "</FORM>\r\n"
                                                   "</BODY>"));
        QCOMPARE(classesOf(QStringLiteral("<OPTION SELECTED>Green\r\n")), QStringLiteral("hhhhhhhhhhhhhhhhhttttt//"));
        QCOMPARE(classesOf(QStringLiteral("\">\r\nHello\r\nthere\r\n</TEXTAREA>")),
                 QStringLiteral("hh//ttttt//ttttt//hhhhhhhhhhh"));
        QVERIFY(platform().messages.isEmpty());
        // Each Place is one undo step.
        QVERIFY(doc->Text->Undo());
        QVERIFY(!doc->Text->Text().contains(QLatin1String("SUBMIT")));
        QVERIFY(doc->Text->Text().contains(QLatin1String("</TEXTAREA>")));

        click("Command1");
        QTRY_VERIFY(!main().findChild<WizardForm *>());
    }

    void oneKindOneTab_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("tabs");
        QTest::addColumn<QString>("tab");
        QTest::addColumn<QString>("tip");
        QTest::addColumn<QString>("first");
        QTest::newRow("checkbox") << "mnuFormCheckbox" << "Form: Checkbox" << 1 << "Checkbox" << "Define Checkbox" << "tbCheckboxName";
        QTest::newRow("reset") << "mnuFormReset" << "Form: Reset" << 1 << "Reset" << "Define Reset button" << "tbResetValue";
        QTest::newRow("textarea, the last") << "mnuFormTextarea" << "Form: Textarea" << 1 << "Textarea" << "Define Textarea"
                                            << "tbTextAreaName";
        QTest::newRow("define form: all") << "mnuFormDefine" << "Form Wizard" << 11 << "Form" << "Form Definition" << "tbAction";
    }
    void oneKindOneTab()
    {
        QFETCH(QString, command);
        QFETCH(QString, caption);
        QFETCH(int, tabs);
        QFETCH(QString, tab);
        QFETCH(QString, tip);
        QFETCH(QString, first);
        QVERIFY(open(command));
        auto *form = qobject_cast<frmForm *>(wizard());
        QVERIFY(form);
        QCOMPARE(form->windowTitle(), caption);
        QCOMPARE(form->TabStrip1->count(), tabs);
        QCOMPARE(form->TabStrip1->tabText(form->TabStrip1->currentIndex()), tab);
        QCOMPARE(form->TabStrip1->tabToolTip(form->TabStrip1->currentIndex()), tip);
        QCOMPARE(form->TabStrip1->currentWidget(), form->Picture1[int(form->kind()) - 1]);
        QCOMPARE(focused(), first);
        QCOMPARE(field<QPushButton>("Command1")->text(), QStringLiteral("&Done"));
    }

    // Add with Selected on marks one option and disables the box until that entry is removed or
    // the options are cleared; Remove with nothing selected does nothing.
    void selectedOnce()
    {
        QVERIFY(open("mnuFormSelect"));
        auto *form = qobject_cast<frmForm *>(wizard());
        QVERIFY(form);
        form->ckbSelectOptionSelected->click();
        form->tbSelectOptionText->setText(QStringLiteral("A"));
        click("Command18");
        QVERIFY(!form->ckbSelectOptionSelected->isEnabled());
        QVERIFY(!form->ckbSelectOptionSelected->isChecked());
        QCOMPARE(focused(), QStringLiteral("tbSelectOptionText"));
        form->tbSelectOptionText->setText(QStringLiteral("B  "));
        click("Command18");
        QCOMPARE(form->lstSelectionOptions->item(0)->text(), QStringLiteral("<OPTION SELECTED>A"));
        QCOMPARE(form->lstSelectionOptions->item(1)->text(), QStringLiteral("<OPTION>B"));

        form->lstSelectionOptions->clearSelection();
        click("Command19");
        QCOMPARE(form->lstSelectionOptions->count(), 2);
        form->lstSelectionOptions->setCurrentRow(1);
        click("Command19");
        QVERIFY(!form->ckbSelectOptionSelected->isEnabled());
        form->lstSelectionOptions->setCurrentRow(0);
        click("Command19");
        QVERIFY(form->ckbSelectOptionSelected->isEnabled());
        QCOMPARE(form->lstSelectionOptions->count(), 0);

        form->ckbSelectOptionSelected->click();
        click("Command18");
        QVERIFY(!form->ckbSelectOptionSelected->isEnabled());
        click("Command20");
        QVERIFY(form->ckbSelectOptionSelected->isEnabled());
        QCOMPARE(form->lstSelectionOptions->count(), 0);
    }

    // Typing into a number box: the bar follows without writing back while it is typed in, the
    // box takes the bar's whole number when left.
    void numberField_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("bar");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("left");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("barChanges");
        QTest::newRow("digits") << "tbTextSize" << "hsTextSize" << "12" << "12" << 12 << 2;
        QTest::newRow("a letter wipes the field") << "tbTextSize" << "hsTextSize" << "12a" << "" << 0 << 3;
        QTest::newRow("a fraction rounds") << "tbMaxLength" << "hsMaxLength" << "2.5" << "3" << 3 << 2;
        QTest::newRow("held at 32767") << "tbPasswordSize" << "hsPasswordSize" << "40000" << "32767" << 32767 << 5;
        QTest::newRow("0 is unset") << "tbSelectSize" << "hsSelectSize" << "0" << "" << 0 << 0;
        QTest::newRow("blanks around") << "tbTextAreaCols" << "hsTextAreaCols" << " 7 " << "7" << 7 << 1;
    }
    void numberField()
    {
        QFETCH(QString, box);
        QFETCH(QString, bar);
        QFETCH(QString, typed);
        QFETCH(QString, left);
        QFETCH(int, value);
        QFETCH(int, barChanges);
        QVERIFY(open("mnuFormForm"));
        auto *form = qobject_cast<frmForm *>(wizard());
        auto *edit = field<QLineEdit>(box);
        auto *scroll = field<QScrollBar>(bar);
        form->TabStrip1->setCurrentWidget(edit->parentWidget());
        edit->clear();
        QCOMPARE(scroll->value(), 0);
        edit->setFocus();
        QVERIFY(edit->hasFocus());
        QSignalSpy changes(scroll, &QScrollBar::valueChanged);
        QTest::keyClicks(edit, typed);
        QCOMPARE(changes.size(), barChanges);
        QCOMPARE(scroll->value(), value);
        form->Command1->setFocus();
        QCOMPARE(edit->text(), left);
        QCOMPARE(scroll->value(), value);
        scroll->setValue(9);
        QCOMPARE(edit->text(), QStringLiteral("9"));
        scroll->setValue(0);
        QCOMPARE(edit->text(), QString());
    }

    // An ordered list starting at 3 with type "a", reordered and placed; the wizard stays open and
    // modal, its tab cleared for the next list.
    void orderedListPlaced()
    {
        QVERIFY(open("imgList"));
        auto *form = qobject_cast<frmList *>(wizard());
        QVERIFY(form);
        QCOMPARE(form->windowTitle(), QStringLiteral("List Wizard"));
        QCOMPARE(focused(), QStringLiteral("tbOrderedText"));
        for (const char *entry : {"one", "two", "three "}) {
            QTest::keyClicks(form->tbOrderedText, QLatin1String(entry));
            QTest::keyClick(form->tbOrderedText, Qt::Key_Return); // Enter adds
        }
        form->tbOrderedText->setText(QStringLiteral("   "));
        form->tbOrderedStart->setFocus();
        click("Command2");
        QCOMPARE(form->lstOrdered->count(), 3);
        QCOMPARE(focused(), QStringLiteral("tbOrderedStart")); // not even the focus moves
        form->tbOrderedText->clear();

        form->lstOrdered->setCurrentRow(0);
        click("Command5"); // up from the top: nothing
        form->lstOrdered->setCurrentRow(2);
        click("Command4"); // down from the bottom: nothing
        form->lstOrdered->setCurrentRow(1);
        click("Command5");
        QCOMPARE(form->lstOrdered->currentRow(), 0);
        QVERIFY(form->lstOrdered->currentItem()->isSelected());
        QCOMPARE(focused(), QStringLiteral("tbOrderedText"));

        QTest::keyClicks(form->tbOrderedStart, QStringLiteral("3"));
        field<QRadioButton>("opOrderedType(2)")->click();
        QCOMPARE(focused(), QStringLiteral("tbOrderedText"));
        click("Command6");
        QCOMPARE(doc->Text->Text(), QStringLiteral("<BODY>\r\n<OL START=\"3\" TYPE=\"a\">\r\n"
                                                   "    <LI>two\r\n    <LI>one\r\n    <LI>three \r\n</OL>\r\n"
                                                   "\r\n</BODY>"));
        QCOMPARE(classesOf(QStringLiteral("    <LI>two\r\n")), QStringLiteral("hhhhhhhhttt//"));
        QCOMPARE(doc->Text->SelStart(), 8 + 74); // behind the list
        QVERIFY(wizard() == form);
        QCOMPARE(QApplication::activeModalWidget(), form);
        QCOMPARE(form->lstOrdered->count(), 0);
        QCOMPARE(form->tbOrderedStart->text(), QString());
        QVERIFY(form->opOrderedType[0]->isChecked());
        QCOMPARE(focused(), QStringLiteral("tbOrderedText"));

        click("Command1");
        QTRY_VERIFY(!main().findChild<WizardForm *>());
    }

    // A term may hold the separator: it is kept apart from the definition, only shown joined.
    // With colouring off, the list goes in whole in the font at the caret.
    void definitionKeepsItsHalves()
    {
        QVERIFY(open("mnuListDesign"));
        auto *form = qobject_cast<frmList *>(wizard());
        form->TabStrip1->setCurrentIndex(3);
        QCOMPARE(focused(), QStringLiteral("tbTerm"));
        form->tbTerm->setPlainText(QStringLiteral("x\u00FEy"));
        form->tbDefinition->setPlainText(QStringLiteral("z"));
        click("Command20");
        QCOMPARE(form->lstDefinition->item(0)->text(), QStringLiteral("x\u00FEy\u00FEz"));
        form->ckbCompact->click();
        ws().options.setChecked(Option::Highlight, false); // then tags take the caret's font, as typing does
        click("Command24");
        QCOMPARE(doc->Text->Text(), QStringLiteral("<BODY>\r\n<DL COMPACT>\r\n    <DT>x\u00FEy\r\n        <DD>z\r\n</DL>\r\n\r\n</BODY>"));
        QCOMPARE(classesOf(QStringLiteral("    <DT>x")), QStringLiteral("ttttttttt"));
        QVERIFY(!form->ckbCompact->isChecked());
    }

    // Opened with the caret inside a list or a select, the wizard shows it; its Place puts it back
    // where it stood, with what was changed.
    void roundTrip_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("text"); // "^" is the caret
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("entries");
        QTest::addColumn<QString>("moveUp");
        QTest::addColumn<QString>("place");
        QTest::addColumn<QString>("placed");
        QTest::newRow("ordered") << "mnuListDesign"
                                 << "<BODY>\r\n<OL START=\"3\" TYPE=\"a\">\r\n    <LI>o^ne\r\n    <LI>two\r\n</OL>\r\n</BODY>"
                                 << "lstOrdered" << 2 << "Command5" << "Command6"
                                 << "<BODY>\r\n<OL START=\"3\" TYPE=\"a\">\r\n    <LI>two\r\n    <LI>one\r\n</OL>\r\n</BODY>";
        QTest::newRow("definition") << "imgList" << "<DL>\r\n<DT>a\r\n<DD>^b\r\n<DT>c\r\n<DD>d\r\n</DL>\r\n<P>"
                                    << "lstDefinition" << 2 << "Command23" << "Command24"
                                    << "<DL>\r\n    <DT>c\r\n        <DD>d\r\n    <DT>a\r\n        <DD>b\r\n</DL>\r\n<P>";
        const QString select = "<FORM>\r\n    <SELECT NAME=\"c\" SIZE=\"2\">\r\n        <OPTION SELECTED>Red\r\n"
                               "        <OPTION>Blue\r\n    </SELECT>\r\n</FORM>";
        QTest::newRow("select") << "mnuFormSelect" << QString(select).replace("Blue", "Bl^ue") << "lstSelectionOptions" << 2
                                << "" << "Command17" << select;
    }
    void roundTrip()
    {
        QFETCH(QString, command);
        QFETCH(QString, text);
        QFETCH(QString, list);
        QFETCH(int, entries);
        QFETCH(QString, moveUp);
        QFETCH(QString, place);
        QFETCH(QString, placed);
        const int caret = int(text.indexOf(QLatin1Char('^')));
        doc->Text->setText(text.remove(caret, 1));
        doc->Text->setSelStart(caret);
        QVERIFY(open(command));
        auto *shown = field<QListWidget>(list);
        QVERIFY(shown->isVisible());
        QCOMPARE(shown->count(), entries);
        if (auto *form = qobject_cast<frmForm *>(wizard())) {
            QCOMPARE(form->tbSelectSize->text(), QStringLiteral("2"));
            QVERIFY(!form->ckbSelectOptionSelected->isEnabled()); // one is selected already
        }
        if (!moveUp.isEmpty()) {
            shown->setCurrentRow(1);
            click(moveUp);
        }
        click(place);
        QCOMPARE(doc->Text->Text(), placed);
        QVERIFY(wizard());
        QCOMPARE(shown->count(), 0);
        QVERIFY(doc->Text->Undo()); // one step
        QCOMPARE(doc->Text->Text(), text);
    }
};

PW_TEST_MAIN(TestFormListWizards)
#include "tst_form_list_wizards.moc"
