#include "isolated_main.h"
#include "saving_support.h"

#include "core/settings_store.h"
#include "core/status_line.h"
#include "files/previous_lists.h"
#include "files/save_document.h"
#include "platform/message_box.h"

#include <QDir>
#include <QTemporaryDir>

#include <memory>

#include <sys/stat.h>

using namespace pw;

class TestSaveDocument : public ProgramTest
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> temp;

    QString path(const QString &name) const { return temp->filePath(name); }
    ScriptedPlatform &scripted() { return program->platform.scripted; }
    DocumentState &state(frmDoc *doc) { return program->main().slots().state(doc->slot()); }

    // The document in a folder of its own, so that the folder can be taken away or locked.
    frmDoc *titledInFolder(const QByteArray &bytes)
    {
        if (!QDir().mkpath(path("site")) || !writeBytes(path("site/page.html"), bytes))
            return nullptr;
        return openTitled(*program, path("site/page.html"));
    }

private Q_SLOTS:
    void init()
    {
        temp = std::make_unique<QTemporaryDir>();
        QVERIFY(temp->isValid());
        History = HistoryPaths{};
        startProgram();
    }

    void cleanup()
    {
        endProgram();
        // Put write bits back so the folder can go.
        ::chmod(QFile::encodeName(path("site")).constData(), 0755);
        temp.reset();
    }

    void forceExtension_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("filterIndex");
        QTest::addColumn<QString>("separator");
        QTest::addColumn<QString>("expected");
        QTest::newRow("htm becomes html") << "C:\\site\\page.htm" << 1 << "\\" << "C:\\site\\page.html";
        QTest::newRow("no extension gets htm") << "/home/u/page" << 2 << "/" << "/home/u/page.htm";
        QTest::newRow("shtml") << "/home/u/page.html" << 3 << "/" << "/home/u/page.shtml";
        QTest::newRow("txt") << "page.html" << 4 << "/" << "page.txt";
        QTest::newRow("any stands as typed") << "/home/u/page.htm" << 5 << "/" << "/home/u/page.htm";
        QTest::newRow("any without extension") << "/home/u/page" << 5 << "/" << "/home/u/page";
        QTest::newRow("dotted folder, backslash") << "C:\\my.site\\page" << 1 << "\\" << "C:\\my.site\\page.html";
        QTest::newRow("dotted folder, slash") << "/home/my.site/page" << 2 << "/" << "/home/my.site/page.htm";
        QTest::newRow("dotted folder and extension") << "/home/my.site/page.txt" << 1 << "/" << "/home/my.site/page.html";
        QTest::newRow("two dots: the last goes") << "/home/u/page.v2.htm" << 1 << "/" << "/home/u/page.v2.html";
        QTest::newRow("leading dot is the name") << "/home/u/.page" << 1 << "/" << "/home/u/.page.html";
        QTest::newRow("trailing dot") << "/home/u/page." << 2 << "/" << "/home/u/page.htm";
        QTest::newRow("no name at all") << "/home/u/" << 1 << "/" << "/home/u/";
    }

    void forceExtension()
    {
        QFETCH(QString, name);
        QFETCH(int, filterIndex);
        QFETCH(QString, separator);
        QFETCH(QString, expected);
        QCOMPARE(ForceExtension(name, filterIndex, separator.at(0)), expected);
    }

    void dialogStartsBesideTheLastOpenedFile_data()
    {
        QTest::addColumn<bool>("untitled");
        QTest::addColumn<QString>("lastOpened");
        QTest::addColumn<QString>("expectedInitDir");
        QTest::newRow("untitled") << true << "site/old.html" << "site/";
        QTest::newRow("untitled, nothing opened yet") << true << "" << "";
        QTest::newRow("named document") << false << "site/old.html" << "site/";
    }

    void dialogStartsBesideTheLastOpenedFile()
    {
        QFETCH(bool, untitled);
        QFETCH(QString, lastOpened);
        QFETCH(QString, expectedInitDir);
        History.Open = lastOpened.isEmpty() ? QString() : path(lastOpened);
        const QString initDir = expectedInitDir.isEmpty() ? QString() : path(expectedInitDir);
        frmDoc *doc = untitled ? program->newDocument() : titledInFolder("<P>\r\n");
        QVERIFY(doc);
        program->main().CMDialog1.FilterIndex = 3; // left by an earlier dialog
        CommonDialog seen;
        scripted().dialogs.enqueue([&seen](CommonDialog::Kind, CommonDialog &d) {
            seen = d;
            return ErrorCode::Cancel;
        });
        typeAtEnd(doc, "typed");

        QVERIFY(!SaveDocumentAs());
        QCOMPARE(scripted().dialogsShown, QList<CommonDialog::Kind>{CommonDialog::Kind::Save});
        QCOMPARE(seen.InitDir, initDir);
        QCOMPARE(seen.FileName, untitled ? initDir + "Untitled" : doc->Caption());
        QCOMPARE(seen.Filter, SaveDialogFilter);
        QCOMPARE(seen.FilterIndex, 1);
        // Cancelled: nothing written, nothing forgotten.
        QVERIFY(state(doc).Dirty);
        QVERIFY(doc->Text->Text().endsWith("typed"));
        QVERIFY(scripted().messages.isEmpty());
        if (!untitled)
            QCOMPARE(fileBytes(doc->Caption()), QByteArray("<P>\r\n"));
    }

    void firstSaveNamesTheDocument()
    {
        History.Open = path("old.html");
        frmDoc *doc = program->newDocument();
        typeAtEnd(doc, "<P>one</P>\r\n<P>two</P>");
        QVERIFY(state(doc).Dirty);
        scripted().chooseFile(path("page.htm"), 1);

        QVERIFY(program->trigger(doc, "mnuFileSave"));
        const QString saved = path("page.html");
        QCOMPARE(fileBytes(saved), QByteArray("<P>one</P>\r\n<P>two</P>"));
        QVERIFY(!QFile::exists(path("page.htm")));
        QCOMPARE(doc->Caption(), saved);
        QCOMPARE(state(doc).Dirty, False);
        QCOMPARE(state(doc).Saved, True);
        QVERIFY(!program->main().button("imgFileSave")->isEnabled());
        QCOMPARE(PreviousFile(1), saved);
        QCOMPARE(FileHandles::instance().path(doc->slot()), saved);
        QCOMPARE(History.Open, path("old.html"));
        QVERIFY(scripted().messages.isEmpty());
        QVERIFY(!QApplication::overrideCursor());
    }

    void replaceExistingFile_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("yes replaces") << MsgAnswer::Yes;
        QTest::newRow("no leaves all as it was") << MsgAnswer::No;
    }

    void replaceExistingFile()
    {
        QFETCH(int, answer);
        const QString target = path("page.html");
        QVERIFY(writeBytes(target, "old"));
        frmDoc *doc = program->newDocument();
        typeAtEnd(doc, "new");
        scripted().chooseFile(target, 1);
        scripted().answers.enqueue(answer);

        QCOMPARE(SaveDocument(), answer == MsgAnswer::Yes);
        QCOMPARE(scripted().messages.size(), 1);
        QCOMPARE(scripted().messages[0].text, target + "\r\nReplace existing file?");
        QCOMPARE(MsgStyle::buttonsOf(scripted().messages[0].style), MsgStyle::YesNo);
        QCOMPARE(scripted().messages[0].title, AppTitle());
        if (answer == MsgAnswer::Yes) {
            QCOMPARE(fileBytes(target), QByteArray("new"));
            QCOMPARE(doc->Caption(), target);
            QCOMPARE(state(doc).Dirty, False);
        } else {
            QCOMPARE(fileBytes(target), QByteArray("old"));
            QCOMPARE(doc->Caption(), QString("Untitled: 1"));
            QCOMPARE(state(doc).Dirty, True);
            QCOMPARE(state(doc).Saved, False);
            QVERIFY(!FileHandles::instance().isOpen(doc->slot()));
        }
    }

    void saveAsToItsOwnName()
    {
        frmDoc *doc = titledInFolder("<P>old</P>\r\n");
        QVERIFY(doc);
        const QString own = doc->Caption();
        const QString listed = PreviousFile(1);
        typeAtEnd(doc, "<P>new</P>\r\n");
        scripted().chooseFile(own);
        scripted().answers.enqueue(MsgAnswer::Yes);

        QVERIFY(program->trigger(doc, "mnuFileSaveAs"));
        QCOMPARE(fileBytes(own), QByteArray("<P>old</P>\r\n<P>new</P>\r\n"));
        QCOMPARE(doc->Caption(), own);
        QCOMPARE(state(doc).Dirty, False);
        QCOMPARE(state(doc).Saved, True);
        // Not a new name: the list is not touched, the file is still held.
        QCOMPARE(PreviousFile(1), listed);
        QCOMPARE(FileHandles::instance().path(doc->slot()), own);
        QByteArray bytes;
        QCOMPARE(readWholeFile(own, bytes, FileShare::Exclusive), ErrorCode::PermissionDenied);
    }

    void saveAsToAnotherNameLeavesTheOldFile()
    {
        frmDoc *doc = titledInFolder("<P>old</P>\r\n");
        QVERIFY(doc);
        const QString old = doc->Caption();
        typeAtEnd(doc, "<P>new</P>\r\n");
        const QString other = path("site/copy.htm");
        scripted().chooseFile(other, 2);

        QVERIFY(SaveDocumentAs());
        QCOMPARE(fileBytes(old), QByteArray("<P>old</P>\r\n"));
        QCOMPARE(fileBytes(other), QByteArray("<P>old</P>\r\n<P>new</P>\r\n"));
        QCOMPARE(doc->Caption(), other);
        QCOMPARE(PreviousFile(1), other);
        QCOMPARE(state(doc).Dirty, False);
        // The document follows the new file and lets the old one go.
        QByteArray bytes;
        QCOMPARE(readWholeFile(old, bytes, FileShare::Exclusive), ErrorCode::None);
        QCOMPARE(readWholeFile(other, bytes, FileShare::Exclusive), ErrorCode::PermissionDenied);
        QVERIFY(scripted().messages.isEmpty());
    }

    void saveAsOntoAFileAnotherWindowHolds()
    {
        QVERIFY(writeBytes(path("a.html"), "A"));
        QVERIFY(writeBytes(path("b.html"), "B"));
        frmDoc *b = openTitled(*program, path("b.html"));
        frmDoc *a = openTitled(*program, path("a.html"));
        QVERIFY(a && b);
        typeAtEnd(a, "typed");
        scripted().chooseFile(path("b.html"), 1);

        QVERIFY(!SaveDocumentAs());
        QCOMPARE(scripted().messages.size(), 1);
        QCOMPARE(scripted().messages[0].text,
                 "Permission Denied!\r\nThe file " + path("b.html") + " is open in another window.");
        QCOMPARE(fileBytes(path("b.html")), QByteArray("B"));
        QCOMPARE(a->Caption(), path("a.html"));
        QVERIFY(state(a).Dirty);
    }

    void failedWriteKeepsTheDocument_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("reason");
        QTest::newRow("read-only file") << "file" << "The file FILE is read-only.";
        QTest::newRow("read-only folder") << "folder" << "The folder FOLDER can't be written to.";
        QTest::newRow("vanished folder") << "gone" << "The folder FOLDER doesn't exist.";
    }

    void failedWriteKeepsTheDocument()
    {
        QFETCH(QString, what);
        QFETCH(QString, reason);
        frmDoc *doc = titledInFolder("<P>old</P>\r\n");
        QVERIFY(doc);
        const QString file = doc->Caption();
        const QString folder = path("site");
        if (what == "file")
            QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        else if (what == "folder")
            QCOMPARE(::chmod(QFile::encodeName(folder).constData(), 0555), 0);
        else
            QVERIFY(QDir(folder).removeRecursively());
        typeAtEnd(doc, "<P>typed</P>");
        const QString text = doc->Text->Text();

        QVERIFY(program->main().button("imgFileSave")->isEnabled());
        program->main().button("imgFileSave")->trigger();
        QCOMPARE(scripted().messages.size(), 1);
        QCOMPARE(scripted().messages[0].text, "Permission Denied!\r\n" + reason.replace("FILE", file).replace("FOLDER", folder));
        QCOMPARE(scripted().messages[0].style, MsgStyle::Exclamation);
        QCOMPARE(scripted().messages[0].title, AppTitle());
        QCOMPARE(state(doc).Dirty, True);
        QCOMPARE(state(doc).Saved, False);
        QCOMPARE(doc->Text->Text(), text);
        QCOMPARE(doc->Caption(), file);
        QVERIFY(!QApplication::overrideCursor());
        QVERIFY(StatusText().trimmed().isEmpty());
        if (what != "gone")
            QCOMPARE(fileBytes(file), QByteArray("<P>old</P>\r\n"));
    }

    void charactersWindows1252CannotHold_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("yes saves as UTF-8") << MsgAnswer::Yes;
        QTest::newRow("no saves nothing") << MsgAnswer::No;
    }

    void charactersWindows1252CannotHold()
    {
        QFETCH(int, answer);
        frmDoc *doc = titledInFolder("caf\xe9\r\n");
        QVERIFY(doc);
        QCOMPARE(doc->fileFormat.encoding, TextEncoding::Windows1252);
        typeAtEnd(doc, QString::fromUtf8("\xce\xa9"));
        scripted().answers.enqueue(answer);

        QCOMPARE(SaveDocument(), answer == MsgAnswer::Yes);
        QCOMPARE(scripted().messages.size(), 1);
        QVERIFY(scripted().messages[0].text.contains("U+03A9"));
        QCOMPARE(MsgStyle::buttonsOf(scripted().messages[0].style), MsgStyle::YesNo);
        if (answer == MsgAnswer::Yes) {
            QCOMPARE(fileBytes(doc->Caption()), QByteArray("caf\xc3\xa9\r\n\xce\xa9"));
            QCOMPARE(doc->fileFormat.encoding, TextEncoding::Utf8);
            QCOMPARE(state(doc).Dirty, False);
        } else {
            QCOMPARE(fileBytes(doc->Caption()), QByteArray("caf\xe9\r\n"));
            QCOMPARE(doc->fileFormat.encoding, TextEncoding::Windows1252);
            QCOMPARE(state(doc).Dirty, True);
        }
        QVERIFY(!QApplication::overrideCursor());
    }

    void roundTripKeepsTheFilesWays_data()
    {
        QTest::addColumn<QByteArray>("original");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("LF, UTF-8") << QByteArray("<P>one</P>\n<P>\xc3\xa9</P>\n") << "<P>three</P>\r\n"
                                   << QByteArray("<P>one</P>\n<P>\xc3\xa9</P>\n<P>three</P>\n");
        QTest::newRow("CR LF, Windows-1252") << QByteArray("caf\xe9\r\n") << QString::fromUtf8("na\xc3\xafve \xe2\x82\xac\r\n")
                                             << QByteArray("caf\xe9\r\nna\xefve \x80\r\n");
        QTest::newRow("UTF-8 with byte-order mark") << QByteArray("\xef\xbb\xbf<P>\r\n") << "x"
                                                    << QByteArray("\xef\xbb\xbf<P>\r\nx");
        QTest::newRow("CR alone") << QByteArray("a\rb\r") << "c\r\n" << QByteArray("a\rb\rc\r");
    }

    void roundTripKeepsTheFilesWays()
    {
        QFETCH(QByteArray, original);
        QFETCH(QString, typed);
        QFETCH(QByteArray, expected);
        frmDoc *doc = titledInFolder(original);
        QVERIFY(doc);
        typeAtEnd(doc, typed);
        QVERIFY(SaveDocument());
        QCOMPARE(fileBytes(doc->Caption()), expected);
        QVERIFY(scripted().messages.isEmpty());
    }
};

PW_ISOLATED_TEST_MAIN(TestSaveDocument)

#include "tst_save_document.moc"
