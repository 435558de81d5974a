#pragma once

namespace pw {

class Workspace;
class frmDoc;

// Form_KeyDown: the function keys of a document. F4 with Alt quits, F4 with Control closes the
// document (each with its usual questions); every other function key places its tags when it is
// in use and is swallowed either way. keyCode is 0x70 (F1) to 0x7B (F12); shift: 1 shift,
// 2 control, 4 alt. Sets *keyCode to 0.
void Form_KeyDown(Workspace &workspace, frmDoc &document, int *keyCode, int shift);

// Puts function key index's front and following texts around the selection (kept or replaced as
// the key says) as one undo step, and places the caret in front, in the middle or behind.
void PlaceFKey(Workspace &workspace, frmDoc &document, int index);

} // namespace pw
