#include "isolated_main.h"

#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "platform/scripted_platform.h"
#include "platform/single_instance.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace pw;

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
        QDir(home->path()).mkpath(QStringLiteral("config/Tessaline"));
        QDir(home->path()).mkpath(QStringLiteral("data"));
        QDir(home->path()).mkpath(QStringLiteral("run"));
        QFile::setPermissions(home->filePath(QStringLiteral("run")), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
            qputenv(name, QFile::encodeName(home->filePath(folderOf(name))));
        writeSettings(QStringLiteral("[WinState]\nState=0\n"));
        for (QProcess *p : {&first, &second})
            p->setWorkingDirectory(QString());
    }

    void cleanup()
    {
        for (QProcess *p : {&first, &second})
            if (p->state() != QProcess::NotRunning) {
                p->kill();
                p->waitForFinished();
            }
    }

    void secondStartHandsItsFileToTheFirst()
    {
        start(first, {});
        const QString page = writePage(QStringLiteral("page one.html"), "<HTML>one</HTML>\r\n");
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
        QCOMPARE(firstPreviousFile(), page);
        QVERIFY(!QFile::exists(LinkName())); // the next start is the first again
    }

    void killedRunComesBackFromItsAutosavedFiles()
    {
        writeSettings(QStringLiteral("[WinState]\nState=0\nAutoSave=True\n"));
        const QByteArray one = "<HTML>\r\n<BODY>first page</BODY>\r\n</HTML>";
        const QByteArray two = "second \xc3\xa9t\xc3\xa9\r\n<P>";
        start(first, {writePage(QStringLiteral("one.html"), one)});
        start(second, {writePage(QStringLiteral("two.html"), two)});
        QVERIFY(second.waitForFinished(30000));
        QCOMPARE(second.exitCode(), 0);

        // The real ten-second pass, then the crash.
        const QString folder = home->filePath(QStringLiteral("data/Tessaline/Pagewright/Auto Saved Files"));
        QTRY_VERIFY_WITH_TIMEOUT(read(folder + "/AutoSaved.001") == one && read(folder + "/AutoSaved.002") == two,
                                 60000);
        first.kill();
        QVERIFY(first.waitForFinished(30000));

        // The next start, in this process with a scripted platform, finds both texts.
        QCoreApplication::setOrganizationName(QStringLiteral("Tessaline"));
        QCoreApplication::setApplicationName(QStringLiteral("Pagewright"));
        QStringList texts;
        {
            ScopedScriptedPlatform platform;
            Application program;
            program.MDIForm_Load(QString());
            QCOMPARE(platform->messages.size(), 1);
            QCOMPARE(platform->messages[0].text, QString("Recovering Files!"));
            for (int slot : program.main().slots().openSlots()) {
                frmDoc *doc = program.main().slots().document(slot);
                if (doc->Caption() == QLatin1String("Untitled: (Recovered File: 1)")) {
                    texts << doc->Text->Text();
                    QCOMPARE(program.main().slots().state(slot).Dirty, qint16(-1));
                }
                doc->unloadQuietly();
            }
        }
        texts.sort();
        QCOMPARE(texts, (QStringList{QString::fromUtf8(one), QString::fromUtf8(two)}));
        QVERIFY(QDir(folder).entryList(QDir::Files).isEmpty());
    }

private:
    static QString folderOf(const char *variable)
    {
        const QByteArray v(variable);
        return v == "XDG_CONFIG_HOME" ? QStringLiteral("config") : v == "XDG_DATA_HOME" ? QStringLiteral("data")
                                                                                       : QStringLiteral("run");
    }

    void writeSettings(const QString &ini)
    {
        QFile file(home->filePath(QStringLiteral("config/Tessaline/Pagewright.ini")));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(ini.toUtf8());
    }

    // The first entry of the remembered files, as the settings file holds it.
    QString firstPreviousFile()
    {
        const QString ini = QString::fromUtf8(read(home->filePath(QStringLiteral("config/Tessaline/Pagewright.ini"))));
        const qsizetype section = ini.indexOf(QStringLiteral("[Previous\\Files]\n"));
        const qsizetype key = ini.indexOf(QStringLiteral("\n01="), section);
        if (section < 0 || key < 0)
            return {};
        QString value = ini.mid(key + 4, ini.indexOf(QLatin1Char('\n'), key + 1) - key - 4);
        if (value.startsWith(QLatin1Char('"')))
            value = value.mid(1, value.size() - 2);
        return value;
    }

    QString writePage(const QString &name, const QByteArray &bytes)
    {
        const QString path = home->filePath(name);
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
        return path;
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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

PW_ISOLATED_TEST_MAIN(TestProgramProcesses)
#include "tst_program_processes.moc"
