#include "platform/printer_sink.h"

#include <QFile>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

namespace pw {

namespace {

class PrinterLineSink : public LineSink
{
public:
    PrinterLineSink(const QString &documentName, const QString &pdfPath)
        : m_printer(pdfPath.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo())
    {
        if (!pdfPath.isEmpty()) {
            m_printer.setOutputFormat(QPrinter::PdfFormat);
            m_printer.setOutputFileName(pdfPath);
        }
        m_printer.setDocName(documentName);
        m_painter.begin(&m_printer);
        m_lineHeight = m_painter.fontMetrics().lineSpacing();
    }
    bool ok() const { return m_painter.isActive(); }
    void printLine(const QString &line) override
    {
        m_y += m_lineHeight;
        m_painter.drawText(0, m_y, line);
    }
    void newPage() override
    {
        m_printer.newPage();
        m_y = 0;
    }
    bool endDoc() override { return m_painter.end(); }

private:
    QPrinter m_printer;
    QPainter m_painter;
    int m_lineHeight = 0;
    int m_y = 0;
};

} // namespace

QString NoPrinterText()
{
    return QStringLiteral("No printer is set up on this computer.");
}

std::unique_ptr<LineSink> openDefaultPrinter(const QString &documentName, QString *error)
{
    auto sink = std::make_unique<PrinterLineSink>(documentName, QString());
    if (!sink->ok()) {
        if (error)
            *error = QStringLiteral("The default printer could not be opened.");
        return nullptr;
    }
    return sink;
}

std::unique_ptr<LineSink> openPdfFile(const QString &path, const QString &documentName, QString *error)
{
    // The PDF writer says only that it failed; a plain open first finds the reason.
    QFile probe(path);
    if (!probe.open(QIODevice::WriteOnly)) {
        if (error)
            *error = QStringLiteral("%1 could not be written: %2.").arg(path, probe.errorString());
        return nullptr;
    }
    probe.close();
    auto sink = std::make_unique<PrinterLineSink>(documentName, path);
    if (!sink->ok()) {
        if (error)
            *error = QStringLiteral("%1 could not be written.").arg(path);
        return nullptr;
    }
    return sink;
}

} // namespace pw
