#include "test_support.h"

#include "core/app_state.h"
#include "platform/message_box.h"
#include "wizards/body_wizard.h"
#include "wizards/char_map.h"
#include "wizards/hyperlink_wizard.h"
#include "wizards/image_wizard.h"
#include "wizards/rainbow_font.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

using namespace pw;

// The Hyperlink, Image and Body Wizards, the rainbow and the character map, opened from their
// menu items and buttons and used as a user would.
class TestLinkWizards : public ProgramTest
{
    Q_OBJECT

    template<typename Form>
    Form *openForm()
    {
        Form *form = main().findChild<Form *>();
        return form && form->isVisible() ? form : nullptr;
    }
    // An 88 x 31 GIF at img/logo.gif of the test's folder, and a saved page beside it.
    frmDoc *pageWithLogo(const QByteArray &text)
    {
        QDir(temp->path()).mkpath(QStringLiteral("img"));
        write(QStringLiteral("img/logo.gif"),
              QByteArray::fromHex("4749463839615800" "1f00800000ffffff00000021f90401000000002c000000000100010000020244"
                                  "01003b"));
        return opened(QStringLiteral("index.html"), text);
    }
    static void click(QListWidget *list, int row)
    {
        QListWidgetItem *item = list->item(row);
        list->scrollToItem(item);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    }
    static void doubleClick(QListWidget *list, int row)
    {
        QListWidgetItem *item = list->item(row);
        list->scrollToItem(item);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    }
    void chooseColor(qint32 color)
    {
        platform().dialogs.enqueue([color](CommonDialog::Kind, CommonDialog &d) {
            d.Color = color;
            return ErrorCode::None;
        });
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        ws().options.setChecked(Option::UHTML, false); // pages load with the case they were written in
    }

    void linkAroundTheSelection()
    {
        frmDoc *doc = opened(QStringLiteral("a.html"), "Home page");
        doc->Text->setSelStart(0);
        doc->Text->setSelLength(4);
        program->button(QStringLiteral("imgHyperLink"))->trigger();
        auto *form = openForm<frmHyperLink>();
        QVERIFY(form);
        QCOMPARE(form->windowTitle(), QStringLiteral("Hyper Link"));
        QCOMPARE(form->tbHyperCaption->text(), QStringLiteral("Home"));
        QVERIFY(form->chkBaseURL->isChecked());
        QCOMPARE(form->lstRecourses->count(), 9);
        QTest::keyClicks(form->cbURL, QStringLiteral("b.html"));
        form->cbTargetName->setEditText(QStringLiteral("_top"));
        form->Command2->click();
        QCOMPARE(doc->Text->Text(), QStringLiteral("<A HREF=\"b.html\" TARGET=\"_top\">Home</A> page"));
        QCOMPARE(fontClasses(*doc->Text), QString(31, 'h') + "tttt" + "hhhh" + "ttttt");
        QCOMPARE(doc->Text->SelStart(), 39);
        QVERIFY(platform().messages.isEmpty());
        QCOMPARE(ws().previous[PreviousKind::URLs].value(0), QStringLiteral("b.html"));
        QTRY_VERIFY(!main().findChild<WizardForm *>());
        // One command, one undo step.
        QVERIFY(doc->Text->Undo());
        QCOMPARE(doc->Text->Text(), QStringLiteral("Home page"));
    }

    void emptyUrlIsAsked()
    {
        frmDoc *doc = program->newDocument();
        QVERIFY(program->trigger(doc, "mnuHTMLHREF"));
        auto *form = openForm<frmHyperLink>();
        QVERIFY(form);
        const QString question =
            QStringLiteral("You have not entered a destination URL.\r\nDo you wish to place A HREF tag anyway?");
        platform().answers.enqueue(MsgAnswer::No);
        form->Command2->click();
        verifyMessage(question, MsgStyle::YesNo + MsgStyle::Information);
        QVERIFY(form->isVisible());
        QCOMPARE(doc->Text->Text(), QString());
        platform().answers.enqueue(MsgAnswer::Yes);
        form->Command2->click();
        QCOMPARE(doc->Text->Text(), QStringLiteral("<A HREF=\"\"></A>"));
        QCOMPARE(doc->Text->SelStart(), 11); // between the tags, for the caption
        QVERIFY(ws().previous[PreviousKind::URLs].isEmpty() || ws().previous[PreviousKind::URLs].first().isEmpty());
    }

