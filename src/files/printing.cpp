#include "files/printing.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/message_box.h"
#include "platform/platform.h"

namespace pw {

namespace {

QString pageHeader(int page, const QString &caption, bool selection)
{
    QString header = QStringLiteral("Page: ") + QString::number(page) + QStringLiteral("  Document: ") + caption;
    if (selection)
        header += QStringLiteral(" - Selected text");
    return header;
}

void printText(Workspace &ws, const frmDoc &document, const QString &text, bool selection)
{
    QString error;
    std::unique_ptr<LineSink> printer = ws.platform.openPrinter(document.Caption(), &error);
    if (!printer) {
        ws.MsgBox(error, MsgStyle::Exclamation);
        return;
    }

    int page = 1;
    QString header = pageHeader(page, document.Caption(), selection);
    LongPass pass(ws, header);
    printer->printLine(header);
    printer->printLine(QStringLiteral(" "));

    const qsizetype length = text.size();
    qsizetype position = 0;
    qsizetype handled = 0;
    int counter = 2;
    while (handled < length) {
        const QStringView chunk = QStringView(text).mid(position, PrintLineLength);
        QStringView line;
        qsizetype end = chunk.indexOf(LineEnd);
        // A line end whose CR is the last of the 80 still ends this line, so that no bare CR or
        // LF reaches the printer.
        if (end < 0 && chunk.size() == PrintLineLength && chunk.endsWith(QLatin1Char('\r'))
            && position + PrintLineLength < length && text[position + PrintLineLength] == QLatin1Char('\n'))
            end = PrintLineLength - 1;
        if (end >= 0) {
            line = chunk.left(end);
            position += end + 2;
            handled += 2;
        } else {
            line = chunk;
            position += chunk.size();
        }
        if (counter > PrintPageLimit) {
            printer->newPage();
            header = pageHeader(++page, document.Caption(), selection);
            printer->printLine(header);
            printer->printLine(QStringLiteral(" "));
            ws.status.SetStatusText(header);
            counter = 2;
        }
        printer->printLine(line.toString());
        ++counter;
        handled += line.size();
        pass.step(handled, length);
        if (pass.escapePressed())
            break;
    }
    printer->endDoc();
}

} // namespace

void PrintDocument(Workspace &workspace, frmDoc &document)
{
    printText(workspace, document, document.Text->Text(), false);
}

void PrintSelection(Workspace &workspace, frmDoc &document)
{
    // The command is offered only with a selection; without one there is nothing to print.
    if (document.Text->SelLength() > 0)
        printText(workspace, document, document.Text->SelText(), true);
}

} // namespace pw
