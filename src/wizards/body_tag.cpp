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
    const ParsedTag parsed = ParseTag(tag);
    for (const TagAttribute &attribute : parsed.attributes) {
        const QString &name = attribute.name;
        if (name == QLatin1String("BACKGROUND") || name == QLatin1String("ONLOAD")) {
            if (!attribute.quoted) {
                read.nonStandard = true;
                return read;
            }
            if (name == QLatin1String("BACKGROUND"))
                read.texture = attribute.value;
            continue;
        }
        std::optional<qint32> *slot = nullptr;
        if (name == QLatin1String("BGCOLOR"))
            slot = &read.background;
        for (size_t k = 0; k < BodyColorNames.size(); ++k)
            if (name == QLatin1String(BodyColorNames[k]))
                slot = &read.colors[k];
        if (!slot || !attribute.value.startsWith(QLatin1Char('#')))
            continue; // a colour by name ("white") is not read; it stays in the tag
        *slot = HexToColor(attribute.value.mid(1));
        if (!*slot) {
            read.nonStandard = true;
            return read;
        }
    }
    read.nonStandard = parsed.broken;
    return read;
}

std::optional<TagSpan> FindBodyTag(EditingSurface &surface)
{
    const int start = surface.Find(QStringLiteral("<BODY"), 0, -1, EditingSurface::NoHighlight);
    if (start < 0)
        return std::nullopt;
    const int end = TagEnd(surface, start);
    return TagSpan{start, end < 0 ? 0 : end + 1 - start};
}

} // namespace pw