    // Resource types go in front, local names behind; a local link is never remembered.
    void urlFromTheLists()
    {
        frmDoc *doc = program->newDocument();
        doc->state().LocalNames[1] = QStringLiteral("top");
        doc->state().LocalNames[2] = QStringLiteral("end");
        ws().previous[PreviousKind::URLs] = QStringList{QStringLiteral("old.html")};
        QVERIFY(program->trigger(doc, "mnuHTMLHREF"));
        auto *form = openForm<frmHyperLink>();
        QVERIFY(form);
        QCOMPARE(form->cbURL->count(), 1);
        QCOMPARE(form->cbURL->currentText(), QString());
        QCOMPARE(form->lstLocalNames->count(), 2);
        QTest::keyClicks(form->cbURL, QStringLiteral("www.x.org/a.html"));
        click(form->lstRecourses, 0);
        click(form->lstLocalNames, 1);
        QCOMPARE(form->cbURL->currentText(), QStringLiteral("http://www.x.org/a.html#end"));
        form->cbURL->setEditText(QString());
        click(form->lstRecourses, 8);
        QCOMPARE(form->cbURL->currentText(), QStringLiteral("#"));
        form->cbURL->setEditText(QString());
        click(form->lstLocalNames, 0);
        form->Command2->click();
        QCOMPARE(doc->Text->Text(), QStringLiteral("<A HREF=\"#top\"></A>"));
        QCOMPARE(ws().previous[PreviousKind::URLs], QStringList{QStringLiteral("old.html")});
    }

    // "&Image" runs the Image Wizard for the caption, which comes in the tag font.
    void pictureCaption()
    {
        frmDoc *doc = pageWithLogo("x\r\nWelcome");
        doc->Text->setSelStart(1);
        QVERIFY(program->trigger(doc, "mnuHTMLHREF"));
        auto *form = openForm<frmHyperLink>();
        QVERIFY(form);
        form->cbURL->setEditText(QStringLiteral("big.html"));
        form->Command4->click();
        auto *image = openForm<frmImage>();
        QVERIFY(image);
        QCOMPARE(image->Tag, QStringLiteral("H"));
        QTest::keyClicks(image->cbSource, QStringLiteral("img/logo.gif"));
        QCOMPARE(image->tbWidth->text(), QStringLiteral("88"));
        image->Command3->click();
        QTRY_VERIFY(!main().findChild<frmImage *>());
        QVERIFY(form->isVisible());
        const QString tag = QStringLiteral("<IMG SRC=\"img/logo.gif\" HEIGHT=31 WIDTH=88>");
        QCOMPARE(form->tbHyperCaption->text(), tag);
        QCOMPARE(doc->Text->Text(), QStringLiteral("x\r\nWelcome")); // nothing placed yet
        form->Command2->click();
        const QString link = QStringLiteral("<A HREF=\"big.html\">") + tag + QStringLiteral("</A>");
        QCOMPARE(doc->Text->Text(), QLatin1Char('x') + link + QStringLiteral("\r\nWelcome"));
        QCOMPARE(fontClasses(*doc->Text), QLatin1Char('t') + QString(link.size(), QLatin1Char('h')) + "/" + "/" + "ttttttt");
        QCOMPARE(doc->Text->SelStart(), 1 + int(link.size())); // a caption: the caret stays behind
        QCOMPARE(ws().previous[PreviousKind::Images].value(0), QStringLiteral("img/logo.gif"));
    }

