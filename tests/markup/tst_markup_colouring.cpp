#include "test_support.h"

#include "markup/case_conversion.h"
#include "core/settings_store.h"
#include "markup/configure_dialog.h"
#include "markup/highlighter.h"

#include <QPushButton>

using namespace pw;

// "h3 c10" -> "hhhcccccccccc": class letters with counts.
static QString runs(const char *pattern)
{
    QString out;
    for (const QString &part : QString::fromLatin1(pattern).split(QLatin1Char(' ')))
        out += QString(part.mid(1).toInt(), part[0]);
    return out;
}

// The whole-document passes: colouring, its option switch, and the case conversion.
class TestMarkupColouring : public ProgramTest
{
    Q_OBJECT

    frmDoc *doc = nullptr;

    EditingSurface &text() { return *doc->Text; }
    bool dirty() { return doc->state().Dirty(); }
    // Loads text in the text font, as opening a file does, and clears the dirty flag.
    void load(const QString &content, int caret = 0)
    {
        text().loadText(content, {});
        text().formatRange(0, text().TextLength(), ws().fonts.text);
        text().setSelStart(caret);
        doc->state().setDirty(false);
    }
    void colour() { HighlightDocument(ws(), *doc); }
    void setOption(Option option, bool on) { ws().options.setChecked(option, on); }

private Q_SLOTS:
    void init()
    {
        startProgram();
        setOption(Option::Highlight, true);
        doc = program->newDocument();
        QVERIFY(QTest::qWaitForWindowExposed(&main()));
    }

