#include "test_support.h"

#include "core/settings_store.h"
#include "platform/single_instance.h"

#include <QProcess>

using namespace pw;

static const QString SettingsFile = QStringLiteral("config/Tessaline/Pagewright.ini");

// The built program itself, started as a user would start it: twice for the hand-over, and killed
// mid-run for the recovery. Each test has its own home, config, data and runtime folders.
class TestProgramProcesses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        home = std::make_unique<QTemporaryDir>();
        QVERIFY(home->isValid());
        for (const char *folder : {"config/Tessaline", "data", "run"})
            QDir(home->path()).mkpath(QLatin1String(folder));
        QFile::setPermissions(home->filePath("run"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(home->filePath("config")));
        qputenv("XDG_DATA_HOME", QFile::encodeName(home->filePath("data")));
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home->filePath("run")));
        write(SettingsFile, "[WinState]\nState=0\n");
        for (QProcess *p : {&first, &second})
            p->setWorkingDirectory(QString());
    }

    void cleanup()
    {
        for (QProcess *p : {&first, &second}) {
            p->kill();
            p->waitForFinished();
        }
    }

    void secondStartHandsItsFileToTheFirst()
    {
        start(first, {});
        const QString page = write(QStringLiteral("page one.html"), "<HTML>one</HTML>\r\n");
        // A relative name means the folder the second start was made in, not the first one's.
        second.setWorkingDirectory(home->path());
        start(second, {QStringLiteral("page one.html")});
        QVERIFY(second.waitForFinished(30000));
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);

        // The first one ends normally and remembers the handed-over file first.
        first.terminate();
        QVERIFY(first.waitForFinished(30000));
        QCOMPARE(first.exitCode(), 0);
        const QSettings settings(home->filePath(SettingsFile), SettingsStore::format());
        QCOMPARE(settings.value(QStringLiteral("Previous/Files/01")).toString(), page);
        QVERIFY(!QFile::exists(LinkName())); // the next start is the first again
    }

    void killedRunComesBackFromItsAutosavedFiles()
    {
        write(SettingsFile, "[WinState]\nState=0\nAutoSave=True\n");
        const QByteArray one = "<HTML>\r\n<BODY>first page</BODY>\r\n</HTML>";
        const QByteArray two = "second \xc3\xa9t\xc3\xa9\r\n<P>";
        start(first, {write(QStringLiteral("one.html"), one)});
        start(second, {write(QStringLiteral("two.html"), two)});
        QVERIFY(second.waitForFinished(30000));
        QCOMPARE(second.exitCode(), 0);

        // The real ten-second pass, then the crash.
        const QString folder = home->filePath(QStringLiteral("data/Tessaline/Pagewright/Auto Saved Files"));
        QTRY_VERIFY_WITH_TIMEOUT(
            fileBytes(folder + "/AutoSaved.001") == one && fileBytes(folder + "/AutoSaved.002") == two, 60000);
        first.kill();
        QVERIFY(first.waitForFinished(30000));

        // The next start, in this process with a scripted platform, recovers both texts before it
        // makes its own untitled document, and shows them in front of it.
        QCoreApplication::setOrganizationName(QStringLiteral("Tessaline"));
        QCoreApplication::setApplicationName(QStringLiteral("Pagewright"));
        ScriptedPlatform platform;
        Application program(platform);
        program.MDIForm_Load(QString());
        QCOMPARE(platform.messages.size(), 1);
        QCOMPARE(platform.messages[0].text, QString("Recovering Files!"));
        DocumentSlots &slots = program.workspace().slots;
        const bool recoveredInFront = slots.current() && slots.current()->state().Dirty();
        QStringList captions, texts;
        for (int slot : slots.openSlots()) {
            frmDoc *doc = slots.document(slot);
            captions << doc->Caption() + QLatin1String(doc->state().Dirty() ? " changed" : "");
            if (doc->state().Dirty())
                texts << doc->Text->Text();
            doc->unloadQuietly();
        }
        const QString recovered = QStringLiteral("Untitled: (Recovered File: 1) changed");
        QCOMPARE(captions, (QStringList{"Untitled: 1", recovered, recovered}));
        QVERIFY(recoveredInFront);
        texts.sort();
        QCOMPARE(texts, (QStringList{QString::fromUtf8(one), QString::fromUtf8(two)}));
        QVERIFY(QDir(folder).entryList(QDir::Files).isEmpty());
    }

private:
    QString write(const QString &name, const QByteArray &bytes)
    {
        QFile file(home->filePath(name));
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            file.write(bytes);
        return file.fileName();
    }

    // Starts the program; the first one is waited for until its link answers.
    void start(QProcess &process, const QStringList &arguments)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("HOME"), home->path());
        process.setProcessEnvironment(env);
        process.setProgram(QStringLiteral(PAGEWRIGHT_EXE));
        process.setArguments(arguments);
        process.start();
        QVERIFY(process.waitForStarted());
        if (&process == &first)
            QTRY_COMPARE_WITH_TIMEOUT(SendLinkCommand(QStringLiteral("jump")), LinkAnswer::Accepted, 30000);
    }

    std::unique_ptr<QTemporaryDir> home;
    QProcess first;
    QProcess second;
};

PW_TEST_MAIN(TestProgramProcesses)
#include "tst_program_processes.moc"
