#include "test_support.h"

#include "core/app_state.h"
#include "core/status_presenter.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"
#include "wizards/frame_wizard.h"
#include "wizards/virtual_window.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QRadioButton>
#include <QTabWidget>

#include <sys/stat.h>

using namespace pw;

namespace {

const QString Comment = QStringLiteral("\r\n<!-- Frame structures created using Tessaline Pagewright's Frame Wizard -->\r\n");
const QString Header = QStringLiteral("<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 3.2//EN\">\r\n<HTML>\r\n<HEAD>\r\n"
                                      "<TITLE>Title</TITLE>\r\n</HEAD>\r\n");
const QString DesignStatus = QStringLiteral(" Right click in virtual window to create and size frames.");
const QString TwoColumns = QStringLiteral("<FRAMESET COLS=\"49%,51%\">\r\n    <FRAME>\r\n    <FRAME>\r\n</FRAMESET>\r\n");

} // namespace

// The Frame Wizard driven as a user would: the mouse in the designer, the popup's items, the
// controls found by name.
class TestFrameWizard : public ProgramTest
{
    Q_OBJECT

    frmDoc *doc = nullptr;
    frmFrames *form = nullptr;

    template<typename W = QWidget>
    W *control(const QString &name)
    {
        W *widget = form->findChild<W *>(name);
        if (!widget)
            qWarning("no control %s", qPrintable(name));
        return widget;
    }
    QLineEdit *box(const char *name) { return control<QLineEdit>(QLatin1String(name)); }
    void click(const QString &name) { control<QAbstractButton>(name)->click(); }
    VirtualWindow *designer() { return control<VirtualWindow>(QStringLiteral("pbVirtualWindow")); }

    // The mouse over the designer at a pixel, with these buttons held.
    void mouse(QEvent::Type type, QPoint pixel, Qt::MouseButton button, Qt::MouseButtons held)
    {
        QMouseEvent event(type, QPointF(pixel), designer()->mapToGlobal(QPointF(pixel)), button, held, Qt::NoModifier);
        QApplication::sendEvent(designer(), &event);
    }
    void hover(int x, int y, Qt::MouseButtons held = Qt::NoButton)
    {
        mouse(QEvent::MouseMove, {x, y}, Qt::NoButton, held);
    }
    // A right click at a pixel, then an item of the popup.
    void popup(int x, int y, const char *item)
    {
        hover(x, y);
        mouse(QEvent::MouseButtonPress, {x, y}, Qt::RightButton, Qt::RightButton);
        QVERIFY(form->mnuRightClick->isVisible());
        auto *action = form->findChild<QAction *>(QLatin1String(item));
        QVERIFY(action && action->isEnabled());
        form->mnuRightClick->hide();
        action->trigger();
    }
    // A top row at 990 twips over a lower row cut at 1680.
    void topRowOverTwoColumns()
    {
        popup(200, 66, "mnuSplitH");
        popup(112, 134, "mnuSplitV");
    }
    void openWizard()
    {
        program->button(QStringLiteral("imgFrame"))->trigger();
        form = main().findChild<frmFrames *>();
        QVERIFY(form && form->isVisible());
        form->activateWindow();
        QTRY_VERIFY(form->isActiveWindow());
    }
    void type(QLineEdit *edit, const QString &text)
    {
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }
    void tab(int index) { control<QTabWidget>(QStringLiteral("TabStrip1"))->setCurrentIndex(index); }
    int openDocuments() { return int(ws().slots.openSlots().size()); }

private Q_SLOTS:
    void init()
    {
        startProgram();
        doc = opened(QStringLiteral("index.html"), "<P>\r\n");
        QVERIFY(doc);
        openWizard();
    }

