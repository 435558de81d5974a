#include "test_support.h"

#include "app/command_table.h"
#include "core/about_box.h"
#include "core/help_window.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>

using namespace pw;

// The about box, and the help window with its manual.
class TestTitleHelp : public ProgramTest
{
    Q_OBJECT

    static int scrolled(frmHelp *help) { return help->HelpText->verticalScrollBar()->value(); }

private Q_SLOTS:
    void aboutBoxHomePageClick_data()
    {
        QTest::addColumn<QString>("browser");
        QTest::addColumn<QList<QStringList>>("started");
        QTest::newRow("chosen browser gets the address")
            << "/usr/bin/browser" << QList<QStringList>{{"/usr/bin/browser", HomePageAddress}};
        QTest::newRow("no browser fails quietly") << "" << QList<QStringList>{};
    }
    void aboutBoxHomePageClick()
    {
        QFETCH(QString, browser);
        QFETCH(QList<QStringList>, started);
        ws().history.Browser = browser;
        QPointer<frmTitle2> box = ShowAboutBox(ws(), &main());
        QCOMPARE(box->windowModality(), Qt::ApplicationModal);
        QCOMPARE(ShowAboutBox(ws(), &main()), box.data()); // one box
        QTest::mouseClick(box->Label6, Qt::LeftButton);
        QCOMPARE(platform().programsStarted, started);
        QVERIFY(platform().messages.isEmpty());
        QVERIFY(box && box->isVisible());
        QTest::mouseClick(box->Command1, Qt::LeftButton); // OK closes it
        QTRY_VERIFY(!box);
    }

    void helpContentsOpensTheManual_data()
    {
        QTest::addColumn<QString>("from");
        QTest::newRow("main menu") << "mnuHelpContents";
        QTest::newRow("document menu") << "document";
        QTest::newRow("toolbar button") << "imgHelp";
    }
    void helpContentsOpensTheManual()
    {
        QFETCH(QString, from);
        frmDoc *document = from == "document" ? program->newDocument() : nullptr;
        for (int time = 0; time < 2; ++time) {
            if (from == QLatin1String("imgHelp"))
                program->button(from)->trigger();
            else
                QVERIFY(program->trigger(document, QStringLiteral("mnuHelpContents")));
        }
        QCOMPARE(platform().dialogsShown, QList<CommonDialog::Kind>(2, CommonDialog::Kind::Help));
        QCOMPARE(main().findChildren<frmHelp *>().size(), 1); // reused
        frmHelp *help = main().findChild<frmHelp *>();
        QVERIFY(help->isVisible() && help->isWindow());
        QCOMPARE(help->HelpText->source(), QUrl("qrc:/help/index.html"));
        QCOMPARE(scrolled(help), 0);
    }

    void helpOpensCentredOverTheMainWindowAndEscapeCloses()
    {
        main().setGeometry(20, 40, 760, 700); // room on the screen to stand centred
        QPointer<frmHelp> help = ShowHelpWindow(ws(), &main());
        QVERIFY((help->frameGeometry().center() - main().frameGeometry().center()).manhattanLength() < 8);
        QVERIFY(QTest::qWaitForWindowActive(help));
        QTest::keyClick(help->HelpText, Qt::Key_Escape);
        QTRY_VERIFY(!help);
    }

    void linksMoveThereAndBackAndForward()
    {
        frmHelp *help = ShowHelpWindow(ws(), &main());
        QVERIFY(!help->cmdBack->isEnabled());
        Q_EMIT help->HelpText->anchorClicked(QUrl("#toolbars"));
        QCOMPARE(help->HelpText->source().fragment(), QString("toolbars"));
        QTRY_VERIFY(scrolled(help) > 0);
        help->cmdBack->click();
        QVERIFY(help->HelpText->source().fragment().isEmpty());
        QTRY_COMPARE(scrolled(help), 0);
        help->cmdForward->click();
        QCOMPARE(help->HelpText->source().fragment(), QString("toolbars"));

        // A page elsewhere opens in the user's browser; the manual stays where it is.
        ws().history.Browser = QStringLiteral("/usr/bin/browser");
        Q_EMIT help->HelpText->anchorClicked(QUrl("https://example.org/page.html"));
        const QList<QStringList> started = {{"/usr/bin/browser", "https://example.org/page.html"}};
        QCOMPARE(platform().programsStarted, started);
        QCOMPARE(help->HelpText->source().fragment(), QString("toolbars"));

        // Contents from elsewhere goes back to the top of the same window.
        QCOMPARE(ShowHelpWindow(ws(), &main()), help);
        QCOMPARE(scrolled(help), 0);
    }

    // Every link of the manual has its anchor, and every menu item and button is described.
    void manualIsWhole()
    {
        frmHelp *help = ShowHelpWindow(ws(), &main());
        QStringList hrefs, missing;
        QSet<QString> anchors;
        for (QTextBlock block = help->HelpText->document()->begin(); block.isValid(); block = block.next())
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextCharFormat format = it.fragment().charFormat();
                if (!format.anchorHref().isEmpty())
                    hrefs << format.anchorHref();
                for (const QString &name : format.anchorNames())
                    anchors.insert(name);
            }
        QVERIFY(hrefs.size() > 20);
        for (const QString &href : std::as_const(hrefs))
            if (!href.startsWith('#') || !anchors.contains(href.mid(1)))
                missing << href;
        const QString manual = help->HelpText->toPlainText().simplified();
        for (const auto *rows : {&CommandTable::mainMenuRows(), &CommandTable::documentMenuRows()})
            for (const MenuRow &row : *rows)
                if (const QString caption = QString(row.caption).remove('&').simplified();
                    !caption.isEmpty() && !manual.contains(caption)) // not separators nor previous files
                    missing << caption;
        for (const auto *rows : {&CommandTable::toolbar1Rows(), &CommandTable::toolbar2Rows()})
            for (const ButtonRow &row : *rows)
                if (row.key != "-" && !manual.contains(row.toolTip))
                    missing << row.toolTip;
        missing.removeDuplicates();
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(", ")));
    }
};

PW_TEST_MAIN(TestTitleHelp)
#include "tst_title_help.moc"
