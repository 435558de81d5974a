#include "test_support.h"

#include <QLabel>

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
