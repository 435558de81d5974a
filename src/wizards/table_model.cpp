#include "wizards/table_model.h"

#include "core/app_state.h"

#include <cmath>

namespace pw {

void TableModel::setRows(int rows)
{
    TableRows.resize(rows);
    for (RowSpec &r : TableRows)
        if (!r.Edited)
            r.Extra.clear();
    TableElements.resize(qsizetype(rows) * m_columns);
    freshen();
}

void TableModel::setColumns(int columns)
{
    m_columns = columns;
    TableElements.resize(qsizetype(rows()) * m_columns);
    freshen();
}

// An element not edited has no text, no extra and nothing given for width and spans; whether it
// is displaced is kept.
void TableModel::freshen()
{
    for (ElementSpec &e : TableElements) {
        if (e.Edited)
            continue;
        e.Text.clear();
        e.Extra.clear();
        e.Width = -1;
        e.Colspan = -1;
        e.Rowspan = -1;
    }
}

std::optional<TableModel::SpanShown> TableModel::enterSpan(int rindex, int cindex, Span direction,
                                                           const QString &text, int max)
{
    ElementSpec &e = element(rindex, cindex);
    qint16 &span = direction == Span::Columns ? e.Colspan : e.Rowspan;
    const bool numeric = IsNumeric(text);
    const double value = numeric ? std::round(text.trimmed().toDouble()) : 0;
    if (value == span)
        return std::nullopt;
    if (!numeric) {
        if (span != -1) {
            span = -1;
            release(rindex, cindex, direction);
        }
        return SpanShown{};
    }
    // A number beyond the bar's range stands as the nearest the bar allows.
    const int given = int(qBound(0.0, value, double(qMax(0, max))));
    span = qint16(given);
    e.Edited = True;
    mark(rindex, cindex, direction, given);
    return SpanShown{QString::number(given), given};
}

// No overlap is looked for: a cell under a new span is marked whatever it held, and keeps its own
// values for later.
void TableModel::mark(int rindex, int cindex, Span direction, int span)
{
    for (int i = 1; i <= span - 1; ++i) {
        const int r = direction == Span::Rows ? rindex + i : rindex;
        const int c = direction == Span::Columns ? cindex + i : cindex;
        if (r > rows() || c > m_columns)
            break;
        element(r, c).Displaced = True;
    }
}

// Stops at the first cell that is not displaced; frees cells another span displaced too.
void TableModel::release(int rindex, int cindex, Span direction)
{
    const int last = direction == Span::Columns ? m_columns : rows();
    for (int i = (direction == Span::Columns ? cindex : rindex) + 1; i <= last; ++i) {
        ElementSpec &e = direction == Span::Columns ? element(rindex, i) : element(i, cindex);
        if (!e.Displaced)
            break;
        e.Displaced = False;
    }
}

void TableModel::copyRowDown(int rindex)
{
    const RowSpec source = row(rindex);
    for (int r = rindex; r <= rows(); ++r)
        row(r) = source;
}

void TableModel::copyElementOn(int rindex, int cindex)
{
    const int from = GetElementIndex(rindex, cindex);
    const ElementSpec source = TableElements[from - 1];
    for (qsizetype i = from; i < TableElements.size(); ++i)
        TableElements[i] = source;
}

void TableModel::copyFirstRowDown()
{
    for (int r = 2; r <= rows(); ++r)
        for (int c = 1; c <= m_columns; ++c)
            element(r, c) = element(1, c);
}

void TableModel::reset()
{
    settings = TableSettings{};
    m_columns = 1;
    TableRows = {RowSpec{}};
    TableElements = {ElementSpec{}};
}

} // namespace pw
