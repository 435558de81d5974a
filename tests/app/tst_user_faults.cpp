#include "test_support.h"

#include "app/command_table.h"
#include "core/about_box.h"
#include "core/settings_store.h"
#include "core/title_window.h"
#include "files/autosave.h"
#include "files/open_document.h"
#include "platform/message_box.h"
#include "spell/checking_walk.h"
#include "spell/word_store.h"
#include "spell/word_store_builder.h"

#include <QDir>
#include <QFile>
#include <QMdiArea>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace pw;

// The faults a new user met first, each a test named after it.
class TestUserFaults : public ProgramTest
{
    Q_OBJECT

    QTemporaryDir dir;

    frmDoc *activeDocument(const QString &text)
    {
        frmDoc *doc = program->newDocument();
        doc->Text->setText(text);
        doc->state().setDirty(false);
        main().activateWindow();
        doc->Text->setFocus();
        return doc;
    }
    QString writeFile(const QString &name, const QByteArray &bytes)
    {
        QFile file(dir.filePath(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
        return file.fileName();
    }
    static void leaveAutosavedFile(int number, const QByteArray &bytes)
    {
        QDir().mkpath(AutoSaveFolder());
        QFile file(AutoSaveFolder() + QLatin1Char('/') + AutoSaveFileName(number));
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
    }
    static bool isEnabled(QAction *action) { return action && action->isEnabled(); }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(dir.isValid());
        // Not the first run, unless a test says so.
        SettingsStore().writeInt(Setting::State, 0);
    }
    void init()
    {
        startProgram();
        SettingsStore().writeInt(Setting::State, 0);
        SettingsStore().writeBool(Setting::AutoSave, false);
        SettingsStore().writeBool(Setting::AddTemplate, false);
        EmptyAutoSaveFolder();
    }

    void standardKeysRunTheProgramsCopyCutAndPaste_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("selectFrom");
        QTest::addColumn<bool>("editMenuOpenedFirst");
        QTest::addColumn<QString>("clipboard");
        QTest::addColumn<QString>("text");
        QTest::newRow("Ctrl+V pastes") << int(Qt::Key_V) << int(Qt::ControlModifier) << -1 << false << "pasted"
                                       << "abcdpasted";
        QTest::newRow("Shift+Insert pastes") << int(Qt::Key_Insert) << int(Qt::ShiftModifier) << -1 << false
                                             << "pasted" << "abcdpasted";
        QTest::newRow("Ctrl+Insert copies") << int(Qt::Key_Insert) << int(Qt::ControlModifier) << 2 << false << "cd"
                                            << "abcd";
        QTest::newRow("Shift+Delete cuts") << int(Qt::Key_Delete) << int(Qt::ShiftModifier) << 2 << false << "cd"
                                           << "ab";
        QTest::newRow("Ctrl+C after the Edit menu opened without a selection")
            << int(Qt::Key_C) << int(Qt::ControlModifier) << 2 << true << "cd" << "abcd";
        QTest::newRow("Ctrl+X after the Edit menu opened without a selection")
            << int(Qt::Key_X) << int(Qt::ControlModifier) << 2 << true << "cd" << "ab";
        QTest::newRow("Ctrl+X with nothing selected cuts nothing") << int(Qt::Key_X) << int(Qt::ControlModifier) << -1
                                                                   << false << "" << "abcd";
    }
    void standardKeysRunTheProgramsCopyCutAndPaste()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(int, selectFrom);
        QFETCH(bool, editMenuOpenedFirst);
        QFETCH(QString, clipboard);
        QFETCH(QString, text);
        frmDoc *doc = activeDocument(QStringLiteral("abcd"));
        QTRY_VERIFY(main().isActiveWindow());
        platform().copyFromElsewhere(QStringLiteral("pasted"));
        doc->Text->setSelStart(4);
        if (editMenuOpenedFirst)
            Q_EMIT doc->menu(QStringLiteral("mnuEdit"))->aboutToShow();
        if (selectFrom >= 0) {
            doc->Text->setSelStart(selectFrom);
            doc->Text->setSelLength(4 - selectFrom);
        }
        QTest::keyClick(doc->Text, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(platform().clipText, clipboard);
        QCOMPARE(doc->Text->Text(), text);
    }

