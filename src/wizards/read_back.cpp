#include "wizards/read_back.h"

#include <QRegularExpression>

namespace pw {

namespace {

struct Tag {
    int start = 0;   // its "<"
    int nameEnd = 0; // behind its name
    int end = 0;     // behind its ">"
    QString name;    // upper case
    bool closing = false;
};

// The tags of the names given (upper case) in text[from, to), in order. A tag ends at its first ">".
QList<Tag> tagsIn(const QString &text, int from, int to, const QList<QLatin1String> &names)
{
    QList<Tag> tags;
    const QStringView view(text);
    int i = from;
    while (true) {
        i = int(text.indexOf(QLatin1Char('<'), i));
        if (i < 0 || i >= to)
            break;
        int j = i + 1;
        const bool closing = j < to && text[j] == QLatin1Char('/');
        if (closing)
            ++j;
        const int nameStart = j;
        while (j < to && text[j].isLetterOrNumber())
            ++j;
        if (j == nameStart || j >= to || (text[j] != QLatin1Char('>') && !text[j].isSpace())) {
            i = nameStart;
            continue;
        }
        const QStringView name = view.mid(nameStart, j - nameStart);
        const auto match = std::find_if(names.begin(), names.end(), [name](QLatin1String n) {
            return name.compare(n, Qt::CaseInsensitive) == 0;
        });
        if (match == names.end()) {
            i = j;
            continue;
        }
        const int close = int(text.indexOf(QLatin1Char('>'), j));
        if (close < 0 || close >= to)
            break;
        tags.append({i, j, close + 1, QString(*match), closing});
        i = close + 1;
    }
    return tags;
}

struct Attribute {
    QString name; // upper case
    QString value;
    bool hasValue = false;
};

QList<Attribute> attributesOf(const QString &text, const Tag &tag)
{
    static const QRegularExpression attribute(
        QStringLiteral("([^\\s=>]+)(?:\\s*=\\s*(\"[^\"]*\"|'[^']*'|[^\\s>]*))?"));
    QList<Attribute> out;
    const QString inside = text.mid(tag.nameEnd, tag.end - 1 - tag.nameEnd);
    auto matches = attribute.globalMatch(inside);
    while (matches.hasNext()) {
        const QRegularExpressionMatch m = matches.next();
        Attribute a;
        a.name = m.captured(1).toUpper();
        a.hasValue = m.capturedStart(2) >= 0;
        a.value = m.captured(2);
        if (a.value.size() >= 2 &&
            (a.value.front() == QLatin1Char('"') || a.value.front() == QLatin1Char('\'')))
            a.value = a.value.mid(1, a.value.size() - 2);
        out.append(a);
    }
    return out;
}

// The innermost pair of a start and an end tag around position; an end tag closes the nearest
// start tag of its name, and start tags left open inside that pair are dropped.
std::optional<std::pair<Tag, Tag>> enclosing(const QList<Tag> &tags, int position)
{
    QList<Tag> open;
    std::optional<std::pair<Tag, Tag>> best;
    for (const Tag &tag : tags) {
        if (!tag.closing) {
            open.append(tag);
            continue;
        }
        for (qsizetype k = open.size() - 1; k >= 0; --k) {
            if (open[k].name != tag.name)
                continue;
            const Tag start = open[k];
            open.resize(k);
            if (start.start < position && position < tag.end && (!best || start.start > best->first.start))
                best = std::pair{start, tag};
            break;
        }
    }
    return best;
}

// From the indentation in front of the start tag, when nothing else stands before it on its line,
// to the line end behind the end tag, when there is one.
template<typename Options>
void setStretch(FoundConstruct<Options> &found, const QString &text, const Tag &open, const Tag &close)
{
    int from = open.start;
    while (from > 0 && (text[from - 1] == QLatin1Char(' ') || text[from - 1] == QLatin1Char('\t')))
        --from;
    if (from > 0 && text[from - 1] != QLatin1Char('\n'))
        from = open.start;
    int end = close.end;
    if (QStringView(text).mid(end, 2) == QLatin1String("\r\n"))
        end += 2;
    else if (end < text.size() && text[end] == QLatin1Char('\n'))
        ++end;
    found.from = from;
    found.length = end - from;
}

// What stands behind an entry tag up to the next: without the line end and indentation that the
// wizard writes between entries.
QString entryText(const QString &text, int from, int to)
{
    QString s = text.mid(from, to - from);
    qsizetype end = s.size();
    while (end > 0 && (s[end - 1] == QLatin1Char(' ') || s[end - 1] == QLatin1Char('\t')))
        --end;
    if (end >= 2 && s[end - 2] == QLatin1Char('\r') && s[end - 1] == QLatin1Char('\n'))
        end -= 2;
    else if (end >= 1 && s[end - 1] == QLatin1Char('\n'))
        end -= 1;
    else
        end = s.size(); // blanks that end the text are its own
    return s.left(end);
}

bool blank(const QString &text, int from, int to)
{
    for (int i = from; i < to; ++i)
        if (!text[i].isSpace())
            return false;
    return true;
}

struct Entry {
    Tag tag;
    QString text;
};

// The entries between from and to, split at the entry tags that stand outside nested lists.
// Nothing when text stands in front of the first.
std::optional<QList<Entry>> entriesIn(const QString &text, int from, int to,
                                      std::initializer_list<QLatin1String> names, bool nested)
{
    QList<QLatin1String> wanted(names);
    if (nested)
        wanted << QLatin1String("OL") << QLatin1String("UL") << QLatin1String("MENU") << QLatin1String("DL");
    const QList<Tag> tags = tagsIn(text, from, to, wanted);
    QList<Entry> entries;
    int depth = 0;
    for (const Tag &tag : tags) {
        const bool isList = tag.name == QLatin1String("OL") || tag.name == QLatin1String("UL")
                            || tag.name == QLatin1String("MENU") || tag.name == QLatin1String("DL");
        if (isList) {
            depth += tag.closing ? -1 : 1;
            continue;
        }
        if (depth > 0 || tag.closing || std::find(names.begin(), names.end(), tag.name) == names.end())
            continue;
        if (entries.isEmpty() && !blank(text, from, tag.start))
            return std::nullopt;
        if (!entries.isEmpty())
            entries.last().text = entryText(text, entries.last().tag.end, tag.start);
        entries.append({tag, QString()});
    }
    if (entries.isEmpty())
        return blank(text, from, to) ? std::optional<QList<Entry>>(QList<Entry>{}) : std::nullopt;
    entries.last().text = entryText(text, entries.last().tag.end, to);
    return entries;
}

int typeIndex(ListKind kind, const QString &value)
{
    if (kind == ListKind::Ordered) {
        static const char *const types[] = {"1", "A", "a", "I", "i"};
        for (int i = 0; i < 5; ++i)
            if (value == QLatin1String(types[i]))
                return i;
    } else if (kind == ListKind::Unordered) {
        static const char *const types[] = {"disc", "circle", "square"};
        for (int i = 0; i < 3; ++i)
            if (value.compare(QLatin1String(types[i]), Qt::CaseInsensitive) == 0)
                return i + 1;
    }
    return -1;
}

} // namespace

std::optional<FoundConstruct<ListOptions>> ListAround(const QString &text, int position)
{
    const auto pair = enclosing(tagsIn(text, 0, int(text.size()), {QLatin1String("OL"), QLatin1String("UL"),
                                                                   QLatin1String("MENU"), QLatin1String("DL")}),
                                position);
    if (!pair)
        return std::nullopt;
    const auto &[open, close] = *pair;
    FoundConstruct<ListOptions> found;
    ListOptions &o = found.options;
    o.kind = open.name == QLatin1String("OL")   ? ListKind::Ordered
           : open.name == QLatin1String("UL")   ? ListKind::Unordered
           : open.name == QLatin1String("MENU") ? ListKind::Menu
                                                : ListKind::Definition;
    for (const Attribute &a : attributesOf(text, open)) {
        if (o.kind == ListKind::Ordered && a.name == QLatin1String("START") && a.hasValue) {
            o.start = a.value;
        } else if (a.name == QLatin1String("TYPE") && a.hasValue && typeIndex(o.kind, a.value) >= 0) {
            o.type = typeIndex(o.kind, a.value);
        } else if (o.kind == ListKind::Definition && a.name == QLatin1String("COMPACT") && !a.hasValue) {
            o.compact = true;
        } else {
            return std::nullopt; // nothing on the tab would keep it
        }
    }

    const bool definition = o.kind == ListKind::Definition;
    const auto entries =
        definition ? entriesIn(text, open.end, close.start, {QLatin1String("DT"), QLatin1String("DD")}, true)
                   : entriesIn(text, open.end, close.start, {QLatin1String("LI")}, true);
    if (!entries)
        return std::nullopt;
    bool termOpen = false;
    for (const Entry &entry : *entries) {
        if (entry.tag.end - entry.tag.nameEnd > 1)
            return std::nullopt; // an entry tag with attributes
        if (!definition) {
            o.entries.append({entry.text, QString()});
        } else if (entry.tag.name == QLatin1String("DT")) {
            o.entries.append({entry.text, QString()});
            termOpen = true;
        } else {
            if (termOpen)
                o.entries.last().definition = entry.text;
            else
                o.entries.append({QString(), entry.text});
            termOpen = false;
        }
    }
    setStretch(found, text, open, close);
    return found;
}

std::optional<FoundConstruct<FormElementOptions>> SelectAround(const QString &text, int position)
{
    const auto pair = enclosing(tagsIn(text, 0, int(text.size()), {QLatin1String("SELECT")}), position);
    if (!pair)
        return std::nullopt;
    const auto &[open, close] = *pair;
    FoundConstruct<FormElementOptions> found;
    FormElementOptions &o = found.options;
    o.kind = FormKind::Select;
    for (const Attribute &a : attributesOf(text, open)) {
        if (a.name == QLatin1String("NAME") && a.hasValue)
            o.name = a.value;
        else if (a.name == QLatin1String("SIZE") && a.hasValue)
            o.size = a.value;
        else if (a.name == QLatin1String("MULTIPLE") && !a.hasValue)
            o.multiple = true;
        else
            return std::nullopt;
    }
    const auto entries = entriesIn(text, open.end, close.start, {QLatin1String("OPTION")}, false);
    if (!entries)
        return std::nullopt;
    for (const Entry &entry : *entries)
        o.entries.append(text.mid(entry.tag.start, entry.tag.end - entry.tag.start) + entry.text);
    setStretch(found, text, open, close);
    return found;
}

} // namespace pw
