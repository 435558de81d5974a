#pragma once

#include <QList>
#include <QString>

namespace pw {

class EditingSurface;
class frmDoc;
struct FontClass;

// A comment as the last pass found it: the "<" of "<!--" and the ">" of "-->".
struct CommentSpan {
    int CommentStart = 0;
    int CommentEnd = 0;
};

// The comments of the last whole-document pass (colouring or case conversion), in text order.
const QList<CommentSpan> &CommentSpans();

// Gives every comment the comment font and every tag the tag font, and with the uppercase option
// also rewrites tags outside quoted values. Keeps the caret and the document's Dirty flag; Escape
// ends it early, leaving what is done coloured.
void HighlightDocument(frmDoc &document);

// The same pass on a sample surface with the given classes, as the font and colour dialog shows
// it: no status text, progress strip or wait cursor, and no document state is touched. `caption`
// heads the message of an unclosed comment.
void HighlightPreview(EditingSurface &sample, const FontClass &textFont, const FontClass &htmlFont,
                      const FontClass &commentFont, const QString &caption);

// Upper case outside double-quoted values; the length never changes.
QString UppercaseOutsideQuotes(const QString &text);

// The checked state of the highlighting option (mnuOptionHTML).
bool HighlightOn();

// The answer to "Highlight open documents?" (false at the start). The activation handler of the
// main window reads and sets it too.
bool &HighlightOpenDocuments();

// The action of mnuOptionHTML: flips the option, asks "Highlight open documents?" when turning it
// on with documents open, and colours or uncolours them.
void ToggleHighlighting();

// --- The walk both whole-document passes share -------------------------------------------------

struct TagWalk {
    const FontClass *commentFont = nullptr; // null: comments are only recorded
    const FontClass *tagFont = nullptr;     // null: tags get no font
    bool uppercase = false;                 // rewrite tags with UppercaseOutsideQuotes
    bool rewriteAlways = false;             // every tag is rewritten, changed or not (its format unified)
    int nextCommentBack = 0;                // the next "<!--" is searched from this far before "-->"
};

enum class WalkEnd { Done, Escaped, UnclosedComment };

// Walks comments then tags of the surface, as both passes do; polls Escape once before and once
// per round, and sets the progress strip's value. Fills CommentSpans().
WalkEnd WalkTags(EditingSurface &text, const TagWalk &walk);

} // namespace pw
