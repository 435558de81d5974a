#include "test_support.h"

#include "find/frm_find.h"
#include "find/frm_replace.h"
#include "platform/message_box.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QPointer>
#include <QPushButton>
#include <QTest>

using namespace pw;

class TestFindReplace : public ProgramTest
{
    Q_OBJECT

    // One document per text, the last in front; then the one at index `current` (from 0) in front.
    QList<frmDoc *> documents(const QStringList &texts, int current)
    {
        QList<frmDoc *> docs;
        for (const QString &text : texts) {
            frmDoc *doc = program->newDocument();
            doc->Text->setText(text);
            doc->state().setDirty(false);
            docs << doc;
        }
        main().mdiArea->setActiveSubWindow(docs[current]);
        ws().slots.CurrentDocument = docs[current]->slot();
        return docs;
    }
    frmFind *openFind(frmDoc *doc)
    {
        return program->trigger(doc, "mnuEditFind") ? FindDialog(&main()) : nullptr;
    }
    frmReplace *openReplace(frmDoc *doc)
    {
        return program->trigger(doc, "mnuEditReplace") ? ReplaceDialog(&main()) : nullptr;
    }
    // Where the current document's selection stands: "slot:start", or "-" for the not-found box.
    QString stop(qsizetype messagesBefore)
    {
        if (platform().messages.size() > messagesBefore)
            return platform().messages.last().text.endsWith(QLatin1String("not found.")) ? QStringLiteral("-")
                                                                                      : platform().messages.last().text;
        return QStringLiteral("%1:%2").arg(program->current()->slot()).arg(program->current()->Text->SelStart());
    }

private Q_SLOTS:
    void findStepsThroughHits_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<int>("current");
        QTest::addColumn<bool>("matchCase");
        QTest::addColumn<bool>("global");
        QTest::addColumn<QString>("script"); // "=text" types into tbFind, anything else is an OK press
        QTest::addColumn<QString>("stops");  // after each press: slot:SelStart, or "-" for "not found"
        QTest::newRow("a fresh search skips position 0") << QStringList{"abab"} << 0 << false << false << "=ab ok ok ok"
                                                         << "1:2 - 1:2";
        QTest::newRow("overlapping hits") << QStringList{"aaaa"} << 0 << false << false << "=aa ok ok ok ok"
                                          << "1:1 1:2 - 1:1";
        QTest::newRow("any case") << QStringList{"xAb ab"} << 0 << false << false << "=ab ok ok ok" << "1:1 1:4 -";
        QTest::newRow("match case") << QStringList{"xAb ab"} << 0 << true << false << "=ab ok ok" << "1:4 -";
        QTest::newRow("a line end in the string") << QStringList{"x\r\nab\r\nab"} << 0 << false << false
                                                  << "=b\r\na ok ok" << "1:4 -";
        QTest::newRow("one changed letter restarts") << QStringList{"xab xac xab xac"} << 0 << false << false
                                                     << "=ab ok ok =ac ok" << "1:1 1:9 1:5";
        QTest::newRow("an empty string finds nothing") << QStringList{"abc"} << 0 << false << false << "= ok" << "-";
        QTest::newRow("all documents, from the first open one")
            << QStringList{"xab", "ab", "none", "ab ab"} << 1 << false << true << "=ab ok ok ok ok ok ok"
            << "1:1 2:0 4:0 4:3 - 1:1";
        QTest::newRow("all documents: position 0 of the first is skipped") << QStringList{"ab", "ab"} << 1 << false
                                                                            << true << "=ab ok ok ok" << "2:0 - 2:0";
        QTest::newRow("all documents: a hit at 0 goes on in its document")
            << QStringList{"x", "ab ab", "ab"} << 0 << false << true << "=ab ok ok ok ok" << "2:0 2:3 3:0 -";
        QTest::newRow("one document only stays in it") << QStringList{"ab ab", "ab"} << 0 << false << false
                                                         << "=ab ok ok" << "1:3 -";
    }
    void findStepsThroughHits()
    {
        QFETCH(QStringList, texts);
        QFETCH(int, current);
        QFETCH(bool, matchCase);
        QFETCH(bool, global);
        QFETCH(QString, script);
        QFETCH(QString, stops);
        const QList<frmDoc *> docs = documents(texts, current);
        QPointer<frmFind> form = openFind(docs[current]);
        QVERIFY(form);
        QVERIFY(form->windowFlags() & Qt::Tool); // above the documents
        QCOMPARE(form->parentWidget(), &main());
        form->chkCase->setChecked(matchCase);
        form->chkGlobal->setChecked(global);
        QStringList seen;
        for (const QString &step : script.split(QLatin1Char(' '))) {
            if (step.startsWith(QLatin1Char('='))) {
                form->tbFind->setText(step.mid(1));
                QCOMPARE(form->Tag, QString());
                continue;
            }
            const qsizetype before = platform().messages.size();
            QTest::mouseClick(form->Command1, Qt::LeftButton);
            seen << stop(before);
            QVERIFY(form && form->isVisible()); // it stays open, also after "not found"
        }
        QCOMPARE(seen.join(QLatin1Char(' ')), stops);
        if (stops.endsWith(QLatin1Char('-'))) {
            QCOMPARE(form->Tag, QStringLiteral("0"));
            QCOMPARE(platform().messages.last().text, QLatin1Char('"') + form->tbFind->text() + "\" not found.");
            QCOMPARE(platform().messages.last().style, MsgStyle::Information);
        }
    }

    void findDialogOpensAndCloses_data()
    {
        QTest::addColumn<int>("selStart");   // -1: no selection
        QTest::addColumn<QString>("last");   // LastFindText before
        QTest::addColumn<QString>("prefill");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("closeBy"); // Escape, Command2, close box
        QTest::newRow("no selection: the last string") << -1 << "last" << "last" << "new" << "Escape";
        QTest::newRow("a selection: the selection") << 2 << "last" << "cd" << "other" << "Command2";
        QTest::newRow("closed by the close box") << -1 << "" << "" << "typed" << "close box";
    }
    void findDialogOpensAndCloses()
    {
        QFETCH(int, selStart);
        QFETCH(QString, last);
        QFETCH(QString, prefill);
        QFETCH(QString, typed);
        QFETCH(QString, closeBy);
        frmFind::LastFindText = last;
        frmDoc *doc = documents({"abcd"}, 0)[0];
        if (selStart >= 0) {
            doc->Text->setSelStart(selStart);
            doc->Text->setSelLength(2);
        }
        QPointer<frmFind> form = openFind(doc);
        QVERIFY(form);
        QCOMPARE(form->tbFind->text(), prefill);
        QTRY_VERIFY(form->tbFind->hasFocus());
        // Typed without leaving the box: closing any way keeps it for the next Find.
        form->tbFind->setText(typed);
        if (closeBy == QLatin1String("Escape"))
            QTest::keyClick(form->tbFind, Qt::Key_Escape);
        else if (closeBy == QLatin1String("Command2"))
            QTest::mouseClick(form->Command2, Qt::LeftButton);
        else
            form->close();
        QTRY_VERIFY(!form);
        QCOMPARE(frmFind::LastFindText, typed);
        QCOMPARE(FindDialog(&main()), nullptr);
    }

    void enterPressesOkAndTheDialogOutlivesItsDocument()
    {
        const QList<frmDoc *> docs = documents({"xxab", "yab"}, 1);
        QPointer<frmFind> form = openFind(docs[1]);
        QVERIFY(form);
        QTRY_VERIFY(form->tbFind->hasFocus());
        QTest::keyClicks(form->tbFind, "ab");
        QTest::keyClick(form->tbFind, Qt::Key_Return);
        QCOMPARE(stop(0), QStringLiteral("2:1"));
        // The document closed under the dialog: the one left is searched.
        docs[1]->close();
        QTRY_COMPARE(ws().slots.openSlots(), QList<int>{1});
        QTest::keyClick(form->tbFind, Qt::Key_Return);
        QCOMPARE(stop(0), QStringLiteral("1:2")); // behind the last hit, which is only a position
        docs[0]->close();
        QTRY_VERIFY(ws().slots.openSlots().isEmpty());
        QTest::keyClick(form->tbFind, Qt::Key_Return);
        QVERIFY(platform().messages.isEmpty()); // nothing to search, nothing said
        QVERIFY(form->isVisible());
        form->close();
    }

    void replaceAndVerify_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<int>("current");
        QTest::addColumn<QString>("find");
        QTest::addColumn<QString>("replacement");
        QTest::addColumn<bool>("matchCase");
        QTest::addColumn<bool>("global");
        QTest::addColumn<QString>("answers"); // empty: Replace All; else Verify's answers: y n c
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<int>("count");
        QTest::newRow("a replacement holding the string") << QStringList{"a a a"} << 0 << "a" << "aa" << false
                                                          << false << "" << QStringList{"aa aa aa"} << 3;
        QTest::newRow("nothing matched") << QStringList{"abc"} << 0 << "x" << "y" << false << false << ""
                                         << QStringList{"abc"} << 0;
        QTest::newRow("an empty string replaces nothing") << QStringList{"abc"} << 0 << "" << "y" << false << false
                                                          << "" << QStringList{"abc"} << 0;
        QTest::newRow("match case") << QStringList{"Ab ab"} << 0 << "ab" << "X" << true << false << ""
                                    << QStringList{"Ab X"} << 1;
        QTest::newRow("any case, hit at 0, across line ends")
            << QStringList{"Ab\r\nab"} << 0 << "b\r\na" << "-" << false << false << "" << QStringList{"A-b"} << 1;
        QTest::newRow("a longer replacement, hits on two lines") << QStringList{"ab\r\nxab"} << 0 << "ab" << "[abc]" << false << false
                                                                 << "" << QStringList{"[abc]\r\nx[abc]"} << 2;
        QTest::newRow("an empty replacement deletes") << QStringList{"aXaXa"} << 0 << "X" << "" << false << false
                                                      << "" << QStringList{"aaa"} << 2;
        QTest::newRow("all documents, each from 0") << QStringList{"ab", "xab", "no"} << 2 << "ab" << "X" << false
                                                    << true << "" << QStringList{"X", "xX", "no"} << 2;
        QTest::newRow("only the current document") << QStringList{"ab", "ab"} << 1 << "ab" << "X" << false << false
                                                   << "" << QStringList{"ab", "X"} << 1;
        QTest::newRow("verify: yes and no move on by the replacement")
            << QStringList{"a a a"} << 0 << "a" << "bb" << false << false << "y n y" << QStringList{"bb a bb"} << 2;
        QTest::newRow("verify: cancel keeps what was done") << QStringList{"a a a"} << 0 << "a" << "b" << false
                                                            << false << "y c" << QStringList{"b a a"} << 1;
        QTest::newRow("verify: no with an empty replacement steps past")
            << QStringList{"aXa"} << 0 << "a" << "" << false << false << "n y" << QStringList{"aX"} << 1;
        QTest::newRow("verify: all documents") << QStringList{"a", "ba", "c"} << 0 << "a" << "z" << false << true
                                               << "y y" << QStringList{"z", "bz", "c"} << 2;
        QTest::newRow("verify: cancel ends all documents") << QStringList{"a", "a"} << 0 << "a" << "z" << false
                                                           << true << "c" << QStringList{"a", "a"} << 0;
    }
    void replaceAndVerify()
    {
        QFETCH(QStringList, texts);
        QFETCH(int, current);
        QFETCH(QString, find);
        QFETCH(QString, replacement);
        QFETCH(bool, matchCase);
        QFETCH(bool, global);
        QFETCH(QString, answers);
        QFETCH(QStringList, after);
        QFETCH(int, count);
        const QList<frmDoc *> docs = documents(texts, current);
        QPointer<frmReplace> form = openReplace(docs[current]);
        QVERIFY(form);
        QVERIFY(form->windowFlags() & Qt::Tool);
        form->tbFind->setText(find);
        form->tbReplace->setText(replacement);
        form->ckCase->setChecked(matchCase);
        form->chkGlobal->setChecked(global);
        int questions = 0;
        for (const QString &a : answers.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            platform().answers.enqueue(a == "y" ? MsgAnswer::Yes : a == "n" ? MsgAnswer::No : MsgAnswer::Cancel);
            ++questions;
        }
        platform().answers.enqueue(MsgAnswer::OK);
        QTest::mouseClick(answers.isEmpty() ? form->Command2 : form->Command3, Qt::LeftButton);
        QTRY_VERIFY(!form);
        QVERIFY(platform().answers.isEmpty());
        verifyMessage(QString::number(count) + " occurrences replaced.", MsgStyle::Information, questions + 1);
        for (int i = 0; i < questions; ++i) {
            QCOMPARE(platform().messages[i].text, QStringLiteral("Replace highlighted selection."));
            QCOMPARE(platform().messages[i].style, MsgStyle::YesNoCancel + MsgStyle::Question);
        }
        QCOMPARE(frmReplace::LastReplaceFind, find);
        for (qsizetype i = 0; i < docs.size(); ++i) {
            QCOMPARE(docs[i]->Text->Text(), after[i]);
            // Every touched document is changed, no other.
            QCOMPARE(docs[i]->state().Dirty(), after[i] != texts[i]);
        }
        QCOMPARE(passLeftovers(main()), QString());
        // Replace All is one undo step in a document.
        if (answers.isEmpty() && !global && count > 0) {
            QVERIFY(program->trigger(docs[current], "mnuEditUndo"));
            QCOMPARE(docs[current]->Text->Text(), texts[current]);
        }
    }

    void replaceDialogStartsFromTheSelectionOrTheLastString_data()
    {
        QTest::addColumn<int>("selStart");
        QTest::addColumn<QString>("prefill");
        QTest::newRow("no selection: the last action's string") << -1 << "last";
        QTest::newRow("a selection: the selection") << 1 << "bc";
    }
    void replaceDialogStartsFromTheSelectionOrTheLastString()
    {
        QFETCH(int, selStart);
        QFETCH(QString, prefill);
        frmReplace::LastReplaceFind = QStringLiteral("last");
        frmFind::LastFindText = QStringLiteral("not shared");
        frmDoc *doc = documents({"abcd"}, 0)[0];
        if (selStart >= 0) {
            doc->Text->setSelStart(selStart);
            doc->Text->setSelLength(2);
        }
        QPointer<frmReplace> form = openReplace(doc);
        QVERIFY(form);
        QCOMPARE(form->tbFind->text(), prefill);
        QTRY_VERIFY(form->tbFind->hasFocus());
        QTest::keyClick(form->tbFind, Qt::Key_Escape);
        QTRY_VERIFY(!form);
        QCOMPARE(doc->Text->SelLength(), 0);
        QCOMPARE(doc->Text->Text(), QStringLiteral("abcd"));
        QVERIFY(platform().messages.isEmpty());
    }
};

PW_TEST_MAIN(TestFindReplace)
#include "tst_find_replace.moc"