    void colouring_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<bool>("uppercase");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("classes");
        const auto row = [](const char *name, const QString &content, const QString &classes) {
            QTest::newRow(name) << content << false << content << classes;
        };
        row("tags and text", "a<B>b</B>c", "thhhthhhht");
        row("tag inside comment", "<!-- <B>x --><I>", runs("c13 h3"));
        row("tag directly behind comment", "<!--x--><P>", runs("c8 h3"));
        row("unclosed tag runs to the end", "a<B x", "thhhh");
        row("lone closing bracket", "a>b<I>", "ttthhh");
        row("comment in a quoted value", "<A HREF=\"<!--x-->\">t", runs("h17 t3"));
        row("tag over a line end", "<IMG\r\nSRC=x>y", "hhhh//hhhhhht");
        row("empty text", "", "");
        // Lines longer than a display block, broken inside a tag.
        const QString longValue(5000, QLatin1Char('x'));
        row("a tag across display blocks", "a<IMG ALT=\"" + longValue + "\">b", "t" + runs("h5012") + "t");
        const QString longText(4090, QLatin1Char('t'));
        QTest::newRow("upper case across display blocks") << longText + "<img src=x>" << true << longText + "<IMG SRC=X>"
                                                          << runs("t4090 h11");
        QTest::newRow("upper case keeps quoted values") << "<a href=\"Page.htm\">x" << true
                                                        << "<A HREF=\"Page.htm\">x" << runs("h19 t1");
        QTest::newRow("upper case keeps text") << "<b>bold</b>" << true << "<B>bold</B>" << runs("h3 t4 h4");
        QTest::newRow("upper case keeps tags in comments") << "<!-- <b> --><i>" << true << "<!-- <b> --><I>"
                                                           << runs("c12 h3");
        QTest::newRow("single quotes are ordinary") << "<img alt='x'>" << true << "<IMG ALT='X'>" << runs("h13");
        QTest::newRow("upper case over a line end") << "<img\r\nsrc=x>" << true << "<IMG\r\nSRC=X>" << "hhhh//hhhhhh";
    }
    void colouring()
    {
        QFETCH(QString, content);
        QFETCH(bool, uppercase);
        QFETCH(QString, expected);
        QFETCH(QString, classes);
        setOption(Option::UHTML, uppercase);
        const int caret = qMin(2, int(content.size()));
        load(content, caret);
        text().setSelLength(1);
        colour();
        QCOMPARE(text().Text(), expected);
        QCOMPARE(fontClasses(text()), classes);
        QCOMPARE(text().SelStart(), caret);
        QCOMPARE(text().SelLength(), 0);
        QCOMPARE(text().caretFont(), ws().fonts.text); // typing goes on in the text font
        QVERIFY(!dirty());
        QVERIFY(platform().messages.isEmpty());
        QCOMPARE(passLeftovers(main()), QString());
    }

    void walkRecordsTheComments()
    {
        load("<P><!-- a --> <!-- b -->");
        const WalkResult walked = WalkTags(text(), TagWalk{}, platform());
        QCOMPARE(walked.end, WalkEnd::Done);
        QList<QPoint> spans;
        for (const CommentSpan &c : walked.comments)
            spans << QPoint(c.CommentStart, c.CommentEnd);
        QCOMPARE(spans, (QList<QPoint>{{3, 12}, {14, 23}}));
        QCOMPARE(fontClasses(text()), QString(24, QLatin1Char('t'))); // no fonts asked for
    }

    // Polls: 1 discards an old press, then one per comment round, then one per tag round, as long
    // as the clock moves on (the test clock moves a second at every reading). While the pass runs
    // it shows its status text, the wait cursor and the progress strip; a changed document stays
    // changed. With the clock standing still only the first poll is made and the strip never shows.
    void escapeEndsThePass_data()
    {
        QTest::addColumn<int>("poll");
        QTest::addColumn<QString>("classes");
        QTest::addColumn<bool>("clockStill");
        QTest::newRow("during the comments") << 2 << runs("t3 c10 t15") << false;
        QTest::newRow("after the first tag") << 4 << runs("t0 h3 c18 t7") << false;
        QTest::newRow("in the second comment") << 6 << runs("h3 c18 t7") << false;
        QTest::newRow("after the second last tag") << 7 << runs("h3 c18 t1 h3 t3") << false;
        QTest::newRow("not pressed") << 0 << runs("h3 c18 t1 h6") << false;
        QTest::newRow("clock standing still") << 2 << runs("h3 c18 t1 h6") << true;
    }
    void escapeEndsThePass()
    {
        QFETCH(int, poll);
        QFETCH(QString, classes);
        QFETCH(bool, clockStill);
        load("<A><!-- x --><!--y--> <B><C>", 12);
        doc->state().setDirty(true);
        platform().escapeAtPoll = {poll};
        if (clockStill)
            platform().tickStep = 0;
        QString shown;
        Qt::CursorShape shape = Qt::ArrowCursor;
        platform().onEscapePoll = [&](int at) {
            if (at == (clockStill ? 1 : 2) && QApplication::overrideCursor()) {
                shown = passLeftovers(main());
                shape = QApplication::overrideCursor()->shape();
            }
        };
        const int pollsBefore = platform().escapePolls;
        colour();
        const QString status("status text \" Highlighting HTML tags...Hit ESC to abort.\", wait cursor");
        QCOMPARE(shown, clockStill ? status : status + ", progress strip");
        QCOMPARE(shape, Qt::WaitCursor);
        if (clockStill)
            QCOMPARE(platform().escapePolls - pollsBefore, 1);
        QCOMPARE(fontClasses(text()), classes);
        QCOMPARE(text().SelStart(), 12);
        QVERIFY(dirty());
        QVERIFY(platform().messages.isEmpty());
        QCOMPARE(passLeftovers(main()), QString());
    }

    // What was coloured before the failure stays; the box says what failed, headed by the caption.
    void failureIsReported_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<int>("failAtPoll");
        QTest::addColumn<QString>("classes");
        QTest::addColumn<QString>("message");
        const QString unclosed("Untitled: 1\r\nInvalid property value\r\nError while hightlighting HTML tags!!");
        QTest::newRow("unclosed comment behind a comment") << "<P><!--a--><!-- x" << 0 << runs("t3 c8 t6")
                                                           << unclosed;
        // The selection length 2 - pos is still valid at the start: "<!" is coloured.
        QTest::newRow("unclosed comment at the start") << "<!--x<B>" << 0 << runs("c2 t6") << unclosed;
        QTest::newRow("unforeseen failure") << "<A><B><C>" << 3 << runs("h6 t3")
                                            << "An unforseen error was encountered!\r\nThe error is Out of memory";
    }
    void failureIsReported()
    {
        QFETCH(QString, content);
        QFETCH(int, failAtPoll);
        QFETCH(QString, classes);
        QFETCH(QString, message);
        load(content, 2);
        platform().onEscapePoll = [failAtPoll](int poll) {
            if (poll == failAtPoll)
                throw std::runtime_error("Out of memory");
        };
        colour();
        QCOMPARE(fontClasses(text()), classes);
        QCOMPARE(platform().messages.size(), 1);
        QVERIFY2(platform().messages[0].text.startsWith(message), qPrintable(platform().messages[0].text));
        QCOMPARE(platform().messages[0].style, 48);
        QCOMPARE(text().SelStart(), 2);
        QVERIFY(!dirty());
        QCOMPARE(passLeftovers(main()), QString());
    }

    void textAddedDuringThePassIsWalkedToo()
    {
        setOption(Option::UHTML, true);
        load("<a><b><c>");
        platform().onEscapePoll = [this](int poll) {
            if (poll != 2)
                return;
            text().setSelStart(text().TextLength());
            text().setSelText("<d>");
        };
        colour();
        QCOMPARE(text().Text(), QString("<A><B><C><D>"));
        QCOMPARE(fontClasses(text()), QString(12, QLatin1Char('h')));
    }

    void previewTouchesNoDocumentState()
    {
        load("<P>x");
        EditingSurface sample;
        ClassFonts fonts = ws().fonts;
        std::swap(fonts.text, fonts.html); // not the workspace's classes
        sample.setClassFonts(&fonts);
        sample.setText("<B>x</B><!-- c -->");
        sample.formatRange(0, sample.TextLength(), fonts.text);
        QStringList shown;
        platform().onEscapePoll = [&](int) { shown << passLeftovers(main()); };
        HighlightPreview(ws(), sample, fonts, "Configure Editor");
        QVERIFY(!shown.isEmpty());
        QCOMPARE(shown.join(QString()), QString());
        QCOMPARE(fontClasses(sample), runs("h3 t1 h4 c10"));
        QCOMPARE(sample.caretFont(), fonts.text);
        QVERIFY(!dirty());
        QCOMPARE(fontClasses(text()), QString("tttt"));
    }

    // Configure Editor: choices go into the classes at once; OK carries what changed to the
    // documents, keeping caret and Dirty; Cancel reads the classes back from the settings.
    void configureEditor_data()
    {
        QTest::addColumn<QStringList>("buttons"); // clicked in order; the colour dialog answers 255
        QTest::addColumn<QString>("close");       // Command1 (OK) or Command7 (Cancel)
        QTest::addColumn<QString>("classes");     // of the document afterwards
        QTest::addColumn<bool>("redText");        // the workspace's text class red afterwards
        QTest::addColumn<bool>("redBackground");
        QTest::newRow("OK without a change touches nothing") << QStringList() << "Command1" << "tttttt" << false << false;
        QTest::newRow("the background alone runs no pass") << QStringList{"Command3"} << "Command1" << "tttttt" << false << true;
        QTest::newRow("a text colour recolours every document") << QStringList{"Command6"} << "Command1" << "hhhttt" << true << false;
        QTest::newRow("Cancel reads the classes back") << QStringList{"Command6", "Command3"} << "Command7" << "" << false << true;
    }
    void configureEditor()
    {
        QFETCH(QStringList, buttons);
        QFETCH(QString, close);
        QFETCH(QString, classes);
        QFETCH(bool, redText);
        QFETCH(bool, redBackground);
        load("<P>abc", 4);
        const ClassFonts before = ws().fonts;
        QVERIFY(program->trigger(doc, "mnuOptionFontColor"));
        auto *dialog = main().findChild<frmConfigure *>();
        QVERIFY(dialog && dialog->isVisible());
        QCOMPARE(fontClasses(*dialog->Text).left(8), QString("hhhhhh//"));
        for (const QString &name : buttons) {
            platform().dialogs.enqueue([](CommonDialog::Kind, CommonDialog &d) {
                d.Color = 255;
                return ErrorCode::None;
            });
            QTest::mouseClick(dialog->findChild<QPushButton *>(name), Qt::LeftButton);
        }
        QTest::mouseClick(dialog->findChild<QPushButton *>(close), Qt::LeftButton);
        QTRY_VERIFY(!main().findChild<frmConfigure *>());
        QCOMPARE(ws().fonts.text.Color == 255, redText);
        QCOMPARE(doc->Text->BackColor() == 255, redBackground && close == "Command1");
        if (!classes.isEmpty())
            QCOMPARE(fontClasses(text()), classes);
        else // the document keeps its look; the classes are the stored ones again
            QVERIFY(ws().fonts == LoadFontSettings() && text().fontAt(4) == before.text);
        if (redText)
            QCOMPARE(text().fontAt(4).Color, 255);
        QCOMPARE(text().SelStart(), 4);
        QVERIFY(!dirty());
        QCOMPARE(passLeftovers(main()), QString());
    }

    // Switching on asks whether to colour the open documents; switching off uncolours them.
    void toggleHighlighting_data()
    {
        QTest::addColumn<bool>("on");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("checked");
        QTest::addColumn<QString>("classes");
        QTest::newRow("yes colours open documents") << false << 6 << true << "hhhthhhh";
        QTest::newRow("no leaves them") << false << 7 << true << "tttttttt";
        QTest::newRow("cancel takes the switch back") << false << 2 << false << "tttttttt";
        QTest::newRow("switching off uncolours") << true << 0 << false << "tttttttt";
    }
    void toggleHighlighting()
    {
        QFETCH(bool, on);
        QFETCH(int, answer);
        QFETCH(bool, checked);
        QFETCH(QString, classes);
        setOption(Option::Highlight, on);
        load("<B>x</B>", 4);
        colour();
        platform().answers.enqueue(answer);
        ToggleHighlighting(ws());
        QCOMPARE(platform().messages.size(), on ? 0 : 1);
        if (!on)
            QCOMPARE(platform().messages.first().text, QString("Highlight open documents?"));
        QCOMPARE(ws().options.isChecked(Option::Highlight), checked);
        QCOMPARE(doc->item("mnuOptionHTML")->isChecked(), checked);
        QCOMPARE(fontClasses(text()), classes);
        QCOMPARE(text().SelStart(), 4);
        QVERIFY(!dirty());
    }

    // Quoted values and comments are kept; each tag takes the format of its end, as writing its
    // SelText would (the first character is in the comment font beforehand).
    void conversion_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<int>("escapeAt");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QChar>("first");
        QTest::newRow("quoted value kept") << "<body bgcolor=\"Red\">" << 0 << "<BODY BGCOLOR=\"Red\">" << QChar('t');
        QTest::newRow("comment kept, tag behind it converted") << "<!-- <b> --><i>" << 0 << "<!-- <b> --><I>"
                                                               << QChar('c');
        QTest::newRow("text between tags kept") << "<p>hello <br>world" << 0 << "<P>hello <BR>world" << QChar('t');
        QTest::newRow("unclosed comment ends the walk") << "<b><!-- <i>" << 0 << "<b><!-- <i>" << QChar('c');
        QTest::newRow("Escape after the second tag") << "<a><b><c>" << 3 << "<A><B><c>" << QChar('t');
    }
    void conversion()
    {
        QFETCH(QString, content);
        QFETCH(int, escapeAt);
        QFETCH(QString, expected);
        QFETCH(QChar, first);
        load(content, 1);
        text().formatRange(0, 1, ws().fonts.comment);
        platform().escapeAtPoll = {escapeAt};
        ConvertTagsToUpper(ws(), *doc);
        QCOMPARE(text().Text(), expected);
        QCOMPARE(fontClasses(text())[0], first);
        QVERIFY(dirty());
        QCOMPARE(text().SelStart(), 1);
        QVERIFY(platform().messages.isEmpty());
        QCOMPARE(passLeftovers(main()), QString());
        if (expected != content) { // one undo step
            QVERIFY(text().Undo());
            QCOMPARE(text().Text(), content);
        }
    }
};

PW_TEST_MAIN(TestMarkupColouring)
#include "tst_markup_colouring.moc"
