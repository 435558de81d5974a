#include "test_support.h"

#include "core/app_state.h"
#include "core/status_presenter.h"
#include "platform/message_box.h"

#include <QDir>
#include <QRegularExpression>

using namespace pw;

namespace {
QString header(int page, bool selection = false)
{
    return QStringLiteral("Page: %1  Document: Untitled: 1").arg(page) + (selection ? " - Selected text" : "");
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

    frmDoc *doc = nullptr;

    // Each printed page: its header, a blank line, then its text lines.
    void verifyPages(const Pages &pages, bool selection = false)
    {
        QCOMPARE(platform().documentsPrinted, 1);
        QCOMPARE(platform().printed.size(), pages.size());
        for (int i = 0; i < pages.size(); ++i)
            QCOMPARE(platform().printed[i].lines, QStringList({header(i + 1, selection), " "}) + pages[i]);
        QCOMPARE(passLeftovers(main()), QString());
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        doc = program->newDocument();
    }

    void documentLayout_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Pages>("pages");
        const QString a(80, 'a'), b(79, 'b'), x(80, 'x'), y(40, 'y');
        const QStringList first = numberedLines(1, 59);
        QTest::newRow("empty document prints the header only") << QString() << Pages{{}};
        QTest::newRow("59 lines fit the first page") << first.join("\r\n") << Pages{first};
        QTest::newRow("the 60th line on page 2") << numberedLines(1, 60).join("\r\n") << Pages{first, {"line 60"}};
        QTest::newRow("80 characters and a line end: an empty line") << a + "\r\nnext" << Pages{{a, "", "next"}};
        QTest::newRow("200 characters print as three lines") << x + x + y << Pages{{x, x, y}};
        QTest::newRow("line end straddling the 80th character") << b + "\r\nnext" << Pages{{b, "next"}};
        QTest::newRow("blank lines print, a final line end adds none") << "a\r\n\r\nb\r\n" << Pages{{"a", "", "b"}};
    }
    void documentLayout()
    {
        QFETCH(QString, text);
        QFETCH(Pages, pages);
        doc->Text->setText(text);
        QVERIFY(program->trigger(doc, "mnuFilePrint"));
        verifyPages(pages);
        QVERIFY(platform().messages.isEmpty());
    }

    void selectionHeadersOnEveryPage()
    {
        doc->Text->setText("before\r\n" + numberedLines(1, 61).join("\r\n") + "\r\nafter");
        doc->Text->setSelStart(8);
        doc->Text->setSelLength(doc->Text->TextLength() - 8 - 7);
        QVERIFY(program->trigger(doc, "mnuFilePrintSelected"));
        verifyPages({numberedLines(1, 59), {"line 60", "line 61"}}, true);
    }

    // Escape is asked at every line and ends the job there; the status shows the header of the
    // page being printed.
    void escapeIsPolledAtEachLine()
    {
        doc->Text->setText(numberedLines(1, 100).join("\r\n"));
        QStringList seen;
        platform().onEscapePoll = [&](int) { seen << ws().status.StatusText(); };
        platform().escapeAtPoll = {65};
        QVERIFY(program->trigger(doc, "mnuFilePrint"));
        QCOMPARE(seen.size(), 65);
        QCOMPARE(seen.first(), " " + header(1));
        QCOMPARE(seen.last(), " " + header(2));
        verifyPages({numberedLines(1, 59), numberedLines(60, 65)});
    }

    // Without a printer the same pages may go to a PDF file instead.
    void withoutAPrinter_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("chosen"); // in the save dialog; empty: cancelled
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("failure"); // the last message; %1 the file
        QTest::newRow("No prints nothing") << int(MsgAnswer::No) << QString() << QString() << QString();
        QTest::newRow("the dialog cancelled") << int(MsgAnswer::Yes) << QString() << QString() << QString();
        QTest::newRow("two pages of PDF") << int(MsgAnswer::Yes) << "out.pdf" << "out.pdf" << QString();
        QTest::newRow("the name gets .pdf") << int(MsgAnswer::Yes) << "out" << "out.pdf" << QString();
        QTest::newRow("a folder that isn't there") << int(MsgAnswer::Yes) << "gone/out.pdf" << QString()
                                                   << "%1 could not be written: No such file or directory.";
    }
    void withoutAPrinter()
    {
        QFETCH(int, answer);
        QFETCH(QString, chosen);
        QFETCH(QString, written);
        QFETCH(QString, failure);
        doc->Text->setText(numberedLines(1, 60).join("\r\n"));
        platform().printerAvailable = false;
        platform().answers.enqueue(answer);
        if (!chosen.isEmpty())
            platform().chooseFile(path(chosen));
        QVERIFY(program->trigger(doc, "mnuFilePrint"));

        QCOMPARE(platform().messages.first().text,
                 "No printer is set up on this computer.\r\n\r\nWrite the pages to a PDF file instead?");
        QCOMPARE(platform().messages.first().style, MsgStyle::YesNo + MsgStyle::Question);
        if (!failure.isEmpty())
            verifyMessage(failure.arg(path(chosen)), MsgStyle::Exclamation, 2);
        QCOMPARE(QDir(temp->path()).entryList({"*.pdf"}, QDir::Files), written.isEmpty() ? QStringList() : QStringList{written});
        if (!written.isEmpty()) {
            // The pages counted as on paper: 59 lines, then the 60th on a page of its own.
            const QByteArray pdf = fileBytes(path(written));
            QVERIFY(pdf.startsWith("%PDF"));
            QCOMPARE(QString::fromLatin1(pdf).count(QRegularExpression("/Type\\s*/Page[^s]")), 2);
        }
        QCOMPARE(platform().documentsPrinted, 0);
        QCOMPARE(passLeftovers(main()), QString());
    }
};

PW_TEST_MAIN(TestPrinting)
#include "tst_printing.moc"
