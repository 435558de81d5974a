#include "test_support.h"

#include "markup/tag_placement.h"

#include <QLabel>
#include <QTest>

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

    void pairedCommands_data()
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
    }
    void pairedCommands()
    {
        QFETCH(QString, item);
        QFETCH(QString, text);
        QFETCH(int, caret);
        QVERIFY(program->trigger(doc, item));
        QCOMPARE(doc->Text->Text(), text);
        QCOMPARE(doc->Text->SelStart(), caret);
        QCOMPARE(doc->Text->SelLength(), 0);
        QCOMPARE(program->main().slots().state(doc->slot()).Dirty, True);
    }

    void singleLiterals_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("text");
        QTest::newRow("list item keeps its indent") << "mnuListItem" << "    <LI>";
        QTest::newRow("definition") << "mnuListDD" << "        <DD>";
        QTest::newRow("frame") << "mnuFrameFrame" << "    <FRAME>";
        QTest::newRow("rule") << "mnuHRPlace" << "<HR>";
        QTest::newRow("non-blank space") << "mnuCharBlank" << "&nbsp;";
        QTest::newRow("less") << "mnuCharLess" << "&lt;";
    }
    void singleLiterals()
    {
        QFETCH(QString, item);
        QFETCH(QString, text);
        QVERIFY(program->trigger(doc, item));
        QCOMPARE(doc->Text->Text(), text);
        QCOMPARE(doc->Text->SelStart(), int(text.size()));
        QCOMPARE(fontClasses(*doc->Text), QString(text.size(), QLatin1Char('h')));
        QCOMPARE(doc->Text->caretFont(), TextFont); // typing goes on in the text font
    }

    void singleLiteralReplacesSelectionWithoutQuestion()
    {
        doc->Text->setText("a & b");
        doc->Text->setSelStart(2);
        doc->Text->setSelLength(1);
        QVERIFY(program->trigger(doc, "mnuCharAmp"));
        QCOMPARE(doc->Text->Text(), QString("a &amp; b"));
        QVERIFY(program->platform->messages.isEmpty());
    }

    void wrappingKeepsTheSelectionsFonts()
    {
        EditingSurface &text = *doc->Text;
        ApplyClassFont(text, false);
        text.setSelText("x<I>y</I>z");
        text.formatRange(1, 3, HtmlFont);
        text.formatRange(5, 4, HtmlFont);
        text.setSelStart(0);
        text.setSelLength(text.TextLength());
        QVERIFY(program->trigger(doc, "mnuTextBold"));
        QCOMPARE(text.Text(), QString("<B>x<I>y</I>z</B>"));
        QCOMPARE(fontClasses(text), QString("hhhthhhthhhhthhhh"));
        QCOMPARE(text.SelStart(), 13);
    }

    void caretAfterWrappingOnSeparateLines()
    {
        doc->Text->setText("one\r\ntwo");
        doc->Text->setSelStart(0);
        doc->Text->setSelLength(doc->Text->TextLength());
        QVERIFY(program->trigger(doc, "mnuListOrdered"));
        QCOMPARE(doc->Text->Text(), QString("<OL>\r\none\r\ntwo\r\n</OL>"));
        QCOMPARE(doc->Text->SelStart(), 14); // behind the content, before the end tag's line end
    }

    void withoutHighlightingNoFontIsTouched()
    {
        program->main().options().setChecked(Option::Highlight, false);
        ApplyClassFont(*doc->Text, false);
        QVERIFY(program->trigger(doc, "mnuHTMLP"));
        QVERIFY(program->trigger(doc, "mnuTextItalic"));
        QCOMPARE(doc->Text->Text(), QString("<P><I></I>"));
        // The literal takes the font at the caret; the pair the one the scratch surface holds.
        QCOMPARE(fontClasses(*doc->Text).left(3), QString("ttt"));
        const FontClass scratch = program->main().Text->caretFont();
        for (int i = 3; i < 10; ++i)
            QCOMPARE(doc->Text->fontAt(i), scratch);
    }

    void wrappedPairIsOneUndoStep()
    {
        doc->Text->setText("word");
        doc->Text->clearUndo();
        doc->Text->setSelStart(0);
        doc->Text->setSelLength(4);
        QVERIFY(program->trigger(doc, "mnuTextStrong"));
        QCOMPARE(doc->Text->Text(), QString("<STRONG>word</STRONG>"));
        QVERIFY(program->trigger(doc, "mnuEditUndo"));
        QCOMPARE(doc->Text->Text(), QString("word"));
    }

    void bodyShowsItsHint()
    {
        QVERIFY(program->trigger(doc, "mnuHTMLBody"));
        QCOMPARE(program->main().Panel1->text(),
                 QString(" Use Body Background to change the default colors of your document!"));
    }

    void confirmSelectionReplaceAsks()
    {
        program->platform->answers.enqueue(7);
        doc->Text->setText("abc");
        doc->Text->setSelStart(0);
        doc->Text->setSelLength(2);
        QVERIFY(!SelectionMayBeReplaced());
        QCOMPARE(program->platform->messages.size(), 1);
        QCOMPARE(program->platform->messages[0].text, QString("Highlighted text will be replaced!\r\nContinue?"));
        QCOMPARE(program->platform->messages[0].style, 52);
        QCOMPARE(program->platform->messages[0].title, AppTitle());
    }

    void wizardItemsWaitForTheirWizards()
    {
        for (const char *item : {"mnuTableDesign", "mnuDesignFrame", "mnuListDesign", "mnuHTMLHREF"}) {
            QAction *a = doc->item(item);
            QVERIFY2(a, item);
            QVERIFY2(a->isVisible() && !a->isEnabled(), item);
        }
    }

private:
    frmDoc *doc = nullptr;
};

QTEST_MAIN(TestTagPlacement)
#include "tst_tag_placement.moc"
