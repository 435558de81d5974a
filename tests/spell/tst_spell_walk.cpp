#include "test_support.h"

#include "spell/checking_walk.h"
#include "platform/message_box.h"
#include "spell/word_store_builder.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>

using namespace pw;

static const QString Complete = QStringLiteral("Spell checking complete.");

class TestSpellWalk : public ProgramTest
{
    Q_OBJECT

    QTemporaryDir dir;
    QString storePath;
    frmDoc *doc = nullptr;
    QPointer<frmSpellChecker> form;

    bool open()
    {
        ShowSpellChecker(ws(), *doc, &main());
        form = SpellChecker(&main());
        return form;
    }
    // Opens the dialog, checks, and answers each stop in turn from script, split at blanks: buttons
    // joined by "+", with "=text" typed into the box first; "lstMatches" double-clicks the first
    // suggestion. A stop left unanswered is cancelled. Returns the words stopped at, joined by blanks.
    QString walk(const QString &script)
    {
        QStringList answers = script.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (!open())
            return QStringLiteral("no dialog");
        QSignalSpy stopped(form.data(), &frmSpellChecker::walkStopped);
        form->Command1->click();
        while (form && form->isWaiting()) {
            const QString next = answers.isEmpty() ? QStringLiteral("Command5") : answers.takeFirst();
            const QStringList answer = next.split(QLatin1Char('='));
            if (answer.size() > 1)
                form->Text1->setText(answer[1]);
            for (const QString &button : answer[0].split(QLatin1Char('+'))) {
                if (button == QLatin1String("lstMatches"))
                    Q_EMIT form->lstMatches->itemDoubleClicked(form->lstMatches->item(0));
                else
                    form->findChild<QPushButton *>(button)->click();
            }
        }
        QStringList words;
        for (const QList<QVariant> &stop : std::as_const(stopped))
            words << stop[0].toString();
        return words.join(QLatin1Char(' '));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(dir.isValid());
        storePath = dir.filePath(QStringLiteral("spwords.tpw"));
        QString error;
        const QStringList words = {"a", "cat", "dog", "hello", "the", "world", "x", "is"};
        QVERIFY2(BuildWordStore(StoreWords(words), storePath, &error), qPrintable(error));
    }
    void init()
    {
        startProgram();
        QFile::remove(UserWordStorePath());
        setShippedWordStorePath(storePath);
        doc = program->newDocument();
    }
    void cleanup()
    {
        endProgram();
        setShippedWordStorePath(QString());
    }

