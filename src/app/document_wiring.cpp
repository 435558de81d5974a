#include "app/document_wiring.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"

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
}

} // namespace pw
