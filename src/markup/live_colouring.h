#pragma once

namespace pw {

class Workspace;
class frmDoc;

// The edit events of a document's surface. Colouring while typing is driven from the key press:
// the caret's font is set before the character goes in, so the character takes it. The panels and
// the buttons follow the document in front by themselves (the status presenter, updateActions).

// Before a typed character reaches the surface; *keyAscii = 0 drops it. A key over a selection
// deletes the selection first; Backspace then stops there, as Delete does.
void text_KeyPress(Workspace &workspace, frmDoc &document, int *keyAscii);
// A change of the text: the document is dirty, and its icon flips at each hundredth character.
void Text_Change(frmDoc &document);
// The right button opens the document's Edit menu at the mouse (x, y in twips).
void Text_MouseUp(frmDoc &document, int button, int shift, int x, int y);
// The surface took the focus: the markup tools come back if they were put away.
void Text_GotFocus(Workspace &workspace);

} // namespace pw
