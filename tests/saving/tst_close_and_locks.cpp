#include "isolated_main.h"
#include "saving_support.h"

#include "files/file_locks.h"
#include "files/save_document.h"
#include "platform/message_box.h"

#include <QTemporaryDir>

#include <memory>

using namespace pw;

class TestCloseAndLocks : public ProgramTest
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> temp;

    QString path(const QString &name) const { return temp->filePath(name); }
    ScriptedPlatform &scripted() { return program->platform.scripted; }

    frmDoc *titled(const QString &name, const QByteArray &bytes)
    {
        return writeBytes(path(name), bytes) ? openTitled(*program, path(name)) : nullptr;
    }
    static QString question(const QString &caption)
    {
        return "The text in [" + caption + "] has changed.\r\nDo you want to save the changes?";
    }

private Q_SLOTS:
    void init()
    {
        temp = std::make_unique<QTemporaryDir>();
        QVERIFY(temp->isValid());
        startProgram();
    }

    void closingAChangedDocument_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("stays");
        QTest::addColumn<QByteArray>("onDisk");
        QTest::newRow("yes saves and closes") << MsgAnswer::Yes << false << QByteArray("<P>\r\ntyped");
        QTest::newRow("no closes, changes lost") << MsgAnswer::No << false << QByteArray("<P>\r\n");
        QTest::newRow("cancel keeps the window") << MsgAnswer::Cancel << true << QByteArray("<P>\r\n");
    }

    void closingAChangedDocument()
    {
        QFETCH(int, answer);
        QFETCH(bool, stays);
        QFETCH(QByteArray, onDisk);
        frmDoc *doc = titled("page.html", "<P>\r\n");
        QVERIFY(doc);
        typeAtEnd(doc, "typed");
        scripted().answers.enqueue(answer);

        QVERIFY(program->trigger(doc, "mnuFileClose"));
        QCOMPARE(scripted().messages.size(), 1);
        QCOMPARE(scripted().messages[0].text, question(path("page.html")));
        QCOMPARE(scripted().messages[0].style, MsgStyle::YesNoCancel);
        QCOMPARE(scripted().messages[0].title, AppTitle());
        QCOMPARE(fileBytes(path("page.html")), onDisk);
        if (stays) {
            QCOMPARE(program->captions(), QStringList{path("page.html")});
            QCOMPARE(program->main().slots().state(1).Dirty, True);
            QVERIFY(FileHandles::instance().isOpen(1));
        } else {
            QTRY_VERIFY(program->captions().isEmpty());
            QVERIFY(!FileHandles::instance().isOpen(1));
        }
    }

    void closingACleanDocumentAsksNothing()
    {
        frmDoc *doc = program->newDocument();
        QVERIFY(program->trigger(doc, "mnuFileClose"));
        QTRY_VERIFY(program->captions().isEmpty());
        QVERIFY(scripted().messages.isEmpty());
    }

    void yesWithACancelledDialogKeepsTheWindow()
    {
        frmDoc *doc = program->newDocument();
        typeAtEnd(doc, "never lost");
        scripted().answers.enqueue(MsgAnswer::Yes);
        scripted().cancelDialog();

        QVERIFY(program->trigger(doc, "mnuFileClose"));
        QCOMPARE(scripted().dialogsShown.size(), 1);
        QCOMPARE(program->captions(), QStringList{"Untitled: 1"});
        QCOMPARE(doc->Text->Text(), QString("never lost"));
        QCOMPARE(program->main().slots().state(1).Dirty, True);
    }

    void yesSavesTheClosingDocumentNotTheCurrentOne()
    {
        frmDoc *closing = titled("a.html", "A");
        frmDoc *other = titled("b.html", "B");
        QVERIFY(closing && other);
        typeAtEnd(closing, "1");
        typeAtEnd(other, "2");
        QCOMPARE(program->main().slots().CurrentDocument, other->slot());
        scripted().answers.enqueue(MsgAnswer::Yes);

        closing->close();
        QCOMPARE(fileBytes(path("a.html")), QByteArray("A1"));
        QCOMPARE(fileBytes(path("b.html")), QByteArray("B"));
        QCOMPARE(program->main().slots().state(other->slot()).Dirty, True);
    }

    void shutdownAsksAgainUntilSavedOrNo_data()
    {
        QTest::addColumn<bool>("thenSave");
        QTest::newRow("saved at the second yes") << true;
        QTest::newRow("no at the second question") << false;
    }

    void shutdownAsksAgainUntilSavedOrNo()
    {
        frmDoc *doc = program->newDocument();
        typeAtEnd(doc, "work");
        scripted().answers.enqueue(MsgAnswer::Yes);
        scripted().cancelDialog();
        scripted().answers.enqueue(thenSave() ? MsgAnswer::Yes : MsgAnswer::No);
        if (thenSave())
            scripted().chooseFile(path("work.html"), 1);

        QVERIFY(program->main().close());
        QCOMPARE(scripted().messages.size(), 2);
        for (const ScriptedPlatform::Message &m : scripted().messages) {
            QCOMPARE(m.text, question("Untitled: 1"));
            QCOMPARE(m.style, MsgStyle::YesNo);
        }
        QCOMPARE(QFile::exists(path("work.html")), thenSave());
        if (thenSave())
            QCOMPARE(fileBytes(path("work.html")), QByteArray("work"));
        QTRY_VERIFY(program->main().slots().openSlots().isEmpty());
    }

    void lockFilesTogglesEveryOpenDocument()
    {
        frmDoc *a = titled("a.html", "A");
        frmDoc *b = titled("b.html", "B");
        frmDoc *untitled = program->newDocument();
        QVERIFY(a && b && untitled);
        QVERIFY(!lockedAgainstOthers(path("a.html")));

        QVERIFY(program->trigger(untitled, "mnuOptionLockFiles"));
        QVERIFY(program->main().options().isChecked(Option::LockFiles));
        for (frmDoc *doc : {a, b, untitled})
            QVERIFY(doc->item("mnuOptionLockFiles")->isChecked());
        QVERIFY(lockedAgainstOthers(path("a.html")));
        QVERIFY(lockedAgainstOthers(path("b.html")));
        QVERIFY(scripted().messages.isEmpty());

        QVERIFY(program->trigger(a, "mnuOptionLockFiles"));
        QVERIFY(!program->main().options().isChecked(Option::LockFiles));
        QVERIFY(!b->item("mnuOptionLockFiles")->isChecked());
        QVERIFY(!lockedAgainstOthers(path("a.html")));
        QVERIFY(!lockedAgainstOthers(path("b.html")));
    }

    void savingWithLockFilesKeepsTheLock_data()
    {
        QTest::addColumn<bool>("untitled");
        QTest::newRow("named document") << false;
        QTest::newRow("first save of an untitled one") << true;
    }

    void savingWithLockFilesKeepsTheLock()
    {
        QFETCH(bool, untitled);
        program->main().options().setChecked(Option::LockFiles, true);
        frmDoc *doc = untitled ? program->newDocument() : titled("page.html", "<P>");
        QVERIFY(doc);
        typeAtEnd(doc, "typed");
        if (untitled)
            scripted().chooseFile(path("page.html"), 1);

        QVERIFY(SaveDocument());
        QVERIFY(lockedAgainstOthers(path("page.html")));
        QByteArray bytes;
        QCOMPARE(readWholeFile(path("page.html"), bytes, FileShare::None), ErrorCode::None);
        QCOMPARE(bytes, untitled ? QByteArray("typed") : QByteArray("<P>typed"));

        // A second save goes through its own lock, and closing lets the file go.
        typeAtEnd(doc, "!");
        QVERIFY(SaveDocument());
        QVERIFY(lockedAgainstOthers(path("page.html")));
        doc->close();
        QTRY_VERIFY(!lockedAgainstOthers(path("page.html")));
    }

    void saveAsMovesTheLockToTheNewFile()
    {
        program->main().options().setChecked(Option::LockFiles, true);
        frmDoc *doc = titled("old.html", "<P>");
        QVERIFY(doc);
        QVERIFY(lockedAgainstOthers(path("old.html")));
        scripted().chooseFile(path("new.html"), 1);

        QVERIFY(SaveDocumentAs());
        QVERIFY(lockedAgainstOthers(path("new.html")));
        QVERIFY(!lockedAgainstOthers(path("old.html")));
    }

private:
    bool thenSave() const { return QTest::currentDataTag() == QByteArray("saved at the second yes"); }
};

PW_ISOLATED_TEST_MAIN(TestCloseAndLocks)

#include "tst_close_and_locks.moc"
