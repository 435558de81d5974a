#pragma once

namespace pw {

class frmDoc;

// The edit events of a document's surface. Colouring while typing is driven from the key press:
// the caret's font is set before the character goes in, so the character takes it.

// Before a typed character reaches the surface; *keyAscii = 0 drops it.
void text_KeyPress(frmDoc &document, int *keyAscii);
// Any change of text or format: dirty flag, save and undo buttons, size and line panels, icon.
void Text_Change(frmDoc &document);
// Every key going down, with the caret where it was: keeps the line panel right.
void Text_KeyDown(frmDoc &document);
// Cut and copy buttons; the line panel for the document in front.
void Text_SelChange(frmDoc &document);
// The right button opens the document's Edit menu at the mouse (x, y in twips).
void Text_MouseUp(frmDoc &document, int button, int shift, int x, int y);
void Text_GotFocus(frmDoc &document);

} // namespace pw
