#include "isolated_main.h"
#include "test_support.h"

#include "core/settings_store.h"
#include "files/autosave.h"
#include "files/new_document.h"
#include "markup/highlighter.h"
#include "platform/message_box.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTest>

using namespace pw;

class TestStartStop : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Tessaline"));
        QCoreApplication::setApplicationName(QStringLiteral("Pagewright"));
    }

    void init()
    {
        program = new TestProgram;
        // Not the first run: no question about the association.
        SettingsStore().writeInt(Setting::State, 0);
        SettingsStore().writeBool(Setting::AddTemplate, true);
    }

    void startWithoutFileShowsUntitledOneWithTemplate()
    {
        program->app.MDIForm_Load(QString());
        QCOMPARE(program->captions(), QStringList{"Untitled: 1"});
        frmDoc *doc = program->current();
        QCOMPARE(doc->Text->Text(), BlankTemplate());
        QCOMPARE(doc->Text->SelStart(), 80);
        QCOMPARE(program->main().slots().state(1).Dirty, False);
        QCOMPARE(program->main().windowTitle(), AppTitle());
        QVERIFY(program->platform->messages.isEmpty());
    }

    void startWithTemplateOffLeavesAnEmptyDocument()
    {
        SettingsStore().writeBool(Setting::AddTemplate, false);
        program->app.MDIForm_Load(QString());
        QCOMPARE(program->captions(), QStringList{"Untitled: 1"});
        QVERIFY(program->current()->Text->Text().isEmpty());
    }

    void handOverCommands_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("refused");
        QTest::newRow("jump") << "jump" << false;
        QTest::newRow("unknown") << "print /tmp/x.html" << true;
        QTest::newRow("empty") << "" << true;
        QTest::newRow("upper case") << "JUMP" << true;
    }

    void handOverCommands()
    {
        QFETCH(QString, command);
        QFETCH(bool, refused);
        program->app.MDIForm_Load(QString());
        program->main().showMinimized();
        bool cancel = !refused;
        program->app.MDIForm_LinkExecute(command, &cancel);
        QCOMPARE(cancel, refused);
        // A refused command changes nothing; an accepted one brings the window back.
        QCOMPARE(program->main().isMinimized(), refused);
        QCOMPARE(program->captions(), QStringList{"Untitled: 1"});
    }

    void firstActivationAfterStartDoesNothing()
    {
        HighlightOpenDocuments() = false;
        program->app.MDIForm_Load(QString());
        program->app.Msghook1_Message(true);
        QVERIFY(HighlightOpenDocuments());
    }

    void shutdownAsksWithoutCancelThenSavesSettingsAndEmptiesAutosave()
    {
        program->app.MDIForm_Load(QString());
        frmDoc *doc = program->current();
        doc->Text->setSelText(QStringLiteral("changed"));
        program->main().slots().state(1).Dirty = True;
        QDir().mkpath(AutoSaveFolder());
        QFile left(AutoSaveFolder() + QStringLiteral("/AutoSaved.001"));
        QVERIFY(left.open(QIODevice::WriteOnly));
        left.close();
        program->main().options().setChecked(Option::MaximizeDocs, true);

        program->platform->answers.enqueue(MsgAnswer::No);
        QVERIFY(program->main().close());
        QCOMPARE(program->platform->messages.size(), 1);
        QCOMPARE(program->platform->messages[0].style & 7, int(MsgStyle::YesNo));
        QTRY_VERIFY(program->main().slots().openSlots().isEmpty());
        QVERIFY(SettingsStore().readBool(Setting::MaximizeDocs));
        QVERIFY(QDir(AutoSaveFolder()).entryList(QDir::Files).isEmpty());
    }
};

PW_ISOLATED_TEST_MAIN(TestStartStop)
#include "tst_start_stop.moc"
