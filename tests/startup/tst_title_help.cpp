#include "isolated_main.h"
#include "test_support.h"

#include "app/command_table.h"
#include "core/app_state.h"
#include "core/help_window.h"
#include "core/title_window.h"

#include <QImageReader>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolBar>
#include <QToolButton>

using namespace pw;

// The splash, the help window with its manual, and the toolbar pictures.
class TestTitleHelp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        UnloadTitle();
        delete program;
        program = nullptr;
        QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void splashIsSizedFromItsPictureAndStaysOnTop()
    {
        frmTitle *title = ShowTitle();
        QVERIFY(title->isVisible());
        QCOMPARE(TitleWindow(), title);
        QVERIFY(title->windowFlags() & Qt::WindowStaysOnTopHint);
        QCOMPARE(title->Picture1->objectName(), QString("Picture1"));
        QCOMPARE(title->findChild<QLineEdit *>("Text1"), title->Text1);
        QVERIFY(!title->Text1->isVisible());
        // Picture 6300 x 3375 twips; the window 30 twips wider and 15 higher.
        QCOMPARE(title->Picture1->size(), QSize(420, 225));
        QCOMPARE(title->size(), QSize(422, 226));
        QCOMPARE(ShowTitle(), title); // one splash
    }

    void versionIsPrintedAtItsPlaceOnEveryPaint()
    {
        frmTitle title;
        const QImage bare = title.Picture1->grab().toImage();
        title.PrintVersion();
        const QImage printed = title.Picture1->grab().toImage();
        QCOMPARE(frmTitle::versionCaption(), "Version: " + VersionText());

        // Only the version's line changed, and it starts at x = 100, y = 2950 twips.
        QRect changed;
        for (int y = 0; y < bare.height(); ++y)
            for (int x = 0; x < bare.width(); ++x)
                if (bare.pixel(x, y) != printed.pixel(x, y))
                    changed |= QRect(x, y, 1, 1);
        QVERIFY(!changed.isEmpty());
        const QPoint at = TitlePicture::versionPosition();
        QCOMPARE(at, QPoint(7, 197));
        QVERIFY2(changed.left() >= at.x() && changed.left() <= at.x() + 3, qPrintable(QString::number(changed.left())));
        QVERIFY2(changed.top() >= at.y() && changed.bottom() <= at.y() + title.fontMetrics().height() + 2,
                 qPrintable(QString("%1..%2").arg(changed.top()).arg(changed.bottom())));
        QVERIFY(changed.right() < bare.width() / 2);

        QCOMPARE(title.Picture1->grab().toImage(), printed); // printed again by the next paint
    }

    void unloadedSplashIsGone()
    {
        QPointer<frmTitle> title = ShowTitle();
        UnloadTitle();
        QVERIFY(!title);
        QVERIFY(!TitleWindow());
        PrintTitleVersion(); // the main window's load prints again; no splash, nothing to do
        UnloadTitle();
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
        program = new TestProgram;
        frmDoc *document = from == "document" ? program->newDocument() : nullptr;
        for (int time = 0; time < 2; ++time) {
            if (document)
                QVERIFY(program->trigger(document, "mnuHelpContents"));
            else
                QVERIFY(program->trigger(nullptr, from));
        }
        QCOMPARE(program->platform->dialogsShown,
                 (QList<CommonDialog::Kind>{CommonDialog::Kind::Help, CommonDialog::Kind::Help}));
        QCOMPARE(program->main().CMDialog1.HelpCommand, 3);
        QCOMPARE(program->main().CMDialog1.HelpFile, HelpFilePath());

        frmHelp *help = HelpWindow();
        QVERIFY(help && help->isVisible());
        QCOMPARE(help->objectName(), QString("frmHelp"));
        QVERIFY(help->isWindow());
        QCOMPARE(program->main().findChildren<frmHelp *>().size(), 1); // reused
        QCOMPARE(help->HelpText->source(), QUrl("qrc:/help/index.html"));
        QCOMPARE(help->HelpText->documentTitle(), QString("Pagewright Help"));
        QCOMPARE(help->HelpText->verticalScrollBar()->value(), 0);
    }

    void everyLinkOfTheManualHasItsAnchor()
    {
        program = new TestProgram;
        frmHelp *help = ShowHelpWindow();
        QStringList hrefs;
        QSet<QString> anchors;
        for (QTextBlock block = help->HelpText->document()->begin(); block.isValid(); block = block.next()) {
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextCharFormat format = it.fragment().charFormat();
                if (!format.anchorHref().isEmpty())
                    hrefs << format.anchorHref();
                for (const QString &name : format.anchorNames())
                    anchors.insert(name);
            }
        }
        QVERIFY(hrefs.size() > 20);
        for (const QString &href : std::as_const(hrefs)) {
            QVERIFY2(href.startsWith('#'), qPrintable(href + " leaves the manual"));
            QVERIFY2(anchors.contains(href.mid(1)), qPrintable(href + " has no anchor"));
        }
    }

    void followingALinkMovesThereAndBackReturns()
    {
        program = new TestProgram;
        frmHelp *help = ShowHelpWindow();
        QVERIFY(!help->cmdBack->isEnabled());
        Q_EMIT help->HelpText->anchorClicked(QUrl("#toolbars"));
        QCOMPARE(help->HelpText->source().fragment(), QString("toolbars"));
        QTRY_VERIFY(help->HelpText->verticalScrollBar()->value() > 0);
        QVERIFY(help->cmdBack->isEnabled());
        help->cmdBack->click();
        QVERIFY(help->HelpText->source().fragment().isEmpty());
        QTRY_COMPARE(help->HelpText->verticalScrollBar()->value(), 0);

        // Contents from elsewhere goes back to the top of the same window.
        ShowHelpWindow(HelpFilePath(), "autosave");
        QTRY_VERIFY(help->HelpText->verticalScrollBar()->value() > 0);
        QCOMPARE(ShowHelpWindow(), help);
        QCOMPARE(help->HelpText->verticalScrollBar()->value(), 0);
    }

    void manualDescribesEveryMenuItemAndButton()
    {
        program = new TestProgram;
        frmHelp *help = ShowHelpWindow();
        const QString manual = help->HelpText->toPlainText().simplified();
        QStringList missing;
        for (const auto *rows : {&CommandTable::mainMenuRows(), &CommandTable::documentMenuRows()}) {
            for (const MenuRow &row : *rows) {
                if (row.caption.isEmpty())
                    continue; // separators and the previous-file items
                const QString caption = QString(row.caption).remove('&').simplified();
                if (!manual.contains(caption))
                    missing << caption;
            }
        }
        for (const auto *rows : {&CommandTable::toolbar1Rows(), &CommandTable::toolbar2Rows()})
            for (const ButtonRow &row : *rows)
                if (row.key != "-" && !manual.contains(row.toolTip))
                    missing << row.toolTip;
        missing.removeDuplicates();
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(", ")));
    }

    void everyToolbarButtonHasItsOwnPicture()
    {
        if (!QImageReader::supportedImageFormats().contains("svg"))
            QSKIP("no SVG image plugin: the buttons show drawn tiles");
        program = new TestProgram;
        for (QToolBar *bar : {program->main().Toolbar1, program->main().Toolbar2}) {
            for (QAction *action : bar->actions()) {
                if (action->isSeparator())
                    continue;
                const QString file = ":/icons/toolbar/" + action->objectName() + ".svg";
                QVERIFY2(QFile::exists(file), qPrintable(file));
                QImageReader reader(file);
                const QImage picture = reader.read();
                QVERIFY2(!picture.isNull(), qPrintable(file + ": " + reader.errorString()));
                QCOMPARE(picture.size(), QSize(24, 24));
                int inked = 0;
                for (int y = 0; y < 24; ++y)
                    for (int x = 0; x < 24; ++x)
                        inked += qAlpha(picture.pixel(x, y)) > 0;
                QVERIFY2(inked > 40, qPrintable(file));
                QVERIFY(!action->icon().pixmap(24).isNull());
            }
        }
    }

private:
    TestProgram *program = nullptr;
};

PW_ISOLATED_TEST_MAIN(TestTitleHelp)
#include "tst_title_help.moc"
