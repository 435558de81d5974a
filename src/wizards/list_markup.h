#pragma once

#include "wizards/wizard_conduct.h"

#include <QList>
#include <QString>

namespace pw {

// The List Wizard's four kinds, in the order of its tabs.
enum class ListKind { Ordered, Unordered, Menu, Definition };
constexpr int ListKindCount = 4;

// The character that stands between a definition's term and its definition where the two are
// shown as one entry.
inline constexpr QChar DefinitionSeparator = QChar(254);

// One entry: the element's text, or a definition list's term and definition, kept apart so that
// either may hold any character.
struct ListEntry {
    QString text;
    QString definition;
    bool operator==(const ListEntry &) const = default;
};
// How a definition entry is shown: term, the separator, definition.
QString JoinedDefinition(const ListEntry &entry);

// What a List Wizard tab holds, as typed.
struct ListOptions {
    ListKind kind = ListKind::Ordered;
    QString start; // Ordered only
    int type = 0;  // the Type option's index: Ordered 0 to 4, Unordered 0 to 3
    bool compact = false; // Definition only
    QList<ListEntry> entries;
};

// An Ordered list's start: blank (after TrimTrailing) or numeric.
bool ListStartAccepted(const QString &start);

// The list's markup, each piece marked tag (PlaceSingleTag) or text (written into the selection):
// the opening tag, one line per entry (two for a definition), an empty line for no entries, and
// the closing tag. The start goes in as typed.
QList<MarkupPiece> ListPieces(const ListOptions &options);

} // namespace pw