    // A top row over two columns through the designer, saved under a bare name beside the current
    // document; the design's first frame comes back at the next use.
    void topRowOverColumnsSavedBesideTheDocument()
    {
        QCOMPARE(form->windowTitle(), QStringLiteral("Frames Wizard"));
        QCOMPARE(ws().status.StatusText(), DesignStatus);
        QVERIFY(!control(QStringLiteral("Picture1(1)"))->isEnabled());
        topRowOverTwoColumns();
        QVERIFY(control(QStringLiteral("Picture1(1)"))->isEnabled());
        popup(200, 20, "mnuEdit");
        QCOMPARE(control<QTabWidget>(QStringLiteral("TabStrip1"))->currentIndex(), 1);
        QCOMPARE(form->focusWidget(), box("tbFrameName"));
        type(box("tbSource"), QStringLiteral("a.html"));
        QCOMPARE(control<QLabel>(QStringLiteral("lbSourceCheck"))->text(), QStringLiteral("No file at this source."));
        click(QStringLiteral("Command3"));
        control<QTabWidget>(QStringLiteral("TabStrip1"))->setCurrentIndex(0);
        popup(300, 150, "mnuEdit");
        click(QStringLiteral("opScrolling(2)"));
        click(QStringLiteral("Command3"));
        tab(2);
        type(box("tbFileName"), QStringLiteral("frames.html"));
        QSignalSpy progress(main().findChild<QProgressBar *>(QStringLiteral("ProgressBar")), &QProgressBar::valueChanged);
        click(QStringLiteral("Command6"));
        // New document 2, 5, 10; a sixth of 50 per frame; 60 after the frames, 100 at the end.
        QList<int> values;
        for (const QList<QVariant> &change : std::as_const(progress))
            values.append(change.first().toInt());
        QCOMPARE(values, (QList<int>{2, 5, 10, 26, 43, 60, 100}));

        QTRY_VERIFY(!main().findChild<frmFrames *>());
        const QString target = path(QStringLiteral("frames.html"));
        frmDoc *page = ws().current();
        QVERIFY(page && page != doc);
        QCOMPARE(page->Caption(), target);
        const QString expected = Header + Comment
                                 + QStringLiteral("<FRAMESET ROWS=\"33%,67%\">\r\n    <FRAME SRC=\"a.html\">\r\n"
                                                  "    <FRAMESET COLS=\"33%,67%\">\r\n        <FRAME>\r\n"
                                                  "        <FRAME SCROLLING=\"NO\">\r\n    </FRAMESET>\r\n</FRAMESET>\r\n\r\n</HTML>");
        QCOMPARE(page->Text->Text(), expected);
        QCOMPARE(fileBytes(target), expected.toUtf8());
        QCOMPARE(page->Text->SelStart(), 0);
        QVERIFY(!page->state().Dirty());
        QVERIFY(FileHandles::instance().isOpen(page->slot()));
        QCOMPARE(ws().previousFiles().value(0), target);
        const QString classes = fontClasses(*page->Text);
        QVERIFY2(!classes.contains(QLatin1Char('t')) && !classes.contains(QLatin1Char('?')), qPrintable(classes)); // all markup
        QCOMPARE(passLeftovers(main()), QString());

        openWizard();
        QCOMPARE(form->model.count(), 1);
        popup(200, 66, "mnuSplitH");
        popup(200, 20, "mnuEdit");
        QCOMPARE(box("tbSource")->text(), QStringLiteral("a.html"));
        QCOMPARE(form->focusWidget(), box("tbFrameName"));
    }