    void imageInASavedPage()
    {
        frmDoc *doc = pageWithLogo("ab");
        doc->Text->setSelStart(1);
        program->button(QStringLiteral("imgImage"))->trigger();
        auto *form = openForm<frmImage>();
        QVERIFY(form);
        QCOMPARE(form->windowTitle(), QStringLiteral("Image Wizard"));
        QVERIFY(form->chkBaseURL->isEnabled() && form->chkBaseURL->isChecked());
        platform().chooseFile(path(QStringLiteral("img/logo.gif")));
        form->Command1->click();
        QCOMPARE(form->cbSource->currentText(), QStringLiteral("img/logo.gif"));
        QCOMPARE(ws().history.IOpen, path(QStringLiteral("img/logo.gif")));
        QCOMPARE(form->tbHeight->text(), QStringLiteral("31"));
        QCOMPARE(form->tbWidth->text(), QStringLiteral("88"));
        QTest::keyClick(form->cbSource, Qt::Key_Backspace); // no picture at "img/logo.gi"
        QCOMPARE(form->tbHeight->text(), QString());
        QCOMPARE(form->tbWidth->text(), QString());
        QTest::keyClick(form->cbSource, Qt::Key_F);
        QCOMPARE(form->tbWidth->text(), QStringLiteral("88"));
        QCOMPARE(form->lbTargetCheck->text(), QString());
        form->cbSource->setEditText(QStringLiteral("IMG/logo.gif")); // there, in another letter case
        QVERIFY(form->lbTargetCheck->text().contains(path(QStringLiteral("img/logo.gif"))));
        form->cbSource->setEditText(QStringLiteral("img/logo.gif"));
        QCOMPARE(form->lbTargetCheck->text(), QString());
        form->tbAlt->setText(QStringLiteral("logo"));
        form->tbVSpace->setText(QStringLiteral("x"));
        form->tbHeight->setText(QStringLiteral("tall"));
        form->Command3->click();
        verifyMessage(QStringLiteral("Height must be numeric!"), MsgStyle::Exclamation);
        QCOMPARE(form->focusWidget(), form->tbHeight);
        QCOMPARE(doc->Text->Text(), QStringLiteral("ab"));
        form->tbHeight->setText(QStringLiteral("31"));
        form->tbVSpace->clear();
        form->opAlignment[4]->click();
        form->Command3->click();
        QCOMPARE(doc->Text->Text(), QStringLiteral("a<IMG SRC=\"img/logo.gif\" ALT=\"logo\" HEIGHT=31 WIDTH=88 ALIGN=\"LEFT\">b"));
        QTRY_VERIFY(!main().findChild<WizardForm *>());
        QTRY_COMPARE(main().focusWidget(), doc->Text);
    }

    // An untitled page has no folder: the source is a plain path.
    void imageInAnUntitledPage()
    {
        pageWithLogo("");
        frmDoc *doc = program->newDocument();
        QVERIFY(program->trigger(doc, "mnuHTMLImage"));
        auto *form = openForm<frmImage>();
        QVERIFY(form);
        QVERIFY(!form->chkBaseURL->isEnabled());
        QVERIFY(!form->chkBaseURL->isChecked());
        platform().chooseFile(path(QStringLiteral("img/logo.gif")));
        form->Command1->click();
        QCOMPARE(form->cbSource->currentText(), path(QStringLiteral("img/logo.gif")));
        QCOMPARE(form->tbHeight->text(), QStringLiteral("31"));
        platform().cancelDialog();
        form->Command1->click();
        QCOMPARE(form->cbSource->currentText(), path(QStringLiteral("img/logo.gif")));
    }