    void typingOverASelectionIsOneUndoStep_data()
    {
        QTest::addColumn<int>("selStart");
        QTest::addColumn<int>("selLength");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("typed");
        QTest::newRow("select all, a stray key") << 0 << -1 << int(Qt::Key_X) << "x";
        QTest::newRow("a letter over a word") << 14 << 4 << int(Qt::Key_X) << "<HTML>\r\n<BODY>x</BODY>\r\n</HTML>";
        QTest::newRow("Backspace deletes the selection only")
            << 14 << 4 << int(Qt::Key_Backspace) << "<HTML>\r\n<BODY></BODY>\r\n</HTML>";
        QTest::newRow("Delete deletes the selection only")
            << 14 << 4 << int(Qt::Key_Delete) << "<HTML>\r\n<BODY></BODY>\r\n</HTML>";
    }
    void typingOverASelectionIsOneUndoStep()
    {
        QFETCH(int, selStart);
        QFETCH(int, selLength);
        QFETCH(int, key);
        QFETCH(QString, typed);
        const QString page = QStringLiteral("<HTML>\r\n<BODY>page</BODY>\r\n</HTML>");
        frmDoc *doc = activeDocument(page);
        doc->Text->setSelStart(selStart);
        doc->Text->setSelLength(selLength < 0 ? page.size() : selLength);
        QTest::keyClick(doc->Text, Qt::Key(key));
        QCOMPARE(doc->Text->Text(), typed);
        QTest::keyClick(doc->Text, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(doc->Text->Text(), page);
    }

    void undoButtonFollowsTheFirstEditOfAnOpenedDocument()
    {
        const QString path = writeFile(QStringLiteral("opened.html"), "<P>text</P>\r\n");
        QAction *undo = program->button(buttonKey(Button::Undo));
        QAction *save = program->button(buttonKey(Button::FileSave));
        frmDoc *fresh = program->newDocument();
        QVERIFY(!undo->isEnabled());
        frmDoc *doc = OpenFromHandOver(ws(), path);
        QVERIFY(doc && doc != fresh);
        QVERIFY(!undo->isEnabled());
        QVERIFY(!save->isEnabled());
        QVERIFY(!doc->isWindowModified());
        QTest::keyClick(doc->Text, Qt::Key_Q);
        QVERIFY(undo->isEnabled());
        QVERIFY(save->isEnabled());
        // The changed page shows a star.
        QVERIFY(doc->isWindowModified());
        QCOMPARE(doc->windowTitle(), path + QStringLiteral("[*]"));
    }

    void startUpBoxesStandAboveTheSplashAndLeaveTheFocusInTheDocument()
    {
        leaveAutosavedFile(1, "recovered\r\n");
        ShowTitle();
        bool splashShownUnderABox = false;
        platform().onMessage = [&](const ScriptedPlatform::Message &) {
            splashShownUnderABox = splashShownUnderABox || (TitleWindow() && TitleWindow()->isVisible());
        };
        program->app.MDIForm_Load(QString());
        QCOMPARE(platform().messages.size(), 1);
        QVERIFY(!splashShownUnderABox);
        QVERIFY(!TitleWindow());
        frmDoc *front = program->current();
        QVERIFY(front);
        QTRY_COMPARE(QApplication::focusWidget(), front->Text);
    }

    void recoveryReadsTheCrashedFilesBeforeAnythingWrites()
    {
        SettingsStore().writeBool(Setting::AutoSave, true);
        leaveAutosavedFile(1, "first\r\n");
        leaveAutosavedFile(2, "second\r\n");
        bool quietDuringTheBox = false;
        platform().onMessage = [&](const ScriptedPlatform::Message &m) {
            if (m.text == QLatin1String("Recovering Files!"))
                quietDuringTheBox = ws().slots.openSlots().isEmpty() && !main().tmrAutoSave->isActive();
        };
        program->app.MDIForm_Load(QString());
        QVERIFY(quietDuringTheBox);
        QStringList recovered;
        for (int slot : ws().slots.openSlots())
            if (ws().slots.document(slot)->Caption() == QLatin1String("Untitled: (Recovered File: 1)"))
                recovered << ws().slots.document(slot)->Text->Text();
        QCOMPARE(recovered, (QStringList{"first\r\n", "second\r\n"}));
        QVERIFY(main().tmrAutoSave->isActive());
    }

    void highlightOffAndOnLeavesSaveAsThePageIs()
    {
        const QString path = writeFile(QStringLiteral("clean.html"), "<P>clean <B>page</B></P>\r\n");
        ws().options.setChecked(Option::Highlight, true);
        frmDoc *doc = OpenFromHandOver(ws(), path);
        QVERIFY(doc);
        QAction *save = program->button(buttonKey(Button::FileSave));
        QVERIFY(!save->isEnabled());
        QVERIFY(program->trigger(doc, optionItemName(Option::Highlight)));
        platform().answers.enqueue(MsgAnswer::Yes);
        QVERIFY(program->trigger(doc, optionItemName(Option::Highlight)));
        QVERIFY(!doc->state().Dirty());
        QVERIFY(!save->isEnabled());
        // A format-only change is no change of the page.
        doc->Text->formatRange(0, 3, ws().fonts.comment);
        QVERIFY(!doc->state().Dirty());
        QVERIFY(!save->isEnabled());
    }

    void terminationWaitsForThePassAndTouchesNoDocumentThatIsGone_data()
    {
        QTest::addColumn<QString>("when");
        QTest::newRow("while the highlighting error box waits") << "box";
        QTest::newRow("during a long colouring pass") << "pass";
        QTest::newRow("while the first-run question waits") << "first run";
    }
    void terminationWaitsForThePassAndTouchesNoDocumentThatIsGone()
    {
        QFETCH(QString, when);
        if (when == QLatin1String("first run"))
            SettingsStore().writeInt(Setting::State, FirstRunState);
        ws().options.setChecked(Option::Highlight, true);
        const QString page = writeFile(QStringLiteral("unclosed.html"),
                                       when == QLatin1String("box") ? "<P>a <!-- never closed</P>" : "<P>a</P><B>b</B>");
        QSignalSpy unloaded(&main(), &frmMDIMain::unloaded);
        bool closedEarly = false;
        const auto terminate = [&] {
            program->app.requestTermination();
            closedEarly = closedEarly || unloaded.count() > 0;
        };
        platform().onMessage = [&](const ScriptedPlatform::Message &) { terminate(); };
        if (when == QLatin1String("pass"))
            platform().onEscapePoll = [&](int) { terminate(); };
        program->app.MDIForm_Load(page);
        QVERIFY(!closedEarly);
        QCOMPARE(unloaded.count(), 0);
        QTRY_COMPARE(unloaded.count(), 1);
        QVERIFY(ws().slots.openSlots().isEmpty());
    }

    void maximizedStartSizesItsFirstDocumentFromTheWholeArea()
    {
        SettingsStore().writeInt(Setting::State, 2);
        ws().options.setChecked(Option::MaximizeDocs, false);
        program->app.MDIForm_Load(QString());
        QVERIFY(main().isMaximized());
        const QWidget *area = main().mdiArea->viewport();
        QCOMPARE(program->current()->width(), qMax(320, area->width() * 3 / 4));
        // Handing over to a minimised window gives back the maximised one.
        main().showMinimized();
        bool cancel = true;
        program->app.MDIForm_LinkExecute(QStringLiteral("jump"), &cancel);
        QVERIFY(!cancel);
        QTRY_VERIFY(main().isMaximized());
        QVERIFY(!main().isMinimized());
    }

    void keysSwitchDocumentsAndTheWindowMenuListsThem()
    {
        frmDoc *one = program->newDocument();
        frmDoc *two = program->newDocument();
        main().activateWindow();
        QTRY_VERIFY(main().isActiveWindow());
        two->Text->setFocus();
        QCOMPARE(program->current(), two);
        QTest::keyClick(two->Text, Qt::Key_Tab, Qt::ControlModifier);
        QTRY_COMPARE(program->current(), one);
        QTest::keyClick(one->Text, Qt::Key_F6, Qt::ControlModifier);
        QTRY_COMPARE(program->current(), two);
        QTest::keyClick(two->Text, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_COMPARE(program->current(), one);
        QCOMPARE(two->Text->Text(), QString()); // no key reached a page

        QMenu *window = one->menu(QStringLiteral("mnuWindow"));
        Q_EMIT window->aboutToShow();
        QAction *second = one->item(QStringLiteral("mnuWindowList(2)"));
        QVERIFY(second);
        QCOMPARE(second->text(), QStringLiteral("&2 Untitled: 2"));
        QVERIFY(one->item(QStringLiteral("mnuWindowList(1)"))->isChecked());
        second->trigger();
        QTRY_COMPARE(program->current(), two);

        // With no document open, Ctrl+N and Ctrl+O still work.
        one->unloadQuietly();
        two->unloadQuietly();
        QTRY_VERIFY(ws().slots.openSlots().isEmpty());
        QTest::keyClick(&main(), Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(platform().dialogsShown, QList<CommonDialog::Kind>{CommonDialog::Kind::Open});
        QTest::keyClick(&main(), Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(ws().slots.openSlots().size(), 1);
    }

    void dirtyIconFlipsBetweenTwoPictures()
    {
        const auto picture = [](const QIcon &icon) { return icon.pixmap(16, 16).toImage(); };
        const QImage hundred = picture(QIcon(QStringLiteral(":/icons/document_hundred.svg")));
        const QImage changed = picture(QIcon(QStringLiteral(":/icons/document_changed.svg")));
        QVERIFY(hundred != changed);
        QVERIFY(hundred.pixelColor(2, 2) != hundred.pixelColor(8, 9)); // a picture, not a flat square
        frmDoc *doc = program->newDocument();
        doc->Text->setText(QString(99, QLatin1Char('a')));
        doc->Text->setSelStart(99);
        doc->Text->setSelText(QStringLiteral("b"));
        QCOMPARE(picture(doc->windowIcon()), hundred);
        doc->Text->setSelText(QStringLiteral("c"));
        QCOMPARE(picture(doc->windowIcon()), changed);
    }

    void dialogsHaveNoMinimizeOrMaximizeAndFitTheirContent()
    {
        const QString store = dir.filePath(QStringLiteral("spwords.tpw"));
        QString error;
        QVERIFY2(BuildWordStore(StoreWords({"word"}), store, &error), qPrintable(error));
        setShippedWordStorePath(store);
        frmDoc *doc = program->newDocument();
        ShowSpellChecker(ws(), *doc, &main());
        QPointer<QDialog> spell = SpellChecker(&main());
        QPointer<QDialog> about = ShowAboutBox(ws(), &main());
        for (QDialog *dialog : {spell.data(), about.data()}) {
            QVERIFY(dialog);
            const Qt::WindowFlags flags = dialog->windowFlags();
            QVERIFY(!(flags & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint)));
            // Nothing stands below the last row of controls.
            QCOMPARE(dialog->size(), dialog->sizeHint());
            dialog->close();
        }
        setShippedWordStorePath(QString());
    }
};

PW_TEST_MAIN(TestUserFaults)
#include "tst_user_faults.moc"
