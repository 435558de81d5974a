#include "isolated_main.h"
#include "test_support.h"

#include "core/settings_store.h"
#include "core/status_line.h"
#include "files/open_document.h"
#include "files/previous_lists.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMdiArea>
#include <QMenu>
#include <QProcess>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTest>

using namespace pw;

namespace {
// Another copy of the program holding a file, in a process of its own.
class Holder
{
public:
    Holder(const QString &path, bool lock)
    {
        m_process.start(QStringLiteral(LOCK_HOLDER),
                        lock ? QStringList{path, QStringLiteral("lock")} : QStringList{path});
    }
    ~Holder()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished(10000);
    }
    QByteArray answer()
    {
        if (!m_process.waitForStarted(10000))
            return "not started";
        while (!m_process.canReadLine())
            if (!m_process.waitForReadyRead(10000))
                return "no answer";
        return m_process.readLine().trimmed();
    }

private:
    QProcess m_process;
};

QString couldNotOpen(const QString &path, const QString &error)
{
    return QStringLiteral("Could not open the file [%1] Due to the following error!\r\n\r\n%2").arg(path, error);
}

} // namespace

// Opening files in all the ways in, the import and the anchor names.
class TestOpenDocument : public ProgramTest
{
    Q_OBJECT

    QTemporaryDir *dir = nullptr;

    ScriptedPlatform &platform() { return program->platform.scripted; }
    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString path = dir->filePath(name);
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
            return QString();
        return path;
    }
    QAction *master(const QString &name)
    {
        for (QMenu *menu : main().mainMenus())
            if (auto *action = menu->findChild<QAction *>(name))
                return action;
        return nullptr;
    }
    // Closes every document and lets the closed windows go.
    void closeAll()
    {
        for (int slot : main().slots().openSlots())
            main().slots().document(slot)->unloadQuietly();
        QTRY_VERIFY(main().slots().openSlots().isEmpty());
    }
    // What must hold after any failed open.
    void verifyNothingLeftOf(int slot)
    {
        QVERIFY(main().slots().state(slot).Free);
        QCOMPARE(main().slots().state(slot).Dirty, False);
        QVERIFY(!FileHandles::instance().isOpen(slot));
        QVERIFY(!QApplication::overrideCursor());
        QVERIFY(StatusText().isEmpty());
        QVERIFY(main().Picture1->isHidden());
    }

