#include "test_support.h"
#include "../files/lock_holder.h"

#include "core/app_state.h"
#include "core/status_presenter.h"
#include "files/open_document.h"
#include "files/previous_lists.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"

#include <QAction>
#include <QLabel>
#include <QMdiArea>
#include <QProgressBar>

#include <optional>

using namespace pw;

// Opening files in all the ways in, the import and the anchor names.
class TestOpenDocument : public ProgramTest
{
    Q_OBJECT

    QString longPage(qsizetype size)
    {
        QByteArray bytes;
        bytes.reserve(size + 64);
        while (bytes.size() < size)
            bytes += "<P>Some text of a long page, line after line.</P>\r\n";
        return write(QStringLiteral("long%1.html").arg(size), bytes);
    }
    // What must hold after any failed open.
    void verifyNothingLeftOf(int slot)
    {
        QVERIFY(ws().slots.isFree(slot));
        QVERIFY(!FileHandles::instance().isOpen(slot));
        QCOMPARE(passLeftovers(main()), QString());
    }

private Q_SLOTS:
    void openedFileIsColouredCleanAndHeld()
    {
        const QString path = write("page.html", "<HTML>\n<B>bold</B> text\n</HTML>\n");
        ws().history.Open = QStringLiteral("/srv/last.html");
        CommonDialog seen;
        platform().dialogs.enqueue([&seen, path](CommonDialog::Kind, CommonDialog &d) {
            seen = d;
            d.FileName = path;
            return ErrorCode::None;
        });
        ws().SetMarkupToolsHidden(true);
        QVERIFY(program->trigger(nullptr, "mnuFileOpen"));

        QCOMPARE(platform().dialogsShown, QList<CommonDialog::Kind>{CommonDialog::Kind::Open});
        QCOMPARE(seen.FileName, QStringLiteral("/srv/last.html"));
        frmDoc *doc = program->current();
        QVERIFY(doc);
        QCOMPARE(program->captions(), QStringList{path});
        QCOMPARE(doc->Text->Text(), QStringLiteral("<HTML>\r\n<B>bold</B> text\r\n</HTML>\r\n"));
        QCOMPARE(fontClasses(*doc->Text), QStringLiteral("hhhhhh//hhhtttthhhhttttt//hhhhhhh//"));
        QCOMPARE(doc->state().format().lineEnd, LineEndStyle::Lf);
        QVERIFY(!doc->state().Dirty());
        QVERIFY(!doc->Text->CanUndo());
        QVERIFY(!ws().markupToolsHidden());
        QCOMPARE(FileHandles::instance().path(doc->slot()), path);
        QVERIFY(!FileHandles::instance().isLocked(doc->slot()));
        QCOMPARE(ws().history.Open, path);
        QCOMPARE(ws().previousFiles(), QStringList{path});
        QVERIFY(platform().messages.isEmpty());
        QCOMPARE(passLeftovers(main()), QString());
    }

    // With colouring and Uppercase on, the tags are upper-cased as the pass would do it, before the
    // text goes in: not in comments or quoted values, and not at all behind a comment left open.
    void uppercaseOnOpen_data()
    {
        QTest::addColumn<bool>("highlight");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("text");
        QTest::newRow("tags outside quotes") << true << QByteArray("<a href=\"x.htm\">y</a>")
                                             << "<A HREF=\"x.htm\">y</A>";
        QTest::newRow("comments kept") << true << QByteArray("<!-- <b> --><i>x\n</i>") << "<!-- <b> --><I>x\r\n</I>";
        QTest::newRow("a tag open to the end") << true << QByteArray("x <b c=\"d\"") << "x <B C=\"d\"";
        QTest::newRow("a comment left open") << true << QByteArray("<b><!-- <i>") << "<b><!-- <i>";
        QTest::newRow("colouring off") << false << QByteArray("<b>x</b>") << "<b>x</b>";
    }
    void uppercaseOnOpen()
    {
        QFETCH(bool, highlight);
        QFETCH(QByteArray, content);
        QFETCH(QString, text);
        ws().options.setChecked(Option::Highlight, highlight);
        ws().options.setChecked(Option::UHTML, true);
        frmDoc *doc = OpenFromHandOver(ws(), write("upper.html", content));
        QVERIFY(doc);
        QCOMPARE(doc->Text->Text(), text);
        QVERIFY(!doc->state().Dirty());
        QVERIFY(!doc->Text->CanUndo());
    }

