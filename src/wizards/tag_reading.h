#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace pw {

class EditingSurface;

// A tag read back from a page: its name and attributes in upper case, values as written.
struct TagAttribute {
    QString name;
    QString value;
    bool quoted = false;
    QString text; // the attribute as it stands in the tag
};
struct ParsedTag {
    QString name;
    QList<TagAttribute> attributes;
    // An unclosed quote or no ">": the attributes are those read before it.
    bool broken = false;
    const TagAttribute *find(const char *name) const;
    // The attributes not named, as written, one blank between.
    QString othersThan(std::initializer_list<const char *> names) const;
};
ParsedTag ParseTag(const QString &tag);

// Where a tag stands in a surface: from its "<", through its ">".
struct TagSpan {
    int start = 0;
    int length = 0;
};
// The first ">" outside quotes from start, read in pieces; -1 when there is none.
int TagEnd(EditingSurface &surface, int start);
// The tag whose "<" and ">" the position lies strictly between, looked for within a few thousand
// characters; nothing when the position is outside any tag.
std::optional<TagSpan> TagAround(EditingSurface &surface, int position);
// With nothing selected and the caret inside a whole tag of that name (upper case), the tag is
// selected, to be replaced in place, and returned read; else nothing changes.
std::optional<ParsedTag> SelectTagAtCaret(EditingSurface &surface, const QString &name);

} // namespace pw