    // after is empty when the text stays as it was.
    void walk_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("answers");
        QTest::addColumn<QString>("stops");
        QTest::addColumn<QString>("after");
        QTest::newRow("text before the first > not checked")
            << "helo wrld <p>cat dgo</p>" << "Command4" << "dgo" << "";
        QTest::newRow("inside tags not checked") << "<p class=xyzzy align=qqq>cat</p>" << "" << "" << "";
        QTest::newRow("entity run passed over, the run behind it checked")
            << "<p>&nbsp;wrld</p>" << "Command4" << "wrld" << "";
        QTest::newRow("runs starting with a digit skipped, x2 looked up")
            << "<p>12th 3D 0800 x2</p>" << "Command4" << "x2" << "";
        QTest::newRow("first word of every line checked")
            << "<p>cat\r\ndgo\r\nwrld\r\n</p>" << "Command4 Command4" << "dgo wrld" << "";
        QTest::newRow("separators end words")
            << "<p>cat,dgo;the:wrld.a?cta!x</p>" << "Command4 Command4 Command4" << "dgo wrld cta" << "";
        QTest::newRow("capital kept on change")
            << "<p>Teh cat</p>" << "Command3=the" << "Teh" << "<p>The cat</p>";
        QTest::newRow("change inside punctuation")
            << "<p>(wrld) is</p>" << "Command3=world" << "wrld" << "<p>(world) is</p>";
        QTest::newRow("change that shortens keeps to the stretch")
            << "<p>wwwworld dgo</p><b class=qqq>cta</b>" << "Command3=world Command3=dog Command4"
            << "wwwworld dgo cta" << "<p>world dog</p><b class=qqq>cta</b>";
        QTest::newRow("change that lengthens keeps to the stretch")
            << "<p>wrd d</p>" << "Command3=world Command4" << "wrd d" << "<p>world d</p>";
        QTest::newRow("double-clicked suggestion changes")
            << "<p>wurld</p>" << "lstMatches" << "wurld" << "<p>world</p>";
        QTest::newRow("repeated unknown word stops each time")
            << "<p>dgo cat dgo</p>" << "Command4 Command4" << "dgo dgo" << "";
        QTest::newRow("ignore all passes the word over in any case")
            << "<p>dgo cat DGO</p>" << "Command6" << "dgo" << "";
        QTest::newRow("check while waiting does nothing")
            << "<p>dgo wrld</p>" << "Command1+Command4 Command4" << "dgo wrld" << "";
        QTest::newRow("no > at all") << "cta dgo" << "" << "" << "";
    }
    void walk()
    {
        QFETCH(QString, text);
        QFETCH(QString, answers);
        QFETCH(QString, stops);
        QFETCH(QString, after);
        doc->Text->setText(text);
        doc->Text->setSelStart(1);

        QCOMPARE(walk(answers), stops);
        QCOMPARE(doc->Text->Text(), after.isEmpty() ? text : after);
        verifyMessage(Complete, MsgStyle::OkOnly);
        QTRY_VERIFY(!form);
        // The caret goes back where it stood.
        QCOMPARE(doc->Text->SelStart(), 1);
        QCOMPARE(doc->Text->SelLength(), 0);
    }

    void stopShowsWordAndSuggestions()
    {
        doc->Text->setText("<p>Wurld Qqq</p>");
        QVERIFY(open());
        QVERIFY(!form->Command2->isEnabled() && !form->Command3->isEnabled() && form->Command3->isDefault());
        form->Command1->click();
        QVERIFY(form->Command2->isEnabled() && form->Command3->isEnabled());
        for (const auto &[found, match] : {std::pair{"wurld", "world"}, {"qqq", "No suggestions"}}) {
            QVERIFY(form->isWaiting());
            QCOMPARE(form->Text1->text(), QString(found));
            QCOMPARE(form->lstMatches->count(), 1);
            QCOMPARE(form->lstMatches->item(0)->text(), QString(match));
            form->Command4->click();
        }
    }

    void ignoreAllHoldsForLaterChecks()
    {
        doc->Text->setText("<p>dgo</p>");
        QCOMPARE(walk("Command6"), QString("dgo"));
        QTRY_VERIFY(!form);
        QCOMPARE(walk(""), QString());
        QCOMPARE(ws().IgnoreList, QStringList{"dgo"});
    }

    // The store's own test keeps the shipped store untouched; here the user is told.
    void addTwiceWarns()
    {
        doc->Text->setText("<p>Zorp zorpp Zorp</p>");
        // The second Add asks for a word that is in the store by now; the third run is known.
        QCOMPARE(walk("Command2=ZoRp Command2=ZORP"), QString("Zorp zorpp"));
        verifyMessage(Complete, MsgStyle::OkOnly, 2);
        QCOMPARE(platform().messages[0].text, QString("Word already in database!"));
        QCOMPARE(platform().messages[0].style, MsgStyle::Exclamation);
    }

    void closingWhileWaitingEndsTheWalk_data()
    {
        QTest::addColumn<QString>("what");
        QTest::newRow("cancelled") << "cancel";
        QTest::newRow("document closed") << "document";
        QTest::newRow("main window closed") << "main";
        QTest::newRow("main window deleted") << "delete";
    }
    void closingWhileWaitingEndsTheWalk()
    {
        QFETCH(QString, what);
        doc->Text->setText("<p>dgo wrld</p>");
        doc->state().setDirty(false);
        QVERIFY(open());
        QSignalSpy ended(form.data(), &frmSpellChecker::walkEnded);
        form->Command1->click();
        QVERIFY(form->isWaiting());
        if (what == QLatin1String("cancel"))
            form->Command5->click();
        else if (what == QLatin1String("document"))
            doc->close();
        else if (what == QLatin1String("main"))
            main().close();
        else
            endProgram();
        QTRY_VERIFY(!form);
        QCOMPARE(ended.size(), 1);
        QCOMPARE(ended[0][0].toBool(), false);
        if (program)
            QVERIFY(platform().messages.isEmpty());
    }

    void unusableStoreShowsNoDialog()
    {
        setShippedWordStorePath(dir.filePath(QStringLiteral("absent.tpw")));
        QVERIFY(!open());
        QCOMPARE(platform().messages.size(), 1);
        QCOMPARE(platform().messages[0].style, 48);
        QVERIFY(platform().messages[0].text.contains(QStringLiteral("absent.tpw")));
    }
};

PW_TEST_MAIN(TestSpellWalk)
#include "tst_spell_walk.moc"