    // With LockFiles on, the opened file is locked too.
    void commandLinePathIsMadeAbsoluteKeepingLinks()
    {
        ws().options.setChecked(Option::LockFiles, true);
        QVERIFY(QFile::link(write("rel.html", "<P>r</P>"), path("link.html")));
        const QString old = QDir::currentPath();
        QVERIFY(QDir::setCurrent(temp->path()));
        frmDoc *doc = OpenFromCommandLine(ws(), QStringLiteral("link.html"));
        QDir::setCurrent(old);
        QVERIFY(doc);
        QCOMPARE(doc->Caption(), path("link.html"));
        QCOMPARE(doc->Text->Text(), QStringLiteral("<P>r</P>"));
        QVERIFY(FileHandles::instance().isLocked(doc->slot()));
    }

    // An open that makes no new window: a failure leaves the slot free, a page open already comes
    // to the front, a folder or a binary file answered No opens nothing.
    void openThatMakesNoNewWindow_data()
    {
        QTest::addColumn<QString>("way");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("message"); // %1 stands for the path; empty: none
        QTest::addColumn<int>("style");
        const QString couldNot = QStringLiteral("Could not open the file [%1] Due to the following error!\r\n\r\n");
        const QString missing = couldNot + "File not found", here = "open here", elsewhere = "held elsewhere";
        const QString denied = "Permission denied!", Denied = "Permission Denied!";
        const QString folder = "%1 is a folder, not a file.";
        const QString binary = "%1 does not look like a text file. Open it anyway?";
        const int exclamation = MsgStyle::Exclamation, question = MsgStyle::YesNo + MsgStyle::Question;
        QTest::newRow("dialog, open already") << "dialog" << here << QString() << 0;
        QTest::newRow("dialog, missing file") << "dialog" << "missing" << missing << exclamation;
        QTest::newRow("dialog, a folder") << "dialog" << "folder" << folder << exclamation;
        QTest::newRow("dialog, binary answered No") << "dialog" << "binary" << binary << question;
        QTest::newRow("command line, held by another copy") << "command line" << elsewhere << denied << exclamation;
        QTest::newRow("command line, missing file") << "command line" << "missing" << missing << exclamation;
        QTest::newRow("command line, open already") << "command line" << here << QString() << 0;
        QTest::newRow("command line, a folder") << "command line" << "folder" << folder << exclamation;
        QTest::newRow("hand-over, open already") << "hand-over" << here << QString() << 0;
        QTest::newRow("hand-over, through a link") << "hand-over" << "link" << QString() << 0;
        QTest::newRow("hand-over, held by another copy") << "hand-over" << elsewhere << Denied << exclamation;
        QTest::newRow("hand-over, a folder") << "hand-over" << "folder" << folder << exclamation;
        QTest::newRow("previous, open already") << "previous" << here << QString() << 0;
        QTest::newRow("previous, binary answered No") << "previous" << "binary" << binary << question;
        QTest::newRow("recovery, missing file") << "recover" << "missing" << missing << exclamation;
    }
    void openThatMakesNoNewWindow()
    {
        QFETCH(QString, way);
        QFETCH(QString, fault);
        QFETCH(QString, message);
        QFETCH(int, style);
        QString file = write("page.html", fault == "binary" ? QByteArray("GIF89a\0\0\x01\0", 10) : QByteArray("<P>held</P>"));
        std::optional<Holder> holder;
        QStringList before;
        frmDoc *first = nullptr;
        if (fault == "open here" || fault == "link") {
            QVERIFY(first = OpenFromHandOver(ws(), file));
            program->newDocument(); // in front of it
            ws().status.ClearStatusText();
            before = program->captions();
            if (fault == "link") {
                QVERIFY(QFile::link(file, path("link.html")));
                file = path("link.html");
            }
        } else if (fault == "held elsewhere") {
            QCOMPARE(holder.emplace(file, false).answer(), QByteArray("locked"));
        } else if (fault == "binary") {
            AddPreviousFile(ws(), file);
            platform().answers.enqueue(MsgAnswer::No);
        } else {
            file = fault == "missing" ? path("gone.html") : temp->path();
        }
        platform().messages.clear();
        const int slot = program->captions().size() + 1;

        platform().chooseFile(file); // for the dialog
        frmDoc *doc = way == "dialog"         ? OpenFromDialog(ws())
                    : way == "command line" ? OpenFromCommandLine(ws(), file)
                    : way == "hand-over"    ? OpenFromHandOver(ws(), file)
                    : way == "previous"     ? OpenPrevious(ws(), 1)
                                            : RecoverFile(ws(), file, QStringLiteral("Untitled: (Recovered File: 1)"));
        QCOMPARE(doc, first);
        if (message.isEmpty())
            QVERIFY(platform().messages.isEmpty());
        else
            verifyMessage(message.contains("%1") ? message.arg(file) : message, style);
        QCOMPARE(program->captions(), before);
        if (first)
            QCOMPARE(program->current(), first);
        verifyNothingLeftOf(slot);
        QCOMPARE(ws().previousFiles(), first || fault == "binary" ? QStringList{path("page.html")} : before);
        // The slot is taken again by the next document.
        QCOMPARE(program->newDocument()->slot(), slot);
    }

