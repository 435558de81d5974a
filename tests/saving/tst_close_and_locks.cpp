#include "saving_support.h"

using namespace pw;

class TestCloseAndLocks : public ProgramTest
{
    Q_OBJECT

    static QString question(const QString &caption)
    {
        return "The text in [" + caption + "] has changed.\r\nDo you want to save the changes?";
    }

private Q_SLOTS:
    void closingADocument_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("stays");
        QTest::addColumn<QByteArray>("onDisk");
        QTest::newRow("yes saves and closes") << "x" << MsgAnswer::Yes << false << QByteArray("<P>\r\nx");
        QTest::newRow("no closes, changes lost") << "x" << MsgAnswer::No << false << QByteArray("<P>\r\n");
        QTest::newRow("cancel keeps the window") << "x" << MsgAnswer::Cancel << true << QByteArray("<P>\r\n");
        QTest::newRow("clean: no question") << "" << 0 << false << QByteArray("<P>\r\n");
    }
    void closingADocument()
    {
        QFETCH(QString, typed);
        QFETCH(int, answer);
        QFETCH(bool, stays);
        QFETCH(QByteArray, onDisk);
        frmDoc *doc = opened("page.html", "<P>\r\n");
        QVERIFY(doc);
        if (!typed.isEmpty())
            typeAtEnd(doc, typed);
        platform().answers.enqueue(answer);

        QVERIFY(program->trigger(doc, "mnuFileClose"));
        if (!typed.isEmpty())
            verifyMessage(question(path("page.html")), MsgStyle::YesNoCancel);
        QCOMPARE(platform().messages.size(), typed.isEmpty() ? 0 : 1);
        QCOMPARE(fileBytes(path("page.html")), onDisk);
        if (stays) {
            QCOMPARE(program->captions(), QStringList{path("page.html")});
            QVERIFY(doc->state().Dirty());
            QVERIFY(FileHandles::instance().isOpen(1));
        } else {
            QTRY_VERIFY(program->captions().isEmpty());
            QVERIFY(!FileHandles::instance().isOpen(1));
        }
    }

    void yesWithACancelledDialogKeepsTheWindow()
    {
        frmDoc *doc = program->newDocument();
        typeAtEnd(doc, "never lost");
        platform().answers.enqueue(MsgAnswer::Yes);
        platform().cancelDialog();

        QVERIFY(program->trigger(doc, "mnuFileClose"));
        QCOMPARE(platform().dialogsShown.size(), 1);
        QCOMPARE(program->captions(), QStringList{"Untitled: 1"});
        QCOMPARE(doc->Text->Text(), QString("never lost"));
        QVERIFY(doc->state().Dirty());
    }

    void yesSavesTheClosingDocumentNotTheCurrentOne()
    {
        frmDoc *closing = opened("a.html", "A");
        frmDoc *other = opened("b.html", "B");
        QVERIFY(closing && other);
        typeAtEnd(closing, "1");
        typeAtEnd(other, "2");
        QCOMPARE(program->current(), other);
        platform().answers.enqueue(MsgAnswer::Yes);

        closing->close();
        QCOMPARE(fileBytes(path("a.html")), QByteArray("A1"));
        QCOMPARE(fileBytes(path("b.html")), QByteArray("B"));
        QVERIFY(other->state().Dirty());
    }

    void shutdownAsksAgainUntilSavedOrNo_data()
    {
        QTest::addColumn<bool>("thenSave");
        QTest::newRow("saved at the second yes") << true;
        QTest::newRow("no at the second question") << false;
    }
    void shutdownAsksAgainUntilSavedOrNo()
    {
        QFETCH(bool, thenSave);
        frmDoc *doc = program->newDocument();
        typeAtEnd(doc, "work");
        platform().answers.enqueue(MsgAnswer::Yes);
        platform().cancelDialog();
        platform().answers.enqueue(thenSave ? MsgAnswer::Yes : MsgAnswer::No);
        if (thenSave)
            platform().chooseFile(path("work.html"), 1);

        QVERIFY(main().close());
        verifyMessage(question("Untitled: 1"), MsgStyle::YesNo, 2);
        QCOMPARE(platform().messages[0].text, platform().messages[1].text);
        QCOMPARE(fileBytes(path("work.html")), thenSave ? QByteArray("work") : QByteArray("<unreadable>"));
        QTRY_VERIFY(ws().slots.openSlots().isEmpty());
    }

    void lockFilesTogglesEveryOpenDocument()
    {
        frmDoc *a = opened("a.html", "A");
        frmDoc *b = opened("b.html", "B");
        frmDoc *untitled = program->newDocument();
        QVERIFY(a && b && untitled);
        QVERIFY(!lockedAgainstOthers(path("a.html")));

        QVERIFY(program->trigger(untitled, "mnuOptionLockFiles"));
        QVERIFY(ws().options.isChecked(Option::LockFiles));
        QVERIFY(lockedAgainstOthers(path("a.html")));
        QVERIFY(lockedAgainstOthers(path("b.html")));
        QVERIFY(platform().messages.isEmpty());

        QVERIFY(program->trigger(a, "mnuOptionLockFiles"));
        QVERIFY(!ws().options.isChecked(Option::LockFiles));
        QVERIFY(!lockedAgainstOthers(path("a.html")));
        QVERIFY(!lockedAgainstOthers(path("b.html")));
    }

    // With LockFiles on, the file a save leaves is locked, and only that one.
    void savingWithLockFilesKeepsTheLock_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QByteArray>("written");
        QTest::newRow("named document") << "save" << QByteArray("<P>typed");
        QTest::newRow("first save of an untitled one") << "first save" << QByteArray("typed");
        QTest::newRow("save as to another name") << "save as" << QByteArray("<P>typed");
    }
    void savingWithLockFilesKeepsTheLock()
    {
        QFETCH(QString, how);
        QFETCH(QByteArray, written);
        ws().options.setChecked(Option::LockFiles, true);
        const QString target = path("page.html");
        const QString name = how == "save" ? "page.html" : "old.html";
        frmDoc *doc = how == "first save" ? program->newDocument() : opened(name, "<P>");
        QVERIFY(doc);
        typeAtEnd(doc, "typed");
        if (how != "save")
            platform().chooseFile(target, 1);

        QVERIFY(how == "save as" ? SaveDocumentAs(ws(), *doc) : SaveDocument(ws(), *doc));
        QVERIFY(lockedAgainstOthers(target));
        QVERIFY(!lockedAgainstOthers(path("old.html")));
        QByteArray bytes;
        QCOMPARE(readWholeFile(target, bytes, FileShare::None), ErrorCode::None);
        QCOMPARE(bytes, written);

        // A second save goes through its own lock, and closing lets the file go.
        typeAtEnd(doc, "!");
        QVERIFY(SaveDocument(ws(), *doc));
        QVERIFY(lockedAgainstOthers(target));
        doc->close();
        QTRY_VERIFY(!lockedAgainstOthers(target));
    }
};

PW_TEST_MAIN(TestCloseAndLocks)
#include "tst_close_and_locks.moc"