    // Hovering onto a line shows the arrows and draws it; a drag moves the whole line; past the
    // opposite edge the drag ends and the line stays.
    void hoverAndDragInTheDesigner()
    {
        topRowOverTwoColumns();
        VirtualWindow *window = designer();
        QVERIFY(window->hasMouseTracking());
        hover(200, 67); // a pixel below the line: taken onto it
        QCOMPARE(window->cursor().shape(), Qt::SizeVerCursor);
        QCOMPARE(window->pointer(), 7);
        QCOMPARE(form->model.LastY, qint16(990));
        mouse(QEvent::MouseButtonPress, {200, 67}, Qt::LeftButton, Qt::LeftButton);
        hover(200, 80, Qt::LeftButton);
        QCOMPARE(form->model.frame(1).Bottom, qint16(1200));
        QCOMPARE(form->model.frame(2).Top, qint16(1200));
        QCOMPARE(form->model.frame(3).Top, qint16(1200));
        hover(200, 200, Qt::LeftButton); // past the lower edge of the row below
        QCOMPARE(window->pointer(), 0);
        QCOMPARE(form->model.frame(1).Bottom, qint16(1200));
        QCOMPARE(form->model.frame(2).Top, qint16(1200));
        mouse(QEvent::MouseButtonRelease, {200, 200}, Qt::LeftButton, Qt::NoButton);

        hover(112, 150);
        QCOMPARE(window->cursor().shape(), Qt::SizeHorCursor);
        mouse(QEvent::MouseButtonPress, {112, 150}, Qt::LeftButton, Qt::LeftButton);
        hover(168, 150, Qt::LeftButton);
        QCOMPARE(form->model.frame(2).Right, qint16(2520));
        QCOMPARE(form->model.frame(3).Left, qint16(2520));
        mouse(QEvent::MouseButtonRelease, {168, 150}, Qt::LeftButton, Qt::NoButton);
        hover(168, 20);
        QCOMPARE(window->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(form->model.CurrentFrame, qint16(1));
        QVERIFY(!window->grab().isNull()); // paints from the model without a fault
    }

    void deleteAndTheEditTab()
    {
        popup(200, 20, "mnuDelete");
        verifyMessage(QStringLiteral("Can not delete this frame!"), MsgStyle::Exclamation);
        popup(200, 66, "mnuSplitH");
        popup(200, 150, "mnuEdit");
        type(box("tbFrameName"), QStringLiteral("lower"));
        control<QTabWidget>(QStringLiteral("TabStrip1"))->setCurrentIndex(0);
        popup(200, 150, "mnuEdit");
        QCOMPARE(box("tbFrameName")->text(), QString()); // not stored without Update Frame
        type(box("tbFrameName"), QStringLiteral("lower"));
        click(QStringLiteral("Command3"));
        QCOMPARE(form->model.frame(2).Name, QStringLiteral("lower"));
        click(QStringLiteral("Command5"));
        QCOMPARE(form->model.frame(2).Name, QString());
        QCOMPARE(box("tbFrameName")->text(), QString());
        control<QTabWidget>(QStringLiteral("TabStrip1"))->setCurrentIndex(0);
        popup(200, 150, "mnuDelete");
        QCOMPARE(form->model.frame(1).Bottom, qint16(2970));
        QVERIFY(!control(QStringLiteral("Picture1(1)"))->isEnabled());
        QCOMPARE(platform().messages.size(), 1);
    }

    // What the checks refuse, and failures on the way: told once, then the dialog back as it
    // was, nothing left on the screen, no half-made window, the target untouched.
    void refusedOrFailed_data()
    {
        QTest::addColumn<bool>("split");
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("mergeFile"); // empty: no NOFRAMES merge
        QTest::addColumn<QString>("message"); // how it starts: %1 the target, %2 its folder
        QTest::addColumn<int>("style");
        const QString exists = QStringLiteral("exists.html");
        QTest::newRow("no frame information") << false << exists << "" << "There is no frame information to process." << 48;
        QTest::newRow("save without a name") << true << "" << ""
                                             << "You have selected to save the document\r\nonce it is created but have not selected\r\n"
                                                "a file name to use.\r\nPlease select a file name."
                                             << 64;
        QTest::newRow("merge without a file") << true << exists << " "
                                              << "You have selected to have the NOFRAMES\r\nsection of your document created from an\r\n"
                                                 "existing file but did not select the file.\r\nPlease select a file to use for the merge."
                                              << 64;
        QTest::newRow("merge file missing") << true << exists << "missing.html"
                                            << "The file you selected to use in the NOFRAMES\r\nsection of your document does not exist.\r\n"
                                               "Please select a different file to use for the merge."
                                            << 64;
        QTest::newRow("merge file unreadable") << true << exists << "folder"
                                               << "The file you selected to use in the NOFRAMES\r\nsection of your document can not be read.\r\n"
                                               << 48;
        QTest::newRow("target held by another document") << true << "index.html" << ""
                                                         << "Permission denied!\r\nThe file %1 is open elsewhere." << 48;
        QTest::newRow("target read-only") << true << "readonly.html" << "" << "Permission denied!\r\nThe file %1 is read-only." << 48;
        QTest::newRow("replace answered No") << true << exists << "" << "%1\r\nReplace existing file?" << 36;
        QTest::newRow("target folder missing") << true << "gone/frames.html" << "" << "Permission denied!\r\nThe folder %2 does not exist." << 48;
    }
    void refusedOrFailed()
    {
        QFETCH(bool, split);
        QFETCH(QString, fileName);
        QFETCH(QString, mergeFile);
        QFETCH(QString, message);
        QFETCH(int, style);
        write(QStringLiteral("exists.html"), "old");
        write(QStringLiteral("readonly.html"), "old");
        QVERIFY(::chmod(QFile::encodeName(path(QStringLiteral("readonly.html"))).constData(), 0444) == 0);
        QDir(temp->path()).mkdir(QStringLiteral("folder"));
        if (split)
            popup(200, 66, "mnuSplitH");
        tab(2);
        type(box("tbFileName"), fileName);
        if (!mergeFile.isEmpty()) {
            click(QStringLiteral("ckNoFrameTag"));
            click(QStringLiteral("ckNoFramesMerge"));
            type(box("tbNoFramesFile"), mergeFile);
        }
        platform().answers.enqueue(MsgAnswer::No);
        const int documents = openDocuments();
        click(QStringLiteral("Command6"));

        const QString target = fileName.isEmpty() ? QString() : path(fileName);
        const QString shown = QString(message).replace(QLatin1String("%1"), target).replace(QLatin1String("%2"), QFileInfo(target).absolutePath());
        QCOMPARE(platform().messages.size(), 1);
        QVERIFY2(platform().messages.last().text.startsWith(shown), qPrintable(platform().messages.last().text));
        QCOMPARE(platform().messages.last().style, style);
        QVERIFY(form->isVisible());
        QCOMPARE(form->model.count(), split ? 2 : 1);
        QCOMPARE(openDocuments(), documents);
        QCOMPARE(ws().current(), doc);
        QCOMPARE(fileBytes(path(QStringLiteral("exists.html"))), QByteArray("old"));
        QCOMPARE(passLeftovers(main()), QStringLiteral("status text \"%1\"").arg(DesignStatus)); // the dialog's own
        QCOMPARE(FileHandles::instance().heldSlots(), QList<int>{doc->slot()});
    }

    // Saving over an existing file after a Yes: the file is replaced, not emptied first.
    void existingFileReplacedAfterYes()
    {
        const QString target = write(QStringLiteral("exists.html"), "old");
        popup(168, 100, "mnuSplitV");
        tab(2);
        type(box("tbFileName"), target);
        platform().answers.enqueue(MsgAnswer::Yes);
        platform().onMessage = [&target](const ScriptedPlatform::Message &) { QCOMPARE(fileBytes(target), QByteArray("old")); };
        click(QStringLiteral("Command6"));
        QTRY_VERIFY(!main().findChild<frmFrames *>());
        QCOMPARE(fileBytes(target), (Header + Comment + TwoColumns + QStringLiteral("\r\n</HTML>")).toUtf8());
        QCOMPARE(ws().current()->Caption(), target);
    }

    // With ckNewDocument off the frames replace the selection of the current document, and one
    // Undo takes all of it back.
    void intoTheCurrentDocument()
    {
        popup(168, 100, "mnuSplitV");
        click(QStringLiteral("ckNewDocument"));
        QVERIFY(!box("tbTitle")->isEnabled());
        QVERIFY(!control(QStringLiteral("ckSaveFile"))->isEnabled());
        doc->Text->setSelStart(0);
        doc->Text->setSelLength(3);
        click(QStringLiteral("Command6"));
        QTRY_VERIFY(!main().findChild<frmFrames *>());
        QCOMPARE(ws().current(), doc);
        QCOMPARE(doc->Text->Text(), Comment + TwoColumns + QStringLiteral("\r\n</HTML>\r\n"));
        QCOMPARE(doc->Text->SelStart(), 0);
        QVERIFY(program->trigger(doc, QStringLiteral("mnuEditUndo")));
        QCOMPARE(doc->Text->Text(), QStringLiteral("<P>\r\n"));
    }

    // With the caret in a frame set the designer starts from it, and Generate writes it back in
    // its place: one edit, one Undo.
    void regeneratedInPlace()
    {
        const QString sets = QStringLiteral("<FRAMESET ROWS=\"33%,67%\">\r\n    <FRAME%1 SRC=\"a.html\">\r\n"
                                            "    <FRAMESET COLS=\"33%,67%\">\r\n        <FRAME>\r\n"
                                            "        <FRAME SCROLLING=\"NO\">\r\n    </FRAMESET>\r\n</FRAMESET>\r\n");
        const QString before = QStringLiteral("<P>\r\n") + sets.arg(QString()) + QStringLiteral("</HTML>");
        form->reject();
        QTRY_VERIFY(!main().findChild<frmFrames *>());
        doc->Text->setText(before);
        doc->Text->setSelStart(40);
        openWizard();
        QCOMPARE(form->model.liveCount(), 3);
        QVERIFY(control(QStringLiteral("Picture1(1)"))->isEnabled());
        QVERIFY(control<QCheckBox>(QStringLiteral("ckInPlace"))->isChecked());
        QVERIFY(!control<QCheckBox>(QStringLiteral("ckNewDocument"))->isChecked());
        QVERIFY(!control(QStringLiteral("ckNewDocument"))->isEnabled());
        popup(200, 20, "mnuEdit");
        QCOMPARE(box("tbSource")->text(), QStringLiteral("a.html"));
        type(box("tbFrameName"), QStringLiteral("top"));
        click(QStringLiteral("Command3"));
        click(QStringLiteral("Command6"));
        QTRY_VERIFY(!main().findChild<frmFrames *>());
        QCOMPARE(doc->Text->Text(), QStringLiteral("<P>\r\n") + sets.arg(QStringLiteral(" NAME=\"top\"")) + QStringLiteral("</HTML>"));
        QCOMPARE(doc->Text->SelStart(), 5);
        QVERIFY(program->trigger(doc, QStringLiteral("mnuEditUndo")));
        QCOMPARE(doc->Text->Text(), before);
    }

    void noFramesSection_data()
    {
        QTest::addColumn<QByteArray>("mergeFile"); // empty: no merge
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("classes");
        QTest::newRow("tag only") << QByteArray() << "<NOFRAMES>\r\n</NOFRAMES>\r\n" << "";
        QTest::newRow("body merged in its case")
            << QByteArray("<html>\n<body bgcolor=white>\n<p>Hi\n</body>\n</html>\n")
            << "<NOFRAMES>\r\n<body bgcolor=white>\r\n<p>Hi\r\n</BODY>\r\n</NOFRAMES>\r\n" << "tttttttttttttttttttt//ttttt//ttttttt//";
        QTest::newRow("no body merges nothing") << QByteArray("<p>text only\n") << "<NOFRAMES>\r\n</NOFRAMES>\r\n" << "";
    }
    void noFramesSection()
    {
        QFETCH(QByteArray, mergeFile);
        QFETCH(QString, section);
        QFETCH(QString, classes);
        popup(168, 100, "mnuSplitV");
        click(QStringLiteral("ckSaveFile"));
        click(QStringLiteral("ckNoFrameTag"));
        if (!mergeFile.isEmpty()) {
            click(QStringLiteral("ckNoFramesMerge"));
            type(box("tbNoFramesFile"), write(QStringLiteral("body.html"), mergeFile));
        }
        click(QStringLiteral("Command6"));
        QTRY_VERIFY(!main().findChild<frmFrames *>());
        frmDoc *page = ws().current();
        QVERIFY(page->isUntitled());
        QCOMPARE(page->Text->Text(), Header + Comment + TwoColumns + section + QStringLiteral("\r\n</HTML>"));
        const int at = int(page->Text->Text().indexOf(QLatin1String("<NOFRAMES>"))) + 12;
        QCOMPARE(fontClasses(*page->Text).mid(at, classes.size()), classes);
        QVERIFY(page->state().Dirty());
        QCOMPARE(passLeftovers(main()), QString());
    }

    void pixelSizes_data()
    {
        QTest::addColumn<int>("screen"); // -1: no option clicked
        QTest::addColumn<QString>("cols");
        QTest::newRow("whole screen, no option clicked") << -1 << "319,320";
        QTest::newRow("640 x 480") << 0 << "314,315";
        QTest::newRow("800 x 600") << 1 << "393,395";
        QTest::newRow("1024 x 768") << 2 << "504,506";
    }
    void pixelSizes()
    {
        QFETCH(int, screen);
        QFETCH(QString, cols);
        popup(168, 100, "mnuSplitV");
        click(QStringLiteral("ckSaveFile"));
        click(QStringLiteral("ckPercentage"));
        QVERIFY(control(QStringLiteral("opScreenSize(1)"))->isEnabled());
        if (screen >= 0)
            click(QStringLiteral("opScreenSize(%1)").arg(screen));
        click(QStringLiteral("Command6"));
        QTRY_VERIFY(!main().findChild<frmFrames *>());
        QVERIFY(ws().current()->Text->Text().contains(QStringLiteral("<FRAMESET COLS=\"%1\">").arg(cols)));
    }

    // The Options tab's enabling table: tbTitle ckSaveFile tbFileName Command2(1) ckBaseURL
    // ckNoFramesMerge tbNoFramesFile Command2(0) opScreenSize(1), after clicks in order.
    void optionsEnabling_data()
    {
        QTest::addColumn<QString>("clicks");
        QTest::addColumn<QString>("enabled");
        QTest::newRow("start") << "" << "111110000";
        QTest::newRow("new document off") << "ckNewDocument" << "000000000";
        QTest::newRow("new document on again without saving") << "ckSaveFile ckNewDocument ckNewDocument" << "110000000";
        QTest::newRow("save off") << "ckSaveFile" << "110000000";
        QTest::newRow("noframe tag") << "ckNoFrameTag" << "111111000";
        QTest::newRow("merge") << "ckNoFrameTag ckNoFramesMerge" << "111111110";
        QTest::newRow("tag off with merge checked") << "ckNoFrameTag ckNoFramesMerge ckNoFrameTag" << "111110000";
        QTest::newRow("tag on again with merge checked") << "ckNoFrameTag ckNoFramesMerge ckNoFrameTag ckNoFrameTag" << "111111110";
        QTest::newRow("pixels") << "ckPercentage" << "111110001";
    }
    void optionsEnabling()
    {
        QFETCH(QString, clicks);
        for (const QString &name : clicks.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            click(name);
        QString enabled;
        for (const char *name : {"tbTitle", "ckSaveFile", "tbFileName", "Command2(1)", "ckBaseURL", "ckNoFramesMerge",
                                 "tbNoFramesFile", "Command2(0)", "opScreenSize(1)"})
            enabled += control(QLatin1String(name))->isEnabled() ? QLatin1Char('1') : QLatin1Char('0');
        QTEST(enabled, "enabled");
    }

    // Leaving a margin box that holds no number: the message once, the focus back; Cancel closes.
    void marginMustBeNumeric_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("messages");
        QTest::newRow("letters") << "ab" << 1;
        QTest::newRow("number") << "12" << 0;
        QTest::newRow("blank") << " " << 0;
    }
    void marginMustBeNumeric()
    {
        QFETCH(QString, typed);
        QFETCH(int, messages);
        popup(200, 66, "mnuSplitH");
        popup(200, 20, "mnuEdit");
        type(box("tbMarginWidth"), typed);
        box("tbExtraTag")->setFocus(Qt::TabFocusReason);
        QCOMPARE(platform().messages.size(), messages);
        if (messages) {
            QCOMPARE(platform().messages.last().text, QStringLiteral("MarginWidth and MarginHeight\r\nmust be numeric!"));
            QTRY_COMPARE(form->focusWidget(), box("tbMarginWidth"));
        }
        control<QPushButton>(QStringLiteral("Command1"))->setFocus(Qt::MouseFocusReason);
        click(QStringLiteral("Command1"));
        QTRY_VERIFY(!main().findChild<frmFrames *>());
        QCOMPARE(platform().messages.size(), messages);
        QCOMPARE(ws().status.StatusText(), QString());
    }

    void browseButtons_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("fileName"); // typed in tbFileName first
        QTest::addColumn<bool>("baseReference");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("remembered"); // in the Reference setting
        QTest::newRow("source without a file name") << "Command4" << "" << true << "/site/img/x.htm" << "tbSource"
                                                    << "/site/img/x.html" << "/site/img/x.html";
        QTest::newRow("source beside the frame set") << "Command4" << "/site/frames.html" << true << "/site/img/x.htm"
                                                     << "tbSource" << "img/x.html" << "/site/img/x.html";
        QTest::newRow("source without base reference") << "Command4" << "/site/frames.html" << false << "/site/img/x.sht"
                                                       << "tbSource" << "/site/img/x.shtml" << "/site/img/x.shtml";
        QTest::newRow("frame set file") << "Command2(1)" << "" << true << "/site/a.sht" << "tbFileName" << "/site/a.shtml"
                                        << "/site/a.shtml";
        QTest::newRow("merge file") << "Command2(0)" << "" << true << "/site/b.txt" << "tbNoFramesFile" << "/site/b.txt"
                                    << "/site/b.txt";
    }
    void browseButtons()
    {
        QFETCH(QString, button);
        QFETCH(QString, fileName);
        QFETCH(bool, baseReference);
        QFETCH(QString, chosen);
        QFETCH(QString, field);
        QFETCH(QString, written);
        ws().history.Reference = QStringLiteral("/site/last.html");
        popup(200, 66, "mnuSplitH");
        tab(2);
        type(box("tbFileName"), fileName);
        if (!baseReference)
            click(QStringLiteral("ckBaseURL"));
        click(QStringLiteral("ckNoFrameTag"));
        click(QStringLiteral("ckNoFramesMerge"));
        QString startedFrom;
        QString filter;
        platform().dialogs.enqueue([&](CommonDialog::Kind, CommonDialog &d) {
            startedFrom = d.FileName;
            filter = d.Filter;
            d.FileName = chosen;
            return ErrorCode::None;
        });
        click(button);
        QCOMPARE(startedFrom, QStringLiteral("/site/last.html"));
        QCOMPARE(filter, frmFrames::BrowseFilter);
        QCOMPARE(platform().dialogsShown.last(), button == QLatin1String("Command2(1)") ? CommonDialog::Kind::Save : CommonDialog::Kind::Open);
        QCOMPARE(control<QLineEdit>(field)->text(), written);
        QTEST(ws().history.Reference, "remembered");
        // A cancelled dialog changes nothing.
        platform().cancelDialog();
        click(button);
        QCOMPARE(control<QLineEdit>(field)->text(), written);
    }
};

PW_TEST_MAIN(TestFrameWizard)
#include "tst_frame_wizard.moc"
