#pragma once

namespace pw {

class Workspace;
class frmDoc;

// Copy puts plain text with LF line ends on the clipboard and the coloured fragment beside it
// under the program's own type; paste uses the fragment only while that type is still there.
void CopySelection(Workspace &workspace, frmDoc &document);
// Copy, then the selection goes; with nothing selected an empty text is copied.
void CutSelection(Workspace &workspace, frmDoc &document);
void PasteClipboard(Workspace &workspace, frmDoc &document);
void UndoEdit(frmDoc &document);
void SelectAllText(frmDoc &document);

} // namespace pw
