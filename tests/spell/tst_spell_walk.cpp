#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "platform/scripted_platform.h"
#include "spell/checking_walk.h"
#include "spell/word_store.h"
#include "spell/word_store_builder.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace pw;

namespace {

const QString Complete = QStringLiteral("Spell checking complete.");

// What the dialog showed at one stop.
struct Stop {
    QString word;
    QString found;
    QStringList matches;
    bool addAndChangeEnabled = false;
};

} // namespace

class TestSpellWalk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(dir.isValid());
        storePath = dir.filePath(QStringLiteral("spwords.tpw"));
        QString error;
        QVERIFY2(BuildWordStore(StoreWords({"a", "cat", "dog", "hello", "the", "world", "x", "is"}), storePath,
                                &error),
                 qPrintable(error));
    }
    void init()
    {
        QFile::remove(UserWordStorePath());
        frmSpellChecker::IgnoreList.clear();
        setShippedWordStorePath(storePath);
        main = std::make_unique<frmMDIMain>();
        doc = main->slots().CreateDocumentWindow(main->slots().FindFreeSlot(), QStringLiteral("Untitled: 1"));
        QVERIFY(doc);
        stops.clear();
        answers.clear();
    }
    void cleanup()
    {
        if (frmSpellChecker *form = frmSpellChecker::instance())
            delete form;
        main.reset();
        setShippedWordStorePath(QString());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void walk_data()
    {
        QTest::addColumn<QString>("text");
        // Per stop: buttons joined by "+", with "=text" typed into Text1 first.
        QTest::addColumn<QStringList>("answers");
        QTest::addColumn<QStringList>("stops");
        QTest::addColumn<QString>("after");

        QTest::newRow("text before the first > not checked")
            << "helo wrld <p>cat dgo</p>" << QStringList{"Command4"} << QStringList{"dgo"}
            << "helo wrld <p>cat dgo</p>";
        QTest::newRow("inside tags not checked")
            << "<p class=xyzzy align=qqq>cat</p>" << QStringList{} << QStringList{} << "<p class=xyzzy align=qqq>cat</p>";
        QTest::newRow("entity run passed over, the run behind it checked")
            << "<p>&nbsp;wrld</p>" << QStringList{"Command4"} << QStringList{"wrld"} << "<p>&nbsp;wrld</p>";
        QTest::newRow("runs starting with a digit skipped, x2 looked up")
            << "<p>12th 3D 0800 x2</p>" << QStringList{"Command4"} << QStringList{"x2"} << "<p>12th 3D 0800 x2</p>";
        QTest::newRow("first word of every line checked")
            << "<p>cat\r\ndgo\r\nwrld\r\n</p>" << QStringList{"Command4", "Command4"} << QStringList{"dgo", "wrld"}
            << "<p>cat\r\ndgo\r\nwrld\r\n</p>";
        QTest::newRow("separators end words")
            << "<p>cat,dgo;the:wrld.a?cta!x</p>" << QStringList{"Command4", "Command4", "Command4"}
            << QStringList{"dgo", "wrld", "cta"} << "<p>cat,dgo;the:wrld.a?cta!x</p>";
        QTest::newRow("capital kept on change")
            << "<p>Teh cat</p>" << QStringList{"Command3=the"} << QStringList{"Teh"} << "<p>The cat</p>";
        QTest::newRow("change inside punctuation")
            << "<p>(wrld) is</p>" << QStringList{"Command3=world"} << QStringList{"wrld"} << "<p>(world) is</p>";
        QTest::newRow("change that shortens keeps to the stretch")
            << "<p>wwwworld dgo</p><b class=qqq>cta</b>" << QStringList{"Command3=world", "Command3=dog", "Command4"}
            << QStringList{"wwwworld", "dgo", "cta"} << "<p>world dog</p><b class=qqq>cta</b>";
        QTest::newRow("change that lengthens keeps to the stretch")
            << "<p>wrd d</p>" << QStringList{"Command3=world", "Command4"} << QStringList{"wrd", "d"}
            << "<p>world d</p>";
        QTest::newRow("repeated unknown word stops each time")
            << "<p>dgo cat dgo</p>" << QStringList{"Command4", "Command4"} << QStringList{"dgo", "dgo"}
            << "<p>dgo cat dgo</p>";
        QTest::newRow("ignore all passes the word over in any case")
            << "<p>dgo cat DGO</p>" << QStringList{"Command6"} << QStringList{"dgo"} << "<p>dgo cat DGO</p>";
        QTest::newRow("no > at all") << "cta dgo" << QStringList{} << QStringList{} << "cta dgo";
    }
    void walk()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, answers);
        QFETCH(QStringList, stops);
        QFETCH(QString, after);
        ScopedScriptedPlatform platform;
        doc->Text->setText(text);
        this->answers = answers;

        frmSpellChecker *form = open();
        QVERIFY(form);
        form->Command1->click();

        QStringList words;
        for (const Stop &stop : std::as_const(this->stops))
            words << stop.word;
        QCOMPARE(words, stops);
        QCOMPARE(doc->Text->Text(), after);
        QCOMPARE(platform->messages.size(), 1);
        QCOMPARE(platform->messages[0].text, Complete);
        QCOMPARE(platform->messages[0].style, 0);
        QTRY_VERIFY(!frmSpellChecker::instance());
    }

    void stopShowsWordAndSuggestions_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("found");
        QTest::addColumn<QStringList>("matches");
        QTest::newRow("sound-alikes listed") << "<p>Wurld</p>" << "wurld" << QStringList{"world"};
        QTest::newRow("no sound-alike") << "<p>Qqq</p>" << "qqq" << QStringList{"No suggestions"};
    }
    void stopShowsWordAndSuggestions()
    {
        QFETCH(QString, text);
        QFETCH(QString, found);
        QFETCH(QStringList, matches);
        ScopedScriptedPlatform platform;
        doc->Text->setText(text);
        answers = {"Command4"};
        frmSpellChecker *form = open();
        QVERIFY(!form->Command2->isEnabled());
        QVERIFY(!form->Command3->isEnabled());
        QVERIFY(form->Command3->isDefault());
        form->Command1->click();
        QCOMPARE(this->stops.size(), 1);
        QCOMPARE(this->stops[0].found, found);
        QCOMPARE(this->stops[0].matches, matches);
        QVERIFY(this->stops[0].addAndChangeEnabled);
    }

    void ignoreAllHoldsForLaterChecks()
    {
        ScopedScriptedPlatform platform;
        doc->Text->setText("<p>dgo</p>");
        answers = {"Command6"};
        open()->Command1->click();
        QTRY_VERIFY(!frmSpellChecker::instance());
        open()->Command1->click();
        QCOMPARE(stops.size(), 1);
    }

    void addTwiceWarnsAndKeepsOneRecord()
    {
        ScopedScriptedPlatform platform;
        QFile shipped(storePath);
        QVERIFY(shipped.open(QIODevice::ReadOnly));
        const QByteArray before = QCryptographicHash::hash(shipped.readAll(), QCryptographicHash::Sha256);
        shipped.close();

        doc->Text->setText("<p>Zorp zorpp Zorp</p>");
        // The second Add asks for a word that is in the store by now.
        answers = {"Command2=ZoRp", "Command2=ZORP"};
        open()->Command1->click();
        QCOMPARE(stops.size(), 2); // the third run is known after the first Add
        QCOMPARE(platform->messages.size(), 2);
        QCOMPARE(platform->messages[0].text, QString("Word already in database!"));
        QCOMPARE(platform->messages[0].style, 48);
        QCOMPARE(platform->messages[1].text, Complete);

        WordStore store;
        QString error;
        QVERIFY(store.open(&error));
        QVERIFY(store.contains("zorp"));
        QVERIFY(!store.contains("zorpp"));
        QVERIFY(QFile::exists(UserWordStorePath()));
        QVERIFY(shipped.open(QIODevice::ReadOnly));
        QCOMPARE(QCryptographicHash::hash(shipped.readAll(), QCryptographicHash::Sha256), before);
    }

    void cancelAtStopEndsWithoutCompletion()
    {
        ScopedScriptedPlatform platform;
        doc->Text->setText("<p>cat dgo wrld</p>");
        doc->Text->setSelStart(5);
        answers = {"Command5"};
        frmSpellChecker *form = open();
        form->Command1->click();
        QCOMPARE(stops.size(), 1);
        QVERIFY(platform->messages.isEmpty());
        QTRY_VERIFY(!frmSpellChecker::instance());
        QCOMPARE(doc->Text->SelStart(), 5);
        QCOMPARE(doc->Text->SelLength(), 0);
    }

    void caretGoesBackAfterTheWalk()
    {
        ScopedScriptedPlatform platform;
        doc->Text->setText("<p>Teh dgo</p>");
        doc->Text->setSelStart(2);
        answers = {"Command3=the", "Command4"};
        open()->Command1->click();
        QTRY_VERIFY(!frmSpellChecker::instance());
        QCOMPARE(doc->Text->SelStart(), 2);
        QCOMPARE(doc->Text->SelLength(), 0);
    }

    void checkDuringWalkDoesNothing()
    {
        ScopedScriptedPlatform platform;
        doc->Text->setText("<p>dgo wrld</p>");
        answers = {"Command1+Command4", "Command4"};
        open()->Command1->click();
        QCOMPARE(stops.size(), 2);
        QCOMPARE(platform->messages.size(), 1);
    }

    void closingWhileWaitingEndsTheWalk_data()
    {
        QTest::addColumn<QString>("what");
        QTest::newRow("document closed") << "document";
        QTest::newRow("main window closed") << "main";
        QTest::newRow("main window deleted") << "delete";
    }
    void closingWhileWaitingEndsTheWalk()
    {
        QFETCH(QString, what);
        ScopedScriptedPlatform platform;
        doc->Text->setText("<p>dgo wrld</p>");
        frmSpellChecker *form = open();
        connect(form, &frmSpellChecker::walkStopped, form, [this, what] {
            QTimer::singleShot(0, main.get(), [this, what] {
                if (what == "document")
                    doc->close();
                else if (what == "main")
                    main->close();
                else
                    main.reset();
            });
        });
        form->Command1->click();
        QCOMPARE(stops.size(), 1);
        QVERIFY(platform->messages.isEmpty());
        QTRY_VERIFY(!frmSpellChecker::instance());
    }

    void clickingASuggestionFillsTheBox()
    {
        ScopedScriptedPlatform platform;
        doc->Text->setText("<p>wurld</p>");
        frmSpellChecker *form = open();
        connect(form, &frmSpellChecker::walkStopped, form, [form] {
            QTimer::singleShot(0, form, [form] {
                QListWidgetItem *item = form->lstMatches->item(0);
                Q_EMIT form->lstMatches->itemDoubleClicked(item);
            });
        });
        form->Command1->click();
        QCOMPARE(doc->Text->Text(), QString("<p>world</p>"));
    }

    void unusableStoreShowsNoDialog()
    {
        ScopedScriptedPlatform platform;
        setShippedWordStorePath(dir.filePath(QStringLiteral("absent.tpw")));
        QVERIFY(!WordStoreAvailable());
        ShowSpellChecker();
        QVERIFY(!frmSpellChecker::instance());
        QCOMPARE(platform->messages.size(), 1);
        QCOMPARE(platform->messages[0].style, 48);
        QVERIFY(platform->messages[0].text.contains(QStringLiteral("absent.tpw")));
    }

