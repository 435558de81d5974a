#include "wizards/tag_reading.h"

#include "core/editing_surface.h"

namespace pw {

namespace {

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

} // namespace

const TagAttribute *ParsedTag::find(const char *wanted) const
{
    for (const TagAttribute &attribute : attributes)
        if (attribute.name == QLatin1String(wanted))
            return &attribute;
    return nullptr;
}

QString ParsedTag::othersThan(std::initializer_list<const char *> names) const
{
    QStringList others;
    for (const TagAttribute &attribute : attributes)
        if (std::none_of(names.begin(), names.end(), [&](const char *n) { return attribute.name == QLatin1String(n); }))
            others.append(attribute.text);
    return others.join(QLatin1Char(' '));
}

ParsedTag ParseTag(const QString &tag)
{
    ParsedTag parsed;
    const qsizetype n = tag.size();
    qsizetype i = tag.startsWith(QLatin1Char('<')) ? 1 : 0;
    const qsizetype nameStart = i;
    while (i < n && !isBlank(tag[i]) && tag[i] != QLatin1Char('>'))
        ++i;
    parsed.name = tag.mid(nameStart, i - nameStart).toUpper();
    for (;;) {
        while (i < n && isBlank(tag[i]))
            ++i;
        if (i >= n) {
            parsed.broken = true;
            return parsed;
        }
        if (tag[i] == QLatin1Char('>'))
            return parsed;
        const qsizetype start = i;
        while (i < n && !isBlank(tag[i]) && tag[i] != QLatin1Char('=') && tag[i] != QLatin1Char('>'))
            ++i;
        TagAttribute attribute;
        attribute.name = tag.mid(start, i - start).toUpper();
        qsizetype j = i;
        while (j < n && isBlank(tag[j]))
            ++j;
        if (j < n && tag[j] == QLatin1Char('=')) {
            i = j + 1;
            while (i < n && isBlank(tag[i]))
                ++i;
            if (i < n && tag[i] == QLatin1Char('"')) {
                const qsizetype close = tag.indexOf(QLatin1Char('"'), i + 1);
                if (close < 0) {
                    parsed.broken = true;
                    return parsed;
                }
                attribute.value = tag.mid(i + 1, close - i - 1);
                attribute.quoted = true;
                i = close + 1;
            } else {
                const qsizetype valueStart = i;
                while (i < n && !isBlank(tag[i]) && tag[i] != QLatin1Char('>'))
                    ++i;
                attribute.value = tag.mid(valueStart, i - valueStart);
            }
        }
        attribute.text = tag.mid(start, i - start);
        parsed.attributes.append(attribute);
    }
}

int TagEnd(EditingSurface &surface, int start)
{
    constexpr int Piece = 4096;
    const int length = surface.TextLength();
    bool inQuotes = false;
    for (int at = start; at < length; at += Piece) {
        const QString piece = surface.Mid(at, Piece);
        for (qsizetype k = 0; k < piece.size(); ++k) {
            if (piece[k] == QLatin1Char('"'))
                inQuotes = !inQuotes;
            else if (piece[k] == QLatin1Char('>') && !inQuotes)
                return at + int(k);
        }
    }
    return -1;
}

std::optional<TagSpan> TagAround(EditingSurface &surface, int position)
{
    constexpr int Reach = 4096;
    const int from = qMax(0, position - Reach);
    const QString before = surface.Mid(from, position - from);
    const qsizetype open = before.lastIndexOf(QLatin1Char('<'));
    if (open < 0 || before.indexOf(QLatin1Char('>'), open) >= 0)
        return std::nullopt;
    const int start = from + int(open);
    const int end = TagEnd(surface, start);
    if (end < position || end - start > 2 * Reach)
        return std::nullopt;
    return TagSpan{start, end + 1 - start};
}

std::optional<ParsedTag> SelectTagAtCaret(EditingSurface &surface, const QString &name)
{
    if (surface.SelLength() != 0)
        return std::nullopt;
    const std::optional<TagSpan> span = TagAround(surface, surface.SelStart());
    if (!span)
        return std::nullopt;
    ParsedTag tag = ParseTag(surface.Mid(span->start, span->length));
    if (tag.name != name || tag.broken)
        return std::nullopt;
    surface.setSelStart(span->start);
    surface.setSelLength(span->length);
    return tag;
}

} // namespace pw