    // What a user sees of a file's encoding, picks another one, and what a save then writes.
    void encodingShownAndChosen_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<QString>("commands"); // items triggered after the open, by ","
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("panel");
        QTest::addColumn<QByteArray>("saved"); // after "€" is added at the end and saved; null: no save
        QTest::addColumn<QString>("message");
        const QByteArray meta = "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=ISO-8859-1\">";
        const QList<int> none, yes{MsgAnswer::Yes};
        const auto utf16le = [](const QByteArray &ascii) {
            QByteArray bytes;
            for (const char c : ascii)
                bytes += QByteArray(1, c) + '\0';
            return bytes;
        };
        // Tags in upper case, as Convert HTML to Uppercase leaves them, but where the file isn't text.
        const QByteArray utf16 = utf16le("<p>x</p>");
        QTest::newRow("Latin-1 with its charset") << meta + "caf\xE9" << none << QString()
                                                   << meta + QStringLiteral("caf\u00E9") << "ISO-8859-1" << QByteArray() << QString();
        QTest::newRow("nearly UTF-8 says so") << QByteArray("caf\xC3\xA9 na\xEFve") << none << QString()
                                              << QStringLiteral("caf\u00C3\u00A9 na\u00EFve")
                                              << "not valid UTF-8, opened as Windows-1252" << QByteArray() << QString();
        QTest::newRow("UTF-16 with its mark") << "\xFF\xFE" + utf16 << none << QString() << "<P>x</P>" << "UTF-16 LE"
                                              << "\xFF\xFE" + utf16le("<P>x</P>") + "\xAC\x20" << QString();
        QTest::newRow("ISO-8859-15 picked for a euro that showed wrong")
            << QByteArray("<P>\xA4</P>") << none << "mnuFileEncoding(4)" << QStringLiteral("<P>\u20AC</P>") << "ISO-8859-15"
            << QByteArray("<P>\xA4</P>\xA4") << QString();
        QTest::newRow("binary answered Yes: nothing rewritten") << utf16 << yes << QString() << QString::fromLatin1(utf16)
                                                                << "UTF-8" << QByteArray() << QString();
        QTest::newRow("UTF-16 without a mark, picked") << utf16 << yes << "mnuFileEncoding(5)" << "<p>x</p>" << "UTF-16 LE"
                                                       << utf16 + "\xAC\x20" << QString();
        QTest::newRow("a change is asked about first, No") << QByteArray("<P>\xA4</P>") << QList<int>{MsgAnswer::No}
                                                           << "edit,mnuFileEncoding(4)" << QStringLiteral("<P>\u00A4</P>!")
                                                           << "Windows-1252" << QByteArray() << QString();
        QTest::newRow("not valid in the encoding picked") << QByteArray("<P>\xE9</P>") << none << "mnuFileEncoding(1)"
                                                          << QStringLiteral("<P>\u00E9</P>") << "Windows-1252" << QByteArray()
                                                          << "%1 is not valid UTF-8; it stays as it was.";
        QTest::newRow("a character the encoding can't hold, No") // nothing is written
            << QByteArray("<P>\xE9</P>") << QList<int>{MsgAnswer::No} << "mnuFileEncoding(3)" << QStringLiteral("<P>\u00E9</P>")
            << "ISO-8859-1" << QByteArray("<P>\xE9</P>")
            << "The text holds a character that ISO-8859-1 can't store (U+20AC on line 1). Save it as UTF-8 to keep "
               "it.\r\n\r\nSave the file as UTF-8?";
    }
    void encodingShownAndChosen()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QList<int>, answers);
        QFETCH(QString, commands);
        QFETCH(QString, text);
        QFETCH(QString, panel);
        QFETCH(QByteArray, saved);
        QFETCH(QString, message);
        ws().options.setChecked(Option::UHTML, true);
        const QString file = write("page.html", bytes);
        for (const int answer : answers)
            platform().answers.enqueue(answer);
        frmDoc *doc = OpenFromHandOver(ws(), file);
        QVERIFY(doc);
        for (const QString &command : commands.split(',', Qt::SkipEmptyParts)) {
            if (command == "edit") {
                doc->Text->setSelStart(doc->Text->TextLength());
                doc->Text->setSelText("!");
            } else {
                QVERIFY(program->trigger(doc, command));
            }
        }
        QCOMPARE(doc->Text->Text(), text);
        QCOMPARE(main().Panel4->text(), panel);
        QCOMPARE(program->item(doc, "mnuFileEncoding(" + QString::number(int(doc->state().format().encoding) + 1) + ")")->isChecked(), true);
        if (!saved.isNull()) {
            doc->Text->setSelStart(doc->Text->TextLength());
            doc->Text->setSelText(QStringLiteral("\u20AC"));
            QVERIFY(program->trigger(doc, "mnuFileSave"));
        }
        QCOMPARE(fileBytes(file), saved.isNull() ? bytes : saved);
        if (!message.isEmpty())
            QCOMPARE(platform().messages.last().text, message.contains("%1") ? message.arg(file) : message);
        QCOMPARE(passLeftovers(main()), QString());
    }

    void missingPreviousFileIsDroppedAndTheNextOpensItsOwn()
    {
        const QString a = write("a.html", "<P>a</P>");
        const QString b = write("b.html", "<P>b</P>");
        const QString c = write("c.html", "<P>c</P>");
        ws().setPreviousFiles({a, b, c});
        QVERIFY(QFile::remove(b));

        QVERIFY(program->trigger(nullptr, "mnuFilePrevious(2)"));
        verifyMessage(b + "\r\nNot found!", MsgStyle::OkOnly);
        QVERIFY(program->captions().isEmpty());
        verifyNothingLeftOf(1);
        QCOMPARE(ws().previousFiles(), (QStringList{a, c}));

        QVERIFY(program->trigger(nullptr, "mnuFilePrevious(2)"));
        QCOMPARE(program->captions(), QStringList{c});
        QCOMPARE(program->current()->Text->Text(), QStringLiteral("<P>c</P>"));
        QCOMPARE(ws().previousFiles(), (QStringList{c, a}));
        QCOMPARE(platform().messages.size(), 1);
    }

    void anchorNames_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QStringList>("names");
        QString many = QStringLiteral("<P>");
        QStringList first20;
        for (int n = 1; n <= 25; ++n) {
            many += QStringLiteral("<A NAME=\"n%1\">x</A>\n").arg(n);
            if (n <= 20)
                first20 << QStringLiteral("n%1").arg(n);
        }
        QTest::newRow("25 anchors keep 20") << many << first20;
        QTest::newRow("anchor at position 0 is not found")
            << "<A NAME=\"top\">x</A><A NAME=\"two\">" << QStringList{"two"};
        QTest::newRow("case is ignored") << "<P><a name=\"low\">" << QStringList{"low"};
        QTest::newRow("unclosed name is none") << "<P><A NAME=\"open>\nmore text" << QStringList{};
        QTest::newRow("no anchors") << "<P>plain</P>" << QStringList{};
        QTest::newRow("a name across a line end") << "<P><A NAME=\"a\nb\">" << QStringList{"a\r\nb"};
        QTest::newRow("the next search starts behind the last hit")
            << "<P><A NAME=\"<a name=\"X\">" << QStringList{"<a name=", "X"};
    }
    void anchorNames()
    {
        QFETCH(QString, content);
        QFETCH(QStringList, names);
        frmDoc *doc = opened("anchors.html", content.toUtf8());
        QVERIFY(doc);
        QStringList found;
        for (const QString &name : doc->state().LocalNames)
            if (!name.isEmpty())
                found << name;
        QCOMPARE(found, names);
        QCOMPARE(doc->Text->SelStart(), 0);
        QCOMPARE(doc->Text->SelLength(), 0);
    }

    // Escape while a large file is decoded, and while its text goes into the window.
    void escapeCancelsALargeOpen_data()
    {
        QTest::addColumn<bool>("whileLoading");
        QTest::newRow("while decoding") << false;
        QTest::newRow("while the text goes in") << true;
    }
    void escapeCancelsALargeOpen()
    {
        QFETCH(bool, whileLoading);
        const QString path = longPage(whileLoading ? 4 << 20 : 50 << 20);
        QVERIFY(!path.isEmpty());
        bool stripShown = false;
        QString status;
        platform().onEscapePoll = [&](int poll) {
            const bool windowMade = !main().mdiArea->subWindowList().isEmpty();
            if (whileLoading ? windowMade && platform().escapeAtPoll.isEmpty() : poll == 2) {
                stripShown = main().Picture1->isVisible() && (whileLoading || main().ProgressBar->value() > 0);
                status = ws().status.StatusText();
                platform().escapeAtPoll = {poll};
            }
        };
        QVERIFY(!OpenFromHandOver(ws(), path));
        QVERIFY(stripShown);
        QCOMPARE(status, " Opening " + path);
        QTRY_VERIFY(program->captions().isEmpty());
        QVERIFY(platform().messages.isEmpty());
        verifyNothingLeftOf(1); // the file is free again
    }

    // A cancelled dialog changes nothing.
    void withoutHistoryTheDialogStartsBesideThePageInFront()
    {
        QVERIFY(QDir(temp->path()).mkdir("site"));
        const QString path = write("site/page.html", "<P>x</P>");
        QVERIFY(OpenFromHandOver(ws(), path));
        ws().history.Open.clear();
        CommonDialog seen;
        platform().dialogs.enqueue([&seen](CommonDialog::Kind, CommonDialog &d) {
            seen = d;
            return ErrorCode::Cancel;
        });
        program->button("imgFileOpen")->trigger();
        QCOMPARE(seen.InitDir, QFileInfo(path).absolutePath());
        QCOMPARE(seen.FileName, QString());
        QCOMPARE(program->captions(), QStringList{path});
        QCOMPARE(ws().slots.count(), 1);
        QVERIFY(platform().messages.isEmpty());
    }

    // The text goes in at the caret, uncoloured; the document keeps its name and holds nothing.
    // Only a file locked elsewhere is refused.
    void import_data()
    {
        QTest::addColumn<bool>("locked");
        QTest::newRow("a free file") << false;
        QTest::newRow("a file locked elsewhere") << true;
    }
    void import()
    {
        QFETCH(bool, locked);
        frmDoc *doc = program->newDocument();
        doc->Text->setText(QStringLiteral("<P></P>"));
        doc->state().setDirty(false);
        doc->Text->setSelStart(3);
        const QString path = write("part.txt", "<B>x</B>\n");
        std::optional<Holder> holder;
        if (locked)
            QCOMPARE(holder.emplace(path, true).answer(), QByteArray("locked"));
        platform().chooseFile(path);
        QVERIFY(program->trigger(doc, "mnuFileImport"));

        if (locked)
            verifyMessage("Permission denied!", MsgStyle::Exclamation);
        QCOMPARE(doc->Text->Text(), locked ? QStringLiteral("<P></P>") : QStringLiteral("<P><B>x</B>\r\n</P>"));
        QCOMPARE(doc->state().Dirty(), !locked);
        QVERIFY(doc->isUntitled());
        QVERIFY(!FileHandles::instance().isOpen(doc->slot()));
        QCOMPARE(passLeftovers(main()), QString());
        if (!locked)
            QCOMPARE(fontClasses(*doc->Text).mid(3, 8), QStringLiteral("tttttttt"));
    }
};

PW_TEST_MAIN(TestOpenDocument)
#include "tst_open_document.moc"
