#pragma once

#include "core/font_class.h"

#include <QList>
#include <QString>

namespace pw {

// A piece of a surface: its characters and the font of each run of them. Line ends are single
// '\n' characters here, as the document holds them.
struct FormattedFragment {
    struct Run {
        int length = 0;
        FontClass font;
    };
    QString text;
    QList<Run> runs;
    // Offsets of the '\n's that only break a long line for display: no line end, no character.
    QList<int> breaks;

    bool isEmpty() const { return text.isEmpty(); }
    void append(const QString &piece, const FontClass &font);
    void append(const FormattedFragment &other);
    // The characters [offset, offset + length) with their formats.
    FormattedFragment mid(int offset, int length) const;
    // The fragment as the user's text: the display breaks taken out.
    FormattedFragment withoutBreaks() const;
    // A fragment of plain text in one font; any line end becomes one '\n'.
    static FormattedFragment plain(const QString &text, const FontClass &font);

    // The string form kept by SelRTF: a header, the formats, the runs, then the text with CR LF.
    QString serialize() const;
    // Reads a string made by serialize(); false when the string is not one.
    static bool parse(const QString &serialized, FormattedFragment *out);
};

} // namespace pw