    // A lower-case tag is found, selected and read; its attributes are not seen by the edits,
    // which add their own in capitals.
    void lowerCaseBodyTag()
    {
        const QString tag = QStringLiteral("<body bgcolor=\"#FFFFFF\" link=\"#00FF00\" background=\"Paper.GIF\">");
        frmDoc *doc = opened(QStringLiteral("p.html"), ("<html>" + tag + "x</body></html>").toUtf8());
        program->button(QStringLiteral("imgBody"))->trigger();
        auto *form = openForm<frmBody>();
        QVERIFY(form);
        QVERIFY(platform().messages.isEmpty());
        QCOMPARE(form->windowTitle(), QStringLiteral("Body Background Wizard"));
        QCOMPARE(doc->Text->SelText(), tag);
        QCOMPARE(form->lbBodyTag->text(), tag);
        QCOMPARE(form->cbTexture->currentText(), QStringLiteral("Paper.GIF"));
        QCOMPARE(form->backColor(), 0xFFFFFF);
        QCOMPARE(form->textColor(1), 0x00FF00);
        QCOMPARE(form->textColor(0), 0x000000);
        chooseColor(0x0000FF);
        form->cmdColorChange[1]->click();
        QCOMPARE(form->lbBodyTag->text(), tag.chopped(1) + QStringLiteral(" LINK=\"#FF0000\">"));
        form->Command3->click();
        QCOMPARE(doc->Text->Text(), "<html>" + tag.chopped(1) + " LINK=\"#FF0000\">x</body></html>");
    }

    // A texture and a link colour changed in place; other attributes stay.
    void bodyEditedInPlace()
    {
        const QString tag = QStringLiteral("<BODY BGCOLOR=\"#FFFFFF\" LINK=\"#0000FF\" ONLOAD=\"go()\">");
        frmDoc *doc = opened(QStringLiteral("p.html"), ("<HTML>\r\n" + tag + "\r\nx</BODY>").toUtf8());
        QVERIFY(program->trigger(doc, "mnuHTMLBodyBackground"));
        auto *form = openForm<frmBody>();
        QVERIFY(form);
        QCOMPARE(form->cbJAVAOnLoad->currentText(), QString()); // ONLOAD stays in the tag, once
        QTest::keyClicks(form->cbTexture, QStringLiteral("img/paper.gif"));
        chooseColor(0x800000);
        form->cmdColorChange[1]->click();
        form->Command3->click();
        QCOMPARE(doc->Text->Text(), QStringLiteral("<HTML>\r\n<BODY BGCOLOR=\"#FFFFFF\" LINK=\"#000080\" ONLOAD=\"go()\" "
                                                   "BACKGROUND=\"img/paper.gif\">\r\nx</BODY>"));
        QCOMPARE(ws().previous[PreviousKind::Textures].value(0), QStringLiteral("img/paper.gif"));
        QVERIFY(ws().previous[PreviousKind::ExtraTags].value(0).isEmpty());
    }

    // "Clear &Tag" drops every attribute; a cancelled colour dialog still writes the colour on show.
    void clearTagThenCancelledColour()
    {
        frmDoc *doc = opened(QStringLiteral("p.html"), "<BODY TEXT=\"#123456\" BGCOLOR=\"#FFFFFF\" CLASS=\"x\">");
        QVERIFY(program->trigger(doc, "mnuHTMLBodyBackground"));
        auto *form = openForm<frmBody>();
        QVERIFY(form);
        form->cbJAVAOnLoad->setEditText(QStringLiteral("ONUNLOAD=\"bye()\""));
        form->Command5->click();
        QCOMPARE(form->lbBodyTag->text(), QStringLiteral("<BODY>"));
        QCOMPARE(form->cbJAVAOnLoad->currentText(), QString());
        platform().cancelDialog();
        form->cmdColorChange[2]->click();
        platform().cancelDialog();
        form->Command2->click();
        QCOMPARE(form->lbBodyTag->text(), QStringLiteral("<BODY VLINK=\"#800080\" BGCOLOR=\"#C0C0C0\">"));
        QCOMPARE(form->textColor(0), 0x000000);
        QCOMPARE(form->textColor(1), 0xFF0000); // blue
        QCOMPARE(form->textColor(3), 0x0000FF); // red
        form->cbJAVAOnLoad->setEditText(QStringLiteral("ONUNLOAD=\"bye()\""));
        form->Command3->click();
        QCOMPARE(doc->Text->Text(), QStringLiteral("<BODY VLINK=\"#800080\" BGCOLOR=\"#C0C0C0\" ONUNLOAD=\"bye()\">"));
        QCOMPARE(ws().previous[PreviousKind::ExtraTags].value(0), QStringLiteral("ONUNLOAD=\"bye()\""));
    }

