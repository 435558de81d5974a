#include "core/formatted_fragment.h"

#include "core/font_class.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace pw {

namespace {
const QString kHeader = QStringLiteral("{\\pwfrag1");
constexpr QChar kSection = QChar(0x1E);
constexpr QChar kField = QChar(0x1F);
constexpr QChar kItem = QChar(0x1D);
} // namespace

void FormattedFragment::append(const QString &piece, const QTextCharFormat &format)
{
    if (piece.isEmpty())
        return;
    text += piece;
    if (!runs.isEmpty() && runs.last().format == format)
        runs.last().length += int(piece.size());
    else
        runs.append({int(piece.size()), format});
}

FormattedFragment FormattedFragment::mid(int offset, int length) const
{
    FormattedFragment f;
    int runStart = 0;
    for (const Run &run : runs) {
        const int a = qMax(offset, runStart);
        const int b = qMin(offset + length, runStart + run.length);
        if (a < b)
            f.append(text.mid(a, b - a), run.format);
        runStart += run.length;
        if (runStart >= offset + length)
            break;
    }
    return f;
}

FormattedFragment FormattedFragment::plain(const QString &text, const QTextCharFormat &format)
{
    FormattedFragment f;
    QString t = text;
    t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    t.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    t.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    f.append(t, format);
    return f;
}

void FormattedFragment::append(const FormattedFragment &other)
{
    int offset = 0;
    for (const Run &run : other.runs) {
        append(other.text.mid(offset, run.length), run.format);
        offset += run.length;
    }
}

namespace {

// Format runs are walked from the start of their line; a line longer than this is copied first,
// so that what a piece costs doesn't grow with the length of its line.
constexpr int LongLine = 4096;

FormattedFragment walk(const QTextDocument *document, int from, int to)
{
    FormattedFragment f;
    for (QTextBlock block = document->findBlock(from); block.isValid() && block.position() < to;
         block = block.next()) {
        const int blockStart = block.position();
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment frag = it.fragment();
            const int a = qMax(from, frag.position());
            const int b = qMin(to, frag.position() + frag.length());
            if (a < b)
                f.append(frag.text().mid(a - frag.position(), b - a), frag.charFormat());
        }
        const int separator = blockStart + block.length() - 1;
        if (separator >= from && separator < to && block.next().isValid()) {
            // A line end takes the format of what stands before it.
            QTextCharFormat format = f.runs.isEmpty() ? block.charFormat() : f.runs.last().format;
            f.append(QStringLiteral("\n"), format);
        }
    }
    return f;
}

} // namespace

FormattedFragment FormattedFragment::capture(const QTextDocument *document, int from, int to)
{
    if (to <= from)
        return {};
    if (document->findBlock(from).length() <= LongLine)
        return walk(document, from, to);
    QTextCursor range(const_cast<QTextDocument *>(document));
    range.setPosition(from);
    range.setPosition(to, QTextCursor::KeepAnchor);
    QTextDocument piece;
    QTextCursor(&piece).insertFragment(range.selection());
    return walk(&piece, 0, to - from);
}

int FormattedFragment::insertInto(QTextDocument *document, int position) const
{
    QTextCursor cursor(document);
    cursor.setPosition(position);
    insertAt(cursor);
    return cursor.position() - position;
}

void FormattedFragment::insertAt(QTextCursor &cursor) const
{
    int offset = 0;
    for (const Run &run : runs) {
        cursor.insertText(text.mid(offset, run.length), run.format);
        offset += run.length;
    }
}

QString FormattedFragment::serialize() const
{
    QList<QTextCharFormat> formats;
    QString runText;
    for (const Run &run : runs) {
        qsizetype index = formats.indexOf(run.format);
        if (index < 0) {
            index = formats.size();
            formats.append(run.format);
        }
        runText += QString::number(run.length) + QLatin1Char(':') + QString::number(index) + kItem;
    }
    QString out = kHeader + kSection;
    for (const QTextCharFormat &format : formats) {
        const FontClass c = FontClass::fromFormat(format);
        out += c.Name + kField + QString::number(format.fontPointSize()) + kField
               + QString::number(c.Bold ? 1 : 0) + kField + QString::number(c.Italic ? 1 : 0) + kField
               + QString::number(c.Color) + kItem;
    }
    out += kSection + runText + kSection;
    QString body = text;
    body.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return out + body;
}

bool FormattedFragment::parse(const QString &serialized, FormattedFragment *out)
{
    if (!serialized.startsWith(kHeader + kSection))
        return false;
    const qsizetype formatsStart = kHeader.size() + 1;
    const qsizetype formatsEnd = serialized.indexOf(kSection, formatsStart);
    if (formatsEnd < 0)
        return false;
    const qsizetype runsEnd = serialized.indexOf(kSection, formatsEnd + 1);
    if (runsEnd < 0)
        return false;

    QList<QTextCharFormat> formats;
    const QStringView formatText = QStringView(serialized).mid(formatsStart, formatsEnd - formatsStart);
    for (QStringView item : formatText.split(kItem, Qt::SkipEmptyParts)) {
        const auto fields = item.split(kField);
        if (fields.size() != 5)
            return false;
        QTextCharFormat f;
        f.setFontFamilies({fields[0].toString()});
        if (double size = fields[1].toDouble(); size > 0)
            f.setFontPointSize(size);
        f.setFontWeight(fields[2] == u"1" ? QFont::Bold : QFont::Normal);
        f.setFontItalic(fields[3] == u"1");
        f.setForeground(colorFromValue(fields[4].toInt()));
        formats.append(f);
    }

    FormattedFragment result;
    QString body = serialized.mid(runsEnd + 1);
    body.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    result.text = body;
    qsizetype total = 0;
    const QStringView runText = QStringView(serialized).mid(formatsEnd + 1, runsEnd - formatsEnd - 1);
    for (QStringView item : runText.split(kItem, Qt::SkipEmptyParts)) {
        const auto fields = item.split(QLatin1Char(':'));
        bool okLength = false, okIndex = false;
        const int length = fields.value(0).toInt(&okLength);
        const int index = fields.value(1).toInt(&okIndex);
        if (fields.size() != 2 || !okLength || !okIndex || length < 0 || index < 0 || index >= formats.size())
            return false;
        result.runs.append({length, formats[index]});
        total += length;
    }
    if (total != result.text.size())
        return false;
    *out = std::move(result);
    return true;
}

} // namespace pw
