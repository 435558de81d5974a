#include "test_support.h"

#include "core/app_state.h"
#include "files/stamps.h"
#include "markup/costumize_dialog.h"
#include "platform/message_box.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

using namespace pw;

class TestTagPlacement : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        startProgram();
        doc = program->newDocument();
    }

    // A pair leaves the caret between its tags; a literal behind it, typing on in the text font.
    void placedTags_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("caret");
        QTest::newRow("bold inline") << "mnuTextBold" << "<B></B>" << 3;
        QTest::newRow("html on separate lines") << "mnuHTMLHTML" << "<HTML>\r\n\r\n</HTML>" << 8;
        QTest::newRow("heading 3 stays inline") << "mnuHeadings(3)" << "<H3></H3>" << 4;
        QTest::newRow("blockquote inline") << "mnuTextBlockquote" << "<BLOCKQUOTE></BLOCKQUOTE>" << 12;
        QTest::newRow("frameset on lines") << "mnuFrameSet" << "<FRAMESET>\r\n\r\n</FRAMESET>" << 12;
        QTest::newRow("table row inline") << "mnuTableRow" << "<TR></TR>" << 4;
        QTest::newRow("list item keeps its indent") << "mnuListItem" << "    <LI>" << 8;
        QTest::newRow("definition") << "mnuListDD" << "        <DD>" << 12;
        QTest::newRow("frame") << "mnuFrameFrame" << "    <FRAME>" << 11;
        QTest::newRow("rule") << "mnuHRPlace" << "<HR>" << 4;
        QTest::newRow("non-blank space") << "mnuCharBlank" << "&nbsp;" << 6;
        QTest::newRow("less") << "mnuCharLess" << "&lt;" << 4;
    }
    void placedTags()
    {
        QFETCH(QString, item);
        QFETCH(QString, text);
        QFETCH(int, caret);
        QVERIFY(program->trigger(doc, item));
        QCOMPARE(doc->Text->Text(), text);
        QCOMPARE(doc->Text->SelStart(), caret);
        QCOMPARE(doc->Text->SelLength(), 0);
        const QString tagOnly(QString(text).remove("\r\n").size(), QLatin1Char('h'));
        QCOMPARE(fontClasses(*doc->Text).remove(QLatin1Char('/')), tagOnly);
        if (caret == text.size())
            QCOMPARE(doc->Text->caretFont(), ws().fonts.text);
        QVERIFY(doc->state().Dirty());
    }

    // Commands and function keys around a selection "x" (or at the caret): text, caret, classes.
    void aroundTheSelection_data()
    {
        QTest::addColumn<QString>("selected");
        QTest::addColumn<QString>("action");  // "F2": the key pressed; else a menu item
        QTest::addColumn<QString>("key");     // F2's record: front|follow|FCRLF|PCRLF|preserve|cursor;
                                              // the colour or font the dialog answers ("cancel")
        QTest::addColumn<int>("answer");      // to the question, 0: none asked
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("caret");
        QTest::addColumn<QString>("classes"); // empty: not checked
        const QString center = "<CENTER>|</CENTER>|0|0|1|1";
        const QString stampTime = StampValue(StampKind::LongTime, QDateTime(QDate(2026, 11, 23), QTime(14, 5, 9)));
        QTest::newRow("F2 wraps a coloured x, caret behind it") << "x" << "F2" << center << 0 << "<CENTER>x</CENTER>" << 9
                                                               << "hhhhhhhhthhhhhhhhh";
        QTest::newRow("F2 with both line ends: caret before the second") << "x" << "F2" << "<CENTER>|</CENTER>|1|1|1|1" << 0
                                                                          << "<CENTER>\r\nx\r\n</CENTER>" << 11 << "";
        QTest::newRow("F2 replacing, No keeps all") << "x" << "F2" << "<CENTER>|</CENTER>|0|0|0|1" << int(MsgAnswer::No)
                                                    << "x" << 0 << "t";
        QTest::newRow("F2 replacing, Yes, caret in front") << "x" << "F2" << "<CENTER>|</CENTER>|0|0|0|0" << int(MsgAnswer::Yes)
                                                           << "<CENTER></CENTER>" << 0 << "hhhhhhhhhhhhhhhhh";
        QTest::newRow("F2 with the caret behind") << "x" << "F2" << "<CENTER>|</CENTER>|0|0|1|2" << 0 << "<CENTER>x</CENTER>" << 18 << "";
        QTest::newRow("F1 not in use is swallowed") << "x" << "F1" << "" << 0 << "x" << 0 << "t";
        QTest::newRow("font size 3") << "x" << "mnuFontSize(3)" << "" << 0 << "<FONT SIZE=\"3\">x</FONT>" << 16 << "";
        QTest::newRow("font size plus one") << "" << "mnuFontPlusOne" << "" << 0 << "<FONT SIZE=\"+1\"></FONT>" << 16 << "";
        QTest::newRow("font colour black") << "x" << "mnuFontColor" << "0" << 0 << "<FONT COLOR=\"#000000\">x</FONT>" << 23 << "";
        QTest::newRow("font colour red") << "x" << "mnuFontColor" << "255" << 0 << "<FONT COLOR=\"#FF0000\">x</FONT>" << 23 << "";
        QTest::newRow("font colour blue") << "x" << "mnuFontColor" << "16711680" << 0 << "<FONT COLOR=\"#0000FF\">x</FONT>" << 23 << "";
        QTest::newRow("font colour, pairs in order") << "x" << "mnuFontColor" << "1193046" << 0 << "<FONT COLOR=\"#563412\">x</FONT>" << 23 << "";
        QTest::newRow("font colour cancelled") << "x" << "mnuFontColor" << "cancel" << 0 << "x" << 0 << "t";
        QTest::newRow("font face: the name alone") << "x" << "mnuFontFace" << "Courier New" << 0 << "<FONT FACE=\"Courier New\">x</FONT>" << 26 << "";
        QTest::newRow("comment: the caret where it is typed") << "" << "mnuHTMLComment" << "" << 0 << "<!--  -->" << 5 << "ccccccccc";
        QTest::newRow("comment around a selection") << "x" << "mnuHTMLComment" << "" << 0 << "<!-- x -->" << 10 << "cccccccccc";
        QTest::newRow("date over a selection, No") << "x" << "mnuEditPasteDate" << "" << int(MsgAnswer::No) << "x" << 0 << "t";
        QTest::newRow("time at the caret") << "" << "mnuEditPasteTime" << "" << 0 << stampTime << int(stampTime.size()) << "";
    }
    void aroundTheSelection()
    {
        QFETCH(QString, selected);
        QFETCH(QString, action);
        QFETCH(QString, key);
        QFETCH(int, answer);
        QFETCH(QString, text);
        QFETCH(int, caret);
        QFETCH(QString, classes);
        EditingSurface &surface = *doc->Text;
        ApplyClassFont(surface, false);
        surface.setSelText(selected);
        surface.setSelStart(0);
        surface.setSelLength(int(selected.size()));
        if (action == "mnuFontColor" || action == "mnuFontFace") {
            if (key == "cancel")
                platform().cancelDialog();
            else
                platform().dialogs.enqueue([key](CommonDialog::Kind, CommonDialog &d) {
                    d.Color = key.toInt();
                    d.FontName = key;
                    d.FontSize = 31;
                    return ErrorCode::None;
                });
        } else if (!key.isEmpty()) {
            const QStringList f = key.split('|');
            FunctionKeyRecord &record = ws().functionKeys[1];
            record = {true, FixedWidthText(f[0]), qint16(f[2].toInt()), FixedWidthText(f[1]), qint16(f[3].toInt()),
                      f[4] == "1", qint16(f[5].toInt())};
        }
        if (answer)
            platform().answers.enqueue(answer);
        if (action.startsWith('F'))
            QTest::keyClick(&surface, action == "F1" ? Qt::Key_F1 : Qt::Key_F2);
        else
            QVERIFY(program->trigger(doc, action));
        QCOMPARE(surface.Text(), text);
        QCOMPARE(surface.SelStart(), caret);
        if (!classes.isEmpty())
            QCOMPARE(fontClasses(surface), classes);
        QCOMPARE(platform().messages.size(), answer ? 1 : 0);
        if (text != selected) { // one step back to where it was
            QVERIFY(program->trigger(doc, "mnuEditUndo"));
            QCOMPARE(surface.Text(), selected);
        }
    }

    // The function keys' dialog writes each change at once; erasing a front tag switches the key off.
    void customizingAKey()
    {
        QVERIFY(program->trigger(doc, "mnuOptionComstumize"));
        auto *dialog = main().findChild<frmCostumize *>();
        QVERIFY(dialog && dialog->isVisible());
        QTRY_VERIFY(dialog->isActiveWindow());
        QCOMPARE(dialog->opKey[1]->text(), QString("F2"));
        // On the mark: a button takes clicks only on its mark and label.
        const auto click = [](QAbstractButton *button) { QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2)); };
        click(dialog->opKey[1]);
        QCOMPARE(dialog->CurrentKey, 1);
        QVERIFY(dialog->tbFrontTag->hasFocus());
        QTest::keyClicks(dialog->tbFrontTag, QString(40, 'a'));
        dialog->tbFollowingTag->setFocus();
        QCOMPARE(ws().functionKeys[1].FrontTag, QString(30, 'a'));
        QVERIFY(ws().functionKeys[1].Active);
        QCOMPARE(dialog->opKey[1]->text(), QString("F2 - in use"));
        QTest::keyClicks(dialog->tbFollowingTag, "</B>");
        click(dialog->chkFrontCRLF);
        click(dialog->opCursorPlace[2]);
        QCOMPARE(ws().functionKeys[1].FollowTag, FixedWidthText("</B>"));
        QCOMPARE(ws().functionKeys[1].FCRLF, True);
        QCOMPARE(ws().functionKeys[1].CursorPosition, 2);

        // Erased, then Escape: the box's own leaving switches the key off and resets the rest.
        dialog->tbFrontTag->setFocus();
        dialog->tbFrontTag->clear();
        QTest::keyClick(dialog->tbFrontTag, Qt::Key_Escape);
        QTRY_VERIFY(!main().findChild<frmCostumize *>());
        const FunctionKeyRecord &off = ws().functionKeys[1];
        QVERIFY(!off.Active);
        QCOMPARE(TrimTrailing(off.FollowTag), QString());
        QCOMPARE(off.FCRLF, False);
        QVERIFY(off.PreserveText);
        QCOMPARE(off.CursorPosition, 1);
        QCOMPARE(passLeftovers(main()), QString());
    }

    void singleLiteralReplacesSelectionWithoutQuestion()
    {
        doc->Text->setText("a & b");
        doc->Text->setSelStart(2);
        doc->Text->setSelLength(1);
        QVERIFY(program->trigger(doc, "mnuCharAmp"));
        QCOMPARE(doc->Text->Text(), QString("a &amp; b"));
        QVERIFY(platform().messages.isEmpty());
    }

    // The selection goes inside with its fonts; the caret stops before the end tag's line end.
    void wrappingKeepsTheSelectionsFontsAsOneUndoStep()
    {
        EditingSurface &text = *doc->Text;
        ApplyClassFont(text, false);
        text.setSelText("x<I>y</I>\r\nz");
        text.formatRange(1, 3, ws().fonts.html);
        text.formatRange(5, 4, ws().fonts.html);
        text.setSelStart(0);
        text.setSelLength(text.TextLength());
        QVERIFY(program->trigger(doc, "mnuListOrdered"));
        QCOMPARE(text.Text(), QString("<OL>\r\nx<I>y</I>\r\nz\r\n</OL>"));
        QCOMPARE(fontClasses(text), QString("hhhh//thhhthhhh//t//hhhhh"));
        QCOMPARE(text.SelStart(), 18);
        QVERIFY(program->trigger(doc, "mnuEditUndo"));
        QCOMPARE(text.Text(), QString("x<I>y</I>\r\nz"));
    }

    void withoutHighlightingNoFontIsTouched()
    {
        ws().options.setChecked(Option::Highlight, false);
        ApplyClassFont(*doc->Text, false);
        QVERIFY(program->trigger(doc, "mnuHTMLP"));
        QVERIFY(program->trigger(doc, "mnuTextItalic"));
        QCOMPARE(doc->Text->Text(), QString("<P><I></I>"));
        // The literal takes the font at the caret; the pair the one the scratch surface holds.
        QCOMPARE(fontClasses(*doc->Text).left(3), QString("ttt"));
        QCOMPARE(doc->Text->fontAt(3), main().Text->caretFont());
        QCOMPARE(doc->Text->fontAt(9), main().Text->caretFont());
    }

    void bodyShowsItsHint()
    {
        QVERIFY(program->trigger(doc, "mnuHTMLBody"));
        QCOMPARE(main().Panel1->text(),
                 QString(" Use Body Background to change the default colors of your document!"));
    }

private:
    frmDoc *doc = nullptr;
};

PW_TEST_MAIN(TestTagPlacement)
#include "tst_tag_placement.moc"