private:
    // Opens the dialog and answers at every stop from the queue, after the walk has begun to wait.
    frmSpellChecker *open()
    {
        ShowSpellChecker();
        frmSpellChecker *form = frmSpellChecker::instance();
        if (!form)
            return nullptr;
        connect(form, &frmSpellChecker::walkStopped, form, [this, form](const QString &word) {
            QStringList matches;
            for (int i = 0; i < form->lstMatches->count(); ++i)
                matches << form->lstMatches->item(i)->text();
            stops.append({word, form->Text1->text(), matches,
                          form->Command2->isEnabled() && form->Command3->isEnabled()});
            if (answers.isEmpty()) {
                // A stop the script doesn't answer ends the walk rather than hang the test.
                QTimer::singleShot(1000, form, [form] { form->Command5->click(); });
                return;
            }
            const QStringList answer = answers.takeFirst().split(QLatin1Char('='));
            QTimer::singleShot(0, form, [form, answer] {
                if (answer.size() > 1)
                    form->Text1->setText(answer[1]);
                for (const QString &button : answer[0].split(QLatin1Char('+')))
                    form->findChild<QPushButton *>(button)->click();
            });
        });
        return form;
    }

    QTemporaryDir dir;
    QString storePath;
    std::unique_ptr<frmMDIMain> main;
    frmDoc *doc = nullptr;
    QList<Stop> stops;
    QStringList answers;
};

QTEST_MAIN(TestSpellWalk)
#include "tst_spell_walk.moc"
