#include "core/editing_surface.h"

#include <QSignalSpy>
#include <QTest>

using namespace pw;

class TestEditingSurface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        ResetFontClasses();
        s = new EditingSurface;
        s->resize(600, 400);
    }
    void cleanup()
    {
        delete s;
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void textRoundTripsWithCrLf()
    {
        QSignalSpy changes(s, &EditingSurface::Change);
        s->setText("ab\r\ncd\r\n\r\nef");
        QCOMPARE(s->Text(), QString("ab\r\ncd\r\n\r\nef"));
        QCOMPARE(s->TextLength(), 12);
        QCOMPARE(s->SelStart(), 0);
        QVERIFY(changes.count() >= 1);
    }

    void pieceBoundariesKeepTheText_data()
    {
        QTest::addColumn<QString>("text");
        // Pieces of 16 characters here.
        const QString longLine(15, QLatin1Char('a'));
        QTest::newRow("CR LF across the boundary") << longLine + "\r\nb";
        QTest::newRow("surrogate pair across the boundary") << longLine + QString::fromUtf8("\xF0\x9F\x98\x80") + "c";
        QTest::newRow("many short lines") << QString("<P>x</P>\r\n").repeated(30);
        QTest::newRow("one line of three pieces") << QString(3 * 16 + 5, QLatin1Char('z'));
        QTest::newRow("blank lines only") << QString("\r\n").repeated(40);
    }

    void pieceBoundariesKeepTheText()
    {
        QFETCH(QString, text);
        int steps = 0;
        QVERIFY(s->loadText(text, [&steps](qint64 done, qint64 total) { return ++steps && done <= total; }, 16));
        QVERIFY(s->Text() == text);
        QVERIFY(steps >= 2);
        QCOMPARE(s->SelStart(), 0);
        QVERIFY(!s->CanUndo());
    }

    void loadStoppedByProgressKeepsWhatCameIn()
    {
        const QString text = QString("<P>x</P>\r\n").repeated(30);
        QVERIFY(!s->loadText(text, [](qint64, qint64) { return false; }, 16));
        QVERIFY(s->TextLength() > 0 && s->TextLength() < text.size());
    }

    void loneLineEndsBecomeCrLf()
    {
        s->setText("a\nb\rc");
        QCOMPARE(s->Text(), QString("a\r\nb\r\nc"));
    }

    void positionsCountLineEndsAsTwo_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("after");
        QTest::newRow("start") << 0 << "ab\r\ncd\r\nef";
        QTest::newRow("before CR") << 2 << "\r\ncd\r\nef";
        QTest::newRow("second line") << 4 << "cd\r\nef";
        QTest::newRow("third line") << 8 << "ef";
        QTest::newRow("end") << 10 << "";
        QTest::newRow("beyond end") << 99 << "";
    }
    void positionsCountLineEndsAsTwo()
    {
        QFETCH(int, position);
        QFETCH(QString, after);
        s->setText("ab\r\ncd\r\nef");
        s->setSelStart(position);
        QCOMPARE(s->SelStart(), qMin(position, 10));
        s->setSelLength(100);
        QCOMPARE(s->SelText(), after);
        QCOMPARE(s->SelLength(), int(after.size()));
        QCOMPARE(s->Mid(qMin(position, 10), 100), after);
    }

    void selTextReplacesAndLeavesCaretBehind()
    {
        s->setText("hello world");
        s->setSelStart(6);
        s->setSelLength(5);
        s->setSelText("there\r\nfriend");
        QCOMPARE(s->Text(), QString("hello there\r\nfriend"));
        QCOMPARE(s->SelStart(), 19);
        QCOMPARE(s->SelLength(), 0);
        s->setSelStart(0);
        s->setSelLength(6);
        s->setSelText("");
        QCOMPARE(s->Text(), QString("there\r\nfriend"));
    }

    void everyProgrammaticWriteRaisesChange()
    {
        s->setText("abc");
        QSignalSpy changes(s, &EditingSurface::Change);
        s->setSelStart(1);
        s->setSelText("x");
        QCOMPARE(changes.count(), 1);
        s->setSelStart(0);
        s->setSelLength(2);
        s->setSelRTF(s->SelRTF());
        QCOMPARE(changes.count(), 2);
        s->setSelStart(0);
        s->setSelLength(1);
        s->setSelColor(0x0000FF);
        QCOMPARE(changes.count(), 3);
    }

    void findAtPositionZero()
    {
        s->setText("<B>x</B>");
        QCOMPARE(s->Find("<", 0), 0);
        QCOMPARE(s->SelStart(), 0);
        QCOMPARE(s->SelLength(), 1);
    }

    void findWithoutHighlightKeepsSelection()
    {
        s->setText("one two one");
        s->setSelStart(2);
        s->setSelLength(3);
        QCOMPARE(s->Find("one", 1, -1, EditingSurface::NoHighlight), 8);
        QCOMPARE(s->SelStart(), 2);
        QCOMPARE(s->SelLength(), 3);
        s->setSelStart(0);
        QCOMPARE(s->SelLength(), 0);
    }

    void findOptions_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("end");
        QTest::addColumn<int>("options");
        QTest::addColumn<int>("expected");
        QTest::newRow("ignores case") << "abc ABC" << "ABC" << 0 << -1 << 0 << 0;
        QTest::newRow("match case") << "abc ABC" << "ABC" << 0 << -1 << 4 << 4;
        QTest::newRow("whole word skips part") << "cart car" << "car" << 0 << -1 << 2 << 5;
        QTest::newRow("whole word at line end") << "a car\r\nb" << "car" << 0 << -1 << 2 << 2;
        QTest::newRow("second line position") << "ab\r\ncd" << "cd" << 0 << -1 << 0 << 4;
        QTest::newRow("end bound excludes") << "abc def" << "def" << 0 << 6 << 0 << -1;
        QTest::newRow("end bound exact") << "abc def" << "def" << 0 << 7 << 0 << 4;
        QTest::newRow("across line end") << "ab\r\ncd\r\nef" << "b\r\ncd\r\ne" << 0 << -1 << 0 << 1;
        QTest::newRow("starting after") << "xx xx" << "xx" << 1 << -1 << 0 << 3;
        QTest::newRow("empty target") << "abc" << "" << 0 << -1 << 0 << -1;
        QTest::newRow("missing") << "abc" << "z" << 0 << -1 << 0 << -1;
    }
    void findOptions()
    {
        QFETCH(QString, text);
        QFETCH(QString, target);
        QFETCH(int, start);
        QFETCH(int, end);
        QFETCH(int, options);
        QFETCH(int, expected);
        s->setText(text);
        QCOMPARE(s->Find(target, start, end, options), expected);
        if (expected >= 0)
            QCOMPARE(s->SelText(), text.mid(expected, target.size()));
    }

    void spanAndUpTo()
    {
        s->setText("<A HREF=x>text</A>\r\nmore");
        s->setSelStart(1);
        s->Span(" >", true, true);
        QCOMPARE(s->SelText(), QString("A"));
        s->UpTo(">");
        QCOMPARE(s->SelStart(), 9);
        QCOMPARE(s->SelLength(), 0);
        s->UpTo("<", false);
        QCOMPARE(s->SelStart(), 1);
        s->UpTo("<", false); // already behind one: does not move
        QCOMPARE(s->SelStart(), 1);
        s->setSelStart(20);
        s->UpTo(">", false);
        QCOMPARE(s->SelStart(), 18);
        s->UpTo("#"); // none: the end of the text
        QCOMPARE(s->SelStart(), s->TextLength());
        s->UpTo("#", false); // none going back: the start
        QCOMPARE(s->SelStart(), 0);
        s->setSelStart(14);
        s->UpTo("\r\n");
        QCOMPARE(s->SelStart(), 18);
        s->UpTo("\r\n", true, true);
        QCOMPARE(s->SelStart(), 20);
    }

    void spanFromStandingSelection()
    {
        s->setText("abc def");
        s->setSelStart(1);
        s->setSelLength(4);
        s->Span(" ", true, true);
        QCOMPARE(s->SelStart(), 1);
        QCOMPARE(s->SelText(), QString("bc"));
        s->setSelStart(7);
        s->Span(" ", false, true);
        QCOMPARE(s->SelText(), QString("def"));
    }

    void selRtfKeepsFontsBetweenSurfaces()
    {
        EditingSurface other;
        HtmlFont.Color = 0x0000FF;
        HtmlFont.Bold = true;
        TextFont.Color = 0x00FF00;
        ApplyClassFont(*s, true);
        s->setSelText("<B>");
        ApplyClassFont(*s, false);
        s->setSelText("x\r\ny");
        s->setSelStart(0);
        s->setSelLength(s->TextLength());
        const QString kept = s->SelRTF();
        other.setText("[]");
        other.setSelStart(1);
        other.setSelRTF(kept);
        QCOMPARE(other.Text(), QString("[<B>x\r\ny]"));
        QCOMPARE(other.SelStart(), 8);
        QCOMPARE(other.fontAt(1), HtmlFont);
        QCOMPARE(other.fontAt(3), HtmlFont);
        QCOMPARE(other.fontAt(4), TextFont);
        QCOMPARE(other.fontAt(7), TextFont);
    }

    void selRtfOfPlainTextIsInsertedAsText()
    {
        s->setText("ab");
        s->setSelStart(1);
        s->setSelRTF("x");
        QCOMPARE(s->Text(), QString("axb"));
        s->setSelStart(0);
        s->setSelLength(1);
        s->setSelRTF("");
        QCOMPARE(s->Text(), QString("xb"));
    }

    void undoTwiceUndoesTheUndo()
    {
        s->setText("abc");
        s->clearUndo();
        s->setSelStart(1);
        s->setSelLength(1);
        s->setSelText("XYZ");
        QCOMPARE(s->Text(), QString("aXYZc"));
        QVERIFY(s->CanUndo());
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), QString("abc"));
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), QString("aXYZc"));
    }

    void colourPassIsNoUndoStep()
    {
        s->setText("abc");
        s->setSelStart(3);
        s->setSelText("d");
        s->formatRange(0, 2, HtmlFont);
        s->setSelStart(0);
        s->setSelLength(1);
        s->setSelColor(0xFF);
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), QString("abc"));
    }

    void editGroupIsOneUndoStep()
    {
        s->setText("ab");
        {
            EditingSurface::EditGroup group(*s);
            s->setSelStart(0);
            s->setSelText("<P>");
            s->setSelStart(s->TextLength());
            s->setSelText("</P>");
        }
        QCOMPARE(s->Text(), QString("<P>ab</P>"));
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), QString("ab"));
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), QString("<P>ab</P>"));
    }

    void typedRunIsOneUndoStepAndKeepsFonts()
    {
        s->show();
        QVERIFY(QTest::qWaitForWindowExposed(s));
        s->setText("ab");
        s->setSelStart(2);
        HtmlFont.Color = 0xFF;
        ApplyClassFont(*s, true);
        QTest::keyClicks(s, "<i>");
        QCOMPARE(s->Text(), QString("ab<i>"));
        QCOMPARE(s->fontAt(2), HtmlFont);
        QTest::keyClick(s, Qt::Key_Return);
        QCOMPARE(s->Text(), QString("ab<i>\r\n"));
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), QString("ab"));
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), QString("ab<i>\r\n"));
        QCOMPARE(s->fontAt(3), HtmlFont);
    }

    void backspaceAcrossLineEndUndoes()
    {
        s->show();
        QVERIFY(QTest::qWaitForWindowExposed(s));
        s->setText("ab\r\ncd");
        s->setSelStart(4);
        QTest::keyClick(s, Qt::Key_Backspace);
        QCOMPARE(s->Text(), QString("abcd"));
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), QString("ab\r\ncd"));
    }

    void keyPressCanChangeOrDropTheKey()
    {
        s->show();
        QVERIFY(QTest::qWaitForWindowExposed(s));
        connect(s, &EditingSurface::KeyPress, this, [](int *k) {
            if (*k == 'q')
                *k = 0;
            else if (*k == 'a')
                *k = 'b';
        });
        QTest::keyClicks(s, "aqz");
        QCOMPARE(s->Text(), QString("bz"));
    }

    void standardKeysGoToTheProgram()
    {
        s->show();
        QVERIFY(QTest::qWaitForWindowExposed(s));
        QList<EditingSurface::EditCommand> seen;
        connect(s, &EditingSurface::editCommand, this, [&](EditingSurface::EditCommand c) { seen << c; });
        QTest::keyClick(s, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(s, Qt::Key_Insert, Qt::ShiftModifier);
        QTest::keyClick(s, Qt::Key_Insert, Qt::ControlModifier);
        QTest::keyClick(s, Qt::Key_Delete, Qt::ShiftModifier);
        QTest::keyClick(s, Qt::Key_Z, Qt::ControlModifier);
        using C = EditingSurface::EditCommand;
        QCOMPARE(seen, (QList<C>{C::Paste, C::Paste, C::Copy, C::Cut, C::Undo}));
        QCOMPARE(s->Text(), QString());
    }

    void lineFromChar()
    {
        s->setLineWrapMode(QPlainTextEdit::NoWrap);
        s->setText("a\r\nb\r\nc");
        QCOMPARE(s->GetLineFromChar(0), 0);
        QCOMPARE(s->GetLineFromChar(3), 1);
        QCOMPARE(s->GetLineFromChar(6), 2);
        QCOMPARE(s->GetLineFromChar(100), 2);
    }

    void eventBatchRaisesOneChange()
    {
        s->setText("abcdef");
        QSignalSpy changes(s, &EditingSurface::Change);
        {
            EditingSurface::EventBatch batch(*s);
            for (int i = 0; i < 5; ++i)
                s->formatRange(i, 1, HtmlFont);
        }
        QCOMPARE(changes.count(), 1);
    }

private:
    EditingSurface *s = nullptr;
};

QTEST_MAIN(TestEditingSurface)
#include "tst_editing_surface.moc"
