#include "test_support.h"

#include "files/autosave.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"

#include <QTimer>

using namespace pw;

namespace {
QStringList autosavedFiles()
{
    return QDir(AutoSaveFolder()).entryList(QDir::Files, QDir::Name);
}

QString fileOf(int slot)
{
    return AutoSaveFolder() + QLatin1Char('/') + AutoSaveFileName(slot);
}
} // namespace

class TestAutoSave : public ProgramTest
{
    Q_OBJECT

    AutoSave &autoSave() { return program->app.autoSave(); }
    void tick(int times)
    {
        for (int i = 0; i < times; ++i)
            autoSave().tmrAutoSave_Timer();
    }

private Q_SLOTS:
    void init()
    {
        QDir(AutoSaveFolder()).removeRecursively();
        QFile::remove(AutoSaveFolder());
        startProgram();
    }

    void timerRunsAfterTheStartWhileTheOptionIsOn()
    {
        QTimer &timer = *main().tmrAutoSave;
        frmDoc *doc = program->newDocument();
        doc->Text->setText("ticked");
        QVERIFY(program->trigger(doc, "mnuOptionAutosave"));
        QVERIFY(ws().options.isChecked(Option::AutoSave));
        QVERIFY(!timer.isActive()); // the recovery has not run yet
        autoSave().start();
        QVERIFY(timer.isActive());
        QCOMPARE(timer.interval(), 1000);
        QVERIFY(program->trigger(doc, "mnuOptionAutosave"));
        QVERIFY(!timer.isActive());
        // The settings read at the start set the option directly; the ticks run the pass.
        timer.setInterval(5);
        ws().options.setChecked(Option::AutoSave, true);
        QVERIFY(timer.isActive());
        QTRY_COMPARE(fileBytes(fileOf(1)), QByteArray("ticked"));
    }

    // Every tenth tick passes; the count goes on while the option is off.
    void ticksCountAcrossTheOptionBeingOff_data()
    {
        QTest::addColumn<int>("before"); // ticks with the option on
        QTest::addColumn<int>("whileOff");
        QTest::addColumn<int>("after"); // ticks once it is on again until the pass
        QTest::newRow("seven, off, three more") << 7 << 0 << 3;
        QTest::newRow("ticks while off count") << 4 << 5 << 1;
        QTest::newRow("a long time off: the first tick passes") << 0 << 40 << 1;
    }
    void ticksCountAcrossTheOptionBeingOff()
    {
        QFETCH(int, before);
        QFETCH(int, whileOff);
        QFETCH(int, after);
        frmDoc *doc = program->newDocument();
        doc->Text->setText("kept");
        QVERIFY(program->trigger(doc, "mnuOptionAutosave"));
        tick(before);
        QVERIFY(program->trigger(doc, "mnuOptionAutosave"));
        tick(whileOff);
        QVERIFY(!QDir(AutoSaveFolder()).exists());
        QVERIFY(program->trigger(doc, "mnuOptionAutosave"));
        tick(after - 1);
        QVERIFY(!QDir(AutoSaveFolder()).exists());
        tick(1);
        QCOMPARE(autosavedFiles(), QStringList{"AutoSaved.001"});
    }

    void filesHoldExactlyTheText()
    {
        frmDoc *first = program->newDocument();
        frmDoc *second = program->newDocument();
        frmDoc *third = program->newDocument();
        first->Text->setText("<P>caf\u00e9 \u20ac</P>\r\n\r\nline \U0001F600 end\r\n");
        // Long enough to be written in several pieces, with a surrogate pair across a piece's edge;
        // its first line is held in display blocks.
        QString big = QString(64 * 1024 - 1, 'x') + QStringLiteral("\U0001F600");
        while (big.size() < 200000)
            big += QStringLiteral("<TD>\u00fcber</TD>\r\n");
        second->Text->loadText(big, {});
        third->unloadQuietly(); // a closed document's slot is skipped
        first->state().setDirty(true);
        second->state().setDirty(false);

        autoSave().AutoSavePass();
        QCOMPARE(autosavedFiles(), QStringList({"AutoSaved.001", "AutoSaved.002"}));
        QCOMPARE(fileBytes(fileOf(1)), first->Text->Text().toUtf8());
        QCOMPARE(fileBytes(fileOf(2)), second->Text->Text().toUtf8());
        QVERIFY(first->state().Dirty());
        QVERIFY(!second->state().Dirty());
        QCOMPARE(passLeftovers(main()), QString());
    }

