#include "test_support.h"

#include "core/settings_store.h"

#include <QSignalSpy>

using namespace pw;

class TestEditingSurface : public QObject
{
    Q_OBJECT

    EditingSurface *s = nullptr;
    ClassFonts fonts;

    // Text in the text font, no undo step.
    void load(const QString &text)
    {
        s->setText(text);
        s->formatRange(0, s->TextLength(), fonts.text);
        s->clearUndo();
    }
    void select(int start, int length)
    {
        s->setSelStart(start);
        s->setSelLength(length);
    }

private Q_SLOTS:
    void init()
    {
        fonts = DefaultClassFonts();
        fonts.html.Color = 0x0000FF;
        fonts.comment.Color = 0x008000;
        s = new EditingSurface;
        s->setClassFonts(&fonts);
    }
    void cleanup()
    {
        delete s;
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
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
        // Lines longer than a display block.
        const int bound = EditingSurface::DisplayBlock;
        QTest::newRow("long line without a good break") << QString(2 * bound + 7, QLatin1Char('z'));
        QTest::newRow("long line of tags") << QString("<P>ab</P> ").repeated(bound / 3) + "\r\nend";
        QTest::newRow("bound inside a surrogate pair")
            << QString(bound - 1, QLatin1Char('a')) + QString::fromUtf8("\xF0\x9F\x98\x80") + "b";
        QTest::newRow("line end right at the bound") << QString(bound, QLatin1Char('a')) + "\r\nb";
    }
    void pieceBoundariesKeepTheText()
    {
        QFETCH(QString, text);
        int steps = 0;
        QVERIFY(s->loadText(text, [&steps](qint64 done, qint64 total) { return ++steps && done <= total; }, 16));
        QVERIFY(s->Text() == text);
        QCOMPARE(s->TextLength(), int(text.size()));
        QVERIFY(s->Mid(1, int(text.size())) == text.mid(1));
        select(0, int(text.size()));
        QVERIFY(s->SelText() == text);
        // Display blocks are bounded, and a line is broken no more often than it must be.
        const int lines = int(text.count('\n')) + 1;
        QVERIFY(s->document()->blockCount() - lines <= text.size() / (EditingSurface::DisplayBlock * 3 / 4));
        for (QTextBlock b = s->document()->firstBlock(); b.isValid(); b = b.next())
            QVERIFY(b.length() - 1 <= EditingSurface::DisplayBlock + 1); // a pair is never parted
        QVERIFY(steps >= 2);
        QCOMPARE(s->SelStart(), 0);
        QVERIFY(!s->CanUndo());
        // Stopped after the first piece, the surface keeps what it had.
        QVERIFY(!s->loadText(text + "more", [](qint64, qint64) { return false; }, 16));
        QVERIFY(s->Text() == text);
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
        s->setText("ab\ncd\ref"); // lone line ends become CR LF
        s->setSelStart(position);
        QCOMPARE(s->SelStart(), qMin(position, 10));
        s->setSelLength(100);
        QCOMPARE(s->SelText(), after);
        QCOMPARE(s->SelLength(), int(after.size()));
        QCOMPARE(s->Mid(qMin(position, 10), 100), after);
    }

