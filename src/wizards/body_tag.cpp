#include "wizards/body_tag.h"

#include "core/editing_surface.h"

namespace pw {

int HexDigitValue(QChar c)
{
    if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
        return c.unicode() - '0';
    if (c >= QLatin1Char('A') && c <= QLatin1Char('F'))
        return c.unicode() - 'A' + 10;
    return 0;
}

std::optional<qint32> HexToColor(const QString &digits)
{
    if (digits.size() > 6)
        return std::nullopt;
    const QString padded = digits.rightJustified(6, QLatin1Char('0'));
    const auto pair = [&padded](int at) { return HexDigitValue(padded[at]) * 16 + HexDigitValue(padded[at + 1]); };
    return pair(0) | (pair(2) << 8) | (pair(4) << 16);
}

namespace {

// The tag split around the attribute `name`: what stands before its blank, and what follows its
// value (from the next blank or ">"). Without the attribute: all but the last character, and ">".
std::pair<QString, QString> splitAt(const QString &tag, const QString &name)
{
    const qsizetype p = tag.indexOf(QLatin1Char(' ') + name);
    if (p < 0)
        return {tag.chopped(qMin<qsizetype>(1, tag.size())), QStringLiteral(">")};
    const qsizetype blank = tag.indexOf(QLatin1Char(' '), p + 1);
    const qsizetype close = tag.indexOf(QLatin1Char('>'), p + 1);
    qsizetype right = tag.size();
    if (blank >= 0 && (close < 0 || blank < close))
        right = blank;
    else if (close >= 0)
        right = close;
    return {tag.left(p), tag.mid(right)};
}

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

} // namespace

QString Updatetag(const QString &tag, const QString &name, const QString &value)
{
    auto [left, right] = splitAt(tag, name);
    if (!left.endsWith(QLatin1Char(' ')))
        left += QLatin1Char(' ');
    return left + name + QStringLiteral("=\"") + value + QLatin1Char('"') + right;
}

QString DeleteSubTag(const QString &tag, const QString &name)
{
    const auto [left, right] = splitAt(tag, name);
    return left + right;
}

BodyPreload ReadBodyTag(const QString &tag)
{
    BodyPreload read;
    const qsizetype n = tag.size();
    qsizetype i = qMin<qsizetype>(5, n); // behind "<BODY"
    for (;;) {
        while (i < n && isBlank(tag[i]))
            ++i;
        if (i >= n) {
            read.nonStandard = true; // no ">"
            return read;
        }
        if (tag[i] == QLatin1Char('>'))
            return read;
        const qsizetype nameStart = i;
        while (i < n && !isBlank(tag[i]) && tag[i] != QLatin1Char('=') && tag[i] != QLatin1Char('>'))
            ++i;
        const QString name = tag.mid(nameStart, i - nameStart).toUpper();
        qsizetype j = i;
        while (j < n && isBlank(tag[j]))
            ++j;
        QString value;
        bool quoted = false;
        if (j < n && tag[j] == QLatin1Char('=')) {
            i = j + 1;
            while (i < n && isBlank(tag[i]))
                ++i;
            if (i < n && tag[i] == QLatin1Char('"')) {
                const qsizetype close = tag.indexOf(QLatin1Char('"'), i + 1);
                if (close < 0) {
                    read.nonStandard = true;
                    return read;
                }
                value = tag.mid(i + 1, close - i - 1);
                quoted = true;
                i = close + 1;
            } else {
                const qsizetype valueStart = i;
                while (i < n && !isBlank(tag[i]) && tag[i] != QLatin1Char('>'))
                    ++i;
                value = tag.mid(valueStart, i - valueStart);
            }
        }
        if (name == QLatin1String("BACKGROUND") || name == QLatin1String("ONLOAD")) {
            if (!quoted) {
                read.nonStandard = true;
                return read;
            }
            if (name == QLatin1String("BACKGROUND"))
                read.texture = value;
            continue;
        }
        std::optional<qint32> *slot = nullptr;
        if (name == QLatin1String("BGCOLOR"))
            slot = &read.background;
        for (size_t k = 0; k < BodyColorNames.size(); ++k)
            if (name == QLatin1String(BodyColorNames[k]))
                slot = &read.colors[k];
        if (!slot || !value.startsWith(QLatin1Char('#')))
            continue; // a colour by name ("white") is not read; it stays in the tag
        *slot = HexToColor(value.mid(1));
        if (!*slot) {
            read.nonStandard = true;
            return read;
        }
    }
}

std::optional<TagSpan> FindBodyTag(EditingSurface &surface)
{
    const int start = surface.Find(QStringLiteral("<BODY"), 0, -1, EditingSurface::NoHighlight);
    if (start < 0)
        return std::nullopt;
    constexpr int Piece = 4096;
    const int length = surface.TextLength();
    bool inQuotes = false;
    for (int at = start; at < length; at += Piece) {
        const QString piece = surface.Mid(at, Piece);
        for (qsizetype k = 0; k < piece.size(); ++k) {
            if (piece[k] == QLatin1Char('"'))
                inQuotes = !inQuotes;
            else if (piece[k] == QLatin1Char('>') && !inQuotes)
                return TagSpan{start, at + int(k) + 1 - start};
        }
    }
    return TagSpan{start, 0};
}

} // namespace pw
