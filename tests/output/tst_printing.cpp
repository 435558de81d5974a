#include "isolated_main.h"
#include "test_support.h"

#include "core/status_line.h"
#include "platform/message_box.h"

#include <QProgressBar>
#include <QTest>

using namespace pw;

namespace {
QString header(int page, bool selection = false)
{
    return QStringLiteral("Page: %1  Document: Untitled: 1").arg(page)
           + (selection ? QStringLiteral(" - Selected text") : QString());
}

QStringList numberedLines(int first, int last)
{
    QStringList lines;
    for (int i = first; i <= last; ++i)
        lines << QStringLiteral("line %1").arg(i);
    return lines;
}

using Pages = QList<QStringList>;

} // namespace

class TestPrinting : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        startProgram();
        doc = program->newDocument();
    }

    void documentLayout_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Pages>("pages"); // text lines of each page, under its header and blank

        QTest::newRow("empty document prints the header only") << QString() << Pages{{}};
        QTest::newRow("59 lines fit the first page")
            << numberedLines(1, 59).join("\r\n") << Pages{numberedLines(1, 59)};
        QTest::newRow("the 60th line starts page 2")
            << numberedLines(1, 60).join("\r\n") << Pages{numberedLines(1, 59), {"line 60"}};
        QTest::newRow("page 3 after 118 lines")
            << numberedLines(1, 119).join("\r\n")
            << Pages{numberedLines(1, 59), numberedLines(60, 118), {"line 119"}};
        const QString eighty(80, 'a');
        QTest::newRow("80 characters then a line end print an empty line")
            << eighty + "\r\nnext" << Pages{{eighty, "", "next"}};
        QTest::newRow("200 characters print as three lines")
            << QString(80, 'x') + QString(80, 'y') + QString(40, 'z')
            << Pages{{QString(80, 'x'), QString(80, 'y'), QString(40, 'z')}};
        QTest::newRow("line end straddling the 80th character")
            << QString(79, 'b') + "\r\nnext" << Pages{{QString(79, 'b'), "next"}};
        QTest::newRow("blank lines print empty, a final line end adds none")
            << "a\r\n\r\nb\r\n" << Pages{{"a", "", "b"}};
    }
    void documentLayout()
    {
        QFETCH(QString, text);
        QFETCH(Pages, pages);
        doc->Text->setText(text);
        QVERIFY(program->trigger(doc, "mnuFilePrint"));

        const ScriptedPlatform &p = program->platform.scripted;
        QCOMPARE(p.documentsPrinted, 1);
        QCOMPARE(p.printed.size(), pages.size());
        for (int i = 0; i < pages.size(); ++i)
            QCOMPARE(p.printed[i].lines, QStringList({header(i + 1), " "}) + pages[i]);
        QVERIFY(p.messages.isEmpty());
        QVERIFY(!program->main().Picture1->isVisible());
        QVERIFY(StatusText().isEmpty());
        QCOMPARE(QApplication::overrideCursor(), nullptr);
    }

    void selectionHeadersOnEveryPage()
    {
        doc->Text->setText("before\r\n" + numberedLines(1, 61).join("\r\n") + "\r\nafter");
        doc->Text->setSelStart(8);
        doc->Text->setSelLength(doc->Text->TextLength() - 8 - 7);
        QVERIFY(program->trigger(doc, "mnuFilePrintSelected"));

        const ScriptedPlatform &p = program->platform.scripted;
        QCOMPARE(p.printed.size(), 2);
        QCOMPARE(p.printed[0].lines, QStringList({header(1, true), " "}) + numberedLines(1, 59));
        QCOMPARE(p.printed[1].lines, QStringList({header(2, true), " ", "line 60", "line 61"}));
    }

    void statusShowsEachPageHeaderWhilePrinting()
    {
        doc->Text->setText(numberedLines(1, 70).join("\r\n"));
        QStringList seen;
        program->platform->onEscapePoll = [&seen](int) { seen << StatusText(); };
        QVERIFY(program->trigger(doc, "mnuFilePrint"));
        QCOMPARE(seen.size(), 70);
        QCOMPARE(seen.first(), " " + header(1));
        QCOMPARE(seen.last(), " " + header(2));
        QVERIFY(StatusText().isEmpty());
    }

    void escapeStopsAndClosesTheJob()
    {
        doc->Text->setText(numberedLines(1, 100).join("\r\n"));
        program->platform->escapeAtPoll = {3};
        QVERIFY(program->trigger(doc, "mnuFilePrint"));
        const ScriptedPlatform &p = program->platform.scripted;
        QCOMPARE(p.documentsPrinted, 1);
        QCOMPARE(p.printed.size(), 1);
        QCOMPARE(p.printed[0].lines, QStringList({header(1), " "}) + numberedLines(1, 3));
        QVERIFY(!program->main().Picture1->isVisible());
        QCOMPARE(QApplication::overrideCursor(), nullptr);
    }

    void noPrinterSaysSoAndPrintsNothing()
    {
        doc->Text->setText("text");
        program->platform->printerAvailable = false;
        QVERIFY(program->trigger(doc, "mnuFilePrint"));
        const ScriptedPlatform &p = program->platform.scripted;
        QCOMPARE(p.messages.size(), 1);
        QCOMPARE(p.messages[0].text, QString("No printer is set up on this computer."));
        QCOMPARE(p.messages[0].style, int(MsgStyle::Exclamation));
        QCOMPARE(p.messages[0].title, AppTitle());
        QCOMPARE(p.documentsPrinted, 0);
        QVERIFY(!program->main().Picture1->isVisible());
        QVERIFY(StatusText().isEmpty());
        QCOMPARE(doc->Text->Text(), QString("text"));
    }

private:
    frmDoc *doc = nullptr;
};

PW_ISOLATED_TEST_MAIN(TestPrinting)
#include "tst_printing.moc"
