#include "test_support.h"
#include "../files/lock_holder.h"

#include "core/app_state.h"
#include "core/status_presenter.h"
#include "files/open_document.h"
#include "files/previous_lists.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"

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
        QCOMPARE(doc->state().format.lineEnd, LineEndStyle::Lf);
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

    void failedOpenLeavesTheSlotFree_data()
    {
        QTest::addColumn<QString>("way");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("message"); // %1 stands for the path
        const QString couldNot = QStringLiteral("Could not open the file [%1] Due to the following error!\r\n\r\n");
        const QString missing = couldNot + "File not found", here = "held here", elsewhere = "held elsewhere";
        const QString denied = "Permission denied!", Denied = "Permission Denied!";
        QTest::newRow("dialog, held by another document") << "dialog" << here << denied;
        QTest::newRow("dialog, missing file") << "dialog" << "missing" << missing;
        QTest::newRow("command line, held by another copy") << "command line" << elsewhere << denied;
        QTest::newRow("command line, missing file") << "command line" << "missing" << missing;
        QTest::newRow("hand-over, held by another document") << "hand-over" << here << Denied;
        QTest::newRow("hand-over, held by another copy") << "hand-over" << elsewhere << Denied;
        QTest::newRow("hand-over, a folder") << "hand-over" << "folder" << couldNot + "Path/File access error";
        QTest::newRow("previous, held by another document") << "previous" << here << denied;
        QTest::newRow("recovery, missing file") << "recover" << "missing" << missing;
    }
    void failedOpenLeavesTheSlotFree()
    {
        QFETCH(QString, way);
        QFETCH(QString, fault);
        QFETCH(QString, message);
        QString file = write("page.html", "<P>held</P>");
        std::optional<Holder> holder;
        QStringList before;
        if (fault == "held here") {
            QVERIFY(OpenFromHandOver(ws(), file));
            before = program->captions();
        } else if (fault == "held elsewhere") {
            QCOMPARE(holder.emplace(file, false).answer(), QByteArray("locked"));
        } else {
            file = fault == "missing" ? path("gone.html") : temp->path();
        }
        platform().messages.clear();
        const int slot = before.size() + 1;

        platform().chooseFile(file); // for the dialog
        frmDoc *doc = way == "dialog"         ? OpenFromDialog(ws())
                    : way == "command line" ? OpenFromCommandLine(ws(), file)
                    : way == "hand-over"    ? OpenFromHandOver(ws(), file)
                    : way == "previous"     ? OpenPrevious(ws(), 1)
                                            : RecoverFile(ws(), file, QStringLiteral("Untitled: (Recovered File: 1)"));
        QVERIFY(!doc);
        verifyMessage(message.contains("%1") ? message.arg(file) : message, MsgStyle::Exclamation);
        QCOMPARE(program->captions(), before);
        verifyNothingLeftOf(slot);
        QCOMPARE(ws().previousFiles(), before);
        // The slot is taken again by the next document.
        QCOMPARE(program->newDocument()->slot(), slot);
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
