#include "markup/live_colouring.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/workspace.h"

#include <QIcon>
#include <QMenu>

namespace pw {

namespace {

constexpr int KeyBackspace = 8;
constexpr int KeyTab = 9;
constexpr int KeyEscape = 27;
constexpr int KeyBang = 33;
constexpr int KeyLess = 60;
constexpr int KeyGreater = 62;

// The window icon a document shows at each hundredth character, and the one it flips back to.
const char *const HundredIcon = ":/icons/document_hundred.svg";
const char *const ChangedIcon = ":/icons/document_changed.svg";
const char *const ShowsHundred = "showsHundredIcon";

} // namespace

void text_KeyPress(Workspace &workspace, frmDoc &document, int *keyAscii)
{
    EditingSurface &text = *document.Text;
    int &memory = workspace.slots.ActivationSelStart;
    const bool highlightOn = workspace.options.isChecked(Option::Highlight);

    if (text.SelLength() >= 1 && *keyAscii != KeyEscape) {
        text.setSelText(QString());
        // What Backspace deletes is the selection, nothing more.
        if (*keyAscii == KeyBackspace) {
            *keyAscii = 0;
            return;
        }
    }
    if (*keyAscii == KeyTab) {
        text.setSelText(QStringLiteral("    "));
        *keyAscii = 0;
        return;
    }
    if (*keyAscii == KeyBang && document.LastKeyAscii == KeyLess && highlightOn) {
        // Opening a comment: the "<" in front turns comment, and what follows takes its font.
        const int caret = text.SelStart();
        if (caret > 0) {
            text.formatRange(caret - 1, 1, text.classFonts().comment);
            ApplyCommentFont(text);
        }
        document.LastKeyAscii = qint16(*keyAscii);
        memory = caret;
        return;
    }
    document.LastKeyAscii = qint16(*keyAscii);
    if (*keyAscii == KeyLess && highlightOn) {
        ApplyClassFont(text, true);
        memory = text.SelStart();
        return;
    }

    const int caret = text.SelStart();
    // Plain typing finds the caret one behind or ahead of the memory; anything else is a jump,
    // after which the caret's context decides the font.
    if (memory - 1 != caret && memory + 1 != caret && caret != 0 && highlightOn) {
        memory = caret;
        const int afterClose = text.upToStop(caret, QStringLiteral(">"), false);
        const int afterOpen = text.upToStop(caret, QStringLiteral("<"), false);
        if (caret - afterClose < caret - afterOpen) {
            ApplyClassFont(text, false);
        } else {
            const int hit = text.Find(QStringLiteral("<!-"), afterClose, caret, EditingSurface::NoHighlight);
            if (hit + 1 == afterOpen)
                ApplyCommentFont(text);
            else
                ApplyClassFont(text, true);
        }
    }
    // After ">" the memory is put out of reach, so the next key always runs the context test.
    memory = *keyAscii == KeyGreater ? text.TextLength() + 100 : text.SelStart();
}

void Text_Change(frmDoc &document)
{
    document.state().setDirty(true);
    const int length = document.Text->TextLength();
    if (document.property(ShowsHundred).toBool()) {
        document.setWindowIcon(QIcon(QLatin1String(ChangedIcon)));
        document.setProperty(ShowsHundred, false);
    }
    if (length % 100 == 0 && length > 99) {
        document.setWindowIcon(QIcon(QLatin1String(HundredIcon)));
        document.setProperty(ShowsHundred, true);
    }
}

void Text_MouseUp(frmDoc &document, int button, int, int x, int y)
{
    if (button != 2)
        return;
    if (QMenu *edit = document.menu(QStringLiteral("mnuEdit"))) {
        const QPoint at(twipsToPixels(x), twipsToPixels(y));
        edit->popup(document.Text->viewport()->mapToGlobal(at));
    }
}

void Text_GotFocus(Workspace &workspace)
{
    if (workspace.options.isChecked(Option::Toolbar) && workspace.markupToolsHidden())
        workspace.SetMarkupToolsHidden(false);
}

} // namespace pw
