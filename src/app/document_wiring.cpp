#include "app/document_wiring.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "files/file_locks.h"
#include "files/save_document.h"
#include "markup/clipboard_undo.h"
#include "markup/function_keys.h"
#include "markup/live_colouring.h"

namespace pw {

void WireDocument(Workspace &workspace, frmDoc &document)
{
    EditingSurface *text = document.Text;
    frmDoc *doc = &document;
    Workspace *ws = &workspace;

    // Standard editing keys run the program's own operations, whatever a menu item shows.
    QObject::connect(text, &EditingSurface::editCommand, doc, [ws, doc](EditingSurface::EditCommand command) {
        switch (command) {
        case EditingSurface::EditCommand::Copy: CopySelection(*ws, *doc); break;
        case EditingSurface::EditCommand::Cut: CutSelection(*ws, *doc); break;
        case EditingSurface::EditCommand::Paste: PasteClipboard(*ws, *doc); break;
        case EditingSurface::EditCommand::Undo: UndoEdit(*doc); break;
        }
    });

    // Live colouring and the edit events.
    QObject::connect(text, &EditingSurface::KeyPress, doc, [ws, doc](int *keyAscii) { text_KeyPress(*ws, *doc, keyAscii); });
    QObject::connect(text, &EditingSurface::Change, doc, [doc] { Text_Change(*doc); });
    QObject::connect(text, &EditingSurface::MouseUp, doc,
                     [doc](int button, int shift, int x, int y) { Text_MouseUp(*doc, button, shift, x, y); });
    QObject::connect(text, &EditingSurface::GotFocus, doc, [ws] { Text_GotFocus(*ws); });

    // Function keys, before the surface sees them.
    QObject::connect(doc, &frmDoc::KeyDown, doc, [ws, doc](int *keyCode, int shift) { Form_KeyDown(*ws, *doc, keyCode, shift); });

    // Closing: the question about changes, then the file let go (and stamped where it applies).
    QObject::connect(doc, &frmDoc::QueryUnload, doc,
                     [ws, doc](bool *cancel, int unloadMode) { Form_QueryUnload(*ws, *doc, cancel, unloadMode); });
    QObject::connect(doc, &frmDoc::Unloaded, doc, [ws, doc] { CloseDocumentFile(*ws, *doc); });
}

} // namespace pw
