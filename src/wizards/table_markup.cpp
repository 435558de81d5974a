#include "wizards/table_markup.h"

#include "core/app_state.h"

namespace pw {

namespace {

const char *const AlignTexts[] = {"ALIGN=\"LEFT\"", "ALIGN=\"CENTER\"", "ALIGN=\"RIGHT\""};
const char *const ValignTexts[] = {"VALIGN=\"TOP\"", "VALIGN=\"MIDDLE\"", "VALIGN=\"BOTTOM\"", "VALIGN=\"BASELINE\""};

void appendAligns(QString &tag, qint16 align, qint16 valign)
{
    if (align >= 1 && align <= 3)
        tag += QLatin1Char(' ') + QLatin1String(AlignTexts[align - 1]);
    if (valign >= 1 && valign <= 4)
        tag += QLatin1Char(' ') + QLatin1String(ValignTexts[valign - 1]);
}

void appendNumber(QString &tag, const char *name, qint16 value, const char *unit = "")
{
    tag += QLatin1Char(' ') + QLatin1String(name) + QStringLiteral("=\"") + QString::number(value)
           + QLatin1String(unit) + QLatin1Char('"');
}

void appendExtra(QString &tag, const QString &extra)
{
    const QString trimmed = TrimTrailing(extra);
    if (!trimmed.isEmpty())
        tag += QLatin1Char(' ') + trimmed;
}

} // namespace

void GenerateTable(const TableModel &model, const TableOptions &options,
                   const std::function<void(const MarkupPiece &)> &write,
                   const std::function<void(int done, int total)> &progress)
{
    const auto tag = [&write](const QString &text) { write({text, true}); };
    const TableSettings &s = model.settings;

    QString start = QStringLiteral("<TABLE");
    if (s.Width != -1)
        appendNumber(start, "WIDTH", s.Width, s.WidthIsPixels == 0 ? "%" : "");
    if (s.Border != -1)
        appendNumber(start, "BORDER", s.Border);
    if (s.Spacing != -1)
        appendNumber(start, "CELLSPACING", s.Spacing);
    if (s.Padding != -1)
        appendNumber(start, "CELLPADDING", s.Padding);
    appendExtra(start, s.Extra);
    tag(LineEnd + QStringLiteral("<!-- Table created using Tessaline Pagewright's Table Wizard -->") + LineEnd
        + start + QLatin1Char('>') + LineEnd);

    if (!options.caption.isEmpty()) {
        tag(QStringLiteral("<CAPTION>"));
        write({options.caption, false});
        tag(QStringLiteral("</CAPTION>") + LineEnd);
    }

    const int rows = model.rows();
    const int columns = model.columns();
    const int total = rows * columns;
    for (int r = 1; r <= rows; ++r) {
        const RowSpec &row = model.row(r);
        QString tr = QStringLiteral("    <TR");
        appendAligns(tr, row.Align, row.Valign);
        appendExtra(tr, row.Extra);
        tag(tr + QLatin1Char('>') + LineEnd);
        for (int c = 1; c <= columns; ++c) {
            if (progress)
                progress((r - 1) * columns + c, total);
            const ElementSpec &e = model.element(r, c);
            if (e.Displaced)
                continue;
            const QString type = e.IsHeader ? QStringLiteral("TH") : QStringLiteral("TD");
            QString cell = QStringLiteral("        <") + type;
            if (e.Width != -1)
                appendNumber(cell, "WIDTH", e.Width, e.WidthIsPixels == -1 ? "" : "%");
            appendAligns(cell, e.Align, e.Valign);
            if (e.Colspan != -1)
                appendNumber(cell, "COLSPAN", e.Colspan);
            if (e.Rowspan != -1)
                appendNumber(cell, "ROWSPAN", e.Rowspan);
            appendExtra(cell, e.Extra);
            tag(cell + QLatin1Char('>'));
            QString content = TrimTrailing(e.Text);
            if (content.isEmpty() && options.dataPlace)
                content = QStringLiteral("Data Element %1, %2").arg(r).arg(c);
            if (!content.isEmpty())
                write({content, false});
            tag(QStringLiteral("</") + type + QLatin1Char('>') + LineEnd);
        }
        tag(QStringLiteral("    </TR>") + LineEnd);
    }
    tag(QStringLiteral("</TABLE>") + LineEnd);
}

QList<MarkupPiece> TablePieces(const TableModel &model, const TableOptions &options)
{
    QList<MarkupPiece> pieces;
    GenerateTable(model, options, [&pieces](const MarkupPiece &piece) { pieces.append(piece); });
    return pieces;
}

} // namespace pw
