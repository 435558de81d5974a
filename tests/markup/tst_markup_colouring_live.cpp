#include "test_support.h"

#include "core/status_presenter.h"
#include "markup/highlighter.h"

#include <QLabel>
#include <QMenu>

using namespace pw;

// Colouring while typing, and the other edit events of a document's surface.
class TestMarkupColouringLive : public ProgramTest
{
    Q_OBJECT

    frmDoc *doc = nullptr;

    EditingSurface &text() { return *doc->Text; }
    void type(const QString &keys) { QTest::keyClicks(&text(), keys); }
    void key(Qt::Key k) { QTest::keyClick(&text(), k); }
    bool enabled(const char *button) { return program->button(button)->isEnabled(); }
    void load(const QString &content, int selStart = 0, int selLength = 0)
    {
        text().setText(content);
        text().setSelStart(selStart);
        text().setSelLength(selLength);
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        ws().options.setChecked(Option::Highlight, true);
        doc = program->newDocument();
        QVERIFY(QTest::qWaitForWindowExposed(&main()));
    }

    // A typed character takes its font from what it opens or closes; after a jump of the caret,
    // from what stands around it.
    void typing_data()
    {
        QTest::addColumn<bool>("highlight");
        QTest::addColumn<QString>("content");
        QTest::addColumn<int>("caret");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("classes");
        QTest::newRow("tag then text") << true << "" << 0 << "<B>x" << "hhht";
        QTest::newRow("comment opener") << true << "" << 0 << "<!--" << "cccc";
        QTest::newRow("comment closed then text") << true << "" << 0 << "<!-- a -->b" << "cccccccccct";
        QTest::newRow("end tag behind text") << true << "" << 0 << "a<I>b</I>c" << "thhhthhhht";
        QTest::newRow("bang outside a tag") << true << "" << 0 << "a!<" << "tth";
        QTest::newRow("highlighting off") << false << "" << 0 << "<!--<B>x" << "tttttttt";
        QTest::newRow("jump into the middle of a tag") << true << "x<A HREF=X>yz" << 4 << "Q" << "thhhhhhhhhhhtt";
        QTest::newRow("jump behind a tag") << true << "<A HREF=X>yz" << 11 << "Q" << "hhhhhhhhhhttt";
        QTest::newRow("jump into a comment") << true << "x<!-- abc -->" << 7 << "Q" << "tccccccccccccc";
        QTest::newRow("jump right behind a closed comment") << true << "<!-- a -->b" << 10 << "Q" << "cccccccccctt";
        QTest::newRow("jump to the start: the font there") << true << "<B>x" << 0 << "Q" << "hhhht";
    }
    void typing()
    {
        QFETCH(bool, highlight);
        QFETCH(QString, content);
        QFETCH(int, caret);
        QFETCH(QString, keys);
        QFETCH(QString, classes);
        ws().options.setChecked(Option::Highlight, highlight);
        text().setText(content);
        HighlightDocument(ws(), *doc);
        text().setSelStart(text().TextLength()); // from elsewhere, as a click moves it
        text().setSelStart(caret);
        type(keys);
        QCOMPARE(text().Text(), QString(content).insert(caret, keys));
        QCOMPARE(fontClasses(text()), classes);
    }

    void tabIsFourBlanksAndEscapeKeepsTheSelection_data()
    {
        QTest::addColumn<int>("selStart");
        QTest::addColumn<int>("selLength");
        QTest::addColumn<QString>("expected");
        QTest::newRow("at the caret") << 1 << 0 << "a    bc";
        QTest::newRow("replacing a selection") << 1 << 2 << "a    ";
    }
    void tabIsFourBlanksAndEscapeKeepsTheSelection()
    {
        QFETCH(int, selStart);
        QFETCH(int, selLength);
        QFETCH(QString, expected);
        load("abc", selStart, selLength);
        key(Qt::Key_Tab);
        QCOMPARE(text().Text(), expected);
        QCOMPARE(text().SelStart(), selStart + 4);
        // Escape keeps a selection.
        load("abc", 1, 2);
        key(Qt::Key_Escape);
        QCOMPARE(text().Text(), QString("abc"));
        QCOMPARE(text().SelLength(), 2);
    }

    // An untitled document can be saved before any change, its Save item waits for one. Cut and
    // Copy follow the selection, the panels the length; a change clears panel 1.
    void buttonsAndPanelsFollowTheDocument()
    {
        ws().status.SetStatusText("a message");
        QVERIFY(enabled("imgFileSave") && !doc->item("mnuFileSave")->isEnabled());
        type("ab");
        QVERIFY(doc->item("mnuFileSave")->isEnabled());
        QCOMPARE(main().Panel3->text(), QString("Size: 2"));
        QCOMPARE(main().Panel2->text(), QString("Line: 1 "));
        QCOMPARE(main().Panel1->text(), QString());
        QVERIFY(!enabled("imgEditCut") && !enabled("imgEditCopy"));
        text().setSelStart(0);
        text().setSelLength(2);
        QVERIFY(enabled("imgEditCut") && enabled("imgEditCopy"));
        key(Qt::Key_Backspace);
        QCOMPARE(main().Panel3->text(), QString("Size: ")); // the picture prints nothing for 0
        QVERIFY(!enabled("imgEditCut") && !enabled("imgEditCopy"));
    }

    void lineFollowsTheCaretOfTheDocumentInFront()
    {
        load("one\r\ntwo\r\nthree", 10);
        QCOMPARE(main().Panel2->text(), QString("Line: 3 "));
        key(Qt::Key_Up);
        QCOMPARE(main().Panel2->text(), QString("Line: 2 "));
        text().setSelStart(0);
        QCOMPARE(main().Panel2->text(), QString("Line: 1 "));
        // A caret moved in a document behind leaves the panel to the one in front.
        frmDoc *front = program->newDocument();
        QCOMPARE(main().activeDocument(), front);
        const QString shown = main().Panel2->text();
        text().setSelStart(10);
        QCOMPARE(main().Panel2->text(), shown);
    }

    void rightButtonOpensTheEditMenu()
    {
        QMenu *edit = doc->menu("mnuEdit");
        QVERIFY(edit);
        QTest::mouseClick(text().viewport(), Qt::RightButton, {}, QPoint(20, 20));
        QTRY_VERIFY(edit->isVisible());
        edit->close();
    }
};

PW_TEST_MAIN(TestMarkupColouringLive)
#include "tst_markup_colouring_live.moc"
