#include "test_support.h"

#include "core/status_line.h"
#include "markup/highlighter.h"

#include <QLabel>
#include <QMenu>
#include <QTest>
#include <QTextBlock>
#include <QToolBar>

using namespace pw;

// Colouring while typing, and the other edit events of a document's surface.
class TestMarkupColouringLive : public ProgramTest
{
    Q_OBJECT

    frmDoc *doc = nullptr;

    EditingSurface &text() { return *doc->Text; }
    void type(const QString &keys) { QTest::keyClicks(&text(), keys); }
    // A coloured document, and the caret put somewhere as a mouse click would.
    void loadColoured(const QString &content, int caret)
    {
        text().setText(content);
        text().formatRange(0, text().TextLength(), TextFont);
        HighlightDocument(*doc);
        text().setSelStart(text().TextLength()); // from elsewhere, as a click moves it
        text().setSelStart(caret);
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        main().options().setChecked(Option::Highlight, true);
        doc = program->newDocument();
        QVERIFY(QTest::qWaitForWindowExposed(&main()));
    }

    void typing_data()
    {
        QTest::addColumn<bool>("highlight");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("classes");
        QTest::newRow("tag then text") << true << "<B>x" << "hhht";
        QTest::newRow("comment opener") << true << "<!--" << "cccc";
        QTest::newRow("comment closed then text") << true << "<!-- a -->b" << "cccccccccct";
        QTest::newRow("end tag behind text") << true << "a<I>b</I>c" << "thhhthhhht";
        QTest::newRow("bang outside a tag") << true << "a!<" << "tth";
        QTest::newRow("highlighting off") << false << "<!--<B>x" << "tttttttt";
    }
    void typing()
    {
        QFETCH(bool, highlight);
        QFETCH(QString, keys);
        QFETCH(QString, classes);
        main().options().setChecked(Option::Highlight, highlight);
        type(keys);
        QCOMPARE(text().Text(), keys);
        QCOMPARE(fontClasses(text()), classes);
    }

