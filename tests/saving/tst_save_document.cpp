#include "saving_support.h"

#include "files/previous_lists.h"

using namespace pw;

class TestSaveDocument : public ProgramTest
{
    Q_OBJECT

    // The document in a folder of its own, so that the folder can be taken away or locked.
    frmDoc *titledInFolder(const QByteArray &bytes)
    {
        return QDir().mkpath(path("site")) ? opened("site/page.html", bytes) : nullptr;
    }

private Q_SLOTS:
    void forceExtension_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("filterIndex");
        QTest::addColumn<QString>("separator");
        QTest::addColumn<QString>("expected");
        QTest::newRow("htm becomes html") << "C:\\site\\page.htm" << 1 << "\\" << "C:\\site\\page.html";
        QTest::newRow("no extension gets htm") << "/home/u/page" << 2 << "/" << "/home/u/page.htm";
        QTest::newRow("any stands as typed") << "/home/u/page.htm" << 5 << "/" << "/home/u/page.htm";
        QTest::newRow("any without extension") << "/home/u/page" << 5 << "/" << "/home/u/page";
        QTest::newRow("dotted folder, backslash") << "C:\\my.site\\page" << 1 << "\\" << "C:\\my.site\\page.html";
        QTest::newRow("dotted folder and extension") << "/my.site/page.txt" << 1 << "/" << "/my.site/page.html";
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
        QTest::newRow("untitled") << true;
        QTest::newRow("named document") << false;
    }
    void dialogStartsBesideTheLastOpenedFile()
    {
        QFETCH(bool, untitled);
        const QString initDir = path("site/");
        frmDoc *doc = untitled ? program->newDocument() : titledInFolder("<P>\r\n");
        QVERIFY(doc);
        ws().history.Open = path("site/old.html");
        ws().CMDialog1.FilterIndex = 3; // left by an earlier dialog
        CommonDialog seen;
        platform().dialogs.enqueue([&seen](CommonDialog::Kind, CommonDialog &d) {
            seen = d;
            return ErrorCode::Cancel;
        });
        typeAtEnd(doc, "typed");

        QVERIFY(!SaveDocumentAs(ws(), *doc));
        QCOMPARE(platform().dialogsShown, QList<CommonDialog::Kind>{CommonDialog::Kind::Save});
        QCOMPARE(seen.InitDir, initDir);
        QCOMPARE(seen.FileName, untitled ? initDir + "Untitled" : doc->Caption());
        QCOMPARE(seen.FilterIndex, 1);
        QVERIFY(doc->state().Dirty());
    }

    // A new document is written as UTF-8 with CR LF line ends.
    void firstSaveNamesTheDocument()
    {
        ws().history.Open = path("old.html");
        frmDoc *doc = program->newDocument();
        typeAtEnd(doc, QString::fromUtf8("<P>caf\xc3\xa9</P>\r\n<P>two</P>"));
        platform().chooseFile(path("page.htm"), 1);

        QVERIFY(program->trigger(doc, "mnuFileSave"));
        const QString saved = path("page.html");
        QCOMPARE(fileBytes(saved), QByteArray("<P>caf\xc3\xa9</P>\r\n<P>two</P>"));
        QVERIFY(!QFile::exists(path("page.htm")));
        QCOMPARE(doc->Caption(), saved);
        QVERIFY(!doc->isUntitled());
        QVERIFY(!doc->state().Dirty());
        QVERIFY(doc->state().Saved());
        QCOMPARE(PreviousFile(ws(), 1), saved);
        QCOMPARE(FileHandles::instance().path(doc->slot()), saved);
        QCOMPARE(ws().history.Open, path("old.html"));
        QVERIFY(platform().messages.isEmpty());
        QCOMPARE(passLeftovers(main()), QString());
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
        QVERIFY(writeFile(target, "old"));
        frmDoc *doc = program->newDocument();
        typeAtEnd(doc, "new");
        platform().chooseFile(target, 1);
        platform().answers.enqueue(answer);

        const bool yes = answer == MsgAnswer::Yes;
        QCOMPARE(SaveDocument(ws(), *doc), yes);
        verifyMessage(target + "\r\nReplace existing file?", MsgStyle::YesNo + MsgStyle::Question);
        QCOMPARE(fileBytes(target), yes ? QByteArray("new") : QByteArray("old"));
        QCOMPARE(doc->isUntitled(), !yes);
        QCOMPARE(doc->state().Dirty(), !yes);
        QCOMPARE(doc->state().Saved(), yes);
        QCOMPARE(FileHandles::instance().isOpen(doc->slot()), yes);
    }

    // To its own name Save As is a plain save; to another name the document follows the new file
    // and the old one stays as it was.
    void saveAs_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("its own name") << "site/page.html";
        QTest::newRow("another name") << "site/copy.html";
    }
    void saveAs()
    {
        QFETCH(QString, name);
        frmDoc *doc = titledInFolder("<P>old</P>\r\n");
        QVERIFY(doc);
        const QString old = doc->Caption();
        const QString target = path(name);
        AddPreviousFile(ws(), path("other.html"));
        typeAtEnd(doc, "<P>new</P>\r\n");
        platform().chooseFile(target);
        platform().answers.enqueue(MsgAnswer::Yes); // replace its own file

        QVERIFY(program->trigger(doc, "mnuFileSaveAs"));
        QCOMPARE(fileBytes(target), QByteArray("<P>old</P>\r\n<P>new</P>\r\n"));
        if (target != old)
            QCOMPARE(fileBytes(old), QByteArray("<P>old</P>\r\n"));
        QCOMPARE(platform().messages.size(), target == old ? 1 : 0);
        QCOMPARE(doc->Caption(), target);
        QVERIFY(!doc->state().Dirty());
        QVERIFY(doc->state().Saved());
        // Only a new name goes on the list; the document holds the file it was saved to.
        QCOMPARE(PreviousFile(ws(), 1), target == old ? path("other.html") : target);
        QCOMPARE(FileHandles::instance().path(doc->slot()), target);
    }

    void saveAsOntoAFileAnotherWindowHolds()
    {
        frmDoc *b = opened("b.html", "B");
        frmDoc *a = opened("a.html", "A");
        QVERIFY(a && b);
        typeAtEnd(a, "typed");
        platform().chooseFile(path("b.html"), 1);

        QVERIFY(!SaveDocumentAs(ws(), *a));
        verifyMessage("Permission Denied!\r\nThe file " + path("b.html") + " is open in another window.",
                      MsgStyle::Exclamation);
        QCOMPARE(fileBytes(path("b.html")), QByteArray("B"));
        QCOMPARE(a->Caption(), path("a.html"));
        QVERIFY(a->state().Dirty());
    }

    // Why a write fails is the file layer's; here the document keeps all it had.
    void failedWriteKeepsTheDocument()
    {
        frmDoc *doc = titledInFolder("<P>old</P>\r\n");
        QVERIFY(doc);
        const QString file = doc->Caption();
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        typeAtEnd(doc, "<P>typed</P>");
        const QString text = doc->Text->Text();

        QVERIFY(program->button("imgFileSave")->isEnabled());
        program->button("imgFileSave")->trigger();
        verifyMessage("Permission Denied!\r\nThe file " + file + " is read-only.", MsgStyle::Exclamation);
        QVERIFY(doc->state().Dirty());
        QVERIFY(!doc->state().Saved());
        QCOMPARE(doc->Text->Text(), text);
        QCOMPARE(doc->Caption(), file);
        QCOMPARE(passLeftovers(main()), QString());
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
        const bool yes = answer == MsgAnswer::Yes;
        frmDoc *doc = titledInFolder("caf\xe9\r\n");
        QVERIFY(doc);
        QCOMPARE(doc->state().format().encoding, TextEncoding::Windows1252);
        typeAtEnd(doc, QString::fromUtf8("\xce\xa9"));
        platform().answers.enqueue(answer);

        QCOMPARE(SaveDocument(ws(), *doc), yes);
        QCOMPARE(platform().messages.size(), 1);
        QVERIFY(platform().messages[0].text.contains("U+03A9"));
        QCOMPARE(MsgStyle::buttonsOf(platform().messages[0].style), MsgStyle::YesNo);
        QCOMPARE(fileBytes(doc->Caption()), QByteArray(yes ? "caf\xc3\xa9\r\n\xce\xa9" : "caf\xe9\r\n"));
        QCOMPARE(doc->state().format().encoding, yes ? TextEncoding::Utf8 : TextEncoding::Windows1252);
        QCOMPARE(doc->state().Dirty(), !yes);
        QCOMPARE(passLeftovers(main()), QString());
    }

    void roundTripKeepsTheFilesWays_data()
    {
        QTest::addColumn<QByteArray>("original");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("LF, UTF-8") << QByteArray("<P>one</P>\n<P>\xc3\xa9</P>\n") << "<P>three</P>\r\n"
                                   << QByteArray("<P>one</P>\n<P>\xc3\xa9</P>\n<P>three</P>\n");
        QTest::newRow("CR LF, Windows-1252") << QByteArray("caf\xe9\r\n")
                                             << QString::fromUtf8("na\xc3\xafve \xe2\x82\xac\r\n")
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
        QVERIFY(SaveDocument(ws(), *doc));
        QCOMPARE(fileBytes(doc->Caption()), expected);
        QVERIFY(platform().messages.isEmpty());
    }
};

PW_TEST_MAIN(TestSaveDocument)
#include "tst_save_document.moc"
