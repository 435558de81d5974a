#include "core/formatted_fragment.h"

namespace pw {

namespace {
const QString kHeader = QStringLiteral("{\\pwfrag1");
constexpr QChar kSection = QChar(0x1E);
constexpr QChar kField = QChar(0x1F);
constexpr QChar kItem = QChar(0x1D);
} // namespace

void FormattedFragment::append(const QString &piece, const FontClass &font)
{
    if (piece.isEmpty())
        return;
    text += piece;
    if (!runs.isEmpty() && runs.last().font == font)
        runs.last().length += int(piece.size());
    else
        runs.append({int(piece.size()), font});
}

FormattedFragment FormattedFragment::mid(int offset, int length) const
{
    FormattedFragment f;
    int runStart = 0;
    for (const Run &run : runs) {
        const int a = qMax(offset, runStart);
        const int b = qMin(offset + length, runStart + run.length);
        if (a < b)
            f.append(text.mid(a, b - a), run.font);
        runStart += run.length;
        if (runStart >= offset + length)
            break;
    }
    for (const int at : breaks)
        if (at >= offset && at < offset + length)
            f.breaks.append(at - offset);
    return f;
}

FormattedFragment FormattedFragment::withoutBreaks() const
{
    if (breaks.isEmpty())
        return *this;
    FormattedFragment f;
    int from = 0;
    for (const int at : breaks) {
        f.append(mid(from, at - from));
        from = at + 1;
    }
    f.append(mid(from, int(text.size()) - from));
    return f;
}

FormattedFragment FormattedFragment::plain(const QString &text, const FontClass &font)
{
    FormattedFragment f;
    QString t = text;
    t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    t.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    t.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    f.append(t, font);
    return f;
}

void FormattedFragment::append(const FormattedFragment &other)
{
    for (const int at : other.breaks)
        breaks.append(int(text.size()) + at);
    int offset = 0;
    for (const Run &run : other.runs) {
        append(other.text.mid(offset, run.length), run.font);
        offset += run.length;
    }
}

QString FormattedFragment::serialize() const
{
    QList<FontClass> fonts;
    QString runText;
    for (const Run &run : runs) {
        qsizetype index = fonts.indexOf(run.font);
        if (index < 0) {
            index = fonts.size();
            fonts.append(run.font);
        }
        runText += QString::number(run.length) + QLatin1Char(':') + QString::number(index) + kItem;
    }
    QString out = kHeader + kSection;
    for (const FontClass &c : fonts) {
        out += c.Name + kField + QString::number(c.Size) + kField
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

    QList<FontClass> formats;
    const QStringView formatText = QStringView(serialized).mid(formatsStart, formatsEnd - formatsStart);
    for (QStringView item : formatText.split(kItem, Qt::SkipEmptyParts)) {
        const auto fields = item.split(kField);
        if (fields.size() != 5)
            return false;
        FontClass f;
        f.Name = fields[0].toString();
        f.Size = qint16(qRound(fields[1].toDouble()));
        f.Bold = fields[2] == u"1";
        f.Italic = fields[3] == u"1";
        f.Color = fields[4].toInt();
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