    void laterPassesWriteWhatChangedOrWentMissing()
    {
        frmDoc *doc = program->newDocument();
        doc->Text->setText("first");
        autoSave().AutoSavePass();
        QCOMPARE(fileBytes(fileOf(1)), QByteArray("first"));

        // Unchanged: not written again.
        QVERIFY(writeFile(fileOf(1), "elsewhere"));
        autoSave().AutoSavePass();
        QCOMPARE(fileBytes(fileOf(1)), QByteArray("elsewhere"));

        QVERIFY(QFile::remove(fileOf(1)));
        autoSave().AutoSavePass();
        QCOMPARE(fileBytes(fileOf(1)), QByteArray("first"));

        doc->Text->setSelStart(5);
        doc->Text->setSelText("!");
        autoSave().AutoSavePass();
        QCOMPARE(fileBytes(fileOf(1)), QByteArray("first!"));

        // A new document in the same slot.
        doc->unloadQuietly();
        QTRY_VERIFY(ws().slots.isFree(1));
        program->newDocument()->Text->setText("other");
        autoSave().AutoSavePass();
        QCOMPARE(fileBytes(fileOf(1)), QByteArray("other"));
    }

    // Before the start the folder holds only what the last run left, for the recovery.
    void closingADocumentRemovesItsFile()
    {
        frmDoc *before = program->newDocument();
        frmDoc *after = program->newDocument();
        program->newDocument()->Text->setText("stays");
        autoSave().AutoSavePass();
        QCOMPARE(autosavedFiles(), QStringList({"AutoSaved.001", "AutoSaved.002", "AutoSaved.003"}));
        before->close();
        QTRY_VERIFY(ws().slots.isFree(1));
        QVERIFY(QFile::exists(fileOf(1)));
        autoSave().start();
        after->close();
        QTRY_VERIFY(ws().slots.isFree(2));
        QVERIFY(!QFile::exists(fileOf(2)));
        QCOMPARE(fileBytes(fileOf(3)), QByteArray("stays"));
    }

    // A write that fails is said once a run, naming the folder and why, and tried again at the
    // next pass.
    void failedWriteIsSaidOnceAndTriedAgain_data()
    {
        QTest::addColumn<bool>("folderBlocked");
        QTest::newRow("the folder can't be made") << true;
        QTest::newRow("the file can't be written") << false;
    }
    void failedWriteIsSaidOnceAndTriedAgain()
    {
        QFETCH(bool, folderBlocked);
        // A plain file where the folder goes, or a folder where the file goes.
        QVERIFY(QDir().mkpath(folderBlocked ? QFileInfo(AutoSaveFolder()).path() : fileOf(1)));
        if (folderBlocked)
            QVERIFY(writeFile(AutoSaveFolder(), "in the way"));
        frmDoc *doc = program->newDocument();
        doc->Text->setText("<P>kept</P>");
        autoSave().AutoSavePass();
        autoSave().AutoSavePass();

        const QString reason = folderBlocked ? QStringLiteral("The folder could not be made.")
                                             : platform().messages.value(0).text.split("\r\n").value(2);
        QVERIFY(!reason.isEmpty());
        verifyMessage(QStringList{"Autosave could not write to the folder", AutoSaveFolder(), reason,
                                  "It will try again every ten seconds."}.join("\r\n"), MsgStyle::Exclamation);
        QCOMPARE(passLeftovers(main()), QString());

        QVERIFY(folderBlocked ? QFile::remove(AutoSaveFolder()) : QDir(fileOf(1)).removeRecursively());
        autoSave().AutoSavePass();
        QCOMPARE(fileBytes(fileOf(1)), QByteArray("<P>kept</P>"));
        QCOMPARE(platform().messages.size(), 1);
    }

    // Each file comes back as an untitled, dirty document that holds no file, and is deleted.
    void recoveryBringsEachFileBackOnce()
    {
        QVERIFY(QDir().mkpath(AutoSaveFolder()));
        const QStringList texts = {"<P>one</P>\r\nline", "two \u00e9", "three"};
        for (int i = 0; i < texts.size(); ++i)
            QVERIFY(writeFile(fileOf(i + 3), texts[i].toUtf8()));

        autoSave().RecoverAutoSavedFiles();
        verifyMessage("Recovering Files!", MsgStyle::Exclamation);
        QCOMPARE(program->captions(), QStringList(3, "Untitled: (Recovered File: 1)"));
        QStringList recovered;
        for (int slot : ws().slots.openSlots()) {
            frmDoc *doc = ws().slots.document(slot);
            recovered << doc->Text->Text();
            QVERIFY(doc->state().Dirty() && doc->isUntitled());
            QVERIFY(!FileHandles::instance().isOpen(slot));
        }
        QCOMPARE(recovered, texts);
        QCOMPARE(fontClasses(*ws().slots.document(1)->Text), QStringLiteral("hhhttthhhh//tttt"));
        QVERIFY(autosavedFiles().isEmpty());

        // Nothing left: the next start asks nothing.
        autoSave().RecoverAutoSavedFiles();
        QCOMPARE(platform().messages.size(), 1);
    }
};

PW_TEST_MAIN(TestAutoSave)
#include "tst_autosave.moc"
