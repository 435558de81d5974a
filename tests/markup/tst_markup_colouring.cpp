#include "test_support.h"

#include "core/status_line.h"
#include "markup/case_conversion.h"
#include "markup/highlighter.h"

#include <QLabel>
#include <QProgressBar>
#include <QTest>

using namespace pw;

// "h3 c10" -> "hhhcccccccccc": class letters with counts.
static QString runs(const char *spec)
{
    QString out;
    for (const QString &part : QString::fromLatin1(spec).split(QLatin1Char(' ')))
        out += QString(part.mid(1).toInt(), part[0]);
    return out;
}

// The whole-document passes: colouring, its option switch, and the case conversion.
class TestMarkupColouring : public ProgramTest
{
    Q_OBJECT

    frmDoc *doc = nullptr;

    EditingSurface &text() { return *doc->Text; }
    DocumentState &state() { return program->main().slots().state(doc->slot()); }
    // Loads text in the text font, as opening a file does, and clears the dirty flag.
    void load(const QString &content)
    {
        text().setText(content);
        text().formatRange(0, text().TextLength(), TextFont);
        state().Dirty = False;
    }
    void setUppercase(bool on) { program->main().options().setChecked(Option::UHTML, on); }

private Q_SLOTS:
    void init()
    {
        startProgram();
        program->main().options().setChecked(Option::Highlight, true);
        doc = program->newDocument();
        QVERIFY(QTest::qWaitForWindowExposed(&program->main()));
    }