    void caretJump_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<int>("caret");
        QTest::addColumn<QChar>("font");
        QTest::newRow("into the middle of a tag") << "x<A HREF=x>yz" << 4 << QChar('h');
        QTest::newRow("behind a tag") << "<A HREF=x>yz" << 11 << QChar('t');
        QTest::newRow("into a comment") << "x<!-- abc -->" << 7 << QChar('c');
        QTest::newRow("right behind a closed comment") << "<!-- a -->b" << 10 << QChar('t');
    }
    void caretJump()
    {
        QFETCH(QString, content);
        QFETCH(int, caret);
        QFETCH(QChar, font);
        loadColoured(content, caret);
        type("Q");
        QCOMPARE(text().Mid(caret, 1), QString("Q"));
        QCOMPARE(fontClasses(text())[caret], font);
    }

    void caretAtStartTakesTheFontThere()
    {
        loadColoured("<B>x", 0);
        type("Q");
        QCOMPARE(fontClasses(text()), QString("hhhht"));
    }

    void tabIsFourBlanks_data()
    {
        QTest::addColumn<int>("selStart");
        QTest::addColumn<int>("selLength");
        QTest::addColumn<QString>("expected");
        QTest::newRow("at the caret") << 1 << 0 << "a    bc";
        QTest::newRow("replacing a selection") << 1 << 2 << "a    ";
    }
    void tabIsFourBlanks()
    {
        QFETCH(int, selStart);
        QFETCH(int, selLength);
        QFETCH(QString, expected);
        text().setText("abc");
        text().setSelStart(selStart);
        text().setSelLength(selLength);
        const qint16 before = doc->LastKeyAscii;
        QTest::keyClick(&text(), Qt::Key_Tab);
        QCOMPARE(text().Text(), expected);
        QCOMPARE(text().SelStart(), selStart + 4);
        QCOMPARE(doc->LastKeyAscii, before);
    }

    void escapeKeepsTheSelection()
    {
        text().setText("abc");
        text().setSelStart(1);
        text().setSelLength(2);
        QTest::keyClick(&text(), Qt::Key_Escape);
        QCOMPARE(text().Text(), QString("abc"));
        QCOMPARE(text().SelLength(), 2);
    }

    void changeUpdatesStateAndPanels()
    {
        DocumentState &state = main().slots().state(doc->slot());
        state.Dirty = False;
        main().setButtonEnabled("imgFileSave", false);
        main().setButtonEnabled("imgUndo", false);
        SetStatusText("a message");
        type("ab");
        QCOMPARE(state.Dirty, True);
        QVERIFY(main().button("imgFileSave")->isEnabled());
        QVERIFY(main().button("imgUndo")->isEnabled());
        QCOMPARE(main().Panel3->text(), QString("Size: 2"));
        QCOMPARE(main().Panel2->text(), QString("Line: 1 "));
        QCOMPARE(main().Panel1->text(), QString());
        QTest::keyClick(&text(), Qt::Key_Backspace);
        QTest::keyClick(&text(), Qt::Key_Backspace);
        QCOMPARE(main().Panel3->text(), QString("Size: ")); // the picture prints nothing for 0
    }

    void iconFlipsAtEachHundredthCharacter()
    {
        text().setText(QString(98, QLatin1Char('x')));
        text().setSelStart(98);
        const qint64 original = doc->windowIcon().cacheKey();
        type("y");
        QCOMPARE(doc->windowIcon().cacheKey(), original);
        type("y"); // 100
        const qint64 hundred = doc->windowIcon().cacheKey();
        QVERIFY(hundred != original);
        type("y"); // 101: flips back to the other picture
        const qint64 other = doc->windowIcon().cacheKey();
        QVERIFY(other != hundred);
        QVERIFY(other != original);
    }

    void lineShownOnKeyDown()
    {
        text().setText("one\r\ntwo\r\nthree");
        text().setSelStart(10);
        main().Panel2->setText("Line: 1 ");
        QTest::keyClick(&text(), Qt::Key_Right);
        QCOMPARE(main().Panel2->text(), QString("Line: 3 "));
    }

    void lineFollowsTheCaretOfTheDocumentInFront()
    {
        text().setText("one\r\ntwo\r\nthree");
        const QTextCursor third(text().document()->findBlockByNumber(2));
        QTest::mouseClick(text().viewport(), Qt::LeftButton, {}, text().cursorRect(third).center());
        QCOMPARE(main().Panel2->text(), QString("Line: 3 "));
        text().setSelStart(0);
        QCOMPARE(main().Panel2->text(), QString("Line: 1 "));
        // A caret moved in a document behind leaves the panel to the one in front.
        frmDoc *front = program->newDocument();
        QCOMPARE(main().activeDocument(), front);
        const QString shown = main().Panel2->text();
        text().setSelStart(10);
        QCOMPARE(main().Panel2->text(), shown);
    }

    void selectionEnablesCutAndCopy()
    {
        text().setText("abc");
        text().setSelStart(0);
        text().setSelLength(2);
        QVERIFY(main().button("imgEditCut")->isEnabled());
        QVERIFY(main().button("imgEditCopy")->isEnabled());
        text().setSelStart(1);
        QVERIFY(!main().button("imgEditCut")->isEnabled());
        QVERIFY(!main().button("imgEditCopy")->isEnabled());
    }

    void rightButtonOpensTheEditMenu()
    {
        QMenu *edit = doc->menu("mnuEdit");
        QVERIFY(edit);
        QTest::mouseClick(text().viewport(), Qt::LeftButton, {}, QPoint(20, 20));
        QVERIFY(!edit->isVisible());
        QTest::mouseClick(text().viewport(), Qt::RightButton, {}, QPoint(20, 20));
        QTRY_VERIFY(edit->isVisible());
        edit->close();
    }

    void focusShowsHiddenMarkupTools()
    {
        main().SetMarkupToolsHidden(true);
        Q_EMIT text().GotFocus();
        QVERIFY(!main().markupToolsHidden());
        main().options().setChecked(Option::Toolbar, false);
        main().SetMarkupToolsHidden(true);
        Q_EMIT text().GotFocus();
        QVERIFY(main().markupToolsHidden());
    }
};

QTEST_MAIN(TestMarkupColouringLive)
#include "tst_markup_colouring_live.moc"
