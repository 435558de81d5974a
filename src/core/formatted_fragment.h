#pragma once

#include <QList>
#include <QString>
#include <QTextCharFormat>

class QTextDocument;
class QTextCursor;

namespace pw {

// A piece of a surface: its characters and the format of each run of them. Line ends are single
// '\n' characters here, as the document holds them.
struct FormattedFragment {
    struct Run {
        int length = 0;
        QTextCharFormat format;
    };
    QString text;
    QList<Run> runs;

    bool isEmpty() const { return text.isEmpty(); }
    // Length as the surface counts it: a line end is two characters.
    int surfaceLength() const { return int(text.size() + text.count(QLatin1Char('\n'))); }
    void append(const QString &piece, const QTextCharFormat &format);
    void append(const FormattedFragment &other);
    // The characters [offset, offset + length) with their formats.
    FormattedFragment mid(int offset, int length) const;
    // A fragment of plain text in one format; any line end becomes one '\n'.
    static FormattedFragment plain(const QString &text, const QTextCharFormat &format);

    // The characters of [from, to) of a document, by document position. Costs what the range holds,
    // not what its line holds.
    static FormattedFragment capture(const QTextDocument *document, int from, int to);
    // Inserts at a document position; returns the number of document characters inserted.
    int insertInto(QTextDocument *document, int position) const;
    // Inserts at the cursor, leaving it behind the insertion.
    void insertAt(QTextCursor &cursor) const;

    // The string form kept by SelRTF: a header, the formats, the runs, then the text with CR LF.
    QString serialize() const;
    // Reads a string made by serialize(); false when the string is not one.
    static bool parse(const QString &serialized, FormattedFragment *out);
};

} // namespace pw