    void colouring_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QString>("classes");
        QTest::newRow("tags and text") << "a<B>b</B>c" << "thhhthhhht";
        QTest::newRow("tag inside comment") << "<!-- <B>x --><I>" << "ccccccccccccchhh";
        QTest::newRow("tag directly behind comment") << "<!--x--><P>" << "cccccccchhh";
        QTest::newRow("unclosed tag runs to the end") << "a<B x" << "thhhh";
        QTest::newRow("lone closing bracket") << "a>b<I>" << "ttthhh";
        QTest::newRow("comment in a quoted value") << "<A HREF=\"<!--x-->\">t" << runs("h17 t3");
        QTest::newRow("tag over a line end") << "<IMG\r\nSRC=x>y" << "hhhh//hhhhhht";
        QTest::newRow("empty text") << "" << "";
    }
    void colouring()
    {
        QFETCH(QString, content);
        QFETCH(QString, classes);
        setUppercase(false);
        load(content);
        HighlightDocument(*doc);
        QCOMPARE(fontClasses(text()), classes);
        QCOMPARE(text().Text(), content);
        QVERIFY(program->platform->messages.isEmpty());
    }

    void commentSpans()
    {
        load("<P><!-- a --> <!-- b -->");
        HighlightDocument(*doc);
        QCOMPARE(CommentSpans().size(), 2);
        QCOMPARE(CommentSpans()[0].CommentStart, 3);
        QCOMPARE(CommentSpans()[0].CommentEnd, 12);
        QCOMPARE(CommentSpans()[1].CommentStart, 14);
        QCOMPARE(CommentSpans()[1].CommentEnd, 23);
    }

    void uppercaseOption_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QString>("expected");
        QTest::newRow("quoted value keeps its case") << "<a href=\"Page.htm\">x" << "<A HREF=\"Page.htm\">x";
        QTest::newRow("upper case unchanged") << "<A HREF=\"Page.htm\">" << "<A HREF=\"Page.htm\">";
        QTest::newRow("text between tags kept") << "<b>bold</b>" << "<B>bold</B>";
        QTest::newRow("tag in comment kept") << "<!-- <b> --><i>" << "<!-- <b> --><I>";
        QTest::newRow("single quotes are ordinary") << "<img alt='x'>" << "<IMG ALT='X'>";
        QTest::newRow("tag over a line end") << "<img\r\nsrc=x>" << "<IMG\r\nSRC=X>";
    }
    void uppercaseOption()
    {
        QFETCH(QString, content);
        QFETCH(QString, expected);
        setUppercase(true);
        load(content);
        HighlightDocument(*doc);
        QCOMPARE(text().Text(), expected);
        QCOMPARE(state().Dirty, False);
    }

    void caretAndDirtyKept_data()
    {
        QTest::addColumn<qint16>("dirty");
        QTest::newRow("clean stays clean") << False;
        QTest::newRow("dirty stays dirty") << True;
    }
    void caretAndDirtyKept()
    {
        QFETCH(qint16, dirty);
        load("<P>some <b>text</b>");
        state().Dirty = dirty;
        text().setSelStart(6);
        text().setSelLength(3);
        HighlightDocument(*doc);
        QCOMPARE(state().Dirty, dirty);
        QCOMPARE(text().SelStart(), 6);
        QCOMPARE(text().SelLength(), 0);
        QCOMPARE(text().caretFont(), TextFont); // typing goes on in the text font
        QCOMPARE(StatusText(), QString());
        QVERIFY(!QApplication::overrideCursor());
        QVERIFY(program->main().Picture1->isHidden());
    }

    void showsStatusCursorAndProgressWhileRunning()
    {
        load("<A><B><C>");
        QString status;
        Qt::CursorShape shape = Qt::ArrowCursor;
        bool stripShown = false;
        program->platform->onEscapePoll = [&](int poll) {
            if (poll != 2)
                return;
            status = StatusText();
            shape = QApplication::overrideCursor() ? QApplication::overrideCursor()->shape() : Qt::ArrowCursor;
            stripShown = program->main().Picture1->isVisible();
        };
        HighlightDocument(*doc);
        QCOMPARE(status, QString(" Highlighting HTML tags...Hit ESC to abort."));
        QCOMPARE(shape, Qt::BusyCursor);
        QVERIFY(stripShown);
        QCOMPARE(program->main().ProgressBar->value(), 100);
    }

    void optionOffDoesNothing()
    {
        program->main().options().setChecked(Option::Highlight, false);
        load("<B>x</B>");
        text().setSelStart(2);
        HighlightDocument(*doc);
        QCOMPARE(fontClasses(text()), QString("tttttttt"));
        QCOMPARE(text().SelStart(), 2);
        QVERIFY(text().isVisible());
    }

    // Polls: 1 discards an old press, then one per comment round, then one per tag round.
    void escapeEndsThePass_data()
    {
        QTest::addColumn<int>("poll");
        QTest::addColumn<QString>("classes");
        QTest::newRow("during the comments") << 2 << runs("t3 c10 t15");
        QTest::newRow("after the first tag") << 4 << runs("t0 h3 c18 t7");
        QTest::newRow("in the second comment") << 6 << runs("h3 c18 t7");
        QTest::newRow("after the second last tag") << 7 << runs("h3 c18 t1 h3 t3");
        QTest::newRow("not pressed") << 0 << runs("h3 c18 t1 h6");
    }
    void escapeEndsThePass()
    {
        QFETCH(int, poll);
        QFETCH(QString, classes);
        load("<A><!-- x --><!--y--> <B><C>");
        program->platform->escapeAtPoll = {poll};
        text().setSelStart(12);
        HighlightDocument(*doc);
        QCOMPARE(fontClasses(text()), classes);
        QCOMPARE(text().SelStart(), 12);
        QVERIFY(program->platform->messages.isEmpty());
        QCOMPARE(StatusText(), QString());
    }

    void unclosedComment_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QString>("classes");
        QTest::newRow("after a tag and a comment") << "<P><!--a--><!-- x" << "tttcccccccctttttt";
        // The selection length 2 - pos is still valid at the start: "<!" is coloured.
        QTest::newRow("at the start") << "<!--x<B>" << "cctttttt";
    }
    void unclosedComment()
    {
        QFETCH(QString, content);
        QFETCH(QString, classes);
        load(content);
        text().setSelStart(2);
        HighlightDocument(*doc);
        QCOMPARE(fontClasses(text()), classes);
        QCOMPARE(program->platform->messages.size(), 1);
        const ScriptedPlatform::Message &m = program->platform->messages.first();
        QCOMPARE(m.text, QString("Untitled: 1\r\nInvalid property value\r\nError while hightlighting HTML tags!!\r\n"
                                 "More then likely you have an open ended tag.\r\nCheck your document carefully "
                                 "where the\r\nhighlighting ended."));
        QCOMPARE(m.style, 48);
        QCOMPARE(m.title, AppTitle());
        QCOMPARE(text().SelStart(), 2);
        QCOMPARE(state().Dirty, False);
    }

    void unforeseenFailureIsReported()
    {
        load("<A><B><C>");
        text().setSelStart(4);
        program->platform->onEscapePoll = [](int poll) {
            if (poll == 3)
                throw std::runtime_error("Out of memory");
        };
        HighlightDocument(*doc);
        QCOMPARE(program->platform->messages.size(), 1);
        QCOMPARE(program->platform->messages.first().text,
                 QString("An unforseen error was encountered!\r\nThe error is Out of memory\r\nCheck your "
                         "document carefully where the\r\nhighlighting ended.  More than likely\r\nsomething "
                         "in your document caused this error."));
        QCOMPARE(program->platform->messages.first().style, 48);
        QCOMPARE(fontClasses(text()), QString("hhhhhhttt")); // both tags done before the failure
        QCOMPARE(text().SelStart(), 4);
        QCOMPARE(state().Dirty, False);
        QVERIFY(!QApplication::overrideCursor());
    }

    void textAddedDuringThePassIsWalkedToo()
    {
        setUppercase(true);
        load("<a><b><c>");
        program->platform->onEscapePoll = [this](int poll) {
            if (poll != 2)
                return;
            text().setSelStart(text().TextLength());
            text().setSelText("<d>");
        };
        HighlightDocument(*doc);
        QCOMPARE(text().Text(), QString("<A><B><C><D>"));
        QCOMPARE(fontClasses(text()), QString(12, QLatin1Char('h')));
    }

    void previewTouchesNoDocumentState()
    {
        load("<P>x");
        state().Dirty = False;
        EditingSurface sample;
        FontClass t, h, c;
        t.Color = 0x0000FF;
        h.Color = 0x00FF00;
        h.Bold = true;
        c.Color = 0xFF0000;
        c.Italic = true;
        sample.setText("<B>x</B><!-- c -->");
        sample.formatRange(0, sample.TextLength(), t);
        bool quiet = true;
        program->platform->onEscapePoll = [&](int) {
            quiet = quiet && StatusText().isEmpty() && !QApplication::overrideCursor()
                    && program->main().Picture1->isHidden();
        };
        HighlightPreview(sample, t, h, c, "Configure Editor");
        QVERIFY(quiet);
        QCOMPARE(sample.fontAt(0), h);
        QCOMPARE(sample.fontAt(3), t);
        QCOMPARE(sample.fontAt(9), c);
        QCOMPARE(sample.caretFont(), t);
        QCOMPARE(state().Dirty, False);
        QCOMPARE(fontClasses(text()), QString("tttt"));
    }

    void toggleHighlighting_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("checked");
        QTest::addColumn<QString>("classes");
        QTest::newRow("yes colours open documents") << 6 << true << "hhhthhhh";
        QTest::newRow("no leaves them") << 7 << true << "tttttttt";
        QTest::newRow("cancel takes the switch back") << 2 << false << "tttttttt";
    }
    void toggleHighlighting()
    {
        QFETCH(int, answer);
        QFETCH(bool, checked);
        QFETCH(QString, classes);
        program->main().options().setChecked(Option::Highlight, false);
        load("<B>x</B>");
        program->platform->answers.enqueue(answer);
        ToggleHighlighting();
        QCOMPARE(program->platform->messages.size(), 1);
        QCOMPARE(program->platform->messages.first().text, QString("Highlight open documents?"));
        QCOMPARE(program->platform->messages.first().style, 51);
        QCOMPARE(program->main().options().isChecked(Option::Highlight), checked);
        QCOMPARE(doc->item("mnuOptionHTML")->isChecked(), checked);
        QCOMPARE(fontClasses(text()), classes);
        QCOMPARE(state().Dirty, False);
    }

    void switchingOffUncolours()
    {
        load("<B>x</B><!--c-->");
        HighlightDocument(*doc);
        text().setSelStart(4);
        ToggleHighlighting();
        QVERIFY(!program->main().options().isChecked(Option::Highlight));
        QVERIFY(program->platform->messages.isEmpty());
        QCOMPARE(fontClasses(text()), QString(16, QLatin1Char('t')));
        QCOMPARE(text().SelStart(), 4);
        QCOMPARE(state().Dirty, False);
    }

    void conversion_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QString>("expected");
        QTest::newRow("quoted value kept") << "<body bgcolor=\"Red\">" << "<BODY BGCOLOR=\"Red\">";
        QTest::newRow("comment kept, tag behind it converted") << "<!-- <b> --><i>" << "<!-- <b> --><I>";
        QTest::newRow("text between tags kept") << "<p>hello <br>world" << "<P>hello <BR>world";
        QTest::newRow("unclosed comment ends the walk") << "<b><!-- <i>" << "<b><!-- <i>";
    }
    void conversion()
    {
        QFETCH(QString, content);
        QFETCH(QString, expected);
        load(content);
        text().setSelStart(1);
        ConvertTagsToUpper(*doc);
        QCOMPARE(text().Text(), expected);
        QCOMPARE(state().Dirty, True);
        QCOMPARE(text().SelStart(), 1);
        QVERIFY(program->platform->messages.isEmpty());
        QCOMPARE(StatusText(), QString());
    }

    void conversionIsOneUndoStep()
    {
        load("<p>a<b>b</b>");
        ConvertTagsToUpper(*doc);
        QCOMPARE(text().Text(), QString("<P>a<B>b</B>"));
        QVERIFY(text().Undo());
        QCOMPARE(text().Text(), QString("<p>a<b>b</b>"));
    }

    void conversionGivesEachTagTheFormatOfItsEnd()
    {
        load("<b>x");
        text().formatRange(1, 1, CommentFont);
        ConvertTagsToUpper(*doc);
        QCOMPARE(fontClasses(text()), QString("tttt")); // as writing the tag's SelText would
    }

    void escapeEndsTheConversion()
    {
        load("<a><b><c>");
        program->platform->escapeAtPoll = {3}; // after the second tag
        ConvertTagsToUpper(*doc);
        QCOMPARE(text().Text(), QString("<A><B><c>"));
    }

    void uppercaseOptionOnlyFlips()
    {
        load("<b>x</b>");
        const bool before = program->main().options().isChecked(Option::UHTML);
        ToggleUppercaseOption();
        QCOMPARE(program->main().options().isChecked(Option::UHTML), !before);
        QCOMPARE(doc->item("mnuOptionUHTML")->isChecked(), !before);
        QCOMPARE(text().Text(), QString("<b>x</b>"));
    }
};

QTEST_MAIN(TestMarkupColouring)
#include "tst_markup_colouring.moc"
