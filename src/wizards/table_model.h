#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace pw {

// The table of the Table Wizard, apart from its dialog. Numbers are 16-bit, -1 where a value is not
// given (no attribute is generated); flags are -1 true, 0 false. Texts are kept as typed and read
// without their trailing blanks.
struct TableSettings {
    qint16 Width = -1;
    qint16 WidthIsPixels = 0;
    qint16 Border = -1;
    qint16 Spacing = -1;
    qint16 Padding = -1;
    QString Extra;
};

struct RowSpec {
    qint16 Edited = 0;
    qint16 Align = 0;  // 0 Default, 1 Left, 2 Center, 3 Right
    qint16 Valign = 0; // 0 Default, 1 Top, 2 Middle, 3 Bottom, 4 Baseline
    QString Extra;
    bool operator==(const RowSpec &) const = default;
};

// One cell, called an element. A displaced element lies under another's span and writes nothing.
struct ElementSpec {
    qint16 Edited = 0;
    qint16 Displaced = 0;
    qint16 Width = -1;
    qint16 WidthIsPixels = 0;
    qint16 IsHeader = 0;
    qint16 Align = 0;
    qint16 Valign = 0;
    qint16 Colspan = -1;
    qint16 Rowspan = -1;
    QString Text;
    QString Extra;
    bool operator==(const ElementSpec &) const = default;
};

class TableModel
{
public:
    // At most this many elements: their count and every index are 16-bit.
    static constexpr int MaxElements = 32767;
    enum class Span { Columns, Rows };

    TableModel() { reset(); }

    TableSettings settings;
    QList<RowSpec> TableRows;         // row r at r - 1
    QList<ElementSpec> TableElements; // flat index i at i - 1, row by row

    int rows() const { return int(TableRows.size()); }
    int columns() const { return m_columns; }

    // (rindex - 1) x columns + cindex, from 1.
    int GetElementIndex(int rindex, int cindex) const { return (rindex - 1) * m_columns + cindex; }
    ElementSpec &element(int rindex, int cindex) { return TableElements[GetElementIndex(rindex, cindex) - 1]; }
    const ElementSpec &element(int rindex, int cindex) const { return TableElements[GetElementIndex(rindex, cindex) - 1]; }
    RowSpec &row(int rindex) { return TableRows[rindex - 1]; }
    const RowSpec &row(int rindex) const { return TableRows[rindex - 1]; }

    // A new shape. Records keep their flat index, so that contents move when the columns change;
    // records not edited get their fresh values.
    void setRows(int rows);
    void setColumns(int columns);

    // A span box's text against the element at (rindex, cindex), the bar allowing up to max: a new
    // span marks the cells it covers (whatever they hold), a text that is not a number releases
    // them up to the first cell not displaced. Returns what the box and the bar show afterwards, or
    // nothing when the text's value is the span already.
    struct SpanShown {
        QString box;
        int bar = 0;
    };
    std::optional<SpanShown> enterSpan(int rindex, int cindex, Span direction, const QString &text, int max);

    // Whole records copied, Displaced included: the row onto every row from it to the last; the
    // element onto every element behind it in flat order; row 1's elements onto each row below.
    void copyRowDown(int rindex);
    void copyElementOn(int rindex, int cindex);
    void copyFirstRowDown();

    // One row and one element with fresh values, nothing given for the table.
    void reset();

private:
    void freshen();
    void mark(int rindex, int cindex, Span direction, int span);
    void release(int rindex, int cindex, Span direction);

    int m_columns = 1;
};

} // namespace pw
