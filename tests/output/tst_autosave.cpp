#include "isolated_main.h"
#include "test_support.h"

#include "core/status_line.h"
#include "files/autosave.h"
#include "platform/message_box.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

using namespace pw;

namespace {
QStringList autosavedFiles()
{
    return QDir(AutoSaveFolder()).entryList(QDir::Files, QDir::Name);
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void tick(int times)
{
    for (int i = 0; i < times; ++i)
        tmrAutoSave_Timer();
}

} // namespace

class TestAutoSave : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QStandardPaths::setTestModeEnabled(true);
        QDir(AutoSaveFolder()).removeRecursively();
        startProgram();
        program->main().options().setChecked(Option::AutoSave, false);
        // Bring the tick counter to zero: a pass with the option on and no document open.
        program->main().options().setChecked(Option::AutoSave, true);
        for (int i = 0; i < 10 && !QDir(AutoSaveFolder()).exists(); ++i)
            tmrAutoSave_Timer();
        program->main().options().setChecked(Option::AutoSave, false);
        QDir(AutoSaveFolder()).removeRecursively();
    }
    void cleanup()
    {
        endProgram();
        QDir(AutoSaveFolder()).removeRecursively();
    }

    void optionOffMakesNoFolder()
    {
        program->newDocument()->Text->setText("text");
        tick(25);
        QVERIFY(!QDir(AutoSaveFolder()).exists());
        QVERIFY(!program->main().tmrAutoSave->isActive());
    }

    void optionOnWithNoDocumentMakesTheFolderOnly()
    {
        program->main().options().setChecked(Option::AutoSave, true);
        tick(9);
        QVERIFY(!QDir(AutoSaveFolder()).exists());
        tick(1);
        QVERIFY(QDir(AutoSaveFolder()).exists());
        QVERIFY(autosavedFiles().isEmpty());
    }

    void ticksCountAcrossTheOptionBeingOff_data()
    {
        QTest::addColumn<int>("before");   // ticks with the option on
        QTest::addColumn<int>("whileOff");
        QTest::addColumn<int>("after");    // ticks once it is on again until the pass
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
        DocumentSlots &slots = program->main().slots();
        frmDoc *first = program->newDocument();
        frmDoc *second = program->newDocument();
        frmDoc *third = program->newDocument();
        first->Text->setText("<P>caf\u00e9 \u20ac</P>\r\n\r\nline \U0001F600 end\r\n");
        // Long enough to be written in several pieces, with a surrogate pair across a piece's edge.
        QString big = QString(64 * 1024 - 1, 'x') + QStringLiteral("\U0001F600");
        while (big.size() < 200000)
            big += QStringLiteral("<TD>\u00fcber</TD>\r\n");
        second->Text->setText(big);
        third->unloadQuietly(); // a closed document's slot is skipped
        slots.state(first->slot()).Dirty = True;
        slots.state(second->slot()).Dirty = False;

        AutoSavePass();
        QCOMPARE(autosavedFiles(), QStringList({"AutoSaved.001", "AutoSaved.002"}));
        QCOMPARE(readAll(AutoSaveFolder() + "/AutoSaved.001"), first->Text->Text().toUtf8());
        QCOMPARE(readAll(AutoSaveFolder() + "/AutoSaved.002"), second->Text->Text().toUtf8());
        QCOMPARE(slots.state(first->slot()).Dirty, True);
        QCOMPARE(slots.state(second->slot()).Dirty, False);
        QVERIFY(StatusText().isEmpty());

        // The next pass writes the file over.
        first->Text->setText(QString());
        AutoSavePass();
        QCOMPARE(readAll(AutoSaveFolder() + "/AutoSaved.001"), QByteArray());
    }

    void laterPassesFollowChangesAndMissingFiles()
    {
        const QString file = AutoSaveFolder() + "/AutoSaved.001";
        frmDoc *doc = program->newDocument();
        doc->Text->setText("first");
        AutoSavePass();
        QCOMPARE(readAll(file), QByteArray("first"));

        QVERIFY(QFile::remove(file));
        AutoSavePass();
        QCOMPARE(readAll(file), QByteArray("first"));

        // A new document in the same slot.
        doc->unloadQuietly();
        doc = program->newDocument();
        QCOMPARE(doc->slot(), 1);
        doc->Text->setText("other");
        AutoSavePass();
        QCOMPARE(readAll(file), QByteArray("other"));

        doc->Text->setSelStart(5);
        doc->Text->setSelText("!");
        AutoSavePass();
        QCOMPARE(readAll(file), QByteArray("other!"));
    }

    void timerFollowsTheOption()
    {
        frmMDIMain &main = program->main();
        frmDoc *doc = program->newDocument();
        QVERIFY(program->trigger(doc, "mnuOptionAutosave"));
        QVERIFY(main.options().isChecked(Option::AutoSave));
        QVERIFY(main.tmrAutoSave->isActive());
        QCOMPARE(main.tmrAutoSave->interval(), 1000);
        QVERIFY(doc->item("mnuOptionAutosave")->isChecked());
        QVERIFY(program->trigger(doc, "mnuOptionAutosave"));
        QVERIFY(!main.tmrAutoSave->isActive());
        // The settings read at the start set the option directly.
        main.options().setChecked(Option::AutoSave, true);
        QVERIFY(main.tmrAutoSave->isActive());
    }

    void timerTicksRunThePass()
    {
        frmMDIMain &main = program->main();
        program->newDocument()->Text->setText("ticked");
        main.tmrAutoSave->setInterval(5);
        main.options().setChecked(Option::AutoSave, true);
        QTRY_COMPARE(readAll(AutoSaveFolder() + "/AutoSaved.001"), QByteArray("ticked"));
    }

    void recoveryBringsEachFileBackOnce()
    {
        QVERIFY(QDir().mkpath(AutoSaveFolder()));
        const QStringList texts = {"<P>one</P>\r\nline", "two \u00e9", "three"};
        for (int i = 0; i < texts.size(); ++i) {
            QFile f(AutoSaveFolder() + QStringLiteral("/AutoSaved.%1").arg(i + 3, 3, 10, QLatin1Char('0')));
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(texts[i].toUtf8());
        }

        RecoverAutoSavedFiles();
        const auto &messages = program->platform->messages;
        QCOMPARE(messages.size(), 1);
        QCOMPARE(messages[0].text, QString("Recovering Files!"));
        QCOMPARE(messages[0].style, int(MsgStyle::Exclamation));
        QCOMPARE(messages[0].title, AppTitle());
        DocumentSlots &slots = program->main().slots();
        QCOMPARE(program->captions(), QStringList(3, "Untitled: (Recovered File: 1)"));
        QStringList recovered;
        for (int slot : slots.openSlots()) {
            recovered << slots.document(slot)->Text->Text();
            QCOMPARE(slots.state(slot).Dirty, True);
        }
        QCOMPARE(recovered, texts);
        QVERIFY(autosavedFiles().isEmpty());

        // Nothing left: the next start asks nothing.
        RecoverAutoSavedFiles();
        QCOMPARE(messages.size(), 1);
    }
};

PW_ISOLATED_TEST_MAIN(TestAutoSave)
#include "tst_autosave.moc"
