#include "app/document_wiring.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "files/file_locks.h"
#include "files/save_document.h"
#include "markup/live_colouring.h"

namespace pw {

void WireDocument(frmMDIMain &main, frmDoc &document)
{
    Q_UNUSED(main);
    EditingSurface *text = document.Text;
    // Standard editing keys reach the program's own undo; copy, cut and paste join when the
    // clipboard operations exist.
    QObject::connect(text, &EditingSurface::editCommand, text, [text](EditingSurface::EditCommand c) {
        if (c == EditingSurface::EditCommand::Undo)
            text->Undo();
    });

    // Live colouring and the edit events.
    frmDoc *doc = &document;
    QObject::connect(text, &EditingSurface::KeyPress, doc, [doc](int *keyAscii) { text_KeyPress(*doc, keyAscii); });
    QObject::connect(text, &EditingSurface::Change, doc, [doc] { Text_Change(*doc); });
    QObject::connect(text, &EditingSurface::KeyDown, doc, [doc](int, int, bool *) { Text_KeyDown(*doc); });
    QObject::connect(text, &EditingSurface::SelChange, doc, [doc] { Text_SelChange(*doc); });
    QObject::connect(text, &EditingSurface::MouseUp, doc,
                     [doc](int button, int shift, int x, int y) { Text_MouseUp(*doc, button, shift, x, y); });
    QObject::connect(text, &EditingSurface::GotFocus, doc, [doc] { Text_GotFocus(*doc); });

    // Closing: the question about changes, then the file let go (and stamped where it applies).
    QObject::connect(doc, &frmDoc::QueryUnload, doc,
                     [doc](bool *cancel, int unloadMode) { Form_QueryUnload(*doc, cancel, unloadMode); });
    QObject::connect(doc, &frmDoc::Unloaded, doc, [](int slot) { CloseDocumentFile(slot); });
}

} // namespace pw