    // Tags the wizard can't read: the message, "<BODY>", the old text untouched, OK at the caret.
    void bodyNotPreloaded_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("nonStandard");
        QTest::newRow("no body tag") << "<HTML>abc" << false;
        QTest::newRow("unquoted background") << "<BODY BACKGROUND=a.gif>" << true;
        QTest::newRow("seven digits") << "<BODY TEXT=\"#1234567\">" << true;
        QTest::newRow("no >") << "<BODY TEXT=\"#123456\"" << true;
    }
    void bodyNotPreloaded()
    {
        QFETCH(QString, text);
        QFETCH(bool, nonStandard);
        frmDoc *doc = opened(QStringLiteral("p.html"), text.toUtf8());
        doc->Text->setSelStart(3);
        QVERIFY(program->trigger(doc, "mnuHTMLBodyBackground"));
        auto *form = openForm<frmBody>();
        QVERIFY(form);
        if (nonStandard)
            verifyMessage(QStringLiteral("There seems to be a non-standard code in your BODY tag.\r\n"
                                         "Unable to preload your current BODY tag."),
                          MsgStyle::Exclamation);
        else
            QVERIFY(platform().messages.isEmpty());
        QCOMPARE(form->lbBodyTag->text(), QStringLiteral("<BODY>"));
        QCOMPARE(doc->Text->SelLength(), 0);
        form->Command3->click();
        QCOMPARE(doc->Text->Text(), text.left(3) + QStringLiteral("<BODY>") + text.mid(3));
    }

    void bodyCancelDropsTheSelection()
    {
        frmDoc *doc = opened(QStringLiteral("p.html"), "<BODY TEXT=\"#123456\">x");
        QVERIFY(program->trigger(doc, "mnuHTMLBodyBackground"));
        auto *form = openForm<frmBody>();
        QVERIFY(form);
        QCOMPARE(doc->Text->SelLength(), 21);
        chooseColor(0x0000FF);
        form->cmdColorChange[0]->click();
        QTest::keyClick(form, Qt::Key_Escape);
        QTRY_VERIFY(!main().findChild<WizardForm *>());
        QCOMPARE(doc->Text->SelLength(), 0);
        QCOMPARE(doc->Text->Text(), QStringLiteral("<BODY TEXT=\"#123456\">x"));
    }

    void rainbowOverTheSelection()
    {
        frmDoc *doc = program->newDocument();
        doc->Text->setText(QStringLiteral("a word b"));
        doc->Text->setSelStart(2);
        doc->Text->setSelLength(4);
        QVERIFY(program->trigger(doc, "mnuFontRainbow"));
        auto *form = openForm<frmRainBow>();
        QVERIFY(form);
        QCOMPARE(form->windowTitle(), QStringLiteral("Rainbow Font Wizard"));
        QCOMPARE(form->tbText->text(), QStringLiteral("word"));
        form->tbMin->setText(QStringLiteral("0"));
        form->Command1->click();
        verifyMessage(QStringLiteral("Minimum size must between 1 and 7!"), MsgStyle::Exclamation);
        QCOMPARE(form->focusWidget(), form->tbMin);
        form->tbMin->setText(QStringLiteral("2"));
        form->tbMax->setText(QStringLiteral("4"));
        form->tbChange->setText(QStringLiteral("2"));
        form->Command1->click();
        QCOMPARE(platform().messages.size(), 1); // the selection is replaced unasked
        const QString rainbow = QStringLiteral("<FONT SIZE=3>wo</FONT><FONT SIZE=4>rd</FONT>");
        QCOMPARE(doc->Text->Text(), QStringLiteral("a ") + rainbow + QStringLiteral(" b"));
        QCOMPARE(fontClasses(*doc->Text), "tt" + QString(13, 'h') + "tt" + QString(20, 'h') + "tt" + QString(7, 'h') + "tt");
        QCOMPARE(passLeftovers(main()), QString());
        QTRY_VERIFY(!main().findChild<WizardForm *>());
    }

    // With the caret inside a tag and nothing selected, its wizard opens filled from it and OK
    // replaces it where it stands.
    void editInPlace_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("after");
        QTest::newRow("picture") << "mnuHTMLImage" << "a <IMG SRC=\"img/logo.gif\" ALT=\"old\" WIDTH=10 ALIGN=\"LEFT\"> b"
                                 << "tbAlt" << "new" << "a <IMG SRC=\"img/logo.gif\" ALT=\"new\" WIDTH=10 ALIGN=\"LEFT\"> b";
        QTest::newRow("link: the start tag, the caption kept") << "mnuHTMLHREF" << "a <A HREF=\"x.html\" TARGET=\"_top\">Home</A> b"
                                                               << "cbURL" << "y.html" << "a <A HREF=\"y.html\" TARGET=\"_top\">Home</A> b";
        QTest::newRow("other tag: a new picture") << "mnuHTMLImage" << "a <B> b" << "cbSource" << "c.gif"
                                                  << "a <<IMG SRC=\"c.gif\">B> b";
    }
    void editInPlace()
    {
        QFETCH(QString, command);
        QFETCH(QString, text);
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(QString, after);
        frmDoc *doc = pageWithLogo(text.toUtf8());
        doc->Text->setSelStart(3);
        QVERIFY(program->trigger(doc, command));
        auto *form = openForm<WizardForm>();
        QVERIFY(form);
        if (auto *combo = form->findChild<QComboBox *>(field))
            combo->setEditText(value);
        else
            form->findChild<QLineEdit *>(field)->setText(value);
        form->findChild<QPushButton *>(command == QLatin1String("mnuHTMLImage") ? "Command3" : "Command2")->click();
        QCOMPARE(doc->Text->Text(), after);
        QVERIFY(platform().messages.isEmpty());
    }

    void editInPlaceCancelled()
    {
        frmDoc *doc = pageWithLogo("<IMG SRC=\"img/logo.gif\">");
        doc->Text->setSelStart(4);
        QVERIFY(program->trigger(doc, "mnuHTMLImage"));
        auto *form = openForm<frmImage>();
        QVERIFY(form);
        QCOMPARE(doc->Text->SelText(), QStringLiteral("<IMG SRC=\"img/logo.gif\">"));
        QCOMPARE(form->cbSource->currentText(), QStringLiteral("img/logo.gif"));
        QCOMPARE(form->tbHeight->text(), QString()); // the tag's own sizes, none
        form->Command2->click();
        QTRY_VERIFY(!main().findChild<WizardForm *>());
        QCOMPARE(doc->Text->SelLength(), 0);
        QCOMPARE(doc->Text->Text(), QStringLiteral("<IMG SRC=\"img/logo.gif\">"));
    }

    void characterMap()
    {
        frmDoc *doc = program->newDocument();
        doc->Text->setText(QStringLiteral("caf!"));
        doc->Text->setSelStart(3);
        doc->Text->setSelLength(1);
        program->button(QStringLiteral("imgChar"))->trigger();
        auto *form = openForm<frmChar>();
        QVERIFY(form);
        QCOMPARE(form->windowTitle(), QStringLiteral("Character Map"));
        QCOMPARE(form->lstChar->count(), 96);
        QVERIFY(form->Option1[0]->isChecked());
        doubleClick(form->lstChar, 233 - 160);
        QCOMPARE(doc->Text->Text(), QStringLiteral("caf&#233;")); // the selection replaced unasked
        form->Option1[1]->click();
        doubleClick(form->lstChar, 233 - 160);
        doubleClick(form->lstChar, 161 - 160); // no name: the number
        QCOMPARE(doc->Text->Text(), QStringLiteral("caf&#233;&eacute;&#161;"));
        QVERIFY(platform().messages.isEmpty());
        QVERIFY(form->isVisible());
        form->Command1->click();
        QTRY_VERIFY(!main().findChild<WizardForm *>());
    }
};

PW_TEST_MAIN(TestLinkWizards)
#include "tst_link_wizards.moc"
