#include "test_support.h"

#include "core/app_state.h"
#include "platform/message_box.h"
#include "wizards/anchor_wizard.h"
#include "wizards/base_font_wizard.h"
#include "wizards/rule_wizard.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

using namespace pw;

// The anchor, rule and base font dialogs, opened from their menu items and buttons and used as a
// user would: fields set, buttons clicked, the document read back.
class TestSmallWizards : public ProgramTest
{
    Q_OBJECT

    frmDoc *doc = nullptr;

    template<typename Form>
    Form *openForm()
    {
        Form *form = main().findChild<Form *>();
        return form && form->isVisible() ? form : nullptr;
    }
    template<typename W>
    W *field(QWidget *form, const char *name)
    {
        W *widget = form->findChild<W *>(QLatin1String(name));
        if (!widget)
            qWarning("no control %s", name);
        return widget;
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        doc = program->newDocument();
        doc->Text->setText(QStringLiteral("ab"));
        doc->Text->setSelStart(1);
    }

    // A selection is asked about before the anchor and rule dialogs open, and when base font's OK
    // is pressed; No keeps the document as it was.
    void selectionQuestion_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("askedBeforeOpening");
        QTest::newRow("anchor from the menu") << "mnuHTMLName" << true;
        QTest::newRow("anchor from the button") << "imgAnchorName" << true;
        QTest::newRow("rule") << "mnuHRDefine" << true;
        QTest::newRow("base font") << "mnuFontBaseFont" << false;
    }
    void selectionQuestion()
    {
        QFETCH(QString, command);
        QFETCH(bool, askedBeforeOpening);
        doc->Text->setSelLength(1);
        platform().answers.enqueue(MsgAnswer::No);
        if (command.startsWith(QLatin1String("img")))
            program->button(command)->trigger();
        else
            QVERIFY(program->trigger(doc, command));
        WizardForm *form = openForm<WizardForm>();
        if (askedBeforeOpening) {
            verifyMessage(QStringLiteral("Highlighted text will be replaced!\r\nContinue?"), 52);
            QVERIFY(!form);
            QCOMPARE(main().focusWidget(), doc->Text);
        } else {
            QVERIFY(form);
            QVERIFY(platform().messages.isEmpty());
            field<QPushButton>(form, "Command1")->click();
            verifyMessage(QStringLiteral("Highlighted text will be replaced!\r\nContinue?"), 52);
            QVERIFY(form->isVisible());
            platform().answers.enqueue(MsgAnswer::Yes);
            field<QPushButton>(form, "Command1")->click();
            QCOMPARE(doc->Text->Text(), QStringLiteral("a<BASEFONT SIZE=\"3\">"));
            QTRY_VERIFY(!main().findChild<WizardForm *>());
            return;
        }
        QCOMPARE(doc->Text->Text(), QStringLiteral("ab"));
    }

    void anchorPlacedAndRemembered()
    {
        doc->state().LocalNames[1] = QStringLiteral("top");
        QVERIFY(program->trigger(doc, "mnuHTMLName"));
        auto *form = openForm<frmAnchor>();
        QVERIFY(form);
        QCOMPARE(form->windowTitle(), QStringLiteral("Anchor Name"));
        form->Command1->click();
        verifyMessage(QStringLiteral("You must enter an anchor name!"), MsgStyle::Information);
        QVERIFY(form->isVisible());
        QCOMPARE(form->focusWidget(), form->tbAnchor);
        QTest::keyClicks(form->tbAnchor, QStringLiteral("Chapter 2"));
        QTest::keyClick(form->tbAnchor, Qt::Key_Return); // Enter presses OK
        QCOMPARE(doc->Text->Text(), QStringLiteral("a<A NAME=\"Chapter 2\">b"));
        QCOMPARE(fontClasses(*doc->Text), QStringLiteral("thhhhhhhhhhhhhhhhhhhht"));
        QCOMPARE(doc->Text->SelStart(), 21);
        QCOMPARE(doc->state().LocalNames[1], QStringLiteral("Chapter 2"));
        QCOMPARE(doc->state().LocalNames[2], QStringLiteral("top"));
        QTRY_VERIFY(!main().findChild<WizardForm *>());
        QTRY_COMPARE(main().focusWidget(), doc->Text);
    }

    // Size, then width: the first field at fault is named and gets the focus; nothing is placed.
    void ruleRefusals_data()
    {
        QTest::addColumn<QString>("size");
        QTest::addColumn<QString>("width");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("fault");
        QTest::newRow("size") << "big" << "x" << "HR Size must be numeric!" << "tbSize";
        QTest::newRow("width") << "2" << "half" << "HR Width must be numeric!" << "tbWidth";
        QTest::newRow("exponent is no number") << "1e3" << "" << "HR Size must be numeric!" << "tbSize";
    }
    void ruleRefusals()
    {
        QFETCH(QString, size);
        QFETCH(QString, width);
        QFETCH(QString, message);
        QFETCH(QString, fault);
        QVERIFY(program->trigger(doc, "mnuHRDefine"));
        auto *form = openForm<frmHR>();
        QVERIFY(form);
        form->tbSize->setText(size);
        form->tbWidth->setText(width);
        form->Command1->setFocus();
        form->Command1->click();
        verifyMessage(message, MsgStyle::Exclamation);
        QVERIFY(form->isVisible());
        QVERIFY(form->focusWidget());
        QCOMPARE(form->focusWidget()->objectName(), fault);
        QCOMPARE(doc->Text->Text(), QStringLiteral("ab"));
    }

    void ruleFromItsFields()
    {
        QVERIFY(program->trigger(doc, "mnuHRDefine"));
        auto *form = openForm<frmHR>();
        QVERIFY(form);
        QCOMPARE(form->windowTitle(), QStringLiteral("Define <HR>"));
        QVERIFY(field<QRadioButton>(form, "opAlignment(0)")->isChecked());
        field<QLineEdit>(form, "tbWidth")->setText(QStringLiteral("80"));
        field<QCheckBox>(form, "chkWidth")->click();
        field<QRadioButton>(form, "opAlignment(3)")->click();
        field<QCheckBox>(form, "chkNoShade")->click();
        field<QPushButton>(form, "Command1")->click();
        QCOMPARE(doc->Text->Text(), QStringLiteral("a<HR WIDTH=80 ALIGN=CENTER NOSHADE>b"));
        QVERIFY(platform().messages.isEmpty());
    }

    void baseFontBarAndEnter()
    {
        QVERIFY(program->trigger(doc, "mnuFontBaseFont"));
        auto *form = openForm<frmBaseFont>();
        QVERIFY(form);
        auto *size = field<QLineEdit>(form, "tbSize");
        auto *bar = field<QScrollBar>(form, "HScroll1");
        QCOMPARE(size->text(), QStringLiteral("3"));
        QVERIFY(size->isReadOnly());
        QCOMPARE(bar->minimum(), 1);
        QCOMPARE(bar->maximum(), 7);
        QTest::keyClick(bar, Qt::Key_Right);
        QTest::keyClick(bar, Qt::Key_Right);
        QCOMPARE(size->text(), QStringLiteral("5"));
        bar->setValue(9);
        QCOMPARE(size->text(), QStringLiteral("7"));
        // Enter presses Cancel, the default button: nothing is placed.
        QTest::keyClick(bar, Qt::Key_Return);
        QTRY_VERIFY(!main().findChild<WizardForm *>());
        QCOMPARE(doc->Text->Text(), QStringLiteral("ab"));

        QVERIFY(program->trigger(doc, "mnuFontBaseFont"));
        form = openForm<frmBaseFont>();
        QVERIFY(form);
        QCOMPARE(form->tbSize->text(), QStringLiteral("3")); // a fresh form
        form->HScroll1->setValue(1);
        form->Command1->click();
        QCOMPARE(doc->Text->Text(), QStringLiteral("a<BASEFONT SIZE=\"1\">b"));
    }

    // A browse button: the open dialog without its read-only box, starting from and keeping its
    // History name; a cancel (32755) changes nothing.
    void browseRemembersItsChoice()
    {
        ws().history.Reference = QStringLiteral("/w/old.gif");
        int flags = -1;
        QString startedFrom;
        platform().dialogs.enqueue([&](CommonDialog::Kind, CommonDialog &d) {
            flags = d.Flags;
            startedFrom = d.FileName;
            d.FileName = QStringLiteral("/w/img/new.gif");
            return ErrorCode::None;
        });
        QCOMPARE(BrowseForFile(ws(), ws().history.Reference, QStringLiteral("Image"), QStringLiteral("All (*.*)|*.*")),
                 QStringLiteral("/w/img/new.gif"));
        QCOMPARE(flags, 4);
        QCOMPARE(startedFrom, QStringLiteral("/w/old.gif"));
        QCOMPARE(ws().history.Reference, QStringLiteral("/w/img/new.gif"));
        platform().cancelDialog();
        QCOMPARE(BrowseForFile(ws(), ws().history.Reference, QString(), QString()), QString());
        QCOMPARE(ws().history.Reference, QStringLiteral("/w/img/new.gif"));
        QCOMPARE(platform().dialogsShown, (QList<CommonDialog::Kind>{CommonDialog::Kind::Open, CommonDialog::Kind::Open}));
    }

    void escapeCancels()
    {
        QVERIFY(program->trigger(doc, "mnuHRDefine"));
        auto *form = openForm<frmHR>();
        QVERIFY(form);
        form->tbSize->setText(QStringLiteral("4"));
        QTest::keyClick(form->tbSize, Qt::Key_Escape);
        QTRY_VERIFY(!main().findChild<WizardForm *>());
        QCOMPARE(doc->Text->Text(), QStringLiteral("ab"));
        QVERIFY(platform().messages.isEmpty());
    }
};

PW_TEST_MAIN(TestSmallWizards)
#include "tst_small_wizards.moc"
