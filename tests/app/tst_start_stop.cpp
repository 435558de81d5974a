#include "test_support.h"

#include "core/settings_store.h"
#include "files/autosave.h"
#include "files/new_document.h"
#include "platform/message_box.h"

using namespace pw;

class TestStartStop : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        startProgram();
        // Not the first run: no question about the association.
        SettingsStore().writeInt(Setting::State, 0);
    }

    void startWithoutFileShowsOneUntitledDocument_data()
    {
        QTest::addColumn<bool>("addTemplate");
        QTest::newRow("template") << true;
        QTest::newRow("no template") << false;
    }
    void startWithoutFileShowsOneUntitledDocument()
    {
        QFETCH(bool, addTemplate);
        SettingsStore().writeBool(Setting::AddTemplate, addTemplate);
        program->app.MDIForm_Load(QString());
        QCOMPARE(program->captions(), QStringList{"Untitled: 1"});
        frmDoc *doc = program->current();
        QCOMPARE(doc->Text->Text(), addTemplate ? BlankTemplate() : QString());
        QCOMPARE(doc->Text->SelStart(), addTemplate ? 80 : 0);
        QVERIFY(!doc->state().Dirty());
        QVERIFY(platform().messages.isEmpty());
    }

    // A refused command changes nothing; an accepted one restores the window (tst_user_faults).
    void refusedHandOverCommands_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("unknown") << "print /tmp/x.html";
        QTest::newRow("empty") << "";
        QTest::newRow("upper case") << "JUMP";
    }
    void refusedHandOverCommands()
    {
        QFETCH(QString, command);
        program->app.MDIForm_Load(QString());
        main().showMinimized();
        bool cancel = false;
        program->app.MDIForm_LinkExecute(command, &cancel);
        QVERIFY(cancel);
        QVERIFY(main().isMinimized());
        QCOMPARE(program->captions(), QStringList{"Untitled: 1"});
    }

    void shutdownAsksThenSavesSettingsAndEmptiesAutosave()
    {
        program->app.MDIForm_Load(QString());
        frmDoc *doc = program->current();
        doc->Text->setSelText(QStringLiteral("changed"));
        QDir().mkpath(AutoSaveFolder());
        QVERIFY(QFile(AutoSaveFolder() + QStringLiteral("/AutoSaved.001")).open(QIODevice::WriteOnly));
        ws().options.setChecked(Option::MaximizeDocs, true);

        platform().answers.enqueue(MsgAnswer::No);
        QVERIFY(main().close());
        QCOMPARE(platform().messages.size(), 1);
        QTRY_VERIFY(ws().slots.openSlots().isEmpty());
        QVERIFY(SettingsStore().readBool(Setting::MaximizeDocs));
        QVERIFY(QDir(AutoSaveFolder()).entryList(QDir::Files).isEmpty());
    }
};

PW_TEST_MAIN(TestStartStop)
#include "tst_start_stop.moc"
