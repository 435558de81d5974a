#pragma once

namespace pw {

// Copy puts plain text with LF line ends on the clipboard and the coloured fragment beside it
// under the program's own type; paste uses the fragment only while that type is still there.
void CopySelection();
void CutSelection();
void PasteClipboard();
void UndoEdit();
void SelectAllText();

} // namespace pw
