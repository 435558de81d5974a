#include "files/printing.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/message_box.h"
#include "platform/platform.h"
#include "platform/printer_sink.h"

#include <QFileInfo>

namespace pw {

namespace {

QString pageHeader(int page, const QString &caption, bool selection)
{
    QString header = QStringLiteral("Page: ") + QString::number(page) + QStringLiteral("  Document: ") + caption;
    if (selection)
        header += QStringLiteral(" - Selected text");
    return header;
}

// Where no printer is set up, the same pages go to a PDF file the user names; null when the user
// would rather not, or the file can't be written (which is told).
std::unique_ptr<LineSink> pdfInstead(Workspace &ws, const frmDoc &document, QString *pdfPath)
{
    if (ws.MsgBox(NoPrinterText() + LineEnd + LineEnd + QStringLiteral("Write the pages to a PDF file instead?"),
                  MsgStyle::YesNo + MsgStyle::Question)
        != MsgAnswer::Yes)
        return nullptr;
    CommonDialog &dialog = ws.CMDialog1;
    dialog.Flags = 0;
    dialog.Filter = QStringLiteral("PDF (*.pdf)|*.pdf");
    dialog.FilterIndex = 1;
    dialog.DefaultExt = QStringLiteral("pdf");
    const QFileInfo source(document.isUntitled() ? QStringLiteral("Untitled") : document.state().path());
    dialog.InitDir = document.isUntitled() ? QString() : source.absolutePath();
    dialog.FileName = (document.isUntitled() ? QString() : source.absolutePath() + QLatin1Char('/'))
                      + source.completeBaseName() + QStringLiteral(".pdf");
    if (dialog.ShowSave() != ErrorCode::None || dialog.FileName.isEmpty())
        return nullptr;
    QString path = dialog.FileName;
    if (!path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        path += QStringLiteral(".pdf");
    if (QFileInfo::exists(path)
        && ws.MsgBox(path + LineEnd + QStringLiteral("Replace existing file?"), MsgStyle::YesNo + MsgStyle::Question)
               != MsgAnswer::Yes)
        return nullptr;
    QString error;
    std::unique_ptr<LineSink> sink = openPdfFile(path, document.Caption(), &error);
    if (!sink)
        ws.MsgBox(error, MsgStyle::Exclamation);
    *pdfPath = path;
    return sink;
}

void printText(Workspace &ws, const frmDoc &document, const QString &text, bool selection)
{
    QString error;
    QString pdfPath;
    std::unique_ptr<LineSink> printer = ws.platform.printerInstalled()
                                            ? ws.platform.openPrinter(document.Caption(), &error)
                                            : pdfInstead(ws, document, &pdfPath);
    if (!printer) {
        if (!error.isEmpty())
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
    if (!printer->endDoc()) {
        pass.pauseWaitCursor();
        ws.MsgBox(pdfPath.isEmpty() ? QStringLiteral("The pages could not all be printed.")
                                    : QStringLiteral("%1 could not be written.").arg(pdfPath),
                  MsgStyle::Exclamation);
    }
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
