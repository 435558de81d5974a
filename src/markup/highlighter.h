#pragma once

#include <QList>
#include <QString>

namespace pw {

class EditingSurface;
class LongPass;
class Platform;
class Workspace;
class frmDoc;
struct ClassFonts;
struct FontClass;

// A comment as the last pass found it: the "<" of "<!--" and the ">" of "-->".
struct CommentSpan {
    int CommentStart = 0;
    int CommentEnd = 0;
};

// Gives every comment the comment font and every tag the tag font, and with the uppercase option
// also rewrites tags outside quoted values. Keeps the caret and the document's Dirty flag; Escape
// ends it early, leaving what is done coloured. Returns the document's text as the pass leaves it
// (the copy it walked), or a null string when it walked none.
QString HighlightDocument(Workspace &workspace, frmDoc &document);

// The same pass on a sample surface with the given classes, as the font and colour dialog shows
// it: no status text, progress strip or wait cursor, and no document state is touched. `caption`
// heads the message of an unclosed comment.
void HighlightPreview(Workspace &workspace, EditingSurface &sample, const ClassFonts &fonts, const QString &caption);

// Upper case outside double-quoted values; the length never changes.
QString UppercaseOutsideQuotes(const QString &text);

// What a colouring pass with the uppercase option makes of a text, done on the text before it goes
// into a surface: every tag outside comments upper-cased outside its quoted values, nothing when a
// comment is left open (the pass stops there before the tags).
QString UppercaseTags(QString text);

// The action of mnuOptionHTML: flips the option, asks "Highlight open documents?" when turning it
// on with documents open, and colours or uncolours them. The answer stays in the workspace, where
// the activation handler of the main window reads and sets it too.
void ToggleHighlighting(Workspace &workspace);

// --- The walk both whole-document passes share -------------------------------------------------

struct TagWalk {
    const FontClass *commentFont = nullptr; // null: comments are only recorded
    const FontClass *tagFont = nullptr;     // null: tags get no font
    bool uppercase = false;                 // rewrite tags with UppercaseOutsideQuotes
    bool rewriteAlways = false;             // every tag is rewritten, changed or not (its format unified)
    int nextCommentBack = 0;                // the next "<!--" is searched from this far before "-->"
};

enum class WalkEnd { Done, Escaped, UnclosedComment };

struct WalkResult {
    WalkEnd end = WalkEnd::Done;
    QList<CommentSpan> comments; // in text order
    QString text;                // the surface's text as the walk leaves it
};

// Walks comments then tags of the surface, as both passes do; polls Escape once before and once
// per round through pass (or the platform, without one), and sets the pass's progress.
WalkResult WalkTags(EditingSurface &text, const TagWalk &walk, Platform &platform, LongPass *pass = nullptr);

} // namespace pw