    // Colours are no content: no Change and no undo step. A batch of writes raises one Change.
    void coloursAreNoContent()
    {
        load("abc");
        QSignalSpy changes(s, &EditingSurface::Change);
        s->setSelStart(3);
        s->setSelText("d");
        s->formatRange(0, 2, fonts.html);
        select(0, 1);
        s->setSelFont(fonts.comment);
        QCOMPARE(changes.count(), 1);
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), QString("abc"));
        select(0, 2);
        s->setSelRTF(s->SelRTF());
        {
            EditingSurface::EventBatch batch(*s);
            for (int i = 0; i < 5; ++i)
                s->setSelText("y");
        }
        QCOMPARE(changes.count(), 4); // the undo, SelRTF and the batch: one each
    }

    void findOptions_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("end");
        QTest::addColumn<int>("options");
        QTest::addColumn<int>("expected");
        QTest::newRow("at position zero") << "<B>x</B>" << "<" << 0 << -1 << 0 << 0;
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
        QTest::newRow("without highlight") << "one two one" << "one" << 1 << -1 << 8 << 8;
        // Far ahead the rest of the document is searched in one copy.
        const QString far = QString("x\r\n").repeated(40000);
        QTest::newRow("far ahead, whole word") << far + "cart car" << "CAR" << 0 << -1 << 2 << 120005;
        QTest::newRow("far ahead, beyond the end bound") << far + "car" << "car" << 0 << 120002 << 0 << -1;
        // "car" runs across two pieces and across a display break.
        QTest::newRow("far ahead, across two pieces") << QString(65537, 'x') + "\r\n" + QString(65534, 'y') + "car"
                                                     << "car" << 0 << -1 << 0 << 131073;
        QTest::newRow("far ahead, behind display breaks") << QString(65537, 'x') + "\r\n" + QString(70000, 'y') + "car"
                                                         << "car" << 0 << -1 << 0 << 135539;
    }
    void findOptions()
    {
        QFETCH(QString, text);
        QFETCH(QString, target);
        QFETCH(int, start);
        QFETCH(int, end);
        QFETCH(int, options);
        QFETCH(int, expected);
        QVERIFY(s->loadText(text, {})); // as a file is: its long lines in display blocks
        select(0, 1);
        QCOMPARE(s->Find(target, start, end, options), expected);
        const bool selects = expected >= 0 && !(options & EditingSurface::NoHighlight);
        QCOMPARE(s->SelText(), selects ? text.mid(expected, target.size()) : text.left(1));
    }

    void spanAndUpTo()
    {
        s->setText("<A HREF=x>text</A>\r\nmore");
        s->setSelStart(1);
        s->Span(" >", true, true);
        QCOMPARE(s->SelText(), QString("A"));
        s->UpTo(">");
        QCOMPARE(s->SelStart(), 9);
        s->UpTo("<", false);
        s->UpTo("<", false); // already behind one: does not move
        QCOMPARE(s->SelStart(), 1);
        s->UpTo("#"); // none: the end of the text
        QCOMPARE(s->SelStart(), s->TextLength());
        s->UpTo(">", false);
        QCOMPARE(s->SelStart(), 18);
        s->UpTo("#", false); // none going back: the start
        QCOMPARE(s->SelStart(), 0);
        s->setSelStart(14);
        s->UpTo("\r\n");
        QCOMPARE(s->SelStart(), 18);
        s->UpTo("\r\n", true, true);
        QCOMPARE(s->SelStart(), 20);
        // From a standing selection, Span starts at its start.
        select(1, 4);
        s->Span(" >", true, true);
        QCOMPARE(s->SelText(), QString("A"));
    }

    // A loaded line longer than a display block is held in several; the breaks between them are no
    // characters to the keys, Find, the selection or undo. Each row acts at the first break.
    void aLongLineActsAsOne_data()
    {
        QTest::addColumn<int>("caret"); // from the break
        QTest::addColumn<QString>("keys"); // "<" Left, ">" Right, "{" Shift+Right, "\b", "#" Delete, "e" End
        QTest::addColumn<int>("removedAt"); // from the break; with the count, what the keys took
        QTest::addColumn<int>("removed");
        QTest::addColumn<int>("selStart"); // from the break
        QTest::newRow("Right across") << -1 << ">>" << 0 << 0 << 1;
        QTest::newRow("Left across") << 1 << "<<" << 0 << 0 << -1;
        QTest::newRow("Shift+Right across") << -1 << "{{" << 0 << 0 << -1;
        QTest::newRow("Backspace at the break") << 0 << "\b" << -1 << 1 << -1;
        QTest::newRow("Delete before the break") << -1 << ">#" << 0 << 1 << 0;
        QTest::newRow("typed over a selection across") << -2 << "{{{{x" << -2 << 4 << -2;
    }
    void aLongLineActsAsOne()
    {
        QFETCH(int, caret);
        QFETCH(QString, keys);
        QFETCH(int, removedAt);
        QFETCH(int, removed);
        QFETCH(int, selStart);
        QString text;
        for (int i = 0; text.size() < 3 * EditingSurface::DisplayBlock; ++i)
            text += QStringLiteral("<A HREF=\"p%1.html\">%1</A> ").arg(i);
        QVERIFY(s->loadText(text, {}));
        const int blocks = s->document()->blockCount();
        QVERIFY(blocks >= 3);
        const int at = s->document()->firstBlock().length() - 1; // the first break, in Text
        QCOMPARE(s->Find(text.mid(at - 3, 7), at - 3), at - 3);
        s->setSelStart(at + caret);
        for (const QChar key : keys) {
            const int code = key == '<' ? Qt::Key_Left : key == '>' || key == '{' ? Qt::Key_Right
                           : key == '#' ? Qt::Key_Delete : key == '\b' ? Qt::Key_Backspace : 0;
            if (code)
                QTest::keyClick(s, Qt::Key(code), key == '{' ? Qt::ShiftModifier : Qt::NoModifier);
            else
                QTest::keyClicks(s, key);
        }
        QString after = text;
        after.remove(at + removedAt, removed);
        if (keys.endsWith('x'))
            after.insert(at + removedAt, 'x');
        QVERIFY(s->Text() == after);
        QCOMPARE(s->SelStart(), at + selStart + (keys.endsWith('x') ? 1 : 0));
        if (keys == "{{")
            QCOMPARE(s->SelText(), text.mid(at - 1, 2));
        // What the keys took comes back with its break, as one block no longer than before.
        if (removed) {
            QVERIFY(s->Undo());
            QVERIFY(s->Text() == text);
            QCOMPARE(s->document()->blockCount(), blocks);
        }
        // End and Home keep to the text: what is typed there lands where SelStart says.
        QTest::keyClick(s, Qt::Key_End);
        const int end = s->SelStart();
        QTest::keyClicks(s, "E");
        QCOMPARE(s->Mid(end, 1), QString("E"));
        QCOMPARE(s->TextLength(), int(text.size()) + (removed ? 1 : int(after.size() - text.size()) + 1));
    }

    // Each row is one undo step; undoing again undoes the undo, fonts and all. Keys are typed
    // ("\r" Return, "\b" Backspace); without keys, an edit group writes.
    void undoSteps_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<int>("caret");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("classes"); // of `after`: the class of each character follows the edits
        QTest::newRow("an edit group") << "ab" << 0 << "" << "<P>ab</P>" << "hhhtttttt";
        QTest::newRow("a typed run and Return") << "ab" << 2 << "<i>\r" << "ab<i>\r\n" << "tthhh//";
        QTest::newRow("Backspace across a line end") << "ab\r\ncd" << 4 << "\b" << "abcd" << "tttt";
        QTest::newRow("typed in the middle of a line") << "abcd" << 2 << "xy" << "abxycd" << "tthhtt";
        QTest::newRow("Return in the middle of a line") << "abcd" << 2 << "\r" << "ab\r\ncd" << "tt//tt";
    }
    void undoSteps()
    {
        QFETCH(QString, before);
        QFETCH(int, caret);
        QFETCH(QString, keys);
        QFETCH(QString, after);
        QFETCH(QString, classes);
        load(before);
        s->setSelStart(caret);
        ApplyClassFont(*s, true);
        const QString plain = fontClasses(*s);
        if (keys.isEmpty()) {
            EditingSurface::EditGroup group(*s);
            s->setSelText("<P>");
            s->setSelStart(s->TextLength());
            s->setSelText("</P>");
        }
        QTest::keyClicks(s, keys);
        QCOMPARE(s->Text(), after);
        QCOMPARE(fontClasses(*s), classes);
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), before);
        QCOMPARE(fontClasses(*s), plain);
        QVERIFY(s->Undo());
        QCOMPARE(s->Text(), after);
        QCOMPARE(fontClasses(*s), classes);
    }
};

PW_TEST_MAIN(TestEditingSurface)
#include "tst_editing_surface.moc"