private Q_SLOTS:
    void init()
    {
        PreviousEntries = {};
        History = {};
        dir = new QTemporaryDir;
        QVERIFY(dir->isValid());
        startProgram();
    }
    void cleanup()
    {
        endProgram();
        delete dir;
    }

    void openedFileIsColouredCleanAndHeld()
    {
        const QString path = write("page.html", "<HTML>\n<B>bold</B> text\n</HTML>\n");
        History.Open = QStringLiteral("/srv/last.html");
        CommonDialog seen;
        platform().dialogs.enqueue([&seen, path](CommonDialog::Kind, CommonDialog &d) {
            seen = d;
            d.FileName = path;
            return ErrorCode::None;
        });
        main().SetMarkupToolsHidden(true);
        QVERIFY(master("mnuFileOpen")->isEnabled());
        master("mnuFileOpen")->trigger();

        QCOMPARE(platform().dialogsShown, QList<CommonDialog::Kind>{CommonDialog::Kind::Open});
        QCOMPARE(seen.Filter, QStringLiteral("HTML (*.html; *.htm; *.shtml)|*.html; *.htm; *.shtml|Text (*.txt)|*.txt|All (*.*)|*.*"));
        QCOMPARE(seen.DefaultExt, QStringLiteral(".html;*.htm;*.shtml"));
        QCOMPARE(seen.FileName, QStringLiteral("/srv/last.html"));
        QCOMPARE(seen.Flags, 4);

        frmDoc *doc = program->current();
        QVERIFY(doc);
        QCOMPARE(program->captions(), QStringList{path});
        QCOMPARE(doc->Text->Text(), QStringLiteral("<HTML>\r\n<B>bold</B> text\r\n</HTML>\r\n"));
        QCOMPARE(fontClasses(*doc->Text), QStringLiteral("hhhhhh//hhhtttthhhhttttt//hhhhhhh//"));
        QCOMPARE(doc->fileFormat.lineEnd, LineEndStyle::Lf);
        QCOMPARE(main().slots().state(doc->slot()).Dirty, False);
        QVERIFY(!main().button("imgFileSave")->isEnabled());
        QVERIFY(!doc->Text->CanUndo());
        QVERIFY(!main().markupToolsHidden());
        QCOMPARE(FileHandles::instance().path(doc->slot()), path);
        QVERIFY(!FileHandles::instance().isLocked(doc->slot()));
        QCOMPARE(History.Open, path);
        QCOMPARE(PreviousFile(1), path);
        QCOMPARE(doc->item("mnuFilePrevious(1)")->data().toString(), path);
        QVERIFY(platform().messages.isEmpty());
        QVERIFY(StatusText().isEmpty());
        QVERIFY(!QApplication::overrideCursor());
    }

    void cancelledDialogChangesNothing()
    {
        frmDoc *doc = program->newDocument();
        const int slots = main().slots().count();
        platform().cancelDialog();
        main().button("imgFileOpen")->trigger();
        QCOMPARE(platform().dialogsShown.size(), 1);
        QCOMPARE(program->captions(), QStringList{doc->Caption()});
        QCOMPARE(main().slots().count(), slots);
        QVERIFY(platform().messages.isEmpty());
        QVERIFY(PreviousEntries[PreviousKind::Files].isEmpty());
    }

    void commandLinePathIsMadeAbsoluteKeepingLinks()
    {
        const QString path = write("rel.html", "<P>r</P>");
        QVERIFY(QFile::link(path, dir->filePath("link.html")));
        const QString old = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir->path()));
        frmDoc *doc = OpenFromCommandLine(QStringLiteral("link.html"));
        QDir::setCurrent(old);
        QVERIFY(doc);
        QCOMPARE(doc->slot(), 1);
        QCOMPARE(doc->Caption(), dir->filePath("link.html"));
        QCOMPARE(doc->Text->Text(), QStringLiteral("<P>r</P>"));
    }

    void lockFilesLocksTheOpenedFile()
    {
        main().options().setChecked(Option::LockFiles, true);
        const QString path = write("locked.html", "<P>x</P>");
        frmDoc *doc = OpenFromHandOver(path);
        QVERIFY(doc);
        QVERIFY(FileHandles::instance().isLocked(doc->slot()));
    }

    void failedOpenLeavesTheSlotFree_data()
    {
        QTest::addColumn<QString>("way");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("message"); // %1 stands for the path
        QTest::newRow("dialog, held by another document") << "dialog" << "held here" << "Permission denied!";
        QTest::newRow("dialog, held by another copy") << "dialog" << "held elsewhere" << "Permission denied!";
        QTest::newRow("dialog, missing file") << "dialog" << "missing" << couldNotOpen("%1", "File not found");
        QTest::newRow("command line, held by another copy") << "command line" << "held elsewhere" << "Permission denied!";
        QTest::newRow("command line, missing file") << "command line" << "missing" << couldNotOpen("%1", "File not found");
        QTest::newRow("hand-over, held by another document") << "hand-over" << "held here" << "Permission Denied!";
        QTest::newRow("hand-over, a folder") << "hand-over" << "folder" << couldNotOpen("%1", "Path/File access error");
        QTest::newRow("site map, held by another copy") << "site map" << "held elsewhere" << "Permission Denied!";
        QTest::newRow("recovery, missing file") << "recover" << "missing" << couldNotOpen("%1", "File not found");
    }
    void failedOpenLeavesTheSlotFree()
    {
        QFETCH(QString, way);
        QFETCH(QString, fault);
        QFETCH(QString, message);
        QString path = write("page.html", "<P>held</P>");
        std::unique_ptr<Holder> holder;
        QStringList before;
        if (fault == QLatin1String("held here")) {
            QVERIFY(OpenFromHandOver(path));
            before = program->captions();
        } else if (fault == QLatin1String("held elsewhere")) {
            holder = std::make_unique<Holder>(path, false);
            QCOMPARE(holder->answer(), QByteArray("locked"));
        } else if (fault == QLatin1String("missing")) {
            path = dir->filePath("gone.html");
        } else {
            path = dir->path();
        }
        platform().messages.clear();
        const int slot = before.size() + 1;

        bool toldBeforeMessage = false;
        frmDoc *doc = nullptr;
        if (way == QLatin1String("dialog")) {
            platform().chooseFile(path);
            doc = OpenFromDialog();
        } else if (way == QLatin1String("command line")) {
            doc = OpenFromCommandLine(path, [&] { toldBeforeMessage = platform().messages.isEmpty(); });
            QVERIFY(toldBeforeMessage);
            QVERIFY(main().markupToolsHidden());
        } else if (way == QLatin1String("hand-over")) {
            doc = OpenFromHandOver(path);
        } else if (way == QLatin1String("site map")) {
            doc = OpenFromSiteMap(path);
        } else {
            doc = RecoverFile(path);
        }

        QVERIFY(!doc);
        QCOMPARE(platform().messages.size(), 1);
        QCOMPARE(platform().messages[0].text, message.arg(path));
        QCOMPARE(platform().messages[0].style, MsgStyle::Exclamation);
        QCOMPARE(platform().messages[0].title, AppTitle());
        QCOMPARE(program->captions(), before);
        verifyNothingLeftOf(slot);
        QCOMPARE(PreviousEntries[PreviousKind::Files], before);
        // The slot is taken again by the next document.
        QCOMPARE(program->newDocument()->Caption(), QStringLiteral("Untitled: %1").arg(slot));
    }

    void missingPreviousFileIsDroppedAndTheNextOpensItsOwn()
    {
        const QString a = write("a.html", "<P>a</P>");
        const QString b = write("b.html", "<P>b</P>");
        const QString c = write("c.html", "<P>c</P>");
        for (const QString &path : {c, b, a})
            AddPreviousFile(path);
        QVERIFY(QFile::remove(b));

        master("mnuFilePrevious(2)")->trigger();
        QCOMPARE(platform().messages.size(), 1);
        QCOMPARE(platform().messages[0].text, b + "\r\nNot found!");
        QCOMPARE(platform().messages[0].style, MsgStyle::OkOnly);
        QCOMPARE(platform().messages[0].title, AppTitle());
        QVERIFY(program->captions().isEmpty());
        verifyNothingLeftOf(1);
        QCOMPARE(PreviousEntries[PreviousKind::Files], (QStringList{a, c}));

        master("mnuFilePrevious(2)")->trigger();
        QCOMPARE(program->captions(), QStringList{c});
        QCOMPARE(program->current()->Text->Text(), QStringLiteral("<P>c</P>"));
        QCOMPARE(PreviousEntries[PreviousKind::Files], (QStringList{c, a}));
        QCOMPARE(platform().messages.size(), 1);
    }

    void heldPreviousFileStaysOnTheList()
    {
        const QString a = write("a.html", "<P>a</P>");
        frmDoc *doc = OpenFromHandOver(a);
        QVERIFY(doc);
        QVERIFY(program->trigger(doc, "mnuFilePrevious(1)"));
        QCOMPARE(platform().messages.size(), 1);
        QCOMPARE(platform().messages[0].text, QStringLiteral("Permission denied!"));
        QCOMPARE(program->captions(), QStringList{a});
        QCOMPARE(PreviousEntries[PreviousKind::Files], QStringList{a});
    }

    // The list as a user meets it: files opened and closed one after the other.
    void previousListFollowsWhatWasOpened()
    {
        QStringList paths;
        for (int n = 1; n <= 11; ++n) {
            paths << write(QStringLiteral("p%1.html").arg(n), "<P>x</P>");
            platform().chooseFile(paths.last());
            QVERIFY(OpenFromDialog());
            closeAll();
        }
        QStringList expected;
        for (int n = 11; n >= 2; --n)
            expected << paths[n - 1];
        QCOMPARE(PreviousEntries[PreviousKind::Files], expected); // the first is gone

        frmDoc *doc = program->newDocument();
        QVERIFY(program->trigger(doc, "mnuFilePrevious(5)")); // p7
        QCOMPARE(program->current()->Caption(), paths[6]);
        expected.move(4, 0);
        QCOMPARE(PreviousEntries[PreviousKind::Files], expected);
        closeAll();

        QVERIFY(program->trigger(program->newDocument(), "mnuFilePrevious(1)"));
        QCOMPARE(PreviousEntries[PreviousKind::Files], expected); // one entry, not two
        for (int i = 1; i <= 10; ++i)
            QCOMPARE(program->current()->item(QStringLiteral("mnuFilePrevious(%1)").arg(i))->data(),
                     master(QStringLiteral("mnuFilePrevious(%1)").arg(i))->data());
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
        QTest::newRow("name with blanks") << "<P><A NAME=\"a b\">" << QStringList{"a b"};
        QTest::newRow("unclosed name is none") << "<P><A NAME=\"open>\nmore text" << QStringList{};
        QTest::newRow("no anchors") << "<P>plain</P>" << QStringList{};
    }
    void anchorNames()
    {
        QFETCH(QString, content);
        QFETCH(QStringList, names);
        frmDoc *doc = OpenFromHandOver(write("anchors.html", content.toUtf8()));
        QVERIFY(doc);
        QStringList found;
        for (int i = 1; i < DocumentSlots::LocalNameCount; ++i)
            if (const QString name = main().slots().LocalNames(i, doc->slot()); !name.isEmpty())
                found << name;
        QCOMPARE(found, names);
        QCOMPARE(doc->Text->SelStart(), 0);
        QCOMPARE(doc->Text->SelLength(), 0);
    }

    void largeFileShowsProgressAndEscapeCancels()
    {
        QByteArray bytes;
        const QByteArray line = "<P>Some text of a long page, line after line.</P>\r\n";
        bytes.reserve(50 << 20);
        while (bytes.size() < (50 << 20))
            bytes += line;
        const QString path = write("big.html", bytes);
        QVERIFY(!path.isEmpty());
        bool stripShown = false;
        QString status;
        platform().escapeAtPoll = {2};
        platform().onEscapePoll = [&](int poll) {
            if (poll == 2) {
                stripShown = main().Picture1->isVisible() && main().ProgressBar->value() > 0;
                status = StatusText();
            }
        };
        QVERIFY(!OpenFromHandOver(path));
        QVERIFY(stripShown);
        QCOMPARE(status, " Opening " + path);
        QVERIFY(program->captions().isEmpty());
        QVERIFY(platform().messages.isEmpty());
        verifyNothingLeftOf(1);
    }

    void withoutHistoryTheDialogStartsBesideThePageInFront()
    {
        QDir(dir->path()).mkdir("site");
        const QString path = write("site/page.html", "<P>x</P>");
        QVERIFY(OpenFromHandOver(path));
        History.Open.clear();
        CommonDialog seen;
        platform().dialogs.enqueue([&seen](CommonDialog::Kind, CommonDialog &d) {
            seen = d;
            return ErrorCode::Cancel;
        });
        master("mnuFileOpen")->trigger();
        QCOMPARE(seen.InitDir, QFileInfo(path).absolutePath());
        QCOMPARE(seen.FileName, QString());
    }

    void escapeWhileTheTextGoesInCancelsToo()
    {
        QByteArray bytes;
        const QByteArray line = "<P>Line after line of a long page.</P>\r\n";
        while (bytes.size() < (4 << 20))
            bytes += line;
        const QString path = write("long.html", bytes);
        bool stripShown = false;
        // Escape once the window is there, that is while the text is being written into it.
        platform().onEscapePoll = [&](int poll) {
            if (!main().mdiArea->subWindowList().isEmpty() && platform().escapeAtPoll.isEmpty()) {
                stripShown = main().Picture1->isVisible();
                platform().escapeAtPoll = {poll};
            }
        };
        QVERIFY(!OpenFromHandOver(path));
        QVERIFY(stripShown);
        QVERIFY(!platform().escapeAtPoll.isEmpty());
        QTRY_VERIFY(program->captions().isEmpty());
        QVERIFY(platform().messages.isEmpty());
        verifyNothingLeftOf(1);
        // The file is free again: the next open takes it.
        platform().onEscapePoll = nullptr;
        platform().escapeAtPoll.clear();
        QVERIFY(OpenFromHandOver(path));
    }

    void binaryContentOpens()
    {
        QByteArray bytes("<P>\0\x01\xff\xfe\x80 \x00</P>\r\n\x1a", 17);
        frmDoc *doc = OpenFromHandOver(write("binary.bin", bytes));
        QVERIFY(doc);
        QCOMPARE(doc->Text->TextLength(), 17);
        QCOMPARE(doc->Text->Text()[3], QChar(0));
        QCOMPARE(main().slots().state(doc->slot()).Dirty, False);
    }

    void recoveredFileIsDirtyAndHoldsNothing()
    {
        const QString path = write("AutoSaved.001", "<P>saved</P>");
        frmDoc *doc = RecoverFile(path);
        QVERIFY(doc);
        QCOMPARE(doc->Text->Text(), QStringLiteral("<P>saved</P>"));
        QCOMPARE(fontClasses(*doc->Text), QStringLiteral("hhhttttthhhh"));
        QCOMPARE(main().slots().state(doc->slot()).Dirty, True);
        QVERIFY(main().button("imgFileSave")->isEnabled());
        QVERIFY(!FileHandles::instance().isOpen(doc->slot()));
        FileHandles other;
        QCOMPARE(other.open(1, path), ErrorCode::None); // nobody holds it
        QVERIFY(PreviousEntries[PreviousKind::Files].isEmpty());
    }

    void importInsertsAtTheCaretUncoloured()
    {
        frmDoc *doc = program->newDocument();
        doc->Text->setText(QStringLiteral("<P></P>"));
        main().slots().state(doc->slot()).Dirty = False;
        doc->Text->setSelStart(3);
        const QString path = write("part.txt", "<B>x</B>\n");
        platform().chooseFile(path);
        QVERIFY(program->trigger(doc, "mnuFileImport"));

        QCOMPARE(doc->Text->Text(), QStringLiteral("<P><B>x</B>\r\n</P>"));
        QCOMPARE(fontClasses(*doc->Text).mid(3, 8), QStringLiteral("tttttttt"));
        QCOMPARE(main().slots().state(doc->slot()).Dirty, True);
        QCOMPARE(doc->Caption(), QStringLiteral("Untitled: 1"));
        QVERIFY(!FileHandles::instance().isOpen(doc->slot()));
        QVERIFY(PreviousEntries[PreviousKind::Files].isEmpty());
        QVERIFY(StatusText().isEmpty());
        QVERIFY(!QApplication::overrideCursor());
    }

    void importOfALockedFileIsRefused()
    {
        frmDoc *doc = program->newDocument();
        const QString path = write("part.txt", "<B>x</B>");
        Holder holder(path, true);
        QCOMPARE(holder.answer(), QByteArray("locked"));
        platform().chooseFile(path);
        QVERIFY(program->trigger(doc, "mnuFileImport"));
        QCOMPARE(platform().messages.size(), 1);
        QCOMPARE(platform().messages[0].text, QStringLiteral("Permission denied!"));
        QVERIFY(doc->Text->Text().isEmpty());
        QCOMPARE(main().slots().state(doc->slot()).Dirty, False);
    }
};

PW_ISOLATED_TEST_MAIN(TestOpenDocument)
#include "tst_open_document.moc"
