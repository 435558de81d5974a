#include "test_support.h"

#include "core/error_log.h"
#include "core/status_presenter.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"
#include "site/browser_test.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTimer>

using namespace pw;

// The browser test with a stand-in browser: a shell script that writes its arguments, one a
// line, to a file (or, given --stay, keeps running as a browser would).
class TestBrowserTest : public ProgramTest
{
    Q_OBJECT

    QString browser;
    QString written;

    frmErrorLog *errorLog() { return main().findChild<frmErrorLog *>(); }

private Q_SLOTS:
    void init()
    {
        startProgram();
        platform().realPrograms = true;
        written = path(QStringLiteral("arguments"));
        browser = write(QStringLiteral("surfer.sh"),
                        "#!/bin/sh\nif [ \"$1\" = --stay ]; then sleep 60 & trap 'kill $!; exit 0' TERM; wait; exit 0; fi\n"
                        "printf '%s\\n' \"$@\" > '" +
                            written.toLocal8Bit() + "'\n");
        QFile::setPermissions(browser, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        ws().history.Browser = browser;
    }

    void displayName_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        QTest::newRow("no extension, a dot in a folder") << "/opt/web-2.1/bin/surfer" << "Surfer";
        QTest::newRow("an extension") << "/usr/bin/navigate.exe" << "Navigate";
        QTest::newRow("the last dot only") << "/usr/bin/x.y.z" << "X.y";
    }
    void displayName()
    {
        QFETCH(QString, path);
        QFETCH(QString, name);
        QCOMPARE(BrowserDisplayName(path), name);
    }

    // The page goes to the browser as one argument, blanks and all; a dirty page is saved first;
    // the file is held (and locked) again afterwards. The log shows only when something failed.
    void pageShown_data()
    {
        QTest::addColumn<bool>("running");
        QTest::addColumn<bool>("dirty");
        QTest::addColumn<bool>("lockFiles");
        QTest::addColumn<QString>("status");
        QTest::newRow("started") << false << false << false << " Surfer responded to spawn.";
        QTest::newRow("already running takes the link") << true << false << false << " Surfer responded to link.";
        QTest::newRow("dirty, locked files") << false << true << true << " Surfer responded to spawn.";
    }
    void pageShown()
    {
        QFETCH(bool, running);
        QFETCH(bool, dirty);
        QFETCH(bool, lockFiles);
        QFETCH(QString, status);
        QProcess stay;
        if (running) {
            stay.start(browser, {QStringLiteral("--stay")});
            QVERIFY(stay.waitForStarted());
        }
        ws().options.setChecked(Option::LockFiles, lockFiles);
        frmDoc *doc = opened(QStringLiteral("my page.html"), "old");
        QVERIFY(doc);
        if (dirty)
            doc->Text->setText(QStringLiteral("new"));
        program->button(QStringLiteral("imgTest"))->trigger();
        QCOMPARE(main().Panel1->text(), status);
        QVERIFY(!errorLog());
        QTRY_COMPARE(fileBytes(written), QByteArray(path(QStringLiteral("my page.html")).toLocal8Bit() + "\n"));
        QCOMPARE(fileBytes(path(QStringLiteral("my page.html"))), dirty ? QByteArray("new") : QByteArray("old"));
        QVERIFY(!doc->state().Dirty());
        QVERIFY(FileHandles::instance().isOpen(doc->slot()));
        QCOMPARE(FileHandles::instance().isLocked(doc->slot()), lockFiles);
        QVERIFY(!QGuiApplication::overrideCursor());
        if (running) {
            stay.terminate(); // the script takes its sleep with it
            QVERIFY(stay.waitForFinished());
        }
    }

    // A browser that is gone: every step in the log, shown in the Error Log, which closes when the
    // focus goes elsewhere in the program.
    void missingBrowserShowsTheLog()
    {
        ws().history.Browser = path(QStringLiteral("gone/navigate.exe"));
        frmDoc *doc = opened(QStringLiteral("page.html"), "old");
        QVERIFY(doc);
        doc->Text->setText(QStringLiteral("new"));
        program->button(QStringLiteral("imgTest"))->trigger();
        QCOMPARE(main().Panel1->text(), QStringLiteral(" Could not find selected browser."));
        frmErrorLog *log = errorLog();
        QVERIFY(log);
        QVERIFY(log->isVisible());
        QCOMPARE(log->windowTitle(), QStringLiteral("Error Log"));
        QCOMPARE(log->tbErrorText->toPlainText(),
                 QStringLiteral("Error log:\nSaving changes.\nAttempting link to Navigate...\nBrowser not responding.\n"
                                "Spawning Navigate.\nCould not find selected browser.\n"));
        QVERIFY(FileHandles::instance().isOpen(doc->slot()));
        QCOMPARE(doc->Text->Text(), QStringLiteral("new"));
        QApplication::setActiveWindow(nullptr); // a switch to the browser
        QVERIFY(errorLog() && errorLog()->isVisible());
        main().activateWindow();
        doc->Text->SetFocus();
        QTRY_VERIFY(!errorLog());
        QCOMPARE(main().focusWidget(), doc->Text);
    }

    // The page gone while the browser had it: the document can't hold its file again, says so in the
    // log and keeps its text.
    void pageGoneMeanwhile()
    {
        frmDoc *doc = opened(QStringLiteral("page.html"), "old");
        QVERIFY(doc);
        const QString page = path(QStringLiteral("page.html"));
        QTimer::singleShot(0, &main(), [page] { QFile::remove(page); });
        program->button(QStringLiteral("imgTest"))->trigger();
        QCOMPARE(main().Panel1->text(), QStringLiteral(" Could not take back %1: File not found 53").arg(page));
        QVERIFY(errorLog());
        QCOMPARE(errorLog()->tbErrorText->toPlainText(),
                 QStringLiteral("Error log:\nAttempting link to Surfer...\nBrowser not responding.\nSpawning Surfer.\n"
                                "Surfer responded to spawn.\nCould not take back %1: File not found").arg(page));
        QVERIFY(!FileHandles::instance().isOpen(doc->slot()));
        QCOMPARE(doc->Text->Text(), QStringLiteral("old"));
    }

    void refusals_data()
    {
        QTest::addColumn<bool>("chosen");
        QTest::addColumn<QString>("message");
        QTest::newRow("no browser chosen") << false << "No browser selected!";
        QTest::newRow("an untitled page") << true << "Can not test unsaved file!";
    }
    void refusals()
    {
        QFETCH(bool, chosen);
        QFETCH(QString, message);
        if (!chosen) {
            ws().history.Browser.clear();
            platform().chooseFile(QStringLiteral("/usr/bin/surfer"));
        }
        program->newDocument();
        program->button(QStringLiteral("imgTest"))->trigger();
        verifyMessage(message, MsgStyle::Exclamation);
        QCOMPARE(platform().programsStarted.size(), 0);
        QCOMPARE(ws().history.Browser, chosen ? browser : QStringLiteral("/usr/bin/surfer"));
        QCOMPARE(ws().CMDialog1.InitDir, chosen ? QString() : QStringLiteral("/usr/bin"));
        QVERIFY(!errorLog());
    }
};

PW_TEST_MAIN(TestBrowserTest)
#include "tst_browser_test.moc"
